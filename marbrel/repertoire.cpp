#include "marbrel/repertoire.h"

#include <stdlib.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "marbrel/erreur.h"
#include "marbrel/marques.h"

namespace marbrel {

namespace fs = std::filesystem;

namespace {

constexpr char kHex[] = "0123456789ABCDEF";
constexpr std::size_t kNomOsMax = 255;

bool EstMarque(unsigned char c) { return c == 0xFC || c == 0xFD || c == 0xFE; }

bool EstControle(unsigned char c) { return (c >= 0x01 && c < 0x20) || c == 0x7F; }

// The length of the valid UTF-8 sequence at s[i], or 0.
std::size_t SequenceUtf8(const std::string& s, std::size_t i) {
  auto c = static_cast<unsigned char>(s[i]);
  std::size_t n = c < 0x80             ? 1
                  : (c & 0xE0) == 0xC0 ? 2
                  : (c & 0xF0) == 0xE0 ? 3
                  : (c & 0xF8) == 0xF0 ? 4
                                       : 0;
  if (n == 0 || i + n > s.size()) return 0;
  if (n == 2 && c < 0xC2) return 0;
  for (std::size_t k = 1; k < n; ++k) {
    if ((static_cast<unsigned char>(s[i + k]) & 0xC0) != 0x80) return 0;
  }
  return n;
}

// Text whose marks are kept and whose other bytes are Latin-1, as UTF-8.
std::string Latin1VersUtf8(const std::string& octets) {
  std::string texte;
  for (char o : octets) {
    auto c = static_cast<unsigned char>(o);
    if (c < 0x80 || EstMarque(c)) {
      texte += o;
    } else {
      texte += static_cast<char>(0xC0 | (c >> 6));
      texte += static_cast<char>(0x80 | (c & 0x3F));
    }
  }
  return texte;
}

// The first byte offset where text (marks aside) is not UTF-8, or npos.
std::size_t DefautUtf8(const std::string& texte) {
  for (std::size_t i = 0; i < texte.size();) {
    if (EstMarque(static_cast<unsigned char>(texte[i]))) {
      ++i;
      continue;
    }
    std::size_t n = SequenceUtf8(texte, i);
    if (n == 0) return i;
    i += n;
  }
  return std::string::npos;
}

// UTF-8 text (marks kept) as Latin-1; fails naming where. In a name (nom)
// þ ý ü are characters like any other: names hold no marks.
std::string Utf8VersLatin1(const std::string& texte, const std::string& ou, bool nom = false) {
  std::string octets;
  for (std::size_t i = 0; i < texte.size();) {
    auto c = static_cast<unsigned char>(texte[i]);
    if (c < 0x80 || EstMarque(c)) {
      octets += texte[i++];
      continue;
    }
    std::size_t n = SequenceUtf8(texte, i);
    if (n == 0) throw Erreur(ERR_IMPORT, ou + " : le texte n'est pas de l'UTF-8.");
    if (n != 2 || c > 0xC3) {
      throw Erreur(ERR_IMPORT, ou + " : le caractère « " + texte.substr(i, n) +
                                   " » n'existe pas en Latin-1 (--encodage utf8 le garde).");
    }
    auto l = static_cast<unsigned char>(((c & 0x1F) << 6) | (texte[i + 1] & 0x3F));
    if (EstMarque(l) && !nom) {
      throw Erreur(ERR_IMPORT, ou + " : le caractère « " + texte.substr(i, n) +
                                   " » est une marque en Latin-1 (--encodage utf8 le garde).");
    }
    octets += static_cast<char>(l);
    i += n;
  }
  return octets;
}

std::string LitOctets(const fs::path& chemin) {
  std::ifstream in(chemin, std::ios::binary);
  if (!in) throw Erreur(ERR_IMPORT, "Impossible de lire " + chemin.string() + ".");
  std::ostringstream tout;
  tout << in.rdbuf();
  return tout.str();
}

// The record text of an OS file's bytes (still in the file's encoding).
std::string TexteDuContenu(std::string octets) {
  if (octets.find(AM) != std::string::npos) {
    if (!octets.empty() && octets.back() == AM) octets.pop_back();
    return octets;
  }
  std::replace(octets.begin(), octets.end(), '\n', AM);
  return octets;
}

std::string ContenuDuTexte(std::string texte) {
  if (texte.find('\n') != std::string::npos) return texte + AM;
  std::replace(texte.begin(), texte.end(), AM, '\n');
  return texte;
}

// A key or file name read from the OS, in UTF-8; fails naming the path.
std::string NomLu(const fs::path& chemin, Encodage encodage) {
  std::string nom = CleDeNomOs(chemin.filename().string());
  if (nom.empty()) {
    throw Erreur(ERR_IMPORT, chemin.string() +
                                 " : nom mal formé (échappements : ?? ?\\ ?. ?XX ; voir "
                                 "docs/donnees.md).");
  }
  for (char c : nom) {
    if (EstControle(static_cast<unsigned char>(c))) {
      throw Erreur(ERR_IMPORT, chemin.string() + " : le nom contient un caractère de contrôle.");
    }
  }
  if (encodage == Encodage::Latin1) {
    std::string utf8;
    for (char o : nom) {
      auto c = static_cast<unsigned char>(o);
      if (c < 0x80) {
        utf8 += o;
      } else {
        utf8 += static_cast<char>(0xC0 | (c >> 6));
        utf8 += static_cast<char>(0x80 | (c & 0x3F));
      }
    }
    return utf8;
  }
  for (std::size_t i = 0; i < nom.size();) {
    std::size_t n = SequenceUtf8(nom, i);
    if (n == 0) {
      throw Erreur(ERR_IMPORT, chemin.string() +
                                   " : le nom n'est pas de l'UTF-8 (--encodage latin1 pour un "
                                   "export en ISO-8859-1).");
    }
    i += n;
  }
  return nom;
}

}  // namespace

Encodage EncodageNomme(const std::string& nom) {
  std::string n = nom;
  std::transform(n.begin(), n.end(), n.begin(), [](unsigned char c) { return std::tolower(c); });
  if (n == "utf8" || n == "utf-8") return Encodage::Utf8;
  if (n == "latin1" || n == "iso-8859-1" || n == "latin-1") return Encodage::Latin1;
  throw Erreur(ERR_IMPORT, "Encodage inconnu « " + nom + " » : utf8 ou latin1.");
}

std::string NomDeFichierOs(const std::string& cle) {
  std::string nom;
  for (std::size_t i = 0; i < cle.size(); ++i) {
    auto c = static_cast<unsigned char>(cle[i]);
    if (c == '?') {
      nom += "??";
    } else if (c == '/') {
      nom += "?\\";
    } else if (c == '.' && i == 0) {
      nom += "?.";
    } else if (EstControle(c)) {
      nom += '?';
      nom += kHex[c >> 4];
      nom += kHex[c & 0xF];
    } else {
      nom += cle[i];
    }
  }
  return nom;
}

std::string CleDeNomOs(const std::string& nom) {
  std::string cle;
  for (std::size_t i = 0; i < nom.size(); ++i) {
    if (nom[i] != '?') {
      cle += nom[i];
      continue;
    }
    if (i + 1 >= nom.size()) return "";
    char suite = nom[++i];
    if (suite == '?') {
      cle += '?';
    } else if (suite == '\\') {
      cle += '/';
    } else if (suite == '.' && i == 1) {
      cle += '.';
    } else {
      const char* h1 = i + 1 < nom.size() ? std::strchr(kHex, suite) : nullptr;
      const char* h2 = h1 ? std::strchr(kHex, nom[i + 1]) : nullptr;
      if (!h1 || !h2 || suite == '\0' || nom[i + 1] == '\0') return "";
      auto octet = static_cast<unsigned char>(((h1 - kHex) << 4) | (h2 - kHex));
      if (!EstControle(octet)) return "";
      cle += static_cast<char>(octet);
      ++i;
    }
  }
  return cle;
}

Dump LitRepertoire(const std::string& dossier, Encodage encodage) {
  std::error_code ec;
  if (!fs::is_directory(dossier, ec)) {
    throw Erreur(ERR_IMPORT, "Le dossier " + dossier + " n'existe pas ou n'est pas un dossier.");
  }
  Dump dump;
  dump.origine = dossier;
  std::vector<fs::path> dossiers;
  for (const auto& entree : fs::directory_iterator(dossier)) {
    if (!entree.is_directory()) {
      throw Erreur(ERR_IMPORT, entree.path().string() +
                                   " : un dossier de fichiers ne contient que des dossiers (un "
                                   "par fichier).");
    }
    dossiers.push_back(entree.path());
  }
  std::set<std::string> fichiers_vus;
  for (const fs::path& d : dossiers) {
    std::string fichier = NomLu(d, encodage);
    if (fichier.rfind("D_", 0) == 0) fichier = "DICT " + fichier.substr(2);
    if (fichier == "DICT " || fichier == "DICT") {
      throw Erreur(ERR_IMPORT, d.string() + " : ce nom ne désigne aucun dictionnaire.");
    }
    if (!fichiers_vus.insert(fichier).second) {
      throw Erreur(ERR_IMPORT, d.string() + " : le fichier " + fichier + " est donné deux fois.");
    }
    Dump::Enregistrements enregistrements;
    for (const auto& entree : fs::directory_iterator(d)) {
      const fs::path& p = entree.path();
      if (!entree.is_regular_file()) {
        throw Erreur(ERR_IMPORT, p.string() + " : un enregistrement est un fichier ordinaire.");
      }
      std::string cle = NomLu(p, encodage);
      std::string texte = TexteDuContenu(LitOctets(p));
      if (encodage == Encodage::Latin1) {
        texte = Latin1VersUtf8(texte);
      } else if (std::size_t defaut = DefautUtf8(texte); defaut != std::string::npos) {
        throw Erreur(ERR_IMPORT, p.string() + " : l'octet " + std::to_string(defaut + 1) +
                                     " n'est pas de l'UTF-8 (--encodage latin1 pour un export "
                                     "en ISO-8859-1).");
      }
      enregistrements.emplace_back(std::move(cle), std::move(texte));
    }
    std::sort(enregistrements.begin(), enregistrements.end());
    dump.fichiers.emplace_back(std::move(fichier), std::move(enregistrements));
  }
  std::sort(dump.fichiers.begin(), dump.fichiers.end(),
            [](const auto& a, const auto& b) { return a.first < b.first; });
  return dump;
}

namespace {

// The OS name of a file's folder: dictionaries as D_NAME.
std::string NomDeDossier(const std::string& fichier) {
  if (fichier.rfind("D_", 0) == 0) {
    throw Erreur(ERR_BASE, "Le fichier " + fichier +
                               " ne peut pas être exporté en dossier : un nom en D_ y désigne "
                               "un dictionnaire.");
  }
  if (fichier.rfind("DICT ", 0) == 0) return "D_" + fichier.substr(5);
  return fichier;
}

std::string NomOs(const std::string& nom, Encodage encodage, const std::string& ou) {
  std::string os =
      NomDeFichierOs(encodage == Encodage::Latin1 ? Utf8VersLatin1(nom, ou, true) : nom);
  if (os.size() > kNomOsMax) {
    throw Erreur(ERR_BASE, ou + " : le nom dépasse " + std::to_string(kNomOsMax) +
                               " octets une fois échappé, aucun système de fichiers ne le "
                               "garde.");
  }
  if (os.empty()) throw Erreur(ERR_BASE, ou + " : un nom vide ne peut pas être un fichier.");
  return os;
}

void EcritOctets(const fs::path& chemin, const std::string& octets) {
  std::ofstream out(chemin, std::ios::binary);
  out << octets;
  out.close();
  if (!out) throw Erreur(ERR_BASE, "Impossible d'écrire " + chemin.string() + ".");
}

}  // namespace

void ExporteRepertoire(Store& store, const std::vector<std::string>& noms,
                       const std::string& dossier, Encodage encodage) {
  std::vector<std::string> fichiers;
  if (noms.empty()) {
    fichiers = store.Fichiers();
  } else {
    for (const std::string& nom : noms) {
      if (!store.ExisteFichier(nom)) {
        throw Erreur(ERR_FICHIER_INCONNU, "Le fichier " + nom + " n'existe pas dans la base.");
      }
      if (std::find(fichiers.begin(), fichiers.end(), nom) == fichiers.end()) {
        fichiers.push_back(nom);
      }
    }
  }
  std::error_code ec;
  const fs::path cible = fs::path(dossier).lexically_normal();
  if (fs::exists(fs::symlink_status(cible, ec)) &&
      (!fs::is_directory(cible, ec) || !fs::is_empty(cible, ec))) {
    throw Erreur(ERR_BASE, "Le dossier " + dossier +
                               " existe déjà et n'est pas vide : l'export n'écrit que dans un "
                               "dossier neuf.");
  }
  const fs::path parent = cible.has_parent_path() ? cible.parent_path() : fs::path(".");
  std::string modele = (parent / (cible.filename().string() + ".tmp-XXXXXX")).string();
  if (mkdtemp(modele.data()) == nullptr) {
    throw Erreur(ERR_BASE, "Impossible de créer un dossier dans " + parent.string() + ".");
  }
  const fs::path temporaire = modele;
  try {
    // Everything is read in one snapshot: the folder is one state of the store.
    store.DebutInstantane();
    struct Fin {
      Store& s;
      ~Fin() { s.FinInstantane(); }
    } fin{store};
    for (const std::string& fichier : fichiers) {
      const std::string ou_fichier = "fichier " + fichier;
      const fs::path d = temporaire / NomOs(NomDeDossier(fichier), encodage, ou_fichier);
      fs::create_directory(d);
      store.Parcourt(fichier, [&](const std::string& cle, const std::string& texte) {
        const std::string ou = "fichier " + fichier + ", clé « " + cle + " »";
        std::string octets = encodage == Encodage::Latin1 ? Utf8VersLatin1(texte, ou) : texte;
        EcritOctets(d / NomOs(cle, encodage, ou), ContenuDuTexte(std::move(octets)));
        return true;
      });
    }
    if (fs::exists(cible, ec)) fs::remove(cible);
    fs::rename(temporaire, cible);
  } catch (const fs::filesystem_error& e) {
    fs::remove_all(temporaire, ec);
    throw Erreur(ERR_BASE,
                 "Impossible d'écrire le dossier " + dossier + " (" + e.path1().string() + ").");
  } catch (...) {
    fs::remove_all(temporaire, ec);
    throw;
  }
}

}  // namespace marbrel

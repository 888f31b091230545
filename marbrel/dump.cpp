#include "marbrel/dump.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>
#include <set>
#include <sstream>
#include <unordered_set>

#include "marbrel/erreur.h"
#include "marbrel/marques.h"

namespace marbrel {

namespace {

using json = nlohmann::json;

// What a reader met where something else was expected, for messages.
std::string Nature(const json& j) {
  switch (j.type()) {
    case json::value_t::null:
      return "null";
    case json::value_t::boolean:
      return "un booléen";
    case json::value_t::number_integer:
    case json::value_t::number_unsigned:
    case json::value_t::number_float:
      return "un nombre (" + j.dump() + ")";
    case json::value_t::object:
      return "un objet";
    case json::value_t::array:
      return "une liste";
    case json::value_t::string:
      return "un texte";
    default:
      return "une valeur d'un autre type";
  }
}

// Names and keys are written on reports and in sentences: no control character.
std::optional<std::string> DefautDeNom(const std::string& s) {
  if (s.empty()) return "est vide";
  for (unsigned char c : s) {
    if (c < 0x20 || c == 0x7F) return "contient un caractère de contrôle";
  }
  return std::nullopt;
}

// A syntax error of the JSON reader, with the byte where it stopped.
struct ErreurSyntaxe {
  std::size_t octet;
};
// A number the reader cannot hold ("1e999").
struct NombreTropGrand {};

// Reads a dump as the JSON reader walks it, building the records as it goes:
// no tree of the whole document is ever held, so the memory an import needs
// is that of its records, not ten times the dump. Each fault is named where
// it is met: the file, the key, the attribute, value and sub-value.
class LecteurSax : public nlohmann::json_sax<json> {
 public:
  explicit LecteurSax(std::string origine) { dump_.origine = std::move(origine); }

  Dump Resultat() {
    // The order of a dump's text does not matter: files and records are kept
    // in the order of their names and keys, as bytes.
    std::sort(dump_.fichiers.begin(), dump_.fichiers.end(),
              [](const auto& a, const auto& b) { return a.first < b.first; });
    for (auto& [fichier, enregistrements] : dump_.fichiers) {
      std::sort(enregistrements.begin(), enregistrements.end(),
                [](const auto& a, const auto& b) { return a.first < b.first; });
    }
    return std::move(dump_);
  }

  bool null() override { return Valeur(json(nullptr)); }
  bool boolean(bool b) override { return Valeur(json(b)); }
  bool number_integer(number_integer_t n) override { return Valeur(json(n)); }
  bool number_unsigned(number_unsigned_t n) override { return Valeur(json(n)); }
  bool number_float(number_float_t x, const string_t&) override { return Valeur(json(x)); }
  bool binary(binary_t&) override { return Valeur(json::binary({})); }

  bool string(string_t& texte) override {
    switch (profondeur_) {
      case 3:  // an attribute without values
        Separe(AM, attribut_);
        enregistrement_ += texte;
        return true;
      case 4:  // a value without sub-values
        Separe(VM, valeur_);
        enregistrement_ += texte;
        return true;
      case 5:  // a sub-value
        Separe(SM, sous_valeur_);
        enregistrement_ += texte;
        return true;
      default:
        return Valeur(json(texte));
    }
  }

  bool start_object(std::size_t) override {
    if (profondeur_ == 0 || profondeur_ == 1) {
      ++profondeur_;
      return true;
    }
    return Valeur(json::object());
  }
  bool end_object() override {
    --profondeur_;
    return true;
  }
  bool key(string_t& nom) override {
    if (profondeur_ == 1) {
      if (auto defaut = DefautDeNom(nom)) Echec("", "un nom de fichier " + *defaut);
      if (nom == "DICT" || nom == "DICT ") {
        Echec("", "le nom « " + nom + " » ne désigne aucun dictionnaire");
      }
      if (!fichiers_vus_.insert(nom).second)
        Echec("", "le fichier " + nom + " est nommé deux fois");
      dump_.fichiers.emplace_back(nom, Dump::Enregistrements{});
      cles_vues_.clear();
    } else {
      const std::string& fichier = dump_.fichiers.back().first;
      if (auto defaut = DefautDeNom(nom)) Echec("fichier " + fichier, "une clé " + *defaut);
      if (!cles_vues_.insert(nom).second) {
        Echec("", "fichier " + fichier + ", clé « " + nom + " » : la clé apparaît deux fois");
      }
      cle_ = nom;
    }
    return true;
  }

  bool start_array(std::size_t) override {
    switch (profondeur_) {
      case 2:  // a record
        enregistrement_.clear();
        attribut_ = 0;
        break;
      case 3:  // an attribute's values
        Separe(AM, attribut_);
        valeur_ = 0;
        break;
      case 4:  // a value's sub-values
        Separe(VM, valeur_);
        sous_valeur_ = 0;
        break;
      default:
        return Valeur(json::array());
    }
    ++profondeur_;
    return true;
  }
  bool end_array() override {
    if (--profondeur_ == 2) {
      // Copied at its size (the buffer, grown as the record was read, stays
      // for the next one): a record costs its length, not up to twice it.
      dump_.fichiers.back().second.emplace_back(cle_, enregistrement_);
      enregistrement_.clear();
    }
    return true;
  }

  bool parse_error(std::size_t octet, const std::string&,
                   const nlohmann::detail::exception& e) override {
    // Error 406 is a number beyond any double: the text is good JSON.
    if (e.id == 406) throw NombreTropGrand{};
    throw ErreurSyntaxe{octet};
  }

 private:
  [[noreturn]] void Echec(const std::string& ou, const std::string& quoi) const {
    throw Erreur(ERR_IMPORT, dump_.origine + " : " + ou + (ou.empty() ? "" : " : ") + quoi + ".");
  }

  // Counts the element about to be added at this level and puts the mark
  // before every element but the first.
  void Separe(char marque, std::size_t& compte) {
    if (compte++ > 0) enregistrement_ += marque;
  }

  // Something other than what the place takes: named with the place.
  bool Valeur(const json& j) {
    const std::string nature = Nature(j);
    switch (profondeur_) {
      case 0:
        Echec("", "un dump est un objet {\"FICHIER\": {\"CLE\": [...]}}, pas " + nature);
      case 1:
        Echec("fichier " + dump_.fichiers.back().first,
              "le contenu doit être un objet {\"CLE\": [...]}, pas " + nature);
      case 2:
        Echec(Ou(), "l'enregistrement doit être une liste d'attributs, pas " + nature);
      case 3:
        Echec(Ou(), "l'attribut " + std::to_string(attribut_ + 1) +
                        " doit être un texte ou une liste de valeurs, pas " + nature);
      case 4:
        Echec(Ou(), "l'attribut " + std::to_string(attribut_) + ", valeur " +
                        std::to_string(valeur_ + 1) +
                        " doit être un texte ou une liste de sous-valeurs, pas " + nature);
      default:
        Echec(Ou(), "l'attribut " + std::to_string(attribut_) + ", valeur " +
                        std::to_string(valeur_) + ", sous-valeur " +
                        std::to_string(sous_valeur_ + 1) + " doit être un texte, pas " + nature);
    }
  }
  std::string Ou() const {
    return "fichier " + dump_.fichiers.back().first + ", clé « " + cle_ + " »";
  }

  Dump dump_;
  // 0 outside the document, 1 in the dump, 2 in a file, 3 in a record, 4 in
  // an attribute's values, 5 in a value's sub-values.
  int profondeur_ = 0;
  std::set<std::string> fichiers_vus_;
  std::unordered_set<std::string> cles_vues_;
  std::string cle_;
  std::string enregistrement_;
  std::size_t attribut_ = 0, valeur_ = 0, sous_valeur_ = 0;
};

// Line and column (from 1) of a byte offset, for syntax errors.
std::pair<long, long> LigneColonne(std::string_view texte, std::size_t octet) {
  long ligne = 1, colonne = 1;
  for (std::size_t i = 0; i < octet && i < texte.size(); ++i) {
    if (texte[i] == '\n') {
      ++ligne;
      colonne = 1;
    } else if ((static_cast<unsigned char>(texte[i]) & 0xC0) != 0x80) {
      ++colonne;
    }
  }
  return {ligne, colonne};
}

// A record in the shortest form of the dump.
json EnJson(const std::string& texte) {
  json attributs = json::array();
  if (texte.empty()) return attributs;
  auto morceaux = [](std::string_view s, char marque) {
    std::vector<std::string> out;
    std::size_t debut = 0;
    while (true) {
      std::size_t fin = s.find(marque, debut);
      out.emplace_back(s.substr(debut, fin == std::string_view::npos ? fin : fin - debut));
      if (fin == std::string_view::npos) return out;
      debut = fin + 1;
    }
  };
  for (const std::string& attribut : morceaux(texte, AM)) {
    if (attribut.find_first_of(std::string{VM, SM}) == std::string::npos) {
      attributs.push_back(attribut);
      continue;
    }
    json valeurs = json::array();
    for (const std::string& valeur : morceaux(attribut, VM)) {
      if (valeur.find(SM) == std::string::npos) {
        valeurs.push_back(valeur);
      } else {
        valeurs.push_back(morceaux(valeur, SM));
      }
    }
    attributs.push_back(std::move(valeurs));
  }
  return attributs;
}

std::string EnTexteJson(const json& j, const std::string& fichier, const std::string& cle) {
  try {
    return j.dump(-1, ' ', false);
  } catch (const json::type_error&) {
    throw Erreur(ERR_BASE, "Le fichier " + fichier + ", clé « " + cle +
                               " », contient un texte qui n'est pas de l'UTF-8 : il ne peut "
                               "pas être exporté.");
  }
}

}  // namespace

namespace {

[[noreturn]] void EchecLecture(const std::string& origine, const std::string& quoi) {
  throw Erreur(ERR_IMPORT, origine + " : " + quoi + ".");
}

// Reads the dump from entree; position(octet) gives the line and column of a
// byte for a syntax error.
template <typename Entree, typename Position>
Dump LitAvec(Entree&& entree, const std::string& origine, Position position) {
  LecteurSax lecteur(origine);
  try {
    json::sax_parse(std::forward<Entree>(entree), &lecteur);
  } catch (const ErreurSyntaxe& e) {
    auto [ligne, colonne] = position(e.octet > 0 ? e.octet - 1 : 0);
    EchecLecture(origine, "JSON invalide à la ligne " + std::to_string(ligne) + ", colonne " +
                              std::to_string(colonne));
  } catch (const NombreTropGrand&) {
    EchecLecture(origine,
                 "un nombre est trop grand pour être lu (les valeurs d'un dump sont des textes "
                 "entre guillemets)");
  }
  return lecteur.Resultat();
}

void RefuseOctetNul(const std::string& origine, std::pair<long, long> ou) {
  EchecLecture(origine, "octet nul à la ligne " + std::to_string(ou.first) + ", colonne " +
                            std::to_string(ou.second) + " : un dump est un texte UTF-8");
}

}  // namespace

Dump LitDump(std::string_view texte, const std::string& origine) {
  // A NUL byte is refused as such, wherever it is: what follows it would
  // otherwise be taken for the end of the text or a syntax error.
  if (const std::size_t nul = texte.find('\0'); nul != std::string_view::npos) {
    RefuseOctetNul(origine, LigneColonne(texte, nul));
  }
  return LitAvec(texte, origine, [&](std::size_t octet) { return LigneColonne(texte, octet); });
}

Dump LitDumpFichier(const std::string& chemin) {
  std::ifstream in(chemin, std::ios::binary);
  if (!in) throw Erreur(ERR_IMPORT, "Impossible de lire le dump " + chemin + ".");
  std::error_code erreur;
  if (!std::filesystem::is_regular_file(chemin, erreur)) {
    // A pipe (`<(…)`) is read once: its text is held, then read.
    std::ostringstream tout;
    tout << in.rdbuf();
    return LitDump(tout.str(), chemin);
  }
  // Line and column of a byte, counted on the file itself: the text is never
  // held whole.
  auto position = [&](std::size_t octet) {
    std::ifstream f(chemin, std::ios::binary);
    std::string debut(octet, '\0');
    f.read(debut.data(), static_cast<std::streamsize>(octet));
    debut.resize(static_cast<std::size_t>(f.gcount()));
    return LigneColonne(debut, debut.size());
  };
  // A first pass for NUL bytes, a piece at a time.
  std::vector<char> morceau(1 << 16);
  std::size_t lus = 0;
  while (in.read(morceau.data(), static_cast<std::streamsize>(morceau.size())) || in.gcount() > 0) {
    const auto n = static_cast<std::size_t>(in.gcount());
    if (const auto nul = std::find(morceau.begin(), morceau.begin() + static_cast<long>(n), '\0');
        nul != morceau.begin() + static_cast<long>(n)) {
      RefuseOctetNul(chemin, position(lus + static_cast<std::size_t>(nul - morceau.begin())));
    }
    lus += n;
  }
  if (in.bad()) throw Erreur(ERR_IMPORT, "Impossible de lire le dump " + chemin + ".");
  in.clear();
  in.seekg(0);
  return LitAvec(in, chemin, position);
}

void Importe(Store& store, const std::vector<Dump>& dumps) {
  store.Transaction([&] {
    for (const Dump& dump : dumps) {
      for (const auto& contenu : dump.fichiers) {
        // Named, not bound: clang before 16 cannot capture a structured binding.
        const std::string& fichier = contenu.first;
        const Dump::Enregistrements& enregistrements = contenu.second;
        store.CreeFichier(fichier);
        std::size_t i = 0;
        store.EcritLot(fichier, [&](std::string& cle, std::string& texte) {
          if (i == enregistrements.size()) return false;
          cle = enregistrements[i].first;
          texte = enregistrements[i].second;
          ++i;
          return true;
        });
      }
    }
  });
}

void Exporte(Store& store, const std::vector<std::string>& noms, std::ostream& sortie) {
  std::vector<std::string> fichiers;
  if (noms.empty()) {
    fichiers = store.Fichiers();
  } else {
    std::set<std::string> deja;
    for (const std::string& nom : noms) {
      if (!store.ExisteFichier(nom)) {
        throw Erreur(ERR_FICHIER_INCONNU, "Le fichier " + nom + " n'existe pas dans la base.");
      }
      if (deja.insert(nom).second) fichiers.push_back(nom);
    }
  }
  // One record per line: a dump stays readable and compares well line by line.
  sortie << "{";
  for (std::size_t f = 0; f < fichiers.size(); ++f) {
    const std::string& fichier = fichiers[f];
    sortie << (f > 0 ? ",\n  " : "\n  ") << EnTexteJson(json(fichier), fichier, "") << ": {";
    bool premier = true;
    store.Parcourt(fichier, [&](const std::string& cle, const std::string& texte) {
      sortie << (premier ? "\n    " : ",\n    ") << EnTexteJson(json(cle), fichier, cle) << ": "
             << EnTexteJson(EnJson(texte), fichier, cle);
      premier = false;
      return true;
    });
    sortie << (premier ? "}" : "\n  }");
  }
  sortie << (fichiers.empty() ? "}\n" : "\n}\n");
}

}  // namespace marbrel

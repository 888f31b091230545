#include "marbrel/dump.h"

#include <fstream>
#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>
#include <set>
#include <sstream>

#include "marbrel/erreur.h"
#include "marbrel/marques.h"

namespace marbrel {

namespace {

using json = nlohmann::json;

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

class Lecteur {
 public:
  explicit Lecteur(std::string origine) : origine_(std::move(origine)) {}

  [[noreturn]] void Echec(const std::string& ou, const std::string& quoi) const {
    throw Erreur(ERR_IMPORT, origine_ + " : " + ou + (ou.empty() ? "" : " : ") + quoi + ".");
  }

  std::string Enregistrement(const json& j, const std::string& ou) const {
    if (!j.is_array()) {
      Echec(ou, "l'enregistrement doit être une liste d'attributs, pas " + Nature(j));
    }
    std::string texte;
    for (std::size_t a = 0; a < j.size(); ++a) {
      if (a > 0) texte += AM;
      texte += Attribut(j[a], ou, a + 1);
    }
    return texte;
  }

 private:
  std::string Attribut(const json& j, const std::string& ou, std::size_t a) const {
    if (j.is_string()) return j.get<std::string>();
    if (!j.is_array()) {
      Echec(ou, "l'attribut " + std::to_string(a) +
                    " doit être un texte ou une liste de valeurs, pas " + Nature(j));
    }
    std::string texte;
    for (std::size_t v = 0; v < j.size(); ++v) {
      if (v > 0) texte += VM;
      const json& valeur = j[v];
      if (valeur.is_string()) {
        texte += valeur.get<std::string>();
        continue;
      }
      std::string ici = "l'attribut " + std::to_string(a) + ", valeur " + std::to_string(v + 1);
      if (!valeur.is_array()) {
        Echec(ou, ici + " doit être un texte ou une liste de sous-valeurs, pas " + Nature(valeur));
      }
      for (std::size_t s = 0; s < valeur.size(); ++s) {
        if (s > 0) texte += SM;
        if (!valeur[s].is_string()) {
          Echec(ou, ici + ", sous-valeur " + std::to_string(s + 1) + " doit être un texte, pas " +
                        Nature(valeur[s]));
        }
        texte += valeur[s].get<std::string>();
      }
    }
    return texte;
  }

  std::string origine_;
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

Dump LitDump(std::string_view texte, const std::string& origine) {
  Lecteur lecteur(origine);
  // The parser keeps the last of two equal names in an object: note the first
  // repeat so that a dump that says two things of one key is refused.
  std::vector<std::set<std::string>> vus;
  std::string fichier_courant;
  std::string doublon;
  auto surveille = [&](int profondeur, json::parse_event_t evenement, json& lu) {
    if (evenement == json::parse_event_t::object_start) {
      vus.emplace_back();
    } else if (evenement == json::parse_event_t::object_end) {
      if (!vus.empty()) vus.pop_back();
    } else if (evenement == json::parse_event_t::key && !vus.empty()) {
      std::string nom = lu.get<std::string>();
      if (profondeur == 1) fichier_courant = nom;
      if (!vus.back().insert(nom).second && doublon.empty()) {
        doublon = profondeur == 1 ? "le fichier " + nom + " est nommé deux fois"
                                  : "fichier " + fichier_courant + ", clé « " + nom +
                                        " » : la clé apparaît deux fois";
      }
    }
    return true;
  };
  // The JSON reader stops at a NUL byte as at the end of the text: what
  // follows would be lost without a word.
  if (const std::size_t nul = texte.find('\0'); nul != std::string_view::npos) {
    auto [ligne, colonne] = LigneColonne(texte, nul);
    lecteur.Echec("", "octet nul à la ligne " + std::to_string(ligne) + ", colonne " +
                          std::to_string(colonne) + " : un dump est un texte UTF-8");
  }
  json racine;
  try {
    racine = json::parse(texte.begin(), texte.end(), surveille);
  } catch (const json::parse_error& e) {
    auto [ligne, colonne] = LigneColonne(texte, e.byte > 0 ? e.byte - 1 : 0);
    lecteur.Echec("", "JSON invalide à la ligne " + std::to_string(ligne) + ", colonne " +
                          std::to_string(colonne));
  } catch (const json::exception&) {
    // A number beyond any double ("1e999"): the reader gives up on it.
    lecteur.Echec("",
                  "un nombre est trop grand pour être lu (les valeurs d'un dump sont des "
                  "textes entre guillemets)");
  }
  if (!racine.is_object()) {
    lecteur.Echec("",
                  "un dump est un objet {\"FICHIER\": {\"CLE\": [...]}}, pas " + Nature(racine));
  }
  if (!doublon.empty()) lecteur.Echec("", doublon);

  Dump dump;
  dump.origine = origine;
  for (const auto& [fichier, contenu] : racine.items()) {
    if (auto defaut = DefautDeNom(fichier)) lecteur.Echec("", "un nom de fichier " + *defaut);
    if (fichier == "DICT" || fichier == "DICT ") {
      lecteur.Echec("", "le nom « " + fichier + " » ne désigne aucun dictionnaire");
    }
    if (!contenu.is_object()) {
      lecteur.Echec("fichier " + fichier,
                    "le contenu doit être un objet {\"CLE\": [...]}, pas " + Nature(contenu));
    }
    Dump::Enregistrements enregistrements;
    for (const auto& [cle, enregistrement] : contenu.items()) {
      std::string ou = "fichier " + fichier + ", clé « " + cle + " »";
      if (auto defaut = DefautDeNom(cle)) lecteur.Echec("fichier " + fichier, "une clé " + *defaut);
      enregistrements.emplace_back(cle, lecteur.Enregistrement(enregistrement, ou));
    }
    dump.fichiers.emplace_back(fichier, std::move(enregistrements));
  }
  return dump;
}

Dump LitDumpFichier(const std::string& chemin) {
  std::ifstream in(chemin, std::ios::binary);
  if (!in) throw Erreur(ERR_IMPORT, "Impossible de lire le dump " + chemin + ".");
  std::ostringstream tout;
  tout << in.rdbuf();
  return LitDump(tout.str(), chemin);
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

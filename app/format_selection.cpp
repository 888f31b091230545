#include "app/format_selection.h"

#include <nlohmann/json.hpp>

#include "app/commandes.h"
#include "marbrel/marques.h"

namespace vesko_app {

namespace {

// A field's values (separated by sub-value marks in a row) joined by "]".
std::string Joint(const std::string& champ) {
  std::string texte;
  for (char c : champ) texte += c == marbrel::SM ? ']' : c;
  return texte;
}

std::string EnCsv(const std::string& champ) {
  if (champ.find_first_of(",\"\r\n") == std::string::npos) return champ;
  std::string texte = "\"";
  for (char c : champ) {
    if (c == '"') texte += '"';
    texte += c;
  }
  return texte + "\"";
}

nlohmann::json EnJson(const std::string& champ) {
  if (champ.find(marbrel::SM) == std::string::npos) return champ;
  nlohmann::json valeurs = nlohmann::json::array();
  std::size_t debut = 0;
  while (true) {
    std::size_t fin = champ.find(marbrel::SM, debut);
    valeurs.push_back(champ.substr(debut, fin == std::string::npos ? fin : fin - debut));
    if (fin == std::string::npos) return valeurs;
    debut = fin + 1;
  }
}

}  // namespace

FormatSelection FormatNomme(const std::string& nom) {
  if (nom == "tsv") return FormatSelection::Tsv;
  if (nom == "csv") return FormatSelection::Csv;
  if (nom == "json") return FormatSelection::Json;
  throw UsageError("format inconnu « " + nom + " » (--format) : tsv, csv ou json.");
}

void EcritSelection(const marbrel::Liste_Selection& liste, const std::vector<std::string>& champs,
                    FormatSelection format, std::ostream& sortie) {
  const long n = static_cast<long>(champs.size());
  if (format == FormatSelection::Json) {
    nlohmann::json lignes = nlohmann::json::array();
    for (long r = 1; r <= liste.DCount(); ++r) {
      nlohmann::json ligne = nlohmann::json::object();
      for (long f = 1; f <= n; ++f) ligne[champs[static_cast<size_t>(f - 1)]] = EnJson(liste(r, f));
      lignes.push_back(std::move(ligne));
    }
    try {
      sortie << lignes.dump(1, ' ', false) << '\n';
    } catch (const nlohmann::json::type_error&) {
      throw std::runtime_error(
          "la sélection contient un texte qui n'est pas de l'UTF-8 : le format json ne peut pas "
          "l'écrire (--format tsv le peut).");
    }
    return;
  }
  const char separateur = format == FormatSelection::Csv ? ',' : '\t';
  const char* fin = format == FormatSelection::Csv ? "\r\n" : "\n";
  for (long r = 1; r <= liste.DCount(); ++r) {
    std::string ligne;
    for (long f = 1; f <= n; ++f) {
      if (f > 1) ligne += separateur;
      std::string champ = Joint(liste(r, f));
      ligne += format == FormatSelection::Csv ? EnCsv(champ) : champ;
    }
    sortie << ligne << fin;
  }
}

}  // namespace vesko_app

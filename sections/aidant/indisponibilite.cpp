#include "sections/aidant/indisponibilite.h"

#include <array>
#include <stdexcept>

#include "marbrel/outils.h"
#include "marbrel/query/litteral.h"
#include "marbrel/texte.h"

namespace aidant {

namespace {

using texte::Len;
using texte::Mid;
using texte::Space;

bool DeuxChiffres(const std::string& s) {
  return s.size() == 2 && s[0] >= '0' && s[0] <= '9' && s[1] >= '0' && s[1] <= '9';
}

// A carer's observations take exactly 23 characters, leaving room for "Empl.".
std::string Observation_Aidant(const std::string& obs) {
  if (Len(obs) < 22) return texte::Pad(obs, 23);
  return texte::Left(obs, 21) + Space(2);
}

}  // namespace

std::string Phrase_Indispo(const std::string& fichier, const std::string& cle, long aujourdhui) {
  // The "]" after the code asks for keys that begin with it. The sentence
  // reads: own rows started by today that end today or later or have no end
  // (the empty value), or own rows that start after today.
  using marbrel::requete::Litteral;
  const std::string t = Litteral(std::to_string(aujourdhui));
  std::string phrase = "SSELECT " + fichier + " AVEC 0 = " + Litteral(cle + "]");
  phrase += " AND AVEC DateDebIndispo <= " + t + " AND AVEC 1 >= " + t + " OR = " + Litteral("");
  phrase += " OR AVEC 0 = " + Litteral(cle + "]");
  phrase += " AND AVEC DateDebIndispo > " + t;
  return phrase;
}

long Garde_Lignes_Du_Code(marbrel::TabDyn& resultat, const std::string& cle) {
  marbrel::TabDyn gardees;
  // An empty code owns no row: its selection is the whole file, never printed.
  if (cle.empty()) {
    resultat = gardees;
    return 0;
  }
  long n = 0, ecartees = 0;
  for (long r = 1; r <= resultat.Compte(-1, -1); ++r) {
    const std::string ligne = resultat(r);
    const std::string cle_ligne = resultat(r, 1);
    if (ligne.empty()) continue;
    if (Len(cle_ligne) > kLongueurCleIndispo || texte::Left(cle_ligne, Len(cle)) != cle) {
      ++ecartees;
      continue;
    }
    gardees.Remplace(++n, ligne);
  }
  resultat = gardees;
  return ecartees;
}

std::string Jour_Semaine(const std::string& chiffre) {
  static const std::array<const char*, 7> jours = {"LUNDI",    "MARDI",  "MERCREDI", "JEUDI",
                                                   "VENDREDI", "SAMEDI", "DIMANCHE"};
  if (chiffre.size() != 1 || chiffre[0] < '0' || chiffre[0] > '6') return "";
  return jours[static_cast<std::size_t>(chiffre[0] - '0')];
}

std::optional<std::string> Heure(const std::string& heures, const std::string& centiemes) {
  if (!DeuxChiffres(heures) || !DeuxChiffres(centiemes)) return std::nullopt;
  const int h = std::stoi(heures);
  // Hundredths of an hour to minutes, whole minutes only: 25 gives 15, 30 gives
  // 18. Done on integers so that no binary fraction lands a minute short.
  const int m = std::stoi(centiemes) * 60 / 100;
  return std::to_string(h) + "h" + (m < 10 ? "0" : "") + std::to_string(m);
}

std::string Ligne_Indispo(marbrel::TabDyn& resultat, long r, bool est_aidant) {
  const auto& outils = marbrel::Outils::Instance();
  auto V = [&](long n) { return resultat(r, n); };
  const std::string cle = V(1);

  const std::string jour = Jour_Semaine(Mid(cle, 11, 1));
  const std::string debut = outils.Date_Externe(Mid(cle, 6, 5));
  const std::string fin = outils.Date_Externe(V(2));
  const std::string frequence = "1/" + V(4);
  const std::optional<std::string> de = Heure(Mid(cle, 12, 2), Mid(cle, 14, 2));
  if (!de) {
    throw std::runtime_error("Indisponibilité « " + cle + " » : pas d'heure de début (« " +
                             Mid(cle, 12) +
                             " » en positions 12 à 15) ; une clé d'indisponibilité compte 15 "
                             "caractères.");
  }
  // The end time is stored without leading zeros; once padded it reads like
  // the start time, and the padded text stays in the result.
  const std::string fin_stockee = V(3);
  std::string fin_heure = fin_stockee;
  if (Len(fin_heure) < 4)
    fin_heure = std::string(static_cast<size_t>(4 - Len(fin_heure)), '0') + fin_heure;
  resultat.Remplace(r, 3, fin_heure);
  const std::optional<std::string> a = Heure(Mid(fin_heure, 1, 2), Mid(fin_heure, 3, 2));
  if (!a) {
    throw std::runtime_error("Indisponibilité « " + cle + " » : l'heure de fin « " + fin_stockee +
                             " » n'est pas un nombre d'heures en centièmes.");
  }
  const std::string obs = est_aidant ? Observation_Aidant(V(5)) : texte::Left(V(5), 30);
  const std::string employeur = est_aidant ? (V(6) == "O" ? "OUI" : "NON") : "";

  return Space(9) + jour + Space(10 - Len(jour)) + debut + " " + fin + Space(11 - Len(fin)) +
         texte::PadLeft(*de, 5) + " " + texte::PadLeft(*a, 5) + " " + frequence + " " + obs +
         employeur;
}

}  // namespace aidant

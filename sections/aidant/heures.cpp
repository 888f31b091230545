#include "sections/aidant/heures.h"

#include "marbrel/outils.h"

namespace aidant {

std::optional<std::string> Heures(const std::string& centiemes, int entiers) {
  // Centimes reads the stored number a hundred times larger, in whole units;
  // dividing that by 100 gives the hours in hundredths, rounded half away from
  // zero as Format_Montant would round.
  std::optional<long long> cent_fois = marbrel::Centimes(centiemes);
  if (!cent_fois) return std::nullopt;
  const long long v = *cent_fois;
  const long long heures_centiemes = (v >= 0 ? v + 50 : v - 50) / 100;
  return marbrel::Outils::Instance().Format_Montant(marbrel::Centiemes_En_Texte(heures_centiemes),
                                                    entiers, 2);
}

std::string Heures_Illisibles(const std::string& stocke, const std::string& fichier,
                              const std::string& cle, long attribut, long valeur) {
  std::string ou = fichier + " « " + cle + " », attribut " + std::to_string(attribut);
  if (valeur > 0) ou += ", valeur " + std::to_string(valeur);
  return "Nombre d'heures illisible « " + stocke + " » (" + ou +
         ") : un nombre de centièmes d'heure est attendu ; il est imprimé tel quel.";
}

}  // namespace aidant

#include "sections/aidant/heures.h"

#include "marbrel/outils.h"
#include "marbrel/texte.h"

namespace aidant {

std::string Heures(const std::string& centiemes, int entiers) {
  const auto& outils = marbrel::Outils::Instance();
  // Centimes reads the stored number a hundred times larger, in whole units,
  // so dividing by 100 twice gives hours in hundredths; the last step rounds
  // half away from zero like Format_Montant would.
  std::optional<long long> cent_fois = marbrel::Centimes(centiemes);
  if (!cent_fois) return texte::PadLeft(centiemes, entiers + 3);
  long long v = *cent_fois;
  long long heures_centiemes = (v >= 0 ? v + 50 : v - 50) / 100;
  return outils.Format_Montant(marbrel::Centiemes_En_Texte(heures_centiemes), entiers, 2);
}

}  // namespace aidant

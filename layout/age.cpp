#include "layout/age.h"

#include "db/lecture.h"
#include "marbrel/outils.h"

namespace mise_en_page {

std::optional<long> Age(const std::string& naissance, const std::string& reference) {
  const auto& outils = marbrel::Outils::Instance();
  const std::string debut = outils.Date_Interne(naissance);
  const std::string fin = outils.Date_Interne(reference);
  if (debut.empty() || fin.empty()) return std::nullopt;
  // days / 365.25 computed as (4 × days) / 1461 in integers, so the birthday
  // of a leap-year birth falls on the exact day and never a rounding away.
  const long jours = std::stol(fin) - std::stol(debut);
  return jours * 4 / 1461;
}

std::string Aujourdhui_Affiche() {
  return marbrel::Outils::Instance().Date_Externe(db::Aujourdhui());
}

}  // namespace mise_en_page

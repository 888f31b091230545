// Hours as the carer sections show them: stored as whole hundredths of an hour
// ("750" is seven and a half hours), printed as a fixed-point number of hours.
#pragma once

#include <string>

namespace aidant {

// The stored hundredths divided by 100, through Format_Montant with two
// decimals and `entiers` integer positions: ("750", 5) gives "    7.50", eight
// characters. The division is exact (no binary fraction). A stored value that
// is not a number is shown as it is, right-aligned in the same width, so that
// the bad record can be seen and the columns after it stay in place.
std::string Heures(const std::string& centiemes, int entiers);

}  // namespace aidant

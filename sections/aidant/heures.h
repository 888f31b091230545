// Hours as the carer sections show them: stored as whole hundredths of an hour
// ("750" is seven and a half hours), printed as a fixed-point number of hours.
#pragma once

#include <optional>
#include <string>

namespace aidant {

// The stored hundredths divided by 100, through Format_Montant with two
// decimals and `entiers` integer positions: ("750", 5) gives "    7.50", eight
// characters. The division is exact (no binary fraction). Nothing when the
// stored text is not a number.
std::optional<std::string> Heures(const std::string& centiemes, int entiers);

// The message that tells the user a stored number of hours could not be read
// and was printed as it is: where it is (file, key, attribute, value) and what
// it holds.
std::string Heures_Illisibles(const std::string& stocke, const std::string& fichier,
                              const std::string& cle, long attribut, long valeur);

}  // namespace aidant

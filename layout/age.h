// Ages as the dossier shows them: whole years between two displayed dates.
#pragma once

#include <optional>
#include <string>

namespace mise_en_page {

// The whole part of (calendar days from the displayed date `naissance` to the
// displayed date `reference`) / 365.25: a person born on 29/02/1980 is 19 on
// 28/02/2000 (7304 days) and 20 the next day (7305 days). Both dates are texts
// as Date_Externe gives them ("dd/mm/yyyy"); nothing when either is not a
// date. A reference before the birth gives a negative count, cut towards zero.
std::optional<long> Age(const std::string& naissance, const std::string& reference);

// The run's "today" as a displayed date, the usual reference of an age.
std::string Aujourdhui_Affiche();

}  // namespace mise_en_page

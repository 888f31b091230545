// The treatment table of the medical sheet: one line per medication line of
// attribute 10, whose sub-values hold its fields (docs/donnees-sections.md).
#pragma once

#include <string>

#include "marbrel/tabdyn.h"

namespace traitement {

// Sub-values of a medication line.
inline constexpr long kMedication = 1;
inline constexpr long kQuantite = 2;
inline constexpr long kFrequence = 3;
inline constexpr long kDuree = 4;
inline constexpr long kUnite = 5;
inline constexpr long kDateFin = 6;

// The stored codes of the duration units.
inline constexpr const char* kJours = "J";
inline constexpr const char* kSemaines = "S";
inline constexpr const char* kMois = "M";

// The header line; its words start the columns of the rows.
std::string Entete();

// The word printed after a duration: months are always "Mois"; weeks and days
// agree with the number ("Semaine"/"Semaines", "Jour"/"Jours"); anything else
// (an unknown unit, a duration that is not a positive whole number) is "Jour".
std::string Unite_Duree(const std::string& unite, const std::string& duree);

// Row i: each field padded to its column. A field too long for its column is
// cut, leaving one space before the next column, and the cut is written back
// into the record held in memory.
std::string Ligne(marbrel::TabDyn& fiche, long i);

}  // namespace traitement

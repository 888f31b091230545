// The unavailabilities of a person: how they are selected and how one row of
// the selection becomes a printed line of the table.
//
// An unavailability record is keyed by a fixed-position composite of 15
// characters: the person's code (1-5), the start day as five digits (6-10),
// the weekday digit, "0" Monday to "6" Sunday (11), the start time in whole
// hours (12-13) and its hundredths of an hour (14-15). Its attribute 1 is the
// end day (empty: open-ended), 2 the end time as hours × 100 + hundredths
// without leading zeros, 3 the frequency in weeks, 4 the observations and,
// for carers only, 5 the "employer" flag.
#pragma once

#include <optional>
#include <string>

#include "marbrel/tabdyn.h"

namespace aidant {

// The selection sentence for the unavailabilities of `cle` in `fichier` that
// have started by `aujourdhui` (an internal day number) and end that day or
// later or never, together with those that start after it. The code is
// matched as the beginning of the key, so only that person's rows qualify.
std::string Phrase_Indispo(const std::string& fichier, const std::string& cle, long aujourdhui);

// The key length of an unavailability: the code then ten fixed characters.
inline constexpr long kLongueurCleIndispo = 15;

// Keeps in `resultat` (row r = attribute r, the key first) only the rows that
// can be the person's own: a key longer than the fixed layout belongs to a
// longer code that merely starts like `cle` ("000010" under "00001"). Shorter
// keys are kept, so that the row fails on its times and is reported. An empty
// code keeps no row. Returns the number of rows set aside.
long Garde_Lignes_Du_Code(marbrel::TabDyn& resultat, const std::string& cle);

// "0" → "LUNDI" ... "6" → "DIMANCHE"; anything else gives "".
std::string Jour_Semaine(const std::string& chiffre);

// A time given as two characters of whole hours and two of hundredths of an
// hour, as printed: ("09", "50") → "9h30", ("12", "30") → "12h18". Nothing
// when either part is not exactly two digits.
std::optional<std::string> Heure(const std::string& heures, const std::string& centiemes);

// The printed line of row r of a selection result held as a record (row r is
// attribute r; its values are the key, then attributes 1, 2, ... of the
// unavailability). The end time is padded with leading zeros to four
// characters in `resultat` itself. `est_aidant` adds the "Empl." column and lays
// the observations out in 23 characters. A key too short for its start time
// (under 15 characters) or a time that is not digits throws
// std::runtime_error, whose French message names the row's key.
std::string Ligne_Indispo(marbrel::TabDyn& resultat, long r, bool est_aidant);

}  // namespace aidant

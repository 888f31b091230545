// How the query language compares a stored value with a literal and orders
// the rows of a sorted selection.
//
// Two texts compare as numbers when both are numeric (optional sign, digits,
// optional decimal point; never ""), exactly, on their decimal digits: "7" <
// "10" and "1.50" = "1.5". Otherwise they compare byte by byte, so "" comes
// before every non-empty text. With = and #, a literal ending in "]" means
// "starts with", one starting with "[" means "ends with", and one doing both
// means "contains"; these compare as text. A left-justified dictionary item
// (a code) always compares as text.
#pragma once

#include <string_view>

#include "marbrel/query/requete.h"

namespace marbrel::requete {

// <0, 0, >0 for two numeric texts (both must pass EstNumerique).
int CompareNombres(std::string_view a, std::string_view b);

// The comparison of a stored value with a literal described above.
int CompareValeurs(std::string_view a, std::string_view b);

// True when valeur satisfies "valeur op litteral". texte (a left-justified
// item) compares byte by byte even when both look like numbers.
bool Satisfait(std::string_view valeur, Operateur op, std::string_view litteral,
               bool texte = false);

// The order of a PAR field. numerique (a right-justified item): "" first, then
// the numeric values in numeric order, then the other texts byte-wise — a total
// order even when numbers and words are mixed. Otherwise byte-wise.
int CompareTri(std::string_view a, std::string_view b, bool numerique);

// Byte-wise comparison (bytes as unsigned), <0, 0, >0.
int CompareOctets(std::string_view a, std::string_view b);

}  // namespace marbrel::requete

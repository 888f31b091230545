// The key-range path of a selection.
//
// When every row the criteria can select has a key starting with one of a few
// known prefixes, the selection walks those key ranges through the key index
// instead of reading the whole file. A clause on the key (field 0, or an item
// taking the key from its first character) gives prefixes when its condition
// is = "K]" (starts with K) or = "K" with a non-numeric K (that very key);
// AND keeps the best prefixes of any of its members, OR needs prefixes from
// every member and takes them all. The criteria are still tested on every row
// read: the path only decides which rows are read.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "marbrel/query/evaluateur.h"

namespace marbrel::requete {

// The prefixes, sorted and without overlap (a prefix that extends another is
// dropped), so that walking them in order gives the rows in key order; nothing
// when only a full scan can serve the criteria.
std::optional<std::vector<std::string>> PrefixesCle(const CritereCompile& critere);

}  // namespace marbrel::requete

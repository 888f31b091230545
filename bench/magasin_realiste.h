// A realistic store for the benchmarks: n care recipients and n carers made
// from the demo's persons, with every file the demo fills and lengths that
// vary as in a real service — notes of 150 to 5,000 characters, up to 8
// unavailabilities per person, up to 4 incompatible carers per care
// recipient. The catalogues (TABLES, tasks, sectors, banks…) are the demo's.
//
// Keys keep the five characters the composite keys rely on: "A" or "S" and
// four base-36 digits, so up to 1.6 million persons of each type.
#pragma once

#include <string>
#include <vector>

namespace banc_essai {

struct MagasinRealiste {
  std::vector<std::string> aides;    // the care recipients' keys, in order
  std::vector<std::string> aidants;  // the carers' keys, in order
  long long octets_donnees = 0;      // the records' text, all files together
};

// Creates the store at chemin (replacing a file there) from the demo dumps of
// dossier_demo. The same n and graine give the same store.
MagasinRealiste GenereMagasin(const std::string& dossier_demo, int n, const std::string& chemin,
                              unsigned graine = 2024);

}  // namespace banc_essai

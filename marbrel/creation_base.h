// A new Vesko store: the files a print run opens and the dictionary items its
// selections name.
#pragma once

#include "marbrel/store.h"

namespace marbrel {

// Creates, in one transaction, every file of kFichiersVesko (empty) and the
// dictionaries the dossiers' selections use:
//   DICT TPSAIDEINDISPO, DICT TPSAIDANTINDISPO
//     DateDebIndispo         I  @ID[6,5]  (the start day held in the key)  5R
//   DICT TPSINCOMPATIBILITES
//     CodeAide               D  1  (the care recipient's code)             10L
//     NomPrenomAidantIncomp  D  2  (the carer's "NOM Prénom", sort key)    30L
// Files already there keep their records; the items are written again.
void CreeFichiersVesko(Store& store);

}  // namespace marbrel

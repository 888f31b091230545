// Module Procedure: the files of one print run.
#pragma once

namespace Procedure {

// Opens every file of the run, in order, through the Base held by the
// Variable::Base slot, after beginning the read snapshot of its store that
// Ferme_Fichiers ends: the whole run reads one state of the data. No base, or
// a file the store lacks, fails with the library's error naming the file; the
// files opened before it stay in their slots until Ferme_Fichiers.
void Ouvre_Fichiers();

// Releases every current record, every file slot (in opening order), the main
// and "TABLES" records, and finally the Base itself: the host sets the
// database again before the next run. Empty slots are simply skipped.
void Ferme_Fichiers();

}  // namespace Procedure

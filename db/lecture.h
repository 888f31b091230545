// The reading idioms every section uses.
#pragma once

#include <string>

#include "db/variable.h"
#include "marbrel/liste_selection.h"
#include "marbrel/tabdyn.h"

namespace db {

// Reads the record of cle from the file into the file's slot and returns the
// slot. An absent key (or an empty one) gives a new empty record: missing
// data print as empty fields, never as an error. Any other failure of the
// library propagates to the print run, which reports it and goes on.
marbrel::TabDyn& Lit(Fic fichier, const std::string& cle);

// Reads the code table of that name from "TABLES" into the current "TABLES"
// slot and returns the slot (empty when the table does not exist).
marbrel::TabDyn& Charge_Table(const std::string& code_table);

// The value position of code in a code table (codes in attribute 2, labels in
// attribute 3): the scan stops at the code or at the first empty value; 0 when
// the code is not there.
long Position_Code(const marbrel::TabDyn& table, const std::string& code);

// Where a section's scan of a code table stops: the position of code, or the
// first position whose code is empty (the code is unknown). Sections that
// print "the label at that position" read attribute 3 there, and may cut it in
// memory at that same position.
long Position_Arret(const marbrel::TabDyn& table, const std::string& code);

// The label of code in a code table; "" when the code has no label.
std::string Libelle(const marbrel::TabDyn& table, const std::string& code);

// Loads the table and gives the label of code in it.
std::string Libelle_Table(const std::string& code_table, const std::string& code);

// Runs a selection described as a command record: the sentence, the file and
// the fields wanted ("0 1 2", 0 = the key).
marbrel::Liste_Selection Selection(const std::string& phrase, const std::string& fichier,
                                   const std::string& champs);

// The run's "today" as an internal day number (set by the control for a run).
long Aujourdhui();
void FixeAujourdhui(long jour);

}  // namespace db

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

// Two lookups of a code in a code table (codes in attribute 2, labels in
// attribute 3 at the same value positions); both scan positions 1, 2, ...
// until the code or the first empty code.
//
// The label where the scan stops is what the sections print for a code:
// the code's label, or for an unknown or empty code the label of the first
// free position, which a table may fill ("Non renseigné", "Sans diplôme")
// and which is normally empty. Position_Arret gives that position (a section
// that cuts the label in memory cuts it there), Libelle_Arret its label and
// Libelle_Table loads the table first.
long Position_Arret(const marbrel::TabDyn& table, const std::string& code);
std::string Libelle_Arret(const marbrel::TabDyn& table, const std::string& code);
std::string Libelle_Table(const std::string& code_table, const std::string& code);

// The strict lookup of the framed lists, whose unknown codes print no label:
// the position of code, 0 when the scan stops on an empty code first.
long Position_Code(const marbrel::TabDyn& table, const std::string& code);
// The label at Position_Code; "" when the code is not there.
std::string Libelle(const marbrel::TabDyn& table, const std::string& code);

// Runs a selection described as a command record: the sentence, the file and
// the fields wanted ("0 1 2", 0 = the key).
marbrel::Liste_Selection Selection(const std::string& phrase, const std::string& fichier,
                                   const std::string& champs);

// The same selection, made once per run: for the selections that do not
// depend on the person (the task catalogue), which the run's one snapshot of
// the store keeps the same from its first dossier to its last. The result
// stays valid until the run's files are opened or closed again.
const marbrel::Liste_Selection& Selection_Du_Run(const std::string& phrase,
                                                 const std::string& fichier,
                                                 const std::string& champs);
// Forgets the run's selections (done when a run's files open and close).
void Oublie_Selections_Du_Run();

// The run's "today" as an internal day number (set by the control for a run).
long Aujourdhui();
void FixeAujourdhui(long jour);

}  // namespace db

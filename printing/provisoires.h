// The temporary files of a run that hold health data (a document being
// drawn), known to the process so that a signal ending it (INT, TERM, HUP)
// removes them before the process goes: no copy of a dossier is left in a
// folder after an interrupted print.
#pragma once

#include <string>

namespace printing {

// Creates a file from modele (mkstemps: "XXXXXX" then suffixe characters),
// mode 0600 less the umask, and records it, with INT, TERM and HUP held off
// in between so that no signal can leave it unrecorded. The path, or "" with
// errno set when the file cannot be created.
std::string CreeProvisoire(std::string modele, int suffixe);

// Records chemin; false when the table (a few dozen entries) is full, in
// which case the file is still removed by its owner but not by a signal.
bool InscritProvisoire(const std::string& chemin);
// Forgets chemin (renamed into place, or removed by its owner).
void OublieProvisoire(const std::string& chemin);
// Removes every recorded file. Safe inside a signal handler: unlink only.
void EffaceProvisoires() noexcept;

// Installs handlers for INT, TERM and HUP that remove the recorded files and
// then end the process by the same signal, as if no handler were there (the
// shell sees "interrupted"). Nothing is sent or renamed afterwards: the run
// stops where it was.
void ProtegeContreInterruptions();

}  // namespace printing

// The printer choice of `vesko print` on a terminal: the printer list with
// the default queue and each queue's state marked, a number to type, 0 to
// cancel. The menu is written to the terminal's error stream, so that a
// document sent to standard output (--pdf -) never contains it.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "printing/cups.h"
#include "printing/imprimantes.h"

namespace vesko_app {

// "CAPTURE (par défaut) — prête", "ARRETEE — arrêtée : Bourrage…": one
// queue's line in the menu and in `vesko printers`.
std::string DecritFile(const printing::cups::FileServeur& file);

// Asks on entree/sortie which entry of liste to use; the queues' states come
// from etats (by name). A queue that cannot print is refused with its reason
// and the question asked again. Returns the index in liste, or -1 when the
// user cancels (0) or the input ends.
long DemandeImprimante(const std::vector<printing::Destination>& liste,
                       const std::vector<printing::cups::FileServeur>& etats, std::istream& entree,
                       std::ostream& sortie);

}  // namespace vesko_app

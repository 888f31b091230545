// Progress of a long print. The control runs on its caller's thread and lets
// pending events through once per run; a host (a window, a terminal) that
// wants progress and repaints in between hooks the surface the control draws
// on: every page begun, and every so often while a page fills, it is told,
// shows how far the run is and lets its window repaint. The hook answers whether
// the run goes on: once it says no, the surface draws nothing more and is
// never completed, so an abandoned document reaches no printer and no file.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

#include "printing/imprimantes.h"
#include "printing/surface.h"

namespace printing {

// True: go on; false: the user abandoned the run.
using Suivi = std::function<bool()>;

// The same list, every destination drawing as before and calling suivi at
// each page begun and at least every pas of drawing in between. After suivi
// has said false, the destination's own surface is dropped unfinished.
std::vector<Destination> AvecSuivi(std::vector<Destination> liste, Suivi suivi,
                                   std::chrono::milliseconds pas = std::chrono::milliseconds(100));

}  // namespace printing

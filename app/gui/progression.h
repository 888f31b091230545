// Keeps a window alive during a long print. The control runs on the window's
// thread and lets pending events through once per run; a host that wants
// progress and repaints in between hooks the surface the control draws on:
// every page begun, and every so often while a page fills, it is told, shows
// how far the run is and lets the window repaint.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

#include "printing/imprimantes.h"
#include "printing/surface.h"

namespace hote {

using Suivi = std::function<void()>;

// The same list, every destination drawing as before and calling suivi at
// each page begun and at least every pas of drawing in between.
std::vector<printing::Destination> AvecSuivi(
    std::vector<printing::Destination> liste, Suivi suivi,
    std::chrono::milliseconds pas = std::chrono::milliseconds(100));

}  // namespace hote

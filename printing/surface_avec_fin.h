// A surface that does one more thing when its document ends: the output that
// a run's recording becomes (images, a file put in place) is then made inside
// the run, so that its failure is an incident of the run — told with the
// others, and recorded as a failure by the access journal — not a message
// after a run already recorded as complete.
#pragma once

#include <functional>
#include <memory>

#include "printing/surface.h"

namespace printing {

// The document goes to surface; once surface has ended it, fin runs (an
// exception from it fails the end of the document).
std::unique_ptr<Surface> AvecFin(std::unique_ptr<Surface> surface, std::function<void()> fin);

}  // namespace printing

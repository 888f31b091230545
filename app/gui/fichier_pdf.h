// The window's "PDF" printer: the document is drawn into a temporary file
// beside the one the user named and takes its name only once complete, so an
// abandoned or failed print never leaves a partial PDF under that name.
#pragma once

#include <memory>
#include <string>

#include "printing/imprimantes.h"
#include "printing/surface.h"

namespace hote {

// Fails with a French message when the file's folder cannot be written.
std::unique_ptr<printing::Surface> SurfacePdfComplete(const std::string& chemin,
                                                      const printing::Travail& travail);

}  // namespace hote

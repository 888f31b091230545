// A recording put on paper after the fact: on any surface, or as one PNG
// image per page, through the same Qt drawing as a live print. Needs a
// QGuiApplication (or QApplication).
#pragma once

#include <string>
#include <vector>

#include "printing/recording.h"
#include "printing/surface.h"

namespace printing {

// Draws the recording on surface as one document: its paper, its pages in
// order, each page's items in drawing order. An empty recording (nothing was
// printed) draws nothing and starts no document.
void Rejoue(const Enregistrement& enregistrement, Surface& surface);

// Writes every page of the recording as a PNG image of the whole sheet at dpi
// dots per inch, white background, into dossier (created if missing), named
// page-001.png, page-002.png… (mode 0600). The page images of an earlier run
// are removed first, so the folder never mixes two runs; each image is
// written whole (a temporary file renamed into place), and a run that fails
// removes the pages it wrote. Returns the paths written, in page order. Fails
// with a French message when the folder or an image cannot be written, or
// when dpi is outside 10–1200.
std::vector<std::string> EcritPng(const Enregistrement& enregistrement, const std::string& dossier,
                                  int dpi);

}  // namespace printing

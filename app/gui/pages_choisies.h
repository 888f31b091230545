// The pages a print dialog asks for: a range of pages and the order they come
// out in. The run draws the whole document; this surface keeps it and, when
// the document ends, draws only the chosen pages, in the chosen order, on the
// destination's own surface — so a queue, a PDF file or any other surface
// gets exactly those pages, whatever its driver knows of page ranges.
#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "printing/surface.h"

namespace hote {

struct PagesChoisies {
  // Ranges of 1-based page numbers, first to last, in the order given; none:
  // every page.
  std::vector<std::pair<int, int>> plages;
  bool inverse = false;  // last page first
  bool Toutes() const { return plages.empty() && !inverse; }
};

// surface draws the chosen pages. Ranges beyond the document are cut to it;
// when they select no page at all, nothing is drawn and FinDocument fails
// with a French message giving the document's page count.
std::unique_ptr<printing::Surface> AvecPagesChoisies(std::unique_ptr<printing::Surface> surface,
                                                     PagesChoisies pages);

}  // namespace hote

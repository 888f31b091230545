// Whether the page can take one more line: sections that print free text of
// any length break the page themselves, with the running header, before the
// printer would eject a bare page on its own.
#pragma once

#include "printing/printer.h"

namespace mise_en_page {

// True when a line printed now, in the current font, would cross the bottom
// of the printable area. Mirrors the printer's own overflow test, so a section
// that calls NewPage when this says so never gets a page without its header.
bool Page_Pleine(const printing::Printer& p);

}  // namespace mise_en_page

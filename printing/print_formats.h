// The two written forms of a recording.
//
// Text: UTF-8; one line per printed line holding exactly the characters printed
// (spaces kept, nothing trimmed; a line printed with nothing stays empty); a
// page eject is a line holding a single form feed (U+000C); the file ends with
// a newline. Lines are drawn items, so they do not appear in the text.
//
// JSON: {"pages": [{"items": [
//          {"text": "…", "x": 0, "y": 0, "font": {"name": "Courier New", "size": 11,
//           "bold": false, "italic": false, "underline": false}},
//          {"line": [x1, y1, x2, y2], "width": 3} ]}]}
// Coordinates in twips from the printable origin, rounded to integers; items
// in drawing order, one text item per print call.
#pragma once

#include <string>

#include "printing/recording.h"

namespace printing {

std::string EnTexte(const Enregistrement& enregistrement);
std::string EnJson(const Enregistrement& enregistrement);

// One page of each form, for writing a recording as it is made
// (sortie_format.h): the text of the page's lines without the form feed
// that separates it from the one before; the page's object as it stands
// inside EnJson's list of pages, without the comma between two.
void AjouteTextePage(const PageEnregistree& page, std::string& sortie);
void AjouteJsonPage(const PageEnregistree& page, std::string& sortie);

}  // namespace printing

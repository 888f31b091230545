// Text shown to a person in a message: data echoed on a terminal (a key, a
// file name from a dump) must not move the cursor, clear the screen or hide
// the rest of the line.
#pragma once

#include <string>
#include <string_view>

namespace texte {

// s with every control character (below 0x20, 0x7F) and every multivalue mark
// written as a visible escape: "\n", "\t", "\r", "\x1B", "\xFE". Other bytes
// (accents included) are kept.
std::string Visible(std::string_view s);

}  // namespace texte

// A section's own lines: Banc::Section also returns the blank line that the
// next title prints before itself, when that title follows on the same page.
#pragma once

#include <string>
#include <vector>

#include "tests/support/banc.h"

namespace banc {

// The lines after the title up to the next title or page eject, without the
// next title's leading blank line.
std::vector<std::string> Section_Seule(const Banc& b, const std::string& titre);

}  // namespace banc

// Free texts printed under a label or as a block: stored lines separated by
// CR LF, each wrapped into pieces without splitting a word.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace mise_en_page {

// The word-wrap rule applied to one piece: how many of its characters to
// print (the control's Position_Coupure).
using Regle_Coupure = std::function<std::int32_t(const std::string&)>;

// The printed lines of texte, in order. Every stored line starts a new printed
// line, and so does every value or sub-value of a text held as several; an empty stored line gives one empty piece, and the CR LF that ends
// the text gives no line of its own. A stored line longer than largeur is cut
// into pieces of at most largeur characters: the rest is taken whole when it
// fits, otherwise the next largeur characters are cut where coupure says (at
// their last space, which is then dropped) or taken whole when they hold no
// space. No character is lost and no word is split unless it is longer than
// the line. An empty text gives no lines.
std::vector<std::string> Decoupe_Texte(const std::string& texte, long largeur,
                                       const Regle_Coupure& coupure);

}  // namespace mise_en_page

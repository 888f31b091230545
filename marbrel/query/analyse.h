// The parser of the query language (grammar in requete.h).
#pragma once

#include <string_view>

#include "marbrel/query/requete.h"

namespace marbrel::requete {

// The tree of the sentence. A syntax error fails with ERR_REQUETE, quoting the
// sentence and pointing at the offending position. Names are not resolved
// here: an unknown file or field is found when the sentence is run.
Requete Analyse(std::string_view phrase);

}  // namespace marbrel::requete

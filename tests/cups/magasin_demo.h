// The demo store the print command tests print from, and the visible lines
// of a printed text.
#pragma once

#include <regex>
#include <sstream>
#include <vector>

#include "tests/app/programmes.h"

namespace essai_demo {

// The demo store (`vesko init` then `vesko import demo/*.json`), made once
// per program; "" when it could not be made.
inline const std::string& Base() {
  static const essai::Dossier dossier;
  static const std::string base = [] {
    const std::string chemin = dossier / "demo.vesko";
    const bool fait =
        essai::Vesko("init --db '" + chemin + "'").statut == 0 &&
        essai::Vesko("import --db '" + chemin + "' " VESKO_SOURCE_DIR "/demo/*.json").statut == 0;
    return fait ? chemin : std::string();
  }();
  return base;
}

// The words of every non-empty line, one space apart, pages split by a line
// holding a form feed (pdftotext ends every page with one, the text format
// only separates them). pdftotext -layout guesses the width of a space from
// every font of the page, the 16-point titles included, so its runs of
// spaces are not the printed ones; where the words sit on the page is the
// printing tests' concern.
inline std::vector<std::string> LignesDeMots(const std::string& texte) {
  std::vector<std::string> lignes;
  std::istringstream flux(std::regex_replace(texte, std::regex("\f"), "\n\f\n"));
  for (std::string l; std::getline(flux, l);) {
    std::istringstream mots(l);
    std::string ligne = l == "\f" ? l : "";
    for (std::string mot; mots >> mot;) ligne += (ligne.empty() ? "" : " ") + mot;
    if (!ligne.empty()) lignes.push_back(ligne);
  }
  if (!lignes.empty() && lignes.back() == "\f") lignes.pop_back();
  return lignes;
}

}  // namespace essai_demo

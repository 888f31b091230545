// What the print command tests share: the built `vesko` run as a user runs
// it, the demo store made by that binary, temporary folders, and the visible
// lines of a text.
#pragma once

#include <string>
#include <vector>

namespace essai_demo {

struct Resultat {
  int statut = -1;
  std::string sortie;
  std::string erreurs;
};

// Runs `vesko <arguments>` (arguments already quoted for the shell) with the
// environment of this program (CUPS_SERVER included).
Resultat Vesko(const std::string& arguments);

// The demo store (`vesko init` then `vesko import demo/*.json`), made once
// per program; "" when it could not be made.
const std::string& Base();

// A fresh folder under /tmp, removed with everything in it at the end.
class Dossier {
 public:
  Dossier();
  ~Dossier();
  std::string operator/(const std::string& nom) const { return chemin_ + "/" + nom; }

 private:
  std::string chemin_;
};

// The words of every non-empty line, one space apart, pages split by a line
// holding a form feed (pdftotext ends every page with one, the text format
// only separates them). pdftotext -layout guesses the width of a space from
// every font of the page, the 16-point titles included, so its runs of
// spaces are not the printed ones; where the words sit on the page is the
// printing tests' concern.
std::vector<std::string> LignesDeMots(const std::string& texte);

}  // namespace essai_demo

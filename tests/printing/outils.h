// Helpers of the print tests: a temporary folder and external commands
// (poppler's pdftotext, pdftoppm…). The program's one Qt application is made
// in outils.cpp too.
#pragma once

#include <string>

namespace essai {

// A fresh folder under /tmp, removed with everything in it at the end.
class DossierTemporaire {
 public:
  DossierTemporaire();
  ~DossierTemporaire();
  std::string operator/(const std::string& nom) const { return chemin_ + "/" + nom; }

 private:
  std::string chemin_;
};

// Runs a shell command; its standard output, and its exit status in *statut.
std::string Lance(const std::string& commande, int* statut = nullptr);

}  // namespace essai

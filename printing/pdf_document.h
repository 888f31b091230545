// One PDF document being written: its pages as they come, then its fonts,
// resources, metadata and colour profile when it ends (see pdf_surface.h
// for what the file holds and guarantees).
#pragma once

#include <array>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "printing/geometrie.h"
#include "printing/pdf_ecrivain.h"
#include "printing/pdf_metadonnees.h"
#include "printing/pdf_police.h"
#include "printing/surface.h"

namespace printing::pdf {

// Where the sRGB profile of the output intent is read (icc-profiles-free).
inline constexpr const char* kProfilSrgb = "/usr/share/color/icc/sRGB.icc";

class Document {
 public:
  // Begins the document and its first page. Fails with a French message when
  // the fonts or the colour profile are missing.
  Document(std::ostream& flux, const std::string& destination, const Papier& papier,
           Metadonnees metadonnees);

  void NouvellePage();
  void Texte(double x, double y, const Police& police, const std::string& texte);
  void Trait(double x1, double y1, double x2, double y2, int largeur);
  // Writes the last page and everything the pages refer to.
  void Termine();

 private:
  // Positions in hundredths of a point from the bottom-left corner of the
  // sheet, as the content streams write them.
  long X(double twips) const;
  long Y(double twips) const;
  PolicePdf& Face(const Police& police, int& indice);
  void FinPage();
  void EcritPolice(int indice, int numero_type0);

  EcrivainPdf ecrivain_;
  Metadonnees metadonnees_;
  Papier papier_;
  double hauteur_pt_;
  int catalogue_, pages_, ressources_;
  std::vector<int> kids_;
  std::array<std::unique_ptr<PolicePdf>, 4> polices_;  // regular, bold, italic, bold italic

  // The page being written: its text between BT and ET, its strokes and its
  // underlines, kept apart so that each is one path.
  std::string texte_, traits_, soulignes_;
  int police_page_ = -1;
  long taille_page_ = 0;
  long tx_ = 0, ty_ = 0;         // the last text position set (Td is relative)
  int largeur_page_ = 0;         // the line width set on the page (0: none yet)
  std::string codes_, contenu_;  // reused buffers
};

}  // namespace printing::pdf

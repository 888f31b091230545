// The printer object through which the control prints: the state and the
// operations the sections rely on, independent of where the ink goes.
//
// Positions are in twips from the top-left corner of the printable area.
// Printing a value ends the line unless asked not to; a value printed without
// ending the line is followed on the same line by the next one; printing
// nothing gives an empty line. A line that would cross the bottom of the
// printable area first ejects the page by itself — an overflow page carries no
// header, since only the print run decides headers.
#pragma once

#include <memory>
#include <string>

#include "printing/geometrie.h"
#include "printing/surface.h"

namespace printing {

class Printer {
 public:
  // The printer draws on surface, which it owns. The document begins with the
  // first thing printed and ends with EndDoc.
  explicit Printer(std::unique_ptr<Surface> surface, Papier papier = {});

  // The paper (a DMPAPER code) for the next document; ignored once it has begun.
  void SetPaperSize(std::int16_t code);
  const Papier& Paper() const { return papier_; }

  // Font state, applied to the next print.
  void SetFontName(const std::string& nom) { police_.nom = nom; }
  void SetFontSize(double taille) { police_.taille = taille; }
  void SetFontBold(bool b) { police_.gras = b; }
  void SetFontItalic(bool b) { police_.italique = b; }
  void SetFontUnderline(bool b) { police_.souligne = b; }
  const Police& Font() const { return police_; }

  // Current position.
  double CurrentX() const { return x_; }
  double CurrentY() const { return y_; }
  void SetCurrentX(double x) { x_ = x; }
  void SetCurrentY(double y) { y_ = y; }

  // Width of the lines drawn by Line (device pixels).
  void SetDrawWidth(int largeur) { largeur_trait_ = largeur < 1 ? 1 : largeur; }
  int DrawWidth() const { return largeur_trait_; }

  // Prints texte at the current position; with fin_de_ligne the position goes
  // to the start of the next line, otherwise it stays after the text. The text
  // is printed as texte::Sur_Une_Ligne makes it: never a mark of the store, a
  // control character or a byte that is not UTF-8.
  void Print(const std::string& texte = "", bool fin_de_ligne = true);
  // A line from (x1, y1) to (x2, y2) with the current width.
  void Line(double x1, double y1, double x2, double y2);
  // Ejects the page: the next print starts at the top of a new page.
  void NewPage();
  // Ends the document; nothing was printed → no document at all.
  void EndDoc();

  // Pages begun in the current document (0 before the first print).
  int PageCount() const { return pages_; }
  bool DocumentStarted() const { return commence_; }

 private:
  void Commence();

  std::unique_ptr<Surface> surface_;
  Papier papier_;
  Police police_;
  double x_ = 0;
  double y_ = 0;
  double hauteur_ligne_courante_ = 0;  // tallest font on the unfinished line
  int largeur_trait_ = 1;
  int pages_ = 0;
  bool commence_ = false;
};

}  // namespace printing

// What the printer object draws on: a recording (the reference for tests), a PDF
// file or a system printer. The printer decides every position; a surface only
// puts the text and the lines where it is told.
#pragma once

#include <string>

#include "printing/geometrie.h"

namespace printing {

struct Police {
  std::string nom = "Courier New";
  double taille = 11.0;
  bool gras = false;
  bool italique = false;
  bool souligne = false;
  bool operator==(const Police&) const = default;
};

class Surface {
 public:
  virtual ~Surface() = default;
  // The first page starts with the document; later pages with NouvellePage.
  virtual void DebutDocument(const Papier& papier) = 0;
  virtual void NouvellePage() = 0;
  // Text whose top-left corner is at (x, y), in twips from the printable origin.
  virtual void Texte(double x, double y, const Police& police, const std::string& texte) = 0;
  // A straight line of the given width (device pixels, at least 1).
  virtual void Trait(double x1, double y1, double x2, double y2, int largeur) = 0;
  // After this, the document is complete (the file written, the job sent).
  virtual void FinDocument() = 0;
  // Where the document goes, in words for the access journal ("file BUREAU,
  // travail BUREAU-12" once a job is sent); "" lets the destination's name
  // say it. May change with FinDocument.
  virtual std::string Trace() const { return {}; }
};

}  // namespace printing

// The surface that writes PDF files and the PDFs of print jobs, directly:
// PDF 1.7 conforming to PDF/A-2b, one deflated content stream per page, one
// text operator per printed piece (the grid is fixed-pitch: no shaping),
// lines as path operators, Liberation Mono embedded as subsets of the glyphs
// used, with their map back to the characters so that the text can be
// searched and copied. The screen (preview, PNG images, the print dialog)
// stays with Qt (qt_surface.h); both put every character in the same place.
//
// Contract, beyond Surface's: positions are those of the recording, to the
// hundredth of a point; a page is written out as soon as the next begins, so
// memory does not grow with the document; a failed write throws a French
// message naming the destination, and every later call (FinDocument
// included) throws it again, so an incomplete file is never taken for a
// finished one. Fonts and the colour profile come from Debian's
// fonts-liberation and icc-profiles-free; their absence is said in French
// when the document begins.
#pragma once

#include <fstream>
#include <memory>
#include <ostream>
#include <string>

#include "printing/imprimantes.h"
#include "printing/pdf_metadonnees.h"
#include "printing/surface.h"

namespace printing {

namespace pdf {
class Document;
}

class PdfSurface : public Surface {
 public:
  // Writes one document to flux, which must outlive the surface; destination
  // names it in messages.
  PdfSurface(std::ostream& flux, std::string destination, pdf::Metadonnees metadonnees);
  // Writes the file chemin, created (or emptied) when the document begins: a
  // document without pages leaves no file. A later document on the same
  // surface replaces it. Messages name nom, or chemin when nom is empty (a
  // temporary file is named by the file it will become).
  PdfSurface(std::string chemin, pdf::Metadonnees metadonnees, std::string nom = "");
  // An unfinished document is ended, so that what was drawn is not lost.
  ~PdfSurface() override;

  void DebutDocument(const Papier& papier) override;
  void NouvellePage() override;
  void Texte(double x, double y, const Police& police, const std::string& texte) override;
  void Trait(double x1, double y1, double x2, double y2, int largeur) override;
  void FinDocument() override;

 private:
  std::ostream* flux_;
  std::string destination_;
  std::string chemin_;  // "" when writing to a stream given
  std::ofstream fichier_;
  pdf::Metadonnees metadonnees_;
  std::unique_ptr<pdf::Document> document_;
  bool flux_utilise_ = false;
};

// A surface writing the PDF file chemin, titled with the job's title, its
// subject the job's, its author the setting (pdf::AuteurDesDocuments). Fails
// with a French message when the file cannot be written (its folder is
// missing or read-only, it is a folder). Copies mean nothing to a file.
// Messages name nom when given.
std::unique_ptr<Surface> SurfacePdf(const std::string& chemin, const Travail& travail,
                                    const std::string& nom = "");

}  // namespace printing

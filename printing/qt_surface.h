// The surface that puts the print on paper through Qt: a QPainter on a paged
// device, a QPdfWriter for a PDF file or a QPrinter for a system print queue
// (CUPS). Both go through the same drawing (qt_dessin.h); only the device
// differs. Needs a QGuiApplication (or QApplication).
#pragma once

#include <QPageSize>
#include <QPagedPaintDevice>
#include <QPainter>
#include <memory>
#include <string>

#include "printing/imprimantes.h"
#include "printing/qt_dessin.h"
#include "printing/surface.h"

namespace printing {

// The Qt page size of a paper: its DMPAPER code when Qt knows it, else its
// size in millimetres.
QPageSize TaillePage(const Papier& papier);

class QtSurface : public Surface {
 public:
  // Draws on device, which it owns. destination names the file or the queue
  // in error messages. The page layout (paper, portrait, 5 mm margins) is set
  // when the document begins.
  QtSurface(std::unique_ptr<QPagedPaintDevice> device, std::string destination);
  // An unfinished document is ended, so that what was drawn is not lost.
  ~QtSurface() override;

  // Fails with a French message when the device cannot start the document (a
  // file that cannot be written, a queue that refuses it); the document's
  // other calls then draw nothing.
  void DebutDocument(const Papier& papier) override;
  void NouvellePage() override;
  void Texte(double x, double y, const Police& police, const std::string& texte) override;
  void Trait(double x1, double y1, double x2, double y2, int largeur) override;
  // Fails with a French message when the file or the job could not be completed.
  void FinDocument() override;

  QPagedPaintDevice& Device() { return *device_; }
  // Gives the device back (a print preview draws on a printer it keeps); the
  // surface must not be used afterwards.
  std::unique_ptr<QPagedPaintDevice> RendDevice() { return std::move(device_); }

 private:
  bool Actif() const { return painter_.isActive(); }

  std::unique_ptr<QPagedPaintDevice> device_;
  std::string destination_;
  QPainter painter_;
  std::unique_ptr<DessinQt> dessin_;
};

// A surface writing the PDF file chemin through Qt's own PDF engine; the
// title of the document is the job's title. Files and print jobs are written
// by our PDF writer (pdf_surface.h); this one is the reference the tests
// compare its pages with. Fails with a French message when the file cannot
// be written (its folder is missing or read-only).
std::unique_ptr<Surface> SurfacePdfQt(const std::string& chemin, const Travail& travail);

// A surface sending one job to the system print queue named file, with the
// job's title and number of copies. Fails with a French message when the
// system has no such queue.
std::unique_ptr<Surface> SurfaceImprimante(const std::string& file, const Travail& travail);

}  // namespace printing

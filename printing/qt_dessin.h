// The one drawing path of the print runtime on Qt: a PDF file, a system
// printer and a PNG image of a page all put their text and lines through
// this, so what the printer shows is what the preview shows.
#pragma once

#include <QFont>
#include <QPainter>
#include <optional>
#include <string>

#include "printing/surface.h"

namespace printing {

class DessinQt {
 public:
  // painter must stay active for the life of this object, with its origin at
  // the top-left corner of the printable area and the device pixel as unit.
  explicit DessinQt(QPainter& painter);

  // Text whose top-left corner is at (x, y) twips: the baseline sits one
  // ascent below y. Font names go through the font resolution (polices.h).
  void Texte(double x, double y, const Police& police, const std::string& texte);
  // A straight line; largeur is the printer's line width (see the .cpp for
  // how it becomes a pen width on paper).
  void Trait(double x1, double y1, double x2, double y2, int largeur);

  double PixelsX(double twips) const { return twips * dpi_x_ / 1440.0; }
  double PixelsY(double twips) const { return twips * dpi_y_ / 1440.0; }

 private:
  void PreparePolice(const Police& police);

  QPainter& painter_;
  double dpi_x_;
  double dpi_y_;
  // The font last set up: consecutive prints nearly always share it.
  std::optional<Police> police_preparee_;
  double ascent_ = 0;
};

}  // namespace printing

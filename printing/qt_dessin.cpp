#include "printing/qt_dessin.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <QPaintDevice>
#include <QPen>
#include <cmath>

#include "printing/geometrie.h"
#include "printing/polices.h"

namespace printing {

namespace {

// The printer's line width counts pixels of a 300 dpi laser printer, the
// paper this layout was drawn for: the frames' width of 3 is then 0.25 mm,
// a ruled table line that stays light beside 11-point text. Read as pixels
// of the device itself it would vanish on a 1200 dpi PDF (0.06 mm); read as
// screen pixels (96 dpi) it would be 0.8 mm, a fifth of a row.
constexpr double kDpiLargeurTrait = 300.0;

}  // namespace

DessinQt::DessinQt(QPainter& painter)
    : painter_(painter),
      dpi_x_(painter.device()->logicalDpiX()),
      dpi_y_(painter.device()->logicalDpiY()) {}

void DessinQt::PreparePolice(const Police& police) {
  if (police_preparee_ && *police_preparee_ == police) return;
  QFont font(QString::fromStdString(FamillePolice(police.nom)));
  font.setPointSizeF(police.taille);
  font.setBold(police.gras);
  font.setItalic(police.italique);
  font.setUnderline(police.souligne);
  font.setKerning(false);
  QPaintDevice* device = painter_.device();
  // The printer object moves along a line by exactly 0.6 em per character, and
  // the frames are ruled on that grid. A fixed-pitch font whose advance differs
  // (a replacement font, or Qt rounding the pixel size: 183 px for 11 points at
  // 1200 dpi, 15 px at 100 dpi) is spaced to the grid so that columns stay
  // inside their frames. Qt counts letter spacing in screen pixels scaled to
  // the device, so the unit is measured rather than assumed.
  if (QFontInfo(font).fixedPitch()) {
    // Measured on a run of characters: the advance of one character leaves
    // letter spacing out.
    const QString echantillon(10, QLatin1Char('M'));
    auto avance = [&](const QFont& f) {
      return QFontMetricsF(f, device).horizontalAdvance(echantillon) / echantillon.size();
    };
    const double voulue = PixelsX(LargeurCaractere(police.taille));
    const double reelle = avance(font);
    QFont essai = font;
    essai.setLetterSpacing(QFont::AbsoluteSpacing, 1.0);
    const double par_unite = avance(essai) - reelle;
    if (par_unite > 0 && std::abs(voulue - reelle) > 1e-3) {
      font.setLetterSpacing(QFont::AbsoluteSpacing, (voulue - reelle) / par_unite);
    }
  }
  painter_.setFont(font);
  ascent_ = QFontMetricsF(font, device).ascent();
  police_preparee_ = police;
}

void DessinQt::Texte(double x, double y, const Police& police, const std::string& texte) {
  if (texte.empty()) return;
  PreparePolice(police);
  painter_.setPen(QPen(Qt::black));
  painter_.drawText(QPointF(PixelsX(x), PixelsY(y) + ascent_), QString::fromStdString(texte));
}

void DessinQt::Trait(double x1, double y1, double x2, double y2, int largeur) {
  QPen stylo(Qt::black);
  stylo.setWidthF(std::max(1, largeur) * dpi_x_ / kDpiLargeurTrait);
  // Square ends close the corners where a rule meets an edge of the frame.
  stylo.setCapStyle(Qt::SquareCap);
  painter_.setPen(stylo);
  painter_.drawLine(QPointF(PixelsX(x1), PixelsY(y1)), QPointF(PixelsX(x2), PixelsY(y2)));
}

}  // namespace printing

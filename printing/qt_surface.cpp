#include "printing/qt_surface.h"

#include <QDir>
#include <QFileInfo>
#include <QPageLayout>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>
#include <stdexcept>

#include "printing/geometrie.h"

namespace printing {

namespace {

constexpr double kMargeMm = kMargeCm * 10.0;

}  // namespace

QPageSize TaillePage(const Papier& papier) {
  const QPageSize::PageSizeId id = QPageSize::id(papier.code);
  if (id != QPageSize::Custom) return QPageSize(id);
  return QPageSize(QSizeF(papier.largeur_mm, papier.hauteur_mm), QPageSize::Millimeter,
                   QString::fromStdString(papier.nom), QPageSize::ExactMatch);
}

QtSurface::QtSurface(std::unique_ptr<QPagedPaintDevice> device, std::string destination)
    : device_(std::move(device)), destination_(std::move(destination)) {}

QtSurface::~QtSurface() {
  dessin_.reset();
  if (Actif()) painter_.end();
}

void QtSurface::DebutDocument(const Papier& papier) {
  dessin_.reset();
  if (Actif()) painter_.end();

  const QPageSize taille = TaillePage(papier);
  const QMarginsF marges(kMargeMm, kMargeMm, kMargeMm, kMargeMm);
  // A printer whose unprintable border is wider than 5 mm refuses these
  // margins; it then keeps its own, and the origin is moved below so that it
  // still sits 5 mm from the corner of the sheet.
  if (!device_->setPageLayout(
          QPageLayout(taille, QPageLayout::Portrait, marges, QPageLayout::Millimeter))) {
    device_->setPageSize(taille);
    device_->setPageOrientation(QPageLayout::Portrait);
  }
  if (!painter_.begin(device_.get())) {
    throw std::runtime_error("impossible de commencer l'impression sur « " + destination_ + " ».");
  }
  // The painter's origin is the corner of the device's printable rectangle, as
  // the device rounds it (Qt's PDF engine goes through whole points: 14 pt for
  // 5 mm); ours is 5 mm from the corner of the sheet, whatever the margins.
  const int dpi_x = device_->logicalDpiX();
  const int dpi_y = device_->logicalDpiY();
  const QPageLayout mise_en_page = device_->pageLayout();
  const QRect imprimable_x = mise_en_page.paintRectPixels(dpi_x);
  const QRect imprimable_y = mise_en_page.paintRectPixels(dpi_y);
  painter_.translate(kMargeMm * dpi_x / 25.4 - imprimable_x.left(),
                     kMargeMm * dpi_y / 25.4 - imprimable_y.top());
  dessin_ = std::make_unique<DessinQt>(painter_);
}

void QtSurface::NouvellePage() {
  if (!Actif()) return;
  // The painter keeps its transformation across pages: the origin stays put.
  device_->newPage();
}

void QtSurface::Texte(double x, double y, const Police& police, const std::string& texte) {
  if (Actif()) dessin_->Texte(x, y, police, texte);
}

void QtSurface::Trait(double x1, double y1, double x2, double y2, int largeur) {
  if (Actif()) dessin_->Trait(x1, y1, x2, y2, largeur);
}

void QtSurface::FinDocument() {
  if (!Actif()) return;
  dessin_.reset();
  if (!painter_.end()) {
    throw std::runtime_error("l'impression sur « " + destination_ + " » n'a pas pu être terminée.");
  }
}

std::unique_ptr<Surface> SurfacePdfQt(const std::string& chemin, const Travail& travail) {
  const QFileInfo fichier(QString::fromStdString(chemin));
  const QFileInfo dossier(fichier.absolutePath());
  if (fichier.isDir()) {
    throw std::runtime_error("le fichier PDF « " + chemin + " » est un dossier.");
  }
  if (!dossier.isDir()) {
    throw std::runtime_error("le dossier du fichier PDF « " + chemin + " » n'existe pas.");
  }
  if (fichier.exists() ? !fichier.isWritable() : !dossier.isWritable()) {
    throw std::runtime_error("le fichier PDF « " + chemin + " » ne peut pas être écrit.");
  }
  auto pdf = std::make_unique<QPdfWriter>(fichier.absoluteFilePath());
  pdf->setTitle(QString::fromStdString(travail.titre));
  pdf->setCreator(QStringLiteral("Vesko"));
  return std::make_unique<QtSurface>(std::move(pdf), chemin);
}

std::unique_ptr<Surface> SurfaceImprimante(const std::string& file, const Travail& travail) {
  const QPrinterInfo info = QPrinterInfo::printerInfo(QString::fromStdString(file));
  if (info.isNull()) {
    throw std::runtime_error("l'imprimante « " + file + " » n'existe pas sur ce système.");
  }
  auto imprimante = std::make_unique<QPrinter>(info, QPrinter::HighResolution);
  imprimante->setDocName(QString::fromStdString(travail.titre));
  imprimante->setCreator(QStringLiteral("Vesko"));
  imprimante->setCopyCount(travail.copies < 1 ? 1 : travail.copies);
  return std::make_unique<QtSurface>(std::move(imprimante), file);
}

}  // namespace printing

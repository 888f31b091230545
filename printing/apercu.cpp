#include "printing/apercu.h"

#include <QDialogButtonBox>
#include <QPrintPreviewWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "printing/qt_surface.h"
#include "printing/rendu.h"

namespace printing {

void DessineApercu(const Enregistrement& enregistrement, QPrinter& imprimante) {
  QtSurface surface(std::unique_ptr<QPagedPaintDevice>(&imprimante), "l'aperçu");
  // The preview keeps its printer: it is handed back however the drawing ends.
  struct Restitution {
    QtSurface& surface;
    ~Restitution() { static_cast<void>(surface.RendDevice().release()); }
  } restitution{surface};
  Rejoue(enregistrement, surface);
}

DialogueApercu::DialogueApercu(const Enregistrement& enregistrement, bool offre_impression,
                               QWidget* parent)
    : QDialog(parent), imprimante_(QPrinter::HighResolution) {
  setWindowTitle(QStringLiteral("Aperçu avant impression"));
  imprimante_.setDocName(QStringLiteral("Aperçu des dossiers"));
  auto* colonne = new QVBoxLayout(this);
  vue_ = new QPrintPreviewWidget(&imprimante_, this);
  vue_->setZoomMode(QPrintPreviewWidget::FitToWidth);
  connect(vue_, &QPrintPreviewWidget::paintRequested, this,
          [&enregistrement](QPrinter* p) { DessineApercu(enregistrement, *p); });
  colonne->addWidget(vue_, 1);

  auto* boutons = new QDialogButtonBox(this);
  if (offre_impression) {
    auto* imprimer = boutons->addButton(QStringLiteral("Imprimer…"), QDialogButtonBox::AcceptRole);
    imprimer->setObjectName(QStringLiteral("Bouton_Imprimer"));
    imprimer->setShortcut(QKeySequence::Print);
  }
  boutons->addButton(QStringLiteral("Fermer"), QDialogButtonBox::RejectRole);
  connect(boutons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(boutons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  colonne->addWidget(boutons);
  resize(760, 900);
}

}  // namespace printing

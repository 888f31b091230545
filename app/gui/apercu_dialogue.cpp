#include "app/gui/apercu_dialogue.h"

#include <QDialogButtonBox>
#include <QPrintPreviewWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "printing/apercu.h"

namespace hote {

DialogueApercu::DialogueApercu(const printing::Enregistrement& enregistrement, QWidget* parent)
    : QDialog(parent), imprimante_(QPrinter::HighResolution) {
  setWindowTitle(QStringLiteral("Aperçu avant impression"));
  imprimante_.setDocName(QStringLiteral("Aperçu des dossiers"));
  auto* colonne = new QVBoxLayout(this);
  vue_ = new QPrintPreviewWidget(&imprimante_, this);
  vue_->setZoomMode(QPrintPreviewWidget::FitToWidth);
  connect(vue_, &QPrintPreviewWidget::paintRequested, this,
          [&enregistrement](QPrinter* p) { printing::DessineApercu(enregistrement, *p); });
  colonne->addWidget(vue_, 1);

  auto* boutons = new QDialogButtonBox(this);
  auto* imprimer = boutons->addButton(QStringLiteral("Imprimer…"), QDialogButtonBox::AcceptRole);
  imprimer->setObjectName(QStringLiteral("Bouton_Imprimer"));
  imprimer->setShortcut(QKeySequence::Print);
  boutons->addButton(QStringLiteral("Fermer"), QDialogButtonBox::RejectRole);
  connect(boutons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(boutons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  colonne->addWidget(boutons);
  resize(760, 900);
}

ChoixApercu MontreApercu(const printing::Enregistrement& enregistrement, QWidget* parent) {
  DialogueApercu dialogue(enregistrement, parent);
  return dialogue.exec() == QDialog::Accepted ? ChoixApercu::Imprimer : ChoixApercu::Fermer;
}

}  // namespace hote

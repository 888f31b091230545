// The print preview: the recorded dossiers page by page, drawn by the same Qt
// surface as the screen's images, so what the preview shows is what the paper
// gets. Its only way to print is the host's own print run ("Imprimer…" hands
// the choice back): Qt's own preview dialog would print through Qt's CUPS
// engine, which neither checks the queue, nor reports the job, nor leaves a
// trace in the access journal. Needs a QApplication.
#pragma once

#include <QDialog>
#include <QPrinter>

#include "printing/recording.h"

class QPrintPreviewWidget;

namespace printing {

// Draws the recording on printer, the device of a preview: its paper, its
// pages in order. An empty recording draws nothing.
void DessineApercu(const Enregistrement& enregistrement, QPrinter& imprimante);

class DialogueApercu : public QDialog {
 public:
  // enregistrement must outlive the dialog: the preview draws it again
  // whenever the view changes. With offre_impression, an "Imprimer…" button
  // (Ctrl+P) accepts the dialog; "Fermer" rejects it.
  DialogueApercu(const Enregistrement& enregistrement, bool offre_impression,
                 QWidget* parent = nullptr);
  QPrintPreviewWidget* Vue() const { return vue_; }
  QPrinter& Imprimante() { return imprimante_; }

 private:
  QPrinter imprimante_;
  QPrintPreviewWidget* vue_ = nullptr;
};

}  // namespace printing

// The window's print preview: the recorded dossiers page by page, and two
// ways out — "Imprimer…", which the window answers with its own print (the
// same dialog, queue check, job and report as its "Imprimer…" button), and
// "Fermer". Qt's own preview dialog would print through Qt's CUPS engine,
// which neither checks the queue nor reports the job.
#pragma once

#include <QDialog>
#include <QPrinter>

#include "printing/recording.h"

class QPrintPreviewWidget;

namespace hote {

enum class ChoixApercu { Fermer, Imprimer };

class DialogueApercu : public QDialog {
 public:
  // enregistrement must outlive the dialog: the preview draws it again
  // whenever the view changes.
  DialogueApercu(const printing::Enregistrement& enregistrement, QWidget* parent = nullptr);
  QPrintPreviewWidget* Vue() const { return vue_; }

 private:
  QPrinter imprimante_;
  QPrintPreviewWidget* vue_ = nullptr;
};

// Shows the preview (modal) and says how the user left it.
ChoixApercu MontreApercu(const printing::Enregistrement& enregistrement, QWidget* parent);

}  // namespace hote

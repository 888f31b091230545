// The printer choice of a window: Qt's print dialog (printer, paper, copies)
// is the dialogue behind Outils::Choix_Imprimante; the paper chosen there is
// what Reglage_Imprimante returns, and the copies go to the print queues.
#pragma once

#include <QPrinter>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "printing/cups.h"
#include "printing/imprimantes.h"

class QWidget;

namespace hote {

struct Choix {
  long index = -1;          // in the printer list
  std::int16_t papier = 9;  // DMPAPER code of the chosen paper
  int copies = 1;
  std::string pdf;  // the file, when Qt's "print to file" was chosen
};

// What the settings of a print dialog's printer mean in the control's
// printer list (queues by name, the built-in "PDF" last). Fails with a
// French message naming the printer when the list lacks it.
Choix Interprete(const QPrinter& imprimante, const std::vector<printing::Destination>& liste);

class ChoixImprimanteQt {
 public:
  // reglages: the queues' settings, whose copies follow the dialog.
  ChoixImprimanteQt(QWidget* parent, std::shared_ptr<printing::cups::ReglagesEnvoi> reglages);

  // Shows the print dialog; the index of the choice in the current printer
  // list as text, or "-1" when the user cancels. The copies chosen go to the
  // queues' settings, a file chosen for "print to file" to the "PDF" printer.
  std::string Choisit(const std::string& format_papier);
  // The latest paper chosen (DMPAPER code; A4 until a choice is made).
  std::int16_t Papier() const { return papier_; }

 private:
  QWidget* parent_;
  std::shared_ptr<printing::cups::ReglagesEnvoi> reglages_;
  QPrinter imprimante_;
  bool format_donne_ = false;
  std::int16_t papier_ = 9;
};

}  // namespace hote

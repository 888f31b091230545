// The printer choice of a window: Qt's print dialog (printer, paper, copies,
// pages, order, two-sided printing and the queue's own options) is the
// dialogue behind Outils::Choix_Imprimante; the paper chosen there is what
// Reglage_Imprimante returns, the copies and options go to the print queues,
// the pages and their order to every destination.
#pragma once

#include <QPrinter>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "app/gui/pages_choisies.h"
#include "printing/cups.h"
#include "printing/imprimantes.h"

class QWidget;

namespace hote {

struct Choix {
  long index = -1;          // in the printer list
  std::int16_t papier = 9;  // DMPAPER code of the chosen paper
  int copies = 1;
  std::string pdf;  // the file, when Qt's "print to file" was chosen
  PagesChoisies pages;
  printing::cups::OptionsTravail options;  // two-sided printing, the queue's own options
};

// What the settings of a print dialog's printer mean in the control's
// printer list (queues by name, the built-in "PDF" last). Fails with a
// French message naming the printer when the list lacks it.
Choix Interprete(const QPrinter& imprimante, const std::vector<printing::Destination>& liste);

class ChoixImprimanteQt {
 public:
  // reglages: the queues' settings, whose copies and options follow the dialog.
  ChoixImprimanteQt(QWidget* parent, std::shared_ptr<printing::cups::ReglagesEnvoi> reglages);

  // Shows the print dialog; the index of the choice in the current printer
  // list as text, or "-1" when the user cancels. The copies and options
  // chosen go to the queues' settings, a file chosen for "print to file" to
  // the "PDF" printer. A queue is asked about before anything is drawn:
  // one that cannot print now fails the choice with the French message
  // naming it and the reason.
  std::string Choisit(const std::string& format_papier);
  // The latest paper chosen (DMPAPER code; A4 until a choice is made).
  std::int16_t Papier() const { return papier_; }
  // The pages and order of the latest choice.
  const PagesChoisies& Pages() const { return pages_; }

 private:
  QWidget* parent_;
  std::shared_ptr<printing::cups::ReglagesEnvoi> reglages_;
  QPrinter imprimante_;
  bool format_donne_ = false;
  std::int16_t papier_ = 9;
  PagesChoisies pages_;
};

}  // namespace hote

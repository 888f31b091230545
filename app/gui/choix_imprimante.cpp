#include "app/gui/choix_imprimante.h"

#include <QPageSize>
#include <QPrintDialog>
#include <stdexcept>

namespace hote {

namespace {

// The paper Qt knows by that name ("A4", "Letter"…); A4 when none.
QPageSize TailleNommee(const std::string& nom) {
  for (int i = 0; i <= QPageSize::LastPageSize; ++i) {
    const auto id = static_cast<QPageSize::PageSizeId>(i);
    if (QPageSize::key(id).compare(QString::fromStdString(nom), Qt::CaseInsensitive) == 0) {
      return QPageSize(id);
    }
  }
  return QPageSize(QPageSize::A4);
}

}  // namespace

Choix Interprete(const QPrinter& imprimante, const std::vector<printing::Destination>& liste) {
  Choix choix;
  const int code = imprimante.pageLayout().pageSize().windowsId();
  // A paper without a DMPAPER code stays on the service's A4.
  choix.papier = static_cast<std::int16_t>(code > 0 ? code : 9);
  choix.copies = imprimante.copyCount();
  if (imprimante.outputFormat() == QPrinter::PdfFormat) {
    choix.index = static_cast<long>(liste.size()) - 1;
    choix.pdf = imprimante.outputFileName().toStdString();
    return choix;
  }
  const std::string nom = imprimante.printerName().toStdString();
  for (size_t i = 0; i + 1 < liste.size(); ++i) {
    if (liste[i].nom == nom) choix.index = static_cast<long>(i);
  }
  if (choix.index < 0) {
    throw std::runtime_error("l'imprimante « " + nom +
                             " » choisie dans le dialogue n'est pas dans la liste des "
                             "imprimantes du système.");
  }
  return choix;
}

ChoixImprimanteQt::ChoixImprimanteQt(QWidget* parent,
                                     std::shared_ptr<printing::cups::ReglagesEnvoi> reglages)
    : parent_(parent), reglages_(std::move(reglages)), imprimante_(QPrinter::HighResolution) {}

std::string ChoixImprimanteQt::Choisit(const std::string& format_papier) {
  // The paper the control asks for is the dialog's first suggestion; after
  // that the user's own choice is kept from one print to the next.
  if (!format_donne_) {
    imprimante_.setPageSize(TailleNommee(format_papier));
    format_donne_ = true;
  }
  QPrintDialog dialogue(&imprimante_, parent_);
  dialogue.setWindowTitle(QStringLiteral("Choix de l'imprimante"));
  dialogue.setOption(QAbstractPrintDialog::PrintToFile, true);
  dialogue.setOption(QAbstractPrintDialog::PrintPageRange, false);
  dialogue.setOption(QAbstractPrintDialog::PrintCurrentPage, false);
  dialogue.setOption(QAbstractPrintDialog::PrintSelection, false);
  if (dialogue.exec() != QDialog::Accepted) return "-1";

  const Choix choix =
      Interprete(imprimante_, printing::ListeImprimantes::Courante().Destinations());
  papier_ = choix.papier;
  reglages_->copies = choix.copies;
  if (!choix.pdf.empty()) printing::ListeImprimantes::FixeFichierPdf(choix.pdf);
  return std::to_string(choix.index);
}

}  // namespace hote

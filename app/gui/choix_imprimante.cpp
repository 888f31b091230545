#include "app/gui/choix_imprimante.h"

#include <QPageRanges>
#include <QPageSize>
#include <QPrintDialog>
#include <QPrintEngine>
#include <QRadioButton>
#include <stdexcept>

namespace hote {

namespace {

// Where Qt's CUPS print dialog keeps the options of its "Options avancées"
// (the queue's PPD: trays, finishing…) as name, value, name, value…: a
// property of the print engine that Qt does not publish.
constexpr auto kOptionsCups = QPrintEngine::PrintEnginePropertyKey(0xfe00);

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

PagesChoisies Pages(const QPrinter& imprimante) {
  PagesChoisies pages;
  pages.inverse = imprimante.pageOrder() == QPrinter::LastPageFirst;
  if (imprimante.printRange() == QPrinter::PageRange) {
    for (const QPageRanges::Range& r : imprimante.pageRanges().toRangeList()) {
      pages.plages.emplace_back(r.from, r.to);
    }
    if (pages.plages.empty() && imprimante.fromPage() > 0) {
      pages.plages.emplace_back(imprimante.fromPage(), imprimante.toPage());
    }
  }
  return pages;
}

printing::cups::OptionsTravail OptionsFile(QPrinter& imprimante) {
  printing::cups::OptionsTravail options;
  if (QPrintEngine* moteur = imprimante.printEngine()) {
    const QStringList paires = moteur->property(kOptionsCups).toStringList();
    for (qsizetype i = 0; i + 1 < paires.size(); i += 2) {
      options.emplace_back(paires[i].toStdString(), paires[i + 1].toStdString());
    }
  }
  // The dialog's sides come last: its own options carry the queue's default.
  switch (imprimante.duplex()) {
    case QPrinter::DuplexNone:
      options.emplace_back("sides", "one-sided");
      break;
    case QPrinter::DuplexAuto:
    case QPrinter::DuplexLongSide:
      options.emplace_back("sides", "two-sided-long-edge");
      break;
    case QPrinter::DuplexShortSide:
      options.emplace_back("sides", "two-sided-short-edge");
      break;
  }
  return options;
}

// Two-sided printing as the dialog shows it. Qt offers the choice for every
// CUPS queue but keeps it in the printer only when the queue's driver
// declares it; the user's choice is read from the dialog itself and sent to
// the server, which knows what the printer can do.
std::string CoteDuDialogue(const QPrintDialog& dialogue) {
  const auto* boite = dialogue.findChild<QWidget*>(QStringLiteral("duplex"));
  if (boite == nullptr || !boite->isEnabled()) return "";
  const auto coche = [&](const char* nom) {
    const auto* b = dialogue.findChild<QRadioButton*>(QString::fromLatin1(nom));
    return b != nullptr && b->isChecked();
  };
  if (coche("duplexLong")) return "two-sided-long-edge";
  if (coche("duplexShort")) return "two-sided-short-edge";
  if (coche("noDuplex")) return "one-sided";
  return "";
}

}  // namespace

Choix Interprete(const QPrinter& imprimante, const std::vector<printing::Destination>& liste) {
  Choix choix;
  const int code = imprimante.pageLayout().pageSize().windowsId();
  // A paper without a DMPAPER code stays on the service's A4.
  choix.papier = static_cast<std::int16_t>(code > 0 ? code : 9);
  choix.copies = imprimante.copyCount();
  choix.pages = Pages(imprimante);
  if (imprimante.outputFormat() == QPrinter::PdfFormat) {
    choix.index = static_cast<long>(liste.size()) - 1;
    choix.pdf = imprimante.outputFileName().toStdString();
    return choix;
  }
  choix.options = OptionsFile(const_cast<QPrinter&>(imprimante));
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
  // Pages are chosen afresh each time: a range belongs to one document.
  imprimante_.setPrintRange(QPrinter::AllPages);
  imprimante_.setPageRanges(QPageRanges());
  QPrintDialog dialogue(&imprimante_, parent_);
  dialogue.setWindowTitle(QStringLiteral("Imprimer les dossiers"));
  dialogue.setOption(QAbstractPrintDialog::PrintToFile, true);
  dialogue.setOption(QAbstractPrintDialog::PrintPageRange, true);
  dialogue.setOption(QAbstractPrintDialog::PrintCurrentPage, false);
  dialogue.setOption(QAbstractPrintDialog::PrintSelection, false);
  if (dialogue.exec() != QDialog::Accepted) return "-1";

  Choix choix = Interprete(imprimante_, printing::ListeImprimantes::Courante().Destinations());
  if (const std::string cotes = CoteDuDialogue(dialogue); !cotes.empty() && choix.pdf.empty()) {
    choix.options.emplace_back("sides", cotes);
  }
  if (choix.pdf.empty()) {
    const printing::cups::Verification v =
        printing::cups::Verifie(imprimante_.printerName().toStdString());
    if (!v.Prete()) throw std::runtime_error(v.Message());
  }
  papier_ = choix.papier;
  pages_ = choix.pages;
  reglages_->copies = choix.copies;
  reglages_->options = choix.options;
  if (!choix.pdf.empty()) printing::ListeImprimantes::FixeFichierPdf(choix.pdf);
  return std::to_string(choix.index);
}

}  // namespace hote

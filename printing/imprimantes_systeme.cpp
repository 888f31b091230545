// The system's printer list: the print queues Qt finds (CUPS on Debian), the
// default one first, then the built-in "PDF" printer.
#include <QPrinterInfo>

#include "printing/imprimantes.h"
#include "printing/pdf_surface.h"
#include "printing/qt_surface.h"
#include "printing/sortie_sure.h"

namespace printing {

std::vector<Destination> ListeImprimantes::Systeme() {
  std::vector<Destination> liste;
  auto ajoute_file = [&liste](const QString& nom) {
    const std::string file = nom.toStdString();
    liste.push_back(
        {file, [file](const Travail& travail) { return SurfaceImprimante(file, travail); }});
  };
  const QString defaut = QPrinterInfo::defaultPrinterName();
  if (!defaut.isEmpty()) ajoute_file(defaut);
  for (const QString& nom : QPrinterInfo::availablePrinterNames()) {
    if (nom != defaut) ajoute_file(nom);
  }
  // The file is read when the document opens, so that a file named after the
  // list was built still counts.
  liste.push_back(
      {"PDF", [](const Travail& travail) { return SurfacePdfSure(FichierPdf(), travail); }});
  return liste;
}

}  // namespace printing

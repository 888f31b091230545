#include "printing/imprimantes.h"

namespace printing {

namespace {
std::string fichier_pdf = "vesko.pdf";
}

ListeImprimantes& ListeImprimantes::Courante() {
  static ListeImprimantes liste;
  return liste;
}

const std::vector<Destination>& ListeImprimantes::Destinations() {
  if (!installee_) Installe(Systeme());
  return destinations_;
}

void ListeImprimantes::FixeFichierPdf(const std::string& chemin) { fichier_pdf = chemin; }
const std::string& ListeImprimantes::FichierPdf() { return fichier_pdf; }

}  // namespace printing

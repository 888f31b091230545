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

// TEMPORARY weak definition until the system list lands; removed then.
namespace printing {
__attribute__((weak)) std::vector<Destination> ListeImprimantes::Systeme() { return {}; }
}  // namespace printing

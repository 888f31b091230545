#include "app/fichier_format.h"

#include <stdexcept>

#include "printing/surface_avec_fin.h"

namespace vesko_app {

FichierFormat::FichierFormat(const std::string& chemin, printing::SortieFormat::Format format,
                             const std::string& quoi)
    : provisoire_(chemin, quoi) {
  flux_.open(provisoire_.Chemin(), std::ios::binary | std::ios::trunc);
  if (!flux_) throw std::runtime_error("impossible d'écrire le " + quoi + " « " + chemin + " ».");
  sortie_ = std::make_unique<printing::SortieFormat>(flux_, format, chemin);
}

std::unique_ptr<printing::Surface> FichierFormat::NouvelleSurface() {
  return printing::AvecFin(sortie_->NouvelleSurface(), [this] { Termine(); });
}

void FichierFormat::Termine() {
  if (termine_) return;
  sortie_->Termine();
  flux_.close();
  if (!flux_) {
    throw std::runtime_error("l'écriture de « " + provisoire_.Cible() + " » a échoué.");
  }
  provisoire_.Remplace();
  termine_ = true;
}

}  // namespace vesko_app

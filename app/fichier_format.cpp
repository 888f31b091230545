#include "app/fichier_format.h"

#include <stdexcept>

namespace vesko_app {

namespace {

// The run's surface: the format's own, whose end of document also ends the file.
class SurfaceFinale : public printing::Surface {
 public:
  SurfaceFinale(std::unique_ptr<printing::Surface> surface, FichierFormat& fichier)
      : surface_(std::move(surface)), fichier_(fichier) {}

  void DebutDocument(const printing::Papier& papier) override { surface_->DebutDocument(papier); }
  void NouvellePage() override { surface_->NouvellePage(); }
  void Texte(double x, double y, const printing::Police& police,
             const std::string& texte) override {
    surface_->Texte(x, y, police, texte);
  }
  void Trait(double x1, double y1, double x2, double y2, int largeur) override {
    surface_->Trait(x1, y1, x2, y2, largeur);
  }
  void FinDocument() override {
    surface_->FinDocument();
    fichier_.Termine();
  }

 private:
  std::unique_ptr<printing::Surface> surface_;
  FichierFormat& fichier_;
};

}  // namespace

FichierFormat::FichierFormat(const std::string& chemin, printing::SortieFormat::Format format,
                             const std::string& quoi)
    : provisoire_(chemin, quoi) {
  flux_.open(provisoire_.Chemin(), std::ios::binary | std::ios::trunc);
  if (!flux_) throw std::runtime_error("impossible d'écrire le " + quoi + " « " + chemin + " ».");
  sortie_ = std::make_unique<printing::SortieFormat>(flux_, format, chemin);
}

std::unique_ptr<printing::Surface> FichierFormat::NouvelleSurface() {
  return std::make_unique<SurfaceFinale>(sortie_->NouvelleSurface(), *this);
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

#include "app/gui/progression.h"

namespace hote {

namespace {

class SurfaceSuivie : public printing::Surface {
 public:
  SurfaceSuivie(std::unique_ptr<printing::Surface> surface, Suivi suivi,
                std::chrono::milliseconds pas)
      : surface_(std::move(surface)), suivi_(std::move(suivi)), pas_(pas) {}

  void DebutDocument(const printing::Papier& papier) override {
    surface_->DebutDocument(papier);
    Signale();
  }
  void NouvellePage() override {
    surface_->NouvellePage();
    Signale();
  }
  void Texte(double x, double y, const printing::Police& police,
             const std::string& texte) override {
    surface_->Texte(x, y, police, texte);
    if (std::chrono::steady_clock::now() - dernier_ >= pas_) Signale();
  }
  void Trait(double x1, double y1, double x2, double y2, int largeur) override {
    surface_->Trait(x1, y1, x2, y2, largeur);
  }
  void FinDocument() override {
    Signale();
    surface_->FinDocument();
  }
  std::string Trace() const override { return surface_->Trace(); }

 private:
  void Signale() {
    dernier_ = std::chrono::steady_clock::now();
    if (suivi_) suivi_();
  }

  std::unique_ptr<printing::Surface> surface_;
  Suivi suivi_;
  std::chrono::milliseconds pas_;
  std::chrono::steady_clock::time_point dernier_ = std::chrono::steady_clock::now();
};

}  // namespace

std::vector<printing::Destination> AvecSuivi(std::vector<printing::Destination> liste, Suivi suivi,
                                             std::chrono::milliseconds pas) {
  for (printing::Destination& d : liste) {
    d.ouvre = [ouvre = d.ouvre, suivi, pas](const printing::Travail& travail) {
      return std::unique_ptr<printing::Surface>(
          std::make_unique<SurfaceSuivie>(ouvre(travail), suivi, pas));
    };
  }
  return liste;
}

}  // namespace hote

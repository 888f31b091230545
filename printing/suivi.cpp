#include "printing/suivi.h"

namespace printing {

namespace {

class SurfaceSuivie : public Surface {
 public:
  SurfaceSuivie(std::unique_ptr<Surface> surface, Suivi suivi, std::chrono::milliseconds pas)
      : surface_(std::move(surface)), suivi_(std::move(suivi)), pas_(pas) {}

  void DebutDocument(const Papier& papier) override {
    if (abandonne_) return;
    surface_->DebutDocument(papier);
    Signale();
  }
  void NouvellePage() override {
    if (abandonne_) return;
    surface_->NouvellePage();
    Signale();
  }
  void Texte(double x, double y, const Police& police, const std::string& texte) override {
    if (abandonne_) return;
    surface_->Texte(x, y, police, texte);
    if (std::chrono::steady_clock::now() - dernier_ >= pas_) Signale();
  }
  void Trait(double x1, double y1, double x2, double y2, int largeur) override {
    if (!abandonne_) surface_->Trait(x1, y1, x2, y2, largeur);
  }
  void FinDocument() override {
    if (abandonne_) return;
    Signale();
    if (!abandonne_) surface_->FinDocument();
  }
  std::string Trace() const override { return surface_->Trace(); }

 private:
  void Signale() {
    dernier_ = std::chrono::steady_clock::now();
    if (suivi_ && !suivi_()) abandonne_ = true;
  }

  std::unique_ptr<Surface> surface_;
  Suivi suivi_;
  std::chrono::milliseconds pas_;
  std::chrono::steady_clock::time_point dernier_ = std::chrono::steady_clock::now();
  bool abandonne_ = false;
};

}  // namespace

std::vector<Destination> AvecSuivi(std::vector<Destination> liste, Suivi suivi,
                                   std::chrono::milliseconds pas) {
  for (Destination& d : liste) {
    d.ouvre = [ouvre = d.ouvre, suivi, pas](const Travail& travail) {
      return std::unique_ptr<Surface>(std::make_unique<SurfaceSuivie>(ouvre(travail), suivi, pas));
    };
  }
  return liste;
}

}  // namespace printing

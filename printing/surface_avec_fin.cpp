#include "printing/surface_avec_fin.h"

namespace printing {

namespace {

class SurfaceAvecFin : public Surface {
 public:
  SurfaceAvecFin(std::unique_ptr<Surface> surface, std::function<void()> fin)
      : surface_(std::move(surface)), fin_(std::move(fin)) {}

  void DebutDocument(const Papier& papier) override { surface_->DebutDocument(papier); }
  void NouvellePage() override { surface_->NouvellePage(); }
  void Texte(double x, double y, const Police& police, const std::string& texte) override {
    surface_->Texte(x, y, police, texte);
  }
  void Trait(double x1, double y1, double x2, double y2, int largeur) override {
    surface_->Trait(x1, y1, x2, y2, largeur);
  }
  void FinDocument() override {
    surface_->FinDocument();
    fin_();
  }
  std::string Trace() const override { return surface_->Trace(); }

 private:
  std::unique_ptr<Surface> surface_;
  std::function<void()> fin_;
};

}  // namespace

std::unique_ptr<Surface> AvecFin(std::unique_ptr<Surface> surface, std::function<void()> fin) {
  return std::make_unique<SurfaceAvecFin>(std::move(surface), std::move(fin));
}

}  // namespace printing

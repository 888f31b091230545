#include "app/gui/fichier_pdf.h"

#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <stdexcept>

#include "printing/qt_surface.h"

namespace hote {

namespace {

namespace fs = std::filesystem;

class SurfacePdfRenommee : public printing::Surface {
 public:
  SurfacePdfRenommee(std::string chemin, const printing::Travail& travail)
      : chemin_(std::move(chemin)) {
    const fs::path cible = fs::absolute(chemin_);
    temporaire_ = (cible.parent_path() / ("." + cible.filename().string() + ".XXXXXX")).string();
    const int fd = mkstemp(temporaire_.data());
    if (fd < 0) {
      throw std::runtime_error("le fichier PDF « " + chemin_ + " » ne peut pas être écrit.");
    }
    close(fd);
    pdf_ = printing::SurfacePdf(temporaire_, travail);
  }
  ~SurfacePdfRenommee() override {
    pdf_.reset();
    if (!fini_) std::remove(temporaire_.c_str());
  }

  void DebutDocument(const printing::Papier& papier) override { pdf_->DebutDocument(papier); }
  void NouvellePage() override { pdf_->NouvellePage(); }
  void Texte(double x, double y, const printing::Police& police,
             const std::string& texte) override {
    pdf_->Texte(x, y, police, texte);
  }
  void Trait(double x1, double y1, double x2, double y2, int largeur) override {
    pdf_->Trait(x1, y1, x2, y2, largeur);
  }
  void FinDocument() override {
    pdf_->FinDocument();
    pdf_.reset();
    if (std::rename(temporaire_.c_str(), chemin_.c_str()) != 0) {
      throw std::runtime_error("le fichier PDF « " + chemin_ + " » n'a pas pu être écrit.");
    }
    fini_ = true;
  }

 private:
  std::string chemin_;
  std::string temporaire_;
  std::unique_ptr<printing::Surface> pdf_;
  bool fini_ = false;
};

}  // namespace

std::unique_ptr<printing::Surface> SurfacePdfComplete(const std::string& chemin,
                                                      const printing::Travail& travail) {
  return std::make_unique<SurfacePdfRenommee>(chemin, travail);
}

}  // namespace hote

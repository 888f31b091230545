#include "app/gui/pages_choisies.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "printing/recording.h"
#include "printing/rendu.h"

namespace hote {

namespace {

class SurfacePagesChoisies : public printing::Surface {
 public:
  SurfacePagesChoisies(std::unique_ptr<printing::Surface> surface, PagesChoisies pages)
      : surface_(std::move(surface)), pages_(pages), enregistrement_(&document_) {}

  void DebutDocument(const printing::Papier& papier) override {
    enregistrement_.DebutDocument(papier);
  }
  void NouvellePage() override { enregistrement_.NouvellePage(); }
  void Texte(double x, double y, const printing::Police& police,
             const std::string& texte) override {
    enregistrement_.Texte(x, y, police, texte);
  }
  void Trait(double x1, double y1, double x2, double y2, int largeur) override {
    enregistrement_.Trait(x1, y1, x2, y2, largeur);
  }
  void FinDocument() override {
    const int total = static_cast<int>(document_.pages.size());
    printing::Enregistrement choix;
    choix.papier = document_.papier;
    auto garde = [&](int page) {
      if (page >= 1 && page <= total)
        choix.pages.push_back(document_.pages[static_cast<size_t>(page - 1)]);
    };
    if (pages_.plages.empty()) {
      for (int p = 1; p <= total; ++p) garde(p);
    }
    for (const auto& [premiere, derniere] : pages_.plages) {
      for (int p = premiere; p <= derniere; ++p) garde(p);
    }
    if (pages_.inverse) std::reverse(choix.pages.begin(), choix.pages.end());
    if (choix.pages.empty()) {
      throw std::runtime_error("aucune des pages demandées n'existe : le document n'a que " +
                               std::to_string(total) + " page(s).");
    }
    printing::Rejoue(choix, *surface_);  // which ends the destination's document
  }

 private:
  std::unique_ptr<printing::Surface> surface_;
  PagesChoisies pages_;
  printing::Enregistrement document_;
  printing::RecordingSurface enregistrement_;
};

}  // namespace

std::unique_ptr<printing::Surface> AvecPagesChoisies(std::unique_ptr<printing::Surface> surface,
                                                     PagesChoisies pages) {
  if (pages.Toutes()) return surface;
  return std::make_unique<SurfacePagesChoisies>(std::move(surface), pages);
}

}  // namespace hote

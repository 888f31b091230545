#include "printing/recording.h"

namespace printing {

void RecordingSurface::DebutDocument(const Papier& papier) {
  cible_->papier = papier;
  cible_->termine = false;
  cible_->pages.emplace_back();
}

void RecordingSurface::NouvellePage() { cible_->pages.emplace_back(); }

void RecordingSurface::Texte(double x, double y, const Police& police, const std::string& texte) {
  cible_->pages.back().elements.push_back(ElementTexte{x, y, police, texte});
}

void RecordingSurface::Trait(double x1, double y1, double x2, double y2, int largeur) {
  cible_->pages.back().elements.push_back(ElementTrait{x1, y1, x2, y2, largeur});
}

void RecordingSurface::FinDocument() { cible_->termine = true; }

}  // namespace printing

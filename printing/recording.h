// The recording surface: every page with its items in drawing order. It is the
// reference the tests compare against, written as text or JSON (print_formats.h).
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "printing/surface.h"

namespace printing {

struct ElementTexte {
  double x, y;
  Police police;
  std::string texte;
};
struct ElementTrait {
  double x1, y1, x2, y2;
  int largeur;
};
using Element = std::variant<ElementTexte, ElementTrait>;

struct PageEnregistree {
  std::vector<Element> elements;
};

struct Enregistrement {
  Papier papier;
  std::vector<PageEnregistree> pages;
  bool termine = false;
};

class RecordingSurface : public Surface {
 public:
  // The recording is kept in *cible, which must outlive the surface; several
  // documents in a row append to it (each starts with its own first page).
  explicit RecordingSurface(Enregistrement* cible) : cible_(cible) {}

  void DebutDocument(const Papier& papier) override;
  void NouvellePage() override;
  void Texte(double x, double y, const Police& police, const std::string& texte) override;
  void Trait(double x1, double y1, double x2, double y2, int largeur) override;
  void FinDocument() override;

 private:
  Enregistrement* cible_;
};

}  // namespace printing

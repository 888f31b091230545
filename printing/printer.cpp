#include "printing/printer.h"

#include <algorithm>

#include "marbrel/texte.h"

namespace printing {

Printer::Printer(std::unique_ptr<Surface> surface, Papier papier)
    : surface_(std::move(surface)), papier_(std::move(papier)) {}

void Printer::SetPaperSize(std::int16_t code) {
  if (!commence_) papier_ = PapierDeCode(code);
}

void Printer::Commence() {
  if (commence_) return;
  commence_ = true;
  pages_ = 1;
  x_ = 0;
  y_ = 0;
  surface_->DebutDocument(papier_);
}

void Printer::Print(const std::string& texte, bool fin_de_ligne) {
  Commence();
  double hauteur = std::max(hauteur_ligne_courante_, HauteurLigne(police_.taille));
  // A line that would cross the bottom of the printable area goes to a new page
  // first; a line already under way stays where it began.
  if (hauteur_ligne_courante_ == 0 && y_ > 0 && y_ + hauteur > papier_.HauteurImprimable() + 0.5) {
    NewPage();
  }
  // Nothing but printable text reaches a surface: the store's marks and
  // control characters print as spaces, stray bytes as U+FFFD (texte.h).
  const std::string imprimable = texte::Sur_Une_Ligne(texte);
  surface_->Texte(x_, y_, police_, imprimable);
  if (fin_de_ligne) {
    x_ = 0;
    y_ += hauteur;
    hauteur_ligne_courante_ = 0;
  } else {
    x_ += LargeurCaractere(police_.taille) * static_cast<double>(texte::Len(imprimable));
    hauteur_ligne_courante_ = hauteur;
  }
}

void Printer::Line(double x1, double y1, double x2, double y2) {
  Commence();
  surface_->Trait(x1, y1, x2, y2, largeur_trait_);
}

void Printer::NewPage() {
  Commence();
  surface_->NouvellePage();
  ++pages_;
  x_ = 0;
  y_ = 0;
  hauteur_ligne_courante_ = 0;
}

void Printer::EndDoc() {
  if (!commence_) return;
  // The document is over even when the surface fails to complete it (a file
  // that cannot be written): the next print starts a new one.
  commence_ = false;
  x_ = 0;
  y_ = 0;
  hauteur_ligne_courante_ = 0;
  surface_->FinDocument();
}

}  // namespace printing

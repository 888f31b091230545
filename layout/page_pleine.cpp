#include "layout/page_pleine.h"

#include "printing/geometrie.h"

namespace mise_en_page {

bool Page_Pleine(const printing::Printer& p) {
  const double hauteur = printing::HauteurLigne(p.Font().taille);
  return p.CurrentY() > 0 && p.CurrentY() + hauteur > p.Paper().HauteurImprimable() + 0.5;
}

}  // namespace mise_en_page

#include "tests/support/section_seule.h"

namespace banc {

std::vector<std::string> Section_Seule(const Banc& b, const std::string& titre) {
  std::vector<std::string> lignes = b.Section(titre);
  // Find whether another title follows ours on the same page.
  bool dedans = false;
  for (const auto& page : b.Enregistrement().pages) {
    for (const auto& e : page.elements) {
      const auto* t = std::get_if<printing::ElementTexte>(&e);
      if (!t || t->police.taille != 16) continue;
      if (dedans) {
        if (!lignes.empty() && lignes.back() == " ") lignes.pop_back();
        return lignes;
      }
      dedans = t->texte == titre;
    }
    if (dedans) return lignes;
  }
  return lignes;
}

}  // namespace banc

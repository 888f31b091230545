#include "marbrel/liste_selection.h"

#include "marbrel/marques.h"

namespace marbrel {

void Liste_Selection::Ajoute(const std::vector<std::string>& champs) {
  std::string ligne;
  for (size_t i = 0; i < champs.size(); ++i) {
    if (i > 0) ligne += VM;
    ligne += champs[i];
  }
  ++lignes_;
  table_.Remplace(lignes_, ligne);
}

}  // namespace marbrel

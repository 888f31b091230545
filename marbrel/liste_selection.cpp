#include "marbrel/liste_selection.h"

#include "marbrel/marques.h"
#include "marbrel/tabdyn.h"

namespace marbrel {

void Liste_Selection::Ajoute(const std::vector<std::string>& champs) {
  std::string ligne;
  for (size_t i = 0; i < champs.size(); ++i) {
    if (i > 0) ligne += VM;
    ligne += champs[i];
  }
  lignes_.push_back(std::move(ligne));
  texte_a_jour_ = false;
}

std::string Liste_Selection::operator()(long r) const {
  if (r < 1 || r > DCount()) return "";
  return lignes_[static_cast<size_t>(r - 1)];
}

std::string Liste_Selection::operator()(long r, long f) const {
  if (r < 1 || r > DCount()) return "";
  // A row is one attribute of the result, so its fields are values 1, 2, ...
  return TabDyn(lignes_[static_cast<size_t>(r - 1)]).Extrait(1, f);
}

const std::string& Liste_Selection::Texte() const {
  if (!texte_a_jour_) {
    texte_.clear();
    for (size_t i = 0; i < lignes_.size(); ++i) {
      if (i > 0) texte_ += AM;
      texte_ += lignes_[i];
    }
    texte_a_jour_ = true;
  }
  return texte_;
}

}  // namespace marbrel

#include "marbrel/fichier.h"

#include "marbrel/erreur.h"

namespace marbrel {

TabDyn Fichier::Lit(const std::string& cle) const {
  std::optional<std::string> texte = store_->Lit(nom_, cle);
  if (!texte) {
    throw Erreur(ERR_CLE_ABSENTE,
                 "L'enregistrement \"" + cle + "\" est absent du fichier " + nom_ + ".");
  }
  return TabDyn(std::move(*texte));
}

void Fichier::Ecrit(const std::string& cle, const TabDyn& enregistrement) const {
  store_->Ecrit(nom_, cle, enregistrement.Texte());
}

}  // namespace marbrel

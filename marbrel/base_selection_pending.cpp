// Temporary until the query language lands (being written in marbrel/query/).
#include "marbrel/base.h"
#include "marbrel/erreur.h"

namespace marbrel {
Liste_Selection Base::Selectionne(const std::string&, const std::string&) const {
  throw Erreur(ERR_REQUETE, "Le langage de requête n'est pas encore disponible.");
}
}  // namespace marbrel

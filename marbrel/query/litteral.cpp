#include "marbrel/query/litteral.h"

#include "marbrel/erreur.h"

namespace marbrel::requete {

std::string Litteral(const std::string& valeur) {
  const bool double_guillemet = valeur.find('"') != std::string::npos;
  if (!double_guillemet) return "\"" + valeur + "\"";
  if (valeur.find('\'') == std::string::npos) return "'" + valeur + "'";
  throw Erreur(ERR_REQUETE, "La valeur « " + valeur +
                                " » contient les deux sortes de guillemets : elle ne peut pas "
                                "être écrite dans une phrase de sélection.");
}

}  // namespace marbrel::requete

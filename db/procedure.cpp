#include "db/procedure.h"

#include "db/variable.h"
#include "marbrel/erreur.h"

namespace Procedure {

void Ouvre_Fichiers() {
  if (!Variable::Base) {
    throw marbrel::Erreur(marbrel::ERR_BASE,
                          "Aucune base n'a été confiée au contrôle (propriété TheDatabase).");
  }
  for (std::size_t i = 0; i < kNombreFichiers; ++i) {
    Variable::Fichiers[i] = Variable::Base->Ouvre_Fichier(std::string(marbrel::kFichiersVesko[i]));
  }
}

void Ferme_Fichiers() {
  for (marbrel::TabDyn& enregistrement : Variable::Enregistrements) enregistrement = {};
  for (auto& fichier : Variable::Fichiers) fichier.reset();
  Variable::Principal = {};
  Variable::Tables = {};
  Variable::Base.reset();
}

}  // namespace Procedure

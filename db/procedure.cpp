#include "db/procedure.h"

#include "db/lecture.h"
#include "db/variable.h"
#include "marbrel/erreur.h"

namespace Procedure {

namespace {
// The store whose read snapshot the run holds, from Ouvre_Fichiers to
// Ferme_Fichiers: every dossier of the run is read from one state of the
// data, whatever an import commits meanwhile.
std::shared_ptr<marbrel::Store> Instantane;
}  // namespace

void Ouvre_Fichiers() {
  if (!Variable::Base) {
    throw marbrel::Erreur(marbrel::ERR_BASE,
                          "Aucune base n'a été confiée au contrôle (propriété TheDatabase).");
  }
  db::Oublie_Selections_Du_Run();
  if (!Instantane) {
    Variable::Base->Magasin().DebutInstantane();
    Instantane = Variable::Base->MagasinPartage();
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
  db::Oublie_Selections_Du_Run();
  if (Instantane) {
    Instantane->FinInstantane();
    Instantane.reset();
  }
  Variable::Base.reset();
}

}  // namespace Procedure

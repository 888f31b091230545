// The task catalogue is selected once per run, not once per dossier: a second
// dossier's selection reads nothing from the store, and the next run selects
// afresh.
#include <gtest/gtest.h>

#include "db/lecture.h"
#include "db/procedure.h"
#include "db/variable.h"
#include "marbrel/base.h"
#include "marbrel/creation_base.h"
#include "marbrel/sqlite_store.h"
#include "tests/app/programmes.h"

namespace {

TEST(SelectionDuRun, TheCatalogueIsReadOncePerRunAndAgainForTheNext) {
  const essai::Dossier dossier;
  const std::string chemin = dossier / "base.vesko";
  {
    marbrel::SqliteStore ecriture(chemin, marbrel::SqliteStore::Mode::Creation);
    marbrel::CreeFichiersVesko(ecriture);
    for (const char* cle : {"T1", "T2", "T3"}) ecriture.Ecrit("TYPETACHE", cle, "Type");
  }
  for (int run = 0; run < 2; ++run) {
    auto store =
        std::make_shared<marbrel::SqliteStore>(chemin, marbrel::SqliteStore::Mode::LectureSeule);
    Variable::Base = std::make_shared<marbrel::Base>(store);
    Procedure::Ouvre_Fichiers();
    const long long avant = store->EnregistrementsParcourus();
    const auto& premier = db::Selection_Du_Run("SSELECT TYPETACHE PAR 1", "TYPETACHE", "0 1");
    EXPECT_EQ(premier.DCount(), 3) << "passage " << run;
    EXPECT_GT(store->EnregistrementsParcourus(), avant);

    const long long apres_premier = store->EnregistrementsParcourus();
    const auto& second = db::Selection_Du_Run("SSELECT TYPETACHE PAR 1", "TYPETACHE", "0 1");
    EXPECT_EQ(&second, &premier);
    EXPECT_EQ(store->EnregistrementsParcourus(), apres_premier);
    // Another sentence is another selection.
    EXPECT_EQ(db::Selection_Du_Run("SSELECT TYPETACHE AVEC 0 = \"T1\"", "TYPETACHE", "0").DCount(),
              1);
    Procedure::Ferme_Fichiers();
  }
}

}  // namespace

#include "marbrel/erreur.h"
#include "tests/marbrel/base_temporaire.h"

namespace {

using marbrel::Erreur;

class Fichiers : public BaseTemporaire {};

TEST_F(Fichiers, UneCleOuUnFichierAbsentEchoueEnLesNommant) {
  Ecrit("CIVILAIDE", "A0001", Rec({"", "MARTIN", "Jeanne"}));
  auto f = base_->Ouvre_Fichier("CIVILAIDE");
  EXPECT_EQ(f->Lit("A0001")(2), "MARTIN");
  try {
    f->Lit("A0009");
    FAIL() << "une clé absente doit échouer";
  } catch (const Erreur& e) {
    EXPECT_EQ(e.Numero(), -2147221493);
    EXPECT_EQ(static_cast<std::uint32_t>(e.Numero()), 0x8004000Bu);
    EXPECT_NE(std::string(e.what()).find("A0009"), std::string::npos) << e.what();
    EXPECT_NE(std::string(e.what()).find("CIVILAIDE"), std::string::npos) << e.what();
  }
  // The key is compared exactly: no case folding, no trimming.
  EXPECT_THROW(f->Lit("a0001"), Erreur);
  EXPECT_THROW(f->Lit("A0001 "), Erreur);
  try {
    base_->Ouvre_Fichier("CIVILAIDES");
    FAIL();
  } catch (const Erreur& e) {
    EXPECT_EQ(e.Numero(), marbrel::ERR_FICHIER_INCONNU);
    EXPECT_NE(std::string(e.what()).find("CIVILAIDES"), std::string::npos);
  }
}

TEST_F(Fichiers, UneBaseOuverteEnLectureSeuleRefuseToutEcriture) {
  Ecrit("TABLES", "SITSOCIOPROF", Rec({"", "1]2", "Retraité]Salarié"}));
  auto lecture = marbrel::Base::OuvreSqlite(chemin_, true);
  auto tables = lecture->Ouvre_Fichier("TABLES");
  EXPECT_EQ(tables->Lit("SITSOCIOPROF")(3, 1), "Retraité");
  try {
    tables->Ecrit("X", marbrel::TabDyn("y"));
    FAIL();
  } catch (const Erreur& e) {
    EXPECT_EQ(e.Numero(), marbrel::ERR_LECTURE_SEULE);
  }
  EXPECT_THROW(lecture->Magasin().CreeFichier("AUTRE"), Erreur);
  EXPECT_THROW(marbrel::Base::OuvreSqlite(dossier_ + "/absente.vesko", true), Erreur);
}

}  // namespace

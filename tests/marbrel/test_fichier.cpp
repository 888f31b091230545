#include "marbrel/erreur.h"
#include "tests/marbrel/base_temporaire.h"

namespace {

using marbrel::Erreur;

class Fichiers : public BaseTemporaire {};

// The number of the error, what a message says, or "" when nothing is thrown.
template <typename F>
std::pair<long, std::string> Echec(F f) {
  try {
    f();
  } catch (const Erreur& e) {
    return {e.Numero(), e.what()};
  }
  return {0, ""};
}

TEST_F(Fichiers, UneCleOuUnFichierAbsentEchoueEnLesNommant) {
  Ecrit("CIVILAIDE", "A0001", Rec({"", "MARTIN", "Jeanne"}));
  auto f = base_->Ouvre_Fichier("CIVILAIDE");
  EXPECT_EQ(f->Lit("A0001")(2), "MARTIN");
  auto [numero, message] = Echec([&] { f->Lit("A0009"); });
  EXPECT_EQ(numero, -2147221493);
  EXPECT_CONTIENT(message, "A0009");
  EXPECT_CONTIENT(message, "CIVILAIDE");
  // The key is compared exactly: no case folding, no trimming.
  EXPECT_THROW(f->Lit("a0001"), Erreur);
  EXPECT_THROW(f->Lit("A0001 "), Erreur);
  std::tie(numero, message) = Echec([&] { base_->Ouvre_Fichier("CIVILAIDES"); });
  EXPECT_EQ(numero, marbrel::ERR_FICHIER_INCONNU);
  EXPECT_CONTIENT(message, "CIVILAIDES");
}

TEST_F(Fichiers, UneBaseOuverteEnLectureSeuleRefuseToutEcriture) {
  Ecrit("TABLES", "SITSOCIOPROF", Rec({"", "1]2", "Retraité]Salarié"}));
  auto lecture = marbrel::Base::OuvreSqlite(chemin_, true);
  auto tables = lecture->Ouvre_Fichier("TABLES");
  EXPECT_EQ(tables->Lit("SITSOCIOPROF")(3, 1), "Retraité");
  EXPECT_EQ(Echec([&] { tables->Ecrit("X", marbrel::TabDyn("y")); }).first,
            marbrel::ERR_LECTURE_SEULE);
  EXPECT_THROW(lecture->Magasin().CreeFichier("AUTRE"), Erreur);
  EXPECT_THROW(marbrel::Base::OuvreSqlite(dossier_ + "/absente.vesko", true), Erreur);
}

}  // namespace

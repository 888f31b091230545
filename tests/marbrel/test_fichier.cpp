#include "marbrel/erreur.h"
#include "tests/marbrel/base_temporaire.h"

namespace {

using marbrel::Erreur;
using Faute = std::pair<long, std::string>;

class Fichiers : public BaseTemporaire {};

// The number and message of the error f throws ({0, ""} when it runs).
template <typename F>
Faute Echec(F f) {
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
  EXPECT_EQ(Echec([&] { f->Lit("A0009"); }),
            Faute(-2147221493, "L'enregistrement \"A0009\" est absent du fichier CIVILAIDE."));
  // The key is compared exactly: no case folding, no trimming.
  EXPECT_THROW(f->Lit("a0001"), Erreur);
  EXPECT_THROW(f->Lit("A0001 "), Erreur);
  EXPECT_EQ(
      Echec([&] { base_->Ouvre_Fichier("CIVILAIDES"); }),
      Faute(marbrel::ERR_FICHIER_INCONNU, "Le fichier CIVILAIDES n'existe pas dans la base."));
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

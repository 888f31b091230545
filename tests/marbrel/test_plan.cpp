// The key-range path: a criterion on the start of the key that every selected
// row must meet is served by the key index, and reads only the rows it needs.
#include "marbrel/creation_base.h"
#include "tests/marbrel/selection_test.h"

namespace {

class CheminDeCle : public SelectionTest {
 protected:
  // Rows read by the store while the sentence runs.
  long long Lus(const std::string& phrase, std::vector<std::string>* cles = nullptr) {
    long long avant = store_->EnregistrementsParcourus();
    std::vector<std::string> c = ClesDe(phrase);
    if (cles) *cles = c;
    return store_->EnregistrementsParcourus() - avant;
  }

  // The unavailability sentence of a dossier, exactly as the section builds it.
  static std::string PhraseIndispo(const std::string& code, const std::string& aujourdhui) {
    const std::string cle = "AVEC 0 = \"" + code + "]\" AND AVEC DateDebIndispo ";
    return "SSELECT TPSAIDEINDISPO " + cle + "<= \"" + aujourdhui + "\" AND AVEC 1 >= \"" +
           aujourdhui + "\" OR = \"\" OR " + cle + "> \"" + aujourdhui + "\"";
  }
};

TEST_F(CheminDeCle, UnPrefixeDeCleNeLitQueLesLignesQuiCommencentAinsi) {
  store_->CreeFichier("F");
  int n = 0;
  store_->EcritLot("F", [&](std::string& cle, std::string& texte) {
    // Ten rows per prefix, P000- to P299-.
    cle = "P" + std::to_string(1000 + n / 10).substr(1) + "-" + std::to_string(n % 10);
    texte = n % 2 ? "impair" : "pair";
    return ++n <= 3000;
  });
  std::vector<std::string> cles;
  EXPECT_EQ(Lus("SSELECT F AVEC 0 = \"P042-]\"", &cles), 10);
  EXPECT_EQ(cles.front(), "P042-0");
  EXPECT_EQ(cles.back(), "P042-9");
  // The rest of the criteria is still applied to the rows read.
  EXPECT_EQ(Lus("SSELECT F AVEC 0 = \"P042-]\" AND AVEC 1 = \"pair\"", &cles), 10);
  EXPECT_EQ(cles.size(), 5u);
  // Every OR branch starts the key: both ranges, in key order.
  EXPECT_EQ(Lus("SSELECT F AVEC 0 = \"P299]\" OR AVEC 0 = \"P001]\"", &cles), 20);
  EXPECT_EQ(cles.front(), "P001-0");
  EXPECT_EQ(cles.back(), "P299-9");
  // An exact key is a range of one; a range inside a wider one is walked once.
  EXPECT_EQ(Lus("SSELECT F AVEC 0 = \"P007-3\" OR = \"P007]\"", &cles), 10);
  // A branch without the key forces the full scan, and the answer is the same.
  EXPECT_EQ(Lus("SSELECT F AVEC 0 = \"P042-]\" OR AVEC 1 = \"rien\"", &cles), 3000);
  EXPECT_EQ(cles.size(), 10u);
  // A numeric literal compares as a number ("7" = "007"): no key range.
  EXPECT_EQ(Lus("SSELECT F AVEC 0 = \"7\""), 3000);
}

TEST_F(CheminDeCle, LesIndisponibilitesNeSontQueCellesDeLaPersonneEnCoursEtAVenir) {
  marbrel::CreeFichiersVesko(*store_);
  // Key: person (5), start day (5), weekday (1), start time (4).
  const std::pair<const char*, const char*> lignes[] = {
      {"A00011999000900", ""},       // started, no end: current
      {"A00011999510800", "19999"},  // ended yesterday
      {"A00011999621400", "20000"},  // ends today: current
      {"A00012000030800", "20002"},  // started today
      {"A00012001040900", ""},       // starts tomorrow
      {"A00021999000900", ""},       // the same kind of rows for another person
      {"A00021999621400", "20000"}, {"A00022001040900", ""},
  };
  for (auto [cle, fin] : lignes)
    store_->Ecrit("TPSAIDEINDISPO", cle, Rec({fin, "1200", "1", "Obs"}));
  std::vector<std::string> cles;
  // The five rows of A0001 are read, none of A0002.
  EXPECT_EQ(Lus(PhraseIndispo("A0001", "20000"), &cles), 5);
  EXPECT_EQ(cles,
            (Cles{"A00011999000900", "A00011999621400", "A00012000030800", "A00012001040900"}));
}

TEST_F(CheminDeCle, LesAidantsIncompatiblesSortentParNomPuisParCle) {
  marbrel::CreeFichiersVesko(*store_);
  store_->Ecrit("TPSINCOMPATIBILITES", "S0002*A0001", Rec({"A0001", "PETIT Marc"}));
  store_->Ecrit("TPSINCOMPATIBILITES", "S0001*A0001", Rec({"A0001", "BERNARD Zoé"}));
  store_->Ecrit("TPSINCOMPATIBILITES", "S0003*A0002", Rec({"A0002", "ARNAUD Luc"}));
  store_->Ecrit("TPSINCOMPATIBILITES", "S0004*A0001", Rec({"A0001", "BERNARD Zoé"}));
  auto lignes =
      Lignes("SSELECT TPSINCOMPATIBILITES AVEC CodeAide = \"A0001\" PAR NomPrenomAidantIncomp",
             "0 2", "TPSINCOMPATIBILITES");
  EXPECT_EQ(lignes, (std::vector<std::vector<std::string>>{{"S0001*A0001", "BERNARD Zoé"},
                                                           {"S0004*A0001", "BERNARD Zoé"},
                                                           {"S0002*A0001", "PETIT Marc"}}));
}

}  // namespace

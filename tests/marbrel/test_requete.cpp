#include "marbrel/erreur.h"
#include "tests/marbrel/selection_test.h"

namespace {

// A small file whose attributes exercise each rule:
//   1 a code (text), 2 a number, 3 a town, 4 a multivalued list.
class Requete : public SelectionTest {
 protected:
  void SetUp() override {
    SelectionTest::SetUp();
    Ecrit("P", "K1", Rec({"A", "9", "Paris", "X]Y"}));
    Ecrit("P", "K2", Rec({"B", "10", "Lyon", "Y"}));
    Ecrit("P", "K3", Rec({"C", "", "Paris", ""}));
    Ecrit("P", "K4", Rec({"A", "100", "Lille", "3]12"}));
    Ecrit("P", "K5", Rec({"", "-2.50", "Dunkerque", "Z\\W"}));
    Dictionnaire("P", "Nombre", "D", "2", "6R");
    Dictionnaire("P", "Ville", "D", "3", "20L");
    Dictionnaire("P", "Liste", "D", "4", "10L");
    Dictionnaire("P", "Num", "I", "@ID[2,1]", "1R");
    Dictionnaire("P", "Ville2", "I", "F3[1,2]", "2L");
  }
};

TEST_F(Requete, AndLieAvantOrEtLesParenthesesLeChangent) {
  const std::string a_ou_b_et_c = "SELECT P AVEC 1 = \"A\" OR AVEC 3 = \"Paris\" AND AVEC 2 = \"\"";
  EXPECT_EQ(ClesDe(a_ou_b_et_c), (Cles{"K1", "K3", "K4"}));
  EXPECT_EQ(ClesDe("SELECT P (AVEC 1 = \"A\" OR AVEC 3 = \"Paris\") AND AVEC 2 = \"\""),
            (Cles{"K3"}));
  EXPECT_EQ(ClesDe("select P with 1 eq \"A\" and with 2 gt \"50\""), (Cles{"K4"}));
}

TEST_F(Requete, UnGroupeApresAvecEtLesChampsQuiSuiventSansAvecImbriquesOuNon) {
  // The form multivalue users write: one AVEC, then a group and clauses that
  // name their field alone; the same selection as a group of whole clauses.
  const Cles k3{"K3"};
  EXPECT_EQ(ClesDe("SELECT P AVEC (1 = \"A\" OR 3 = \"Paris\") AND 2 = \"\""), k3);
  EXPECT_EQ(ClesDe("SELECT P WITH (1 = \"A\" OR 3 = \"Paris\") AND WITH 2 = \"\""), k3);
  EXPECT_EQ(ClesDe("SELECT P AVEC 1 = \"A\" OR 3 = \"Paris\" AND 2 = \"\""),
            (Cles{"K1", "K3", "K4"}));
  // Nested groups, and a group holding a clause that continues on its field.
  EXPECT_EQ(ClesDe("SELECT P AVEC ((1 = \"A\" AND 2 > \"50\") OR (3 = \"Lyon\" OR \"Dunkerque\"))"),
            (Cles{"K2", "K4", "K5"}));
  EXPECT_EQ(ClesDe("SELECT P (AVEC (1 = \"B\") OR (3 = \"Lille\"))"), (Cles{"K2", "K4"}));
}

TEST_F(Requete, UnConnecteurSuiviDUneValeurContinueLaClauseDuMemeChamp) {
  // Attribute 2 >= 10 or empty: one clause, ANDed as a whole with the town.
  EXPECT_EQ(ClesDe("SELECT P AVEC 2 >= \"10\" OR = \"\" AND AVEC 3 = \"Paris\""), (Cles{"K3"}));
  // A bare literal repeats the operator before it.
  EXPECT_EQ(ClesDe("SELECT P AVEC 3 = \"Lyon\" OR \"Lille\""), (Cles{"K2", "K4"}));
  // AND inside a clause binds tighter than OR inside it.
  EXPECT_EQ(ClesDe("SELECT P AVEC 2 > \"5\" AND < \"50\" OR = \"\""), (Cles{"K1", "K2", "K3"}));
  // A field alone asks for a field that holds something.
  EXPECT_EQ(ClesDe("SELECT P AVEC 2 AND AVEC 1"), (Cles{"K1", "K2", "K4"}));
}

TEST_F(Requete, UnChampMultivalueSatisfaitLaClauseQuandUneValeurLaSatisfaitEntiere) {
  EXPECT_EQ(ClesDe("SELECT P AVEC 4 = \"Y\""), (Cles{"K1", "K2"}));
  EXPECT_EQ(ClesDe("SELECT P AVEC Liste = \"W\""), (Cles{"K5"}));  // sub-values count too
  // K4 holds 3 and 12: neither is between 5 and 10 on its own.
  EXPECT_EQ(ClesDe("SELECT P AVEC 4 > \"5\" AND < \"10\""), (Cles{}));
  EXPECT_EQ(ClesDe("SELECT P AVEC 4 > \"5\" AND AVEC 4 < \"10\""), (Cles{"K4"}));
}

TEST_F(Requete, LesJokersCrochetsDebutFinEtContenu) {
  EXPECT_EQ(ClesDe("SELECT P AVEC 3 = \"L]\""), (Cles{"K2", "K4"}));
  EXPECT_EQ(ClesDe("SELECT P AVEC 3 = \"[is\""), (Cles{"K1", "K3"}));
  EXPECT_EQ(ClesDe("SELECT P AVEC 3 = \"[ll]\""), (Cles{"K4"}));
  EXPECT_EQ(ClesDe("SELECT P AVEC 3 <> \"[is\""), (Cles{"K2", "K4", "K5"}));
  // Other operators take the brackets as they are: "Lyon" < "Lyon]".
  EXPECT_EQ(ClesDe("SELECT P AVEC 3 >= \"Lyon]\""), (Cles{"K1", "K3"}));
}

TEST_F(Requete, NombresComparesCommeNombresTexteOctetParOctetEtVideEnDessous) {
  EXPECT_EQ(ClesDe("SELECT P AVEC 2 < \"10\""), (Cles{"K1", "K3", "K5"}));  // "" and -2.50
  EXPECT_EQ(ClesDe("SELECT P AVEC 2 = \"0100.0\""), (Cles{"K4"}));
  // Against a word the same numbers compare as text: "9" > "10a" > "100".
  EXPECT_EQ(ClesDe("SELECT P AVEC 2 > \"10a\""), (Cles{"K1"}));
}

TEST_F(Requete, SsselectTrieParLesChampsPuisParCleEtNREstNumerique) {
  // Nombre is 6R: "" first, then -2.50, 9, 10, 100.
  EXPECT_EQ(ClesDe("SSELECT P PAR Nombre"), (Cles{"K3", "K5", "K1", "K2", "K4"}));
  // Attribute 2 by number has no format: byte order.
  EXPECT_EQ(ClesDe("SSELECT P BY 2"), (Cles{"K3", "K5", "K2", "K4", "K1"}));
  // Equal towns keep key order; the second PAR breaks ties first.
  EXPECT_EQ(ClesDe("SSELECT P PAR Ville"), (Cles{"K5", "K4", "K2", "K1", "K3"}));
  EXPECT_EQ(ClesDe("SSELECT P PAR 3 PAR 2"), (Cles{"K5", "K4", "K2", "K3", "K1"}));
  EXPECT_EQ(ClesDe("SSELECT P PAR 1 AVEC 1 = \"A\" OR = \"C\" PAR 3"), (Cles{"K4", "K1", "K3"}));
  // Numbers first, then words, without breaking the order.
  int cle = 0;
  for (const char* v : {"10", "2x", "3", "", "-1"}) Ecrit("Q", std::to_string(++cle), v);
  Dictionnaire("Q", "V", "D", "1", "5R");
  EXPECT_EQ(ClesDe("SSELECT Q PAR V"), (Cles{"4", "5", "3", "1", "2"}));
  // SELECT ignores PAR and keeps key order.
  EXPECT_EQ(ClesDe("SELECT P PAR 3"), (Cles{"K1", "K2", "K3", "K4", "K5"}));
}

TEST_F(Requete, LesChampsDemandesDeviennentLesValeursDeChaqueLigne) {
  auto lignes = Lignes("SSELECT P AVEC 1 = \"A\" PAR 2", "0 3 4 9 Num Ville2");
  ASSERT_EQ(lignes.size(), 2u);
  EXPECT_EQ(lignes[0], (std::vector<std::string>{"K4", "Lille", Rec({"3\\12"}), "", "4", "Li"}));
  EXPECT_EQ(lignes[1], (std::vector<std::string>{"K1", "Paris", Rec({"X\\Y"}), "", "1", "Pa"}));
  // The field list may be empty: the key alone.
  EXPECT_EQ(Lignes("SSELECT P AVEC 0 = \"K2\"", "")[0][0], "K2");
  // The command's file may be left empty; when given it must be the same.
  EXPECT_EQ(ClesDe("SELECT P AVEC Num >= \"4\""), (Cles{"K4", "K5"}));
  EXPECT_EQ(Lignes("SELECT P AVEC Ville2 = \"Du\"", "0", "P")[0][0], "K5");
  // Dictionaries are files too.
  EXPECT_EQ(ClesDe("SSELECT DICT P AVEC 1 = \"I\""), (Cles{"Num", "Ville2"}));
}

}  // namespace

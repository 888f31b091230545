// Codes compare as text, and a value reaches a sentence only as one literal.
#include "marbrel/erreur.h"
#include "marbrel/query/litteral.h"
#include "tests/marbrel/selection_test.h"

namespace {

class CodesTexte : public SelectionTest {
 protected:
  void SetUp() override {
    SelectionTest::SetUp();
    for (const char* code : {"1", "0001", "1.0", "+1", "00001", "A\"1", "A'1"}) {
      Ecrit("INC", std::string("K") + code, Rec({code}));
    }
    Dictionnaire("INC", "CodeAide", "D", "1", "10L");
    Dictionnaire("INC", "Nombre", "D", "1", "10R");
  }
};

TEST_F(CodesTexte, ALeftJustifiedItemComparesAsTextARightJustifiedOneAsANumber) {
  using marbrel::requete::Litteral;
  for (const char* code : {"1", "0001", "1.0", "+1", "00001", "A\"1", "A'1"}) {
    EXPECT_EQ(ClesDe("SELECT INC AVEC CodeAide = " + Litteral(code)), Cles{std::string("K") + code})
        << code;
  }
  EXPECT_EQ(ClesDe("SELECT INC AVEC Nombre = \"1\""),
            (Cles{"K+1", "K00001", "K0001", "K1", "K1.0"}));
  EXPECT_EQ(ClesDe("SELECT INC AVEC CodeAide > \"1\""), (Cles{"K1.0", "KA\"1", "KA'1"}));
}

TEST(Litteral, QuotesWithTheQuoteTheValueDoesNotHoldAndRefusesBoth) {
  using marbrel::requete::Litteral;
  EXPECT_EQ(Litteral("A0001"), "\"A0001\"");
  EXPECT_EQ(Litteral(""), "\"\"");
  EXPECT_EQ(Litteral("A\"1"), "'A\"1'");
  try {
    Litteral("A\"'1");
    FAIL() << "a value with both quotes was written";
  } catch (const marbrel::Erreur& e) {
    EXPECT_EQ(e.Numero(), marbrel::ERR_REQUETE);
    EXPECT_NE(std::string(e.what()).find("A\"'1"), std::string::npos);
  }
}

}  // namespace

// The people around a care recipient: the spouse's lines and age, the
// household table of fourteen rows and the entourage table of ten.
#include <gtest/gtest.h>

#include "marbrel/outils.h"
#include "tests/sections/cadre_sous.h"
#include "tests/support/banc.h"
#include "tests/support/section_seule.h"

using banc::Banc;
using banc::Rec;

namespace {

const std::string kEnteteFoyer =
    "              Nom              Prénom       Date de nais.      Lien      Fiscal";
const std::string kEnteteEntourage =
    "            Nom prénom       Lieu de résidence     Téléphone      Portable";

marbrel::TabDyn Fiche(std::initializer_list<std::pair<long, std::string>> attributs) {
  marbrel::TabDyn r;
  for (const auto& [a, v] : attributs) r.Remplace(a, Rec({v}).Extrait(1));
  return r;
}

std::string J(const std::string& date) { return marbrel::Outils::Instance().Date_Interne(date); }

// n values "<prefix>1]<prefix>2]..." for a multi-valued attribute.
std::string Valeurs(const std::string& prefixe, int n) {
  std::string s;
  for (int i = 1; i <= n; ++i) s += (i > 1 ? "]" : "") + prefixe + std::to_string(i);
  return s;
}

std::vector<std::string> Apres(const std::vector<std::string>& l, const std::string& entete) {
  auto it = std::find(l.begin(), l.end(), entete);
  return it == l.end() ? std::vector<std::string>{} : std::vector<std::string>(it + 1, l.end());
}

}  // namespace

TEST(Conjoint, DeceasedSpouseKeepsTheAgeReachedAtDeath) {
  Banc b;
  b.Met("CIVILAIDE", "A0001",
        Fiche({{26, "DURAND"},
               {27, "Henri"},
               {28, J("10/04/1935")},
               {29, "1350475123456"},
               {30, "44"},
               {31, "4"},
               {32, J("01/03/2019")},
               {33, "AFF-2210"},
               {45, "A0007"}}));
  b.Imprime("AIDE", {"A0001"});
  const std::vector<std::string> attendu = {
      " ",
      " Nom patronymique     : DURAND",
      " Prénom               : Henri",
      " N.I.R.               : 1350475123456 44",
      " Date de naissance    : 10/04/1935          Age        : 83 ans",
      " Situation            : Décédé              Date décès : 01/03/2019",
      " N° affiliation       : AFF-2210",
      " Code dossier aidé    : A0007"};
  EXPECT_EQ(banc::Section_Seule(b, "CONJOINT"), attendu);
}

TEST(Conjoint, LivingSpouseIsAgedUpToTodayAndAbsentSpouseKeepsItsLines) {
  {
    Banc b;
    b.Met("CIVILAIDE", "A0001", Fiche({{28, J("10/04/1935")}, {31, "1"}}));
    b.Imprime("AIDE", {"A0001"}, "15/03/2024");
    auto l = banc::Section_Seule(b, "CONJOINT");
    ASSERT_EQ(l.size(), 8u);
    EXPECT_EQ(l[4], " Date de naissance    : 10/04/1935          Age        : 88 ans");
    EXPECT_EQ(l[5], " Situation            : Retraité" + std::string(12, ' ') + "Date décès : ");
  }
  {
    Banc b;
    b.Met("CIVILAIDE", "A0001", Fiche({{4, "SEULE"}, {31, "9"}}));
    b.Imprime("AIDE", {"A0001"});
    const std::vector<std::string> attendu = {
        " ",
        " Nom patronymique     : ",
        " Prénom               : ",
        " N.I.R.               :  ",
        " Date de naissance    : " + std::string(20, ' ') + "Age        : ",
        " Situation            : " + std::string(20, ' ') + "Date décès : ",
        " N° affiliation       : ",
        " Code dossier aidé    : "};
    EXPECT_EQ(banc::Section_Seule(b, "CONJOINT"), attendu);
  }
}

TEST(AutresPersonnesFoyer, RowsCutNamesAndFillToFourteenInsideTheFrame) {
  Banc b;
  b.Met("CIVILAIDE", "A0001",
        Fiche({{34, "DURAND-DE-LA-FONTAINE]DURAND"},
               {35, "Jean]Marie-Antoinette-Sophie"},
               {36, J("05/07/1990") + "]"},
               {37, "Petit-fils de la voisine]Fille"},
               {38, "O]N"}}));
  b.Imprime("AIDE", {"A0001"});
  auto l = banc::Section_Seule(b, "AUTRES PERSONNES AU FOYER");
  ASSERT_GE(l.size(), 3u);
  EXPECT_EQ(l[1], " ");
  EXPECT_EQ(l[2], kEnteteFoyer);
  auto rangees = Apres(l, kEnteteFoyer);
  ASSERT_EQ(rangees.size(), 14u);
  // A relation longer than its column is kept whole and gets no spaces.
  EXPECT_EQ(rangees[0],
            "         DURAND-DE-LA-FON Jean               05/07/1990    Petit-fils de la voisineO");
  EXPECT_EQ(rangees[1], "         DURAND           Marie-Antoinette   " + std::string(14, ' ') +
                            "Fille           N");
  for (size_t i = 2; i < rangees.size(); ++i) EXPECT_EQ(rangees[i], "") << i;

  auto cadre = banc::Cadre_Sous(b.Enregistrement(), kEnteteFoyer);
  ASSERT_TRUE(cadre);
  EXPECT_NEAR(cadre->Lignes(), 15.0, 1e-3);
  EXPECT_NEAR(cadre->gauche, banc::Cm(2), 1e-3);
  EXPECT_NEAR(cadre->droite, banc::Cm(18.9), 1e-3);
  const std::vector<double> separateurs = {6, 10, 13.5, 16.9};
  ASSERT_EQ(cadre->separateurs.size(), separateurs.size());
  for (size_t i = 0; i < separateurs.size(); ++i) {
    EXPECT_NEAR(cadre->separateurs[i], banc::Cm(separateurs[i]), 1e-3);
  }
}

TEST(AutresPersonnesFoyer, FifteenMembersPrintFourteenAndNoFiller) {
  Banc b;
  b.Met("CIVILAIDE", "A0001", Fiche({{34, Valeurs("NOM", 15)}, {35, Valeurs("P", 15)}}));
  b.Imprime("AIDE", {"A0001"});
  auto rangees = Apres(banc::Section_Seule(b, "AUTRES PERSONNES AU FOYER"), kEnteteFoyer);
  ASSERT_EQ(rangees.size(), 14u);
  EXPECT_EQ(rangees.back().substr(0, 15), "         NOM14 ");
  for (const auto& r : rangees) EXPECT_NE(r, "");
}

TEST(Entourage, TenRowsOfSeventyEightCharactersInAnElevenLineFrame) {
  const std::string nom25 = "BERNARD-LEFEBVRE Christin";  // 25 characters
  Banc b;
  b.Met("ENVIRONAIDE", "A0001",
        Fiche({{5, nom25 + "]" + Valeurs("X", 10).substr(3) + "]ONZIEME"},
               {6, "06 12 34 56 78"},
               {7, "Saint-Germain-en-Laye"},
               {8, "01 39 00 00 00"}}));
  b.Imprime("AIDE", {"A0001"});
  auto l = banc::Section_Seule(b, "ENTOURAGE");
  ASSERT_GE(l.size(), 2u);
  EXPECT_EQ(l[1], kEnteteEntourage);
  auto rangees = Apres(l, kEnteteEntourage);
  // Ten rows, then the blank line printed after the frame.
  ASSERT_EQ(rangees.size(), 11u);
  EXPECT_EQ(rangees[10], " ");
  EXPECT_EQ(rangees[0],
            "         BERNARD-LEFEBVRE Ch Saint-Germain-en-La 01 39 00 00 00 06 12 34 56 78");
  EXPECT_EQ(rangees[1], "         X2" + std::string(78 - 11, ' '));
  for (size_t i = 0; i < 10; ++i) EXPECT_EQ(rangees[i].size(), 78u) << i;
  // The eleventh person is never printed.
  for (const auto& r : rangees) EXPECT_EQ(r.find("ONZIEME"), std::string::npos);

  auto cadre = banc::Cadre_Sous(b.Enregistrement(), kEnteteEntourage);
  ASSERT_TRUE(cadre);
  EXPECT_NEAR(cadre->Lignes(), 11.0, 1e-3);
  EXPECT_NEAR(cadre->droite, banc::Cm(18.6), 1e-3);
  ASSERT_EQ(cadre->separateurs.size(), 3u);
  EXPECT_NEAR(cadre->separateurs[1], banc::Cm(11.4), 1e-3);
}

TEST(Entourage, EmptyEnvironmentGivesTenRowsOfSpaces) {
  Banc b;
  b.Met("CIVILAIDE", "A0001", Fiche({{4, "DURAND"}}));
  b.Imprime("AIDE", {"A0001"});
  auto rangees = Apres(banc::Section_Seule(b, "ENTOURAGE"), kEnteteEntourage);
  ASSERT_EQ(rangees.size(), 11u);
  for (size_t i = 0; i < 10; ++i) EXPECT_EQ(rangees[i], std::string(78, ' ')) << i;
}

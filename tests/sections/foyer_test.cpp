// The people around a care recipient: the spouse's lines and age, the
// household table of fourteen rows and the entourage table of ten.
#include <gtest/gtest.h>

#include "tests/sections/releve.h"

using banc::Banc;
using banc::Fiche;
using banc::Jour;
using banc::S;

namespace {

const std::string kEnteteFoyer =
    "              Nom              Prénom       Date de nais.      Lien      Fiscal";
const std::string kEnteteEntourage =
    "            Nom prénom       Lieu de résidence     Téléphone      Portable";

// The lines of a section below its column header.
std::vector<std::string> Rangees(const Banc& b, const std::string& titre, const std::string& entete,
                                 int rang = 0) {
  auto l = banc::Bloc(b, titre, rang);
  auto it = std::find(l.begin(), l.end(), entete);
  return it == l.end() ? std::vector<std::string>{} : std::vector<std::string>(it + 1, l.end());
}

}  // namespace

TEST(Conjoint, DeceasedSpouseKeepsTheAgeAtDeathLivingSpouseIsAgedToToday) {
  Banc b;
  b.Met("CIVILAIDE", "A0001",
        Fiche("26=DURAND|27=Henri|28=" + Jour("10/04/1935") +
              "|29=1350475123456|30=44|31=4|32=" + Jour("01/03/2019") + "|33=AFF-2210|45=A0007"));
  b.Met("CIVILAIDE", "A0002", Fiche("28=" + Jour("10/04/1935") + "|31=1"));
  b.Imprime("AIDE", {"A0001", "A0002"});
  EXPECT_EQ(banc::Bloc(b, "CONJOINT"),
            (std::vector<std::string>{
                " ", " Nom patronymique     : DURAND", " Prénom               : Henri",
                " N.I.R.               : 1350475123456 44",
                " Date de naissance    : 10/04/1935          Age        : 83 ans",
                " Situation            : Décédé              Date décès : 01/03/2019",
                " N° affiliation       : AFF-2210", " Code dossier aidé    : A0007"}));
  // Alive, so aged up to today; the date of death keeps its label alone.
  const auto l = banc::Bloc(b, "CONJOINT", 1);
  ASSERT_EQ(l.size(), 8u);
  EXPECT_EQ(l[4], " Date de naissance    : 10/04/1935          Age        : 88 ans");
  EXPECT_EQ(l[5], " Situation            : Retraité" + S(12) + "Date décès : ");
}

TEST(AutresPersonnesFoyer, RowsCutNamesAndFourteenAtMostInsideTheFrame) {
  std::string quinze;
  for (int i = 1; i <= 15; ++i) quinze += (i > 1 ? "]NOM" : "NOM") + std::to_string(i);
  Banc b;
  b.Met("CIVILAIDE", "A0001",
        Fiche("34=DURAND-DE-LA-FONTAINE]DURAND|35=Jean]Marie-Antoinette-Sophie|36=" +
              Jour("05/07/1990") + "|37=Petit-fils de la voisine]Fille|38=O]N"));
  b.Met("CIVILAIDE", "A0002", Fiche("34=" + quinze));
  b.Imprime("AIDE", {"A0001", "A0002"});
  auto rangees = Rangees(b, "AUTRES PERSONNES AU FOYER", kEnteteFoyer);
  ASSERT_EQ(rangees.size(), 14u);
  // A relation longer than its column is kept whole and gets no spaces.
  EXPECT_EQ(rangees[0],
            "         DURAND-DE-LA-FON Jean" + S(15) + "05/07/1990    Petit-fils de la voisineO");
  EXPECT_EQ(rangees[1],
            "         DURAND           Marie-Antoinette" + S(3 + 14) + "Fille           N");
  for (size_t i = 2; i < rangees.size(); ++i) EXPECT_EQ(rangees[i], "") << i;
  EXPECT_EQ(banc::Cadre(b, kEnteteFoyer), "15 lignes, 2-18.9 cm: 6 10 13.5 16.9");
  // Fifteen members: fourteen rows, no filler.
  rangees = Rangees(b, "AUTRES PERSONNES AU FOYER", kEnteteFoyer, 1);
  ASSERT_EQ(rangees.size(), 14u);
  EXPECT_EQ(rangees.back().substr(0, 15), "         NOM14 ");
}

TEST(Entourage, TenRowsOfSeventyEightCharactersInAnElevenLineFrame) {
  Banc b;
  b.Met("ENVIRONAIDE", "A0001",  // 25 characters in the first name
        Fiche("5=BERNARD-LEFEBVRE Christin]X2]]]]]]]]]ONZIEME|6=06 12 34 56 78|"
              "7=Saint-Germain-en-Laye|8=01 39 00 00 00"));
  b.Imprime("AIDE", {"A0001", "A0002"});
  auto rangees = Rangees(b, "ENTOURAGE", kEnteteEntourage);
  // Ten rows, then the blank line printed after the frame.
  ASSERT_EQ(rangees.size(), 11u);
  EXPECT_EQ(rangees[0],
            "         BERNARD-LEFEBVRE Ch Saint-Germain-en-La 01 39 00 00 00 06 12 34 56 78");
  EXPECT_EQ(rangees[1], "         X2" + S(78 - 11));
  EXPECT_EQ(rangees[9], S(78));  // the eleventh person is never printed
  EXPECT_EQ(rangees[10], " ");
  EXPECT_EQ(banc::Cadre(b, kEnteteEntourage), "11 lignes, 2-18.6 cm: 6.7 11.4 15");
  // Without an environment record: ten rows of 78 spaces.
  const auto vide = Rangees(b, "ENTOURAGE", kEnteteEntourage, 1);
  ASSERT_EQ(vide.size(), 11u);
  EXPECT_EQ(std::count(vide.begin(), vide.end(), S(78)), 10);
}

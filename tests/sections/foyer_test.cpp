// The spouse, the household table of fourteen rows, the entourage of ten.
#include "tests/sections/releve.h"

static const std::string kEnteteFoyer =
    "              Nom              Prénom       Date de nais.      Lien      Fiscal";
static const std::string kEnteteEntourage =
    "            Nom prénom       Lieu de résidence     Téléphone      Portable";

// The lines of a section below its column header.
static V Rangees(const Banc& b, const std::string& titre, const std::string& entete, int rang) {
  auto l = Bloc(b, titre, rang);
  auto it = std::find(l.begin(), l.end(), entete);
  return it == l.end() ? V{} : V(it + 1, l.end());
}

TEST(Conjoint, DeceasedSpouseKeepsTheAgeAtDeathLivingSpouseIsAgedToToday) {
  Banc b;
  b.Met("CIVILAIDE", "A0001",
        Fiche("26=DURAND|27=Henri|28=" + Jour("10/04/1935") +
              "|29=1350475123456|30=44|31=4|32=" + Jour("01/03/2019") + "|33=AFF-2210|45=A0007"));
  b.Met("CIVILAIDE", "A0002", Fiche("28=" + Jour("10/04/1935") + "|31=1"));
  b.Imprime("AIDE", {"A0001", "A0002"});
  EXPECT_EQ(Bloc(b, "CONJOINT"),
            (V{" ", " Nom patronymique     : DURAND", " Prénom               : Henri",
               " N.I.R.               : 1350475123456 44",
               " Date de naissance    : 10/04/1935          Age        : 83 ans",
               " Situation            : Décédé              Date décès : 01/03/2019",
               " N° affiliation       : AFF-2210", " Code dossier aidé    : A0007"}));
  // Alive, so aged up to today; the date of death keeps its label alone.
  EXPECT_EQ(Tranche(Bloc(b, "CONJOINT", 1), 4, 6),
            (V{" Date de naissance    : 10/04/1935          Age        : 88 ans",
               " Situation            : Retraité" + S(12) + "Date décès : "}));
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
  // A relation longer than its column is kept whole and gets no spaces.
  V attendu = {"         DURAND-DE-LA-FON Jean" + S(15) + "05/07/1990    Petit-fils de la voisineO",
               "         DURAND           Marie-Antoinette" + S(17) + "Fille           N"};
  attendu.resize(14, "");
  EXPECT_EQ(Rangees(b, "AUTRES PERSONNES AU FOYER", kEnteteFoyer, 0), attendu);
  EXPECT_EQ(Cadre(b, kEnteteFoyer), "15 lignes, 2-18.9 cm: 6 10 13.5 16.9");
  // Fifteen members: fourteen rows, no filler.
  const auto rangees = Rangees(b, "AUTRES PERSONNES AU FOYER", kEnteteFoyer, 1);
  ASSERT_EQ(rangees.size(), 14u);
  EXPECT_EQ(rangees.back().substr(0, 15), "         NOM14 ");
}

TEST(Entourage, TenRowsOfSeventyEightCharactersInAnElevenLineFrame) {
  Banc b;
  b.Met("ENVIRONAIDE", "A0001",  // 25 characters in the first name
        Fiche("5=BERNARD-LEFEBVRE Christin]X2]]]]]]]]]ONZIEME|6=06 12 34 56 78|"
              "7=Saint-Germain-en-Laye|8=01 39 00 00 00"));
  b.Imprime("AIDE", {"A0001", "A0002"});
  // Ten rows, then the blank line printed after the frame; the eleventh
  // person is never printed.
  V attendu = {"         BERNARD-LEFEBVRE Ch Saint-Germain-en-La 01 39 00 00 00 06 12 34 56 78",
               "         X2" + S(78 - 11)};
  attendu.resize(10, S(78));
  attendu.push_back(" ");
  EXPECT_EQ(Rangees(b, "ENTOURAGE", kEnteteEntourage, 0), attendu);
  EXPECT_EQ(Cadre(b, kEnteteEntourage), "11 lignes, 2-18.6 cm: 6.7 11.4 15");
  // Without an environment record: ten rows of 78 spaces.
  attendu[0] = attendu[1] = S(78);
  EXPECT_EQ(Rangees(b, "ENTOURAGE", kEnteteEntourage, 1), attendu);
}

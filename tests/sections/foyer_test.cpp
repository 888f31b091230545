#include "tests/support/releve.h"

TEST(ConjointEtFoyer, SpouseAgeAtDeathHouseholdRowsCutAndFourteenAtMostInTheFrame) {
  const std::string entete =
      "              Nom              Prénom       Date de nais.      Lien      Fiscal";
  std::string quinze;
  for (int i = 1; i <= 15; ++i) quinze += (i > 1 ? "]NOM" : "NOM") + std::to_string(i);
  Banc b;
  b.Met("CIVILAIDE", "A0001",
        Fiche("28=" + Jour("10/04/1935") + "|31=4|32=" + Jour("01/03/2019") +
              "|34=DURAND-DE-LA-FONTAINE]DURAND|35=Jean]Marie-Antoinette-Sophie|36=" +
              Jour("05/07/1990") + "|37=Petit-fils de la voisine]Fille|38=O]N"));
  b.Met("CIVILAIDE", "A0002", Fiche("34=" + quinze));
  b.Imprime("AIDE", {"A0001", "A0002"});
  // A deceased spouse keeps the age at death.
  EXPECT_EQ(Tranche(Bloc(b, "CONJOINT"), 4, 6),
            (V{" Date de naissance    : 10/04/1935          Age        : 83 ans",
               " Situation            : Décédé              Date décès : 01/03/2019"}));

  // A relation longer than its column is kept whole and gets no spaces.
  V attendu = {" ", " ", entete,
               "         DURAND-DE-LA-FON Jean" + S(15) + "05/07/1990    Petit-fils de la voisineO",
               "         DURAND           Marie-Antoinette" + S(17) + "Fille           N"};
  attendu.resize(17, "");
  EXPECT_EQ(Bloc(b, "AUTRES PERSONNES AU FOYER"), attendu);
  EXPECT_EQ(Cadre(b, entete), "15 lignes, 2-18.9 cm: 6 10 13.5 16.9");
  // Fifteen members: fourteen rows, no filler.
  const auto l = Bloc(b, "AUTRES PERSONNES AU FOYER", 1);
  ASSERT_EQ(l.size(), 17u);
  EXPECT_EQ(l.back().substr(0, 15), "         NOM14 ");
}

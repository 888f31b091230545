#include "tests/support/releve.h"

TEST(ModaliteInterv, MissionTextWrappedWithin76CharactersAndPlanning) {
  const std::string mission = "Informations pour ordre de mission :";
  const std::string planning = "Informations pour planning :";
  const V lignes = {" Passage le matin pour le lever, la toilette et l'habillage ; préparer le",
                    " petit déjeuner."};
  Banc b;
  // The mission text is attribute 5, the planning attribute 17.
  b.Met("BESOINSAIDE", "A0001",
        Fiche("5=Sonner deux fois.\r\n" + lignes[0].substr(1) + lignes[1] +
              "\r\nClé chez la voisine.|17=Lundi matin]Jeudi après-midi"));
  b.Imprime("AIDE", {"A0001"});
  EXPECT_EQ(
      Bloc(b, "MODALITES D'INTERVENTION"),
      (V{" ", mission, " ", " Sonner deux fois.", lignes[0], lignes[1], " Clé chez la voisine.",
         " ", " ", planning, " ", " Lundi matin, Jeudi après-midi"}));
  // Both headings are underlined.
  for (const auto& titre : {mission, planning})
    EXPECT_TRUE(Suite(b, titre, 1).at(0).police.souligne) << titre;
}

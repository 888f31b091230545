#include "tests/support/releve.h"

TEST(ModaliteInterv, MissionTextWithA200CharacterLineAndPlanning) {
  const std::string mission = "Informations pour ordre de mission :";
  const std::string planning = "Informations pour planning :";
  const std::string longue =  // 200 characters
      "Passage le matin pour le lever, la toilette et l'habillage ; préparer le petit "
      "déjeuner, vérifier la prise des médicaments du pilulier puis aérer la chambre et "
      "refaire le lit avant de partir à 10h30 .";
  Banc b;
  // The mission text is attribute 5, the planning attribute 17.
  b.Met("BESOINSAIDE", "A0001",
        Fiche("5=Sonner deux fois.\r\n" + longue +
              "\r\nClé chez la voisine.|17=Lundi matin]Jeudi après-midi"));
  b.Imprime("AIDE", {"A0001"});
  EXPECT_EQ(Bloc(b, "MODALITES D'INTERVENTION"),
            (V{" ", mission, " ", " Sonner deux fois.",
               " Passage le matin pour le lever, la toilette et l'habillage ; préparer le",
               " petit déjeuner, vérifier la prise des médicaments du pilulier puis aérer la",
               " chambre et refaire le lit avant de partir à 10h30 .", " Clé chez la voisine.", " ",
               " ", planning, " ", " Lundi matin, Jeudi après-midi"}));
  // Both headings are underlined.
  EXPECT_TRUE(Suite(b, mission, 1).at(0).police.souligne);
  EXPECT_TRUE(Suite(b, planning, 1).at(0).police.souligne);
}

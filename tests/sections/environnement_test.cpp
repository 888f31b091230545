#include "tests/support/releve.h"

TEST(Environnement, HousingEntourageOfTenContactsPersonToNotifyHandicapAndPermit) {
  const std::string entete =
      "            Nom prénom       Lieu de résidence     Téléphone      Portable";
  Banc b;
  b.Met("TABLES", "QUALITEOCCUPANT", Rec({"", "P]L", "Propriétaire]Locataire"}));
  b.Met("TABLES", "DESCRIPLOGEMENT", Rec({"", "M]A", "Maison]Appartement"}));
  b.Met("TABLES", "ETATLOGEMENT",
        Rec({"", "B]V]H]E]S",
             "Bon état]Logement vétuste, travaux à prévoir vite]Humide]Escalier raide]Froid"}));
  // Five conditions: only the first four print; the 40-character label keeps
  // its first 30 and one space. 25 characters in the first entourage name.
  b.Met("ENVIRONAIDE", "A0001",
        Rec({"L", "3", "A", "V]B]H]E]S", "BERNARD-LEFEBVRE Christin]X2]]]]]]]]]ONZIEME",
             "06 12 34 56 78", "Saint-Germain-en-Laye", "01 39 00 00 00"}));
  b.Met("ENVIRONAIDE", "A0002", Rec({"X", "", "", "Z]B"}));
  b.Imprime("AIDE", {"A0001", "A0002"});
  EXPECT_EQ(Bloc(b, "HABITAT"),
            (V{" ", " Qualité occupant     : Locataire", " Nombre pièces        : 3",
               " Type habitat         : Appartement",
               " Etat du logement     : Logement vétuste, travaux à pr Bon état",
               S(24) + "Humide                         Escalier raide"}));
  // Unknown and missing codes print nothing; the block keeps its two lines.
  EXPECT_EQ(
      Bloc(b, "HABITAT", 1),
      (V{" ", " Qualité occupant     : ", " Nombre pièces        : ", " Type habitat         : ",
         " Etat du logement     : " + S(31) + "Bon état", S(24 + 31)}));
  // Ten rows of 78 characters and the blank after the frame; the eleventh person never prints.
  V attendu = {" ", entete,
               "         BERNARD-LEFEBVRE Ch Saint-Germain-en-La 01 39 00 00 00 06 12 34 56 78",
               "         X2" + S(78 - 11)};
  attendu.resize(12, S(78));
  attendu.push_back(" ");
  EXPECT_EQ(Bloc(b, "ENTOURAGE"), attendu);
  EXPECT_EQ(Cadre(b, entete), "11 lignes, 2-18.6 cm: 6.7 11.4 15");
  // A carer's person to notify and handicap come from the information record;
  // the permit's country is the nationality, except the upper-case "FRANCE".
  b.Met("TABLES", "CATHANDICAP", Rec({"", "A]B", "Travailleur handicapé]Invalide civil"}));
  b.Met("INFOSAIDANT", "S0001",
        Rec({"MARTIN Paul", "04 01", "Frère", "", "Cat. B", "", "", "", "", "B"}));
  b.Met("CIVILAIDANT", "S0001", Fiche("19=France"));
  b.Met("CIVILAIDANT", "S0002", Fiche("19=FRANCE"));
  b.Imprime("AIDANT", {"S0001", "S0002"});
  EXPECT_EQ(Bloc(b, "PERSONNE A PREVENIR").at(3), " Observations         : Frère");
  EXPECT_EQ(Tranche(Bloc(b, "HANDICAP"), 1, 3),
            (V{" Catég. bénéficiaire  : Invalide civil", " Catég. handicap      : Cat. B"}));
  EXPECT_EQ(Bloc(b, "DETAIL ETRANGER").at(1) + "|" + Bloc(b, "DETAIL ETRANGER", 1).at(1),
            " Pays                 : France| Pays                 : ");
}

TEST(Environnement, HandicapAndPermitCodesUnknownOrEmptyTakeTheLabelWhereTheScanStops) {
  Banc b;
  // Each table's free position carries a label of its own.
  for (const char* table : {"CATHANDICAP", "PLACANT", "SITSAL", "TITRESSEJOUR"})
    b.Met("TABLES", table, Rec({"", "A]", std::string("Connu]Non renseigné ") + table}));
  b.Met("INFOSAIDANT", "S0001", Rec({"", "", "", "", "", "", "Z", "", "", "?"}));
  b.Met("ETRANGER", "S0001", Rec({"Q"}));
  b.Imprime("AIDANT", {"S0001"});
  EXPECT_EQ(Tranche(Bloc(b, "HANDICAP"), 1, 5),
            (V{" Catég. bénéficiaire  : Non renseigné CATHANDICAP",
               " Catég. handicap      : ", " Placement antérieur  : Non renseigné PLACANT",
               " Situation antérieure : Non renseigné SITSAL"}));
  EXPECT_EQ(Bloc(b, "DETAIL ETRANGER").at(2), " Type carte           : Non renseigné TITRESSEJOUR");
}

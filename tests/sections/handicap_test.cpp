// A carer's handicap and residence permit.
#include "tests/sections/releve.h"

TEST(Handicap, FromTheCarersInformationRecordAndThePermitWithTheExactWordFrance) {
  Banc b;
  b.Met("TABLES", "CATHANDICAP", Rec({"", "A]B", "Travailleur handicapé]Invalide civil"}));
  b.Met("TABLES", "PLACANT", Rec({"", "ANPE]MIS", "Pôle emploi]Mission locale"}));
  b.Met("TABLES", "SITSAL", Rec({"", "CH", "Chômeur"}));
  b.Met("TABLES", "TITRESSEJOUR", Rec({"", "CR]CST", "Carte de résident]Carte de séjour"}));
  b.Met("INFOSAIDANT", "S0001",
        Rec({"M. HADDAD", "06", "", "", "Cat. B", "", "MIS", "CH", "", "B"}));
  // The country is the nationality, except the upper-case word "FRANCE".
  b.Met("CIVILAIDANT", "S0001", Fiche("19=France"));
  b.Met("CIVILAIDANT", "S0002", Fiche("19=FRANCE"));
  for (const char* cle : {"S0001", "S0002"})
    b.Met("ETRANGER", cle, Rec({"CST", "Préfecture du Rhône", "AT-2023-0457", "21078"}));
  b.Imprime("AIDANT", {"S0001", "S0002"});
  EXPECT_EQ(Bloc(b, "HANDICAP"),
            (V{" ", " Catég. bénéficiaire  : Invalide civil", " Catég. handicap      : Cat. B",
               " Placement antérieur  : Mission locale", " Situation antérieure : Chômeur"}));
  V attendu = {" ",
               " Pays                 : France",
               " Type carte           : Carte de séjour",
               " Préfecture           : Préfecture du Rhône",
               " N° autorisation      : AT-2023-0457",
               " Fin validité         : 15/09/2025"};
  EXPECT_EQ(Bloc(b, "DETAIL ETRANGER"), attendu);
  attendu[1] = " Pays                 : ";
  EXPECT_EQ(Bloc(b, "DETAIL ETRANGER", 1), attendu);
}

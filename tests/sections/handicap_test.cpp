// A carer's handicap, printed from the information record that the
// person-to-notify section reads, and the residence permit.
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
  const std::vector<std::pair<std::string, std::string>> cas = {
      {"MAROC", "MAROC"}, {"France", "France"}, {"FRANCE", ""}};
  V cles;
  for (const auto& [nationalite, pays] : cas) {
    cles.push_back("S000" + std::to_string(cles.size() + 1));
    b.Met("CIVILAIDANT", cles.back(), Fiche("2=HADDAD|19=" + nationalite));
    b.Met("ETRANGER", cles.back(), Rec({"CST", "Préfecture du Rhône", "AT-2023-0457", "21078"}));
  }
  b.Imprime("AIDANT", cles);
  EXPECT_EQ(Bloc(b, "HANDICAP"),
            (V{" ", " Catég. bénéficiaire  : Invalide civil", " Catég. handicap      : Cat. B",
               " Placement antérieur  : Mission locale", " Situation antérieure : Chômeur"}));
  for (size_t i = 0; i < cas.size(); ++i) {
    const V attendu = {" ",
                       " Pays                 : " + cas[i].second,
                       " Type carte           : Carte de séjour",
                       " Préfecture           : Préfecture du Rhône",
                       " N° autorisation      : AT-2023-0457",
                       " Fin validité         : 15/09/2025"};
    EXPECT_EQ(Bloc(b, "DETAIL ETRANGER", i), attendu) << cas[i].first;
  }
}

// A carer's handicap, printed from the information record that the
// person-to-notify section reads, and the residence permit.
#include <gtest/gtest.h>

#include "tests/support/banc.h"

using banc::Rec;

namespace {

void Aidant(banc::Banc& b, const std::string& cle, const std::string& nationalite) {
  marbrel::TabDyn r;
  r.Remplace(2, "HADDAD");
  r.Remplace(19, nationalite);
  b.Met("CIVILAIDANT", cle, r);
  b.Met("TABLES", "CATHANDICAP", Rec({"", "A]B", "Travailleur handicapé]Invalide civil"}));
  b.Met("TABLES", "PLACANT", Rec({"", "ANPE]MIS", "Pôle emploi]Mission locale"}));
  b.Met("TABLES", "SITSAL", Rec({"", "CH", "Chômeur"}));
  b.Met("TABLES", "TITRESSEJOUR", Rec({"", "CR]CST", "Carte de résident]Carte de séjour"}));
}

}  // namespace

TEST(Handicap, FromTheCarersInformationRecord) {
  banc::Banc b;
  Aidant(b, "S0001", "FRANCE");
  b.Met("INFOSAIDANT", "S0001",
        Rec({"M. HADDAD", "06", "", "", "Cat. B", "", "MIS", "CH", "", "B"}));
  b.Imprime("AIDANT", {"S0001"});
  const std::vector<std::string> attendu = {" ",
                                            " Catég. bénéficiaire  : Invalide civil",
                                            " Catég. handicap      : Cat. B",
                                            " Placement antérieur  : Mission locale",
                                            " Situation antérieure : Chômeur",
                                            " "};
  EXPECT_EQ(b.Section("HANDICAP"), attendu);
}

TEST(DetailEtranger, PermitAndTheExactWordFrance) {
  struct Cas {
    std::string nationalite, pays;
  };
  for (const Cas& c : {Cas{"MAROC", "MAROC"}, Cas{"France", "France"}, Cas{"FRANCE", ""}}) {
    banc::Banc b;
    Aidant(b, "S0001", c.nationalite);
    b.Met("ETRANGER", "S0001", Rec({"CST", "Préfecture du Rhône", "AT-2023-0457", "21078"}));
    b.Imprime("AIDANT", {"S0001"});
    const std::vector<std::string> attendu = {" ",
                                              " Pays                 : " + c.pays,
                                              " Type carte           : Carte de séjour",
                                              " Préfecture           : Préfecture du Rhône",
                                              " N° autorisation      : AT-2023-0457",
                                              " Fin validité         : 15/09/2025",
                                              " "};
    EXPECT_EQ(b.Section("DETAIL ETRANGER"), attendu) << c.nationalite;
  }
}

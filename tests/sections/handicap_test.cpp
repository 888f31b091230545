// A carer's handicap (from the information record the person-to-notify
// section reads) and the residence permit of a foreign national.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/banc.h"

using banc::Banc;
using banc::Rec;

namespace {

marbrel::TabDyn Aidant(const std::string& nationalite) {
  marbrel::TabDyn r;
  r.Remplace(2, "HADDAD");
  r.Remplace(3, "Karim");
  r.Remplace(19, nationalite);
  return r;
}

void Tables(Banc& b) {
  b.Met("TABLES", "CATHANDICAP",
        Rec({"", "A]B]C", "Travailleur handicapé]Invalide civil]Rente accident du travail"}));
  b.Met("TABLES", "PLACANT", Rec({"", "ANPE]MIS", "Pôle emploi]Mission locale"}));
  b.Met("TABLES", "SITSAL", Rec({"", "CH]ET", "Chômeur]Étudiant"}));
  b.Met("TABLES", "TITRESSEJOUR", Rec({"", "CR]CST", "Carte de résident]Carte de séjour"}));
}

}  // namespace

TEST(Handicap, PrintsTheInformationRecordOfTheCarer) {
  Banc b;
  Tables(b);
  b.Met("CIVILAIDANT", "S0001", Aidant("FRANCE"));
  b.Met("CIVILAIDANT", "S0002", Aidant("FRANCE"));
  b.Met("INFOSAIDANT", "S0001",
        Rec({"M. HADDAD", "0601020304", "Frère", "", "Catégorie B", "", "MIS", "CH", "", "B"}));
  // The second carer has no information record: nothing of the first may
  // show through.
  b.Imprime("AIDANT", {"S0001", "S0002"});
  auto l = b.Section("HANDICAP");
  const std::vector<std::string> attendu = {" ",
                                            " Catég. bénéficiaire  : Invalide civil",
                                            " Catég. handicap      : Catégorie B",
                                            " Placement antérieur  : Mission locale",
                                            " Situation antérieure : Chômeur",
                                            " "};
  EXPECT_EQ(l, attendu);

  // The second dossier's section, after the second first-page header.
  const auto lignes = b.Lignes();
  size_t deuxieme = 0;
  for (size_t i = 0; i < lignes.size(); ++i)
    if (lignes[i] == "S0002 HADDAD Karim") deuxieme = i;
  ASSERT_GT(deuxieme, 0u);
  auto titre = std::find(lignes.begin() + deuxieme, lignes.end(), "HANDICAP");
  ASSERT_NE(titre, lignes.end());
  const std::vector<std::string> vide = {" Catég. bénéficiaire  : ", " Catég. handicap      : ",
                                         " Placement antérieur  : ", " Situation antérieure : "};
  EXPECT_EQ(std::vector<std::string>(titre + 2, titre + 6), vide);
}

TEST(DetailEtranger, ResidencePermitOfAForeignNational) {
  Banc b;
  Tables(b);
  b.Met("CIVILAIDANT", "S0001", Aidant("MAROC"));
  b.Met("ETRANGER", "S0001", Rec({"CST", "Préfecture du Rhône", "AT-2023-0457", "21078"}));
  b.Imprime("AIDANT", {"S0001"});
  auto l = b.Section("DETAIL ETRANGER");
  const std::vector<std::string> attendu = {" ",
                                            " Pays                 : MAROC",
                                            " Type carte           : Carte de séjour",
                                            " Préfecture           : Préfecture du Rhône",
                                            " N° autorisation      : AT-2023-0457",
                                            " Fin validité         : 15/09/2025",
                                            " "};
  EXPECT_EQ(l, attendu);
}

TEST(DetailEtranger, OnlyTheExactWordFranceHidesTheCountry) {
  struct Cas {
    std::string nationalite, pays;
  };
  for (const Cas& c : {Cas{"FRANCE", " Pays                 : "},
                       Cas{"France", " Pays                 : France"}}) {
    Banc b;
    Tables(b);
    b.Met("CIVILAIDANT", "S0001", Aidant(c.nationalite));
    // An unknown permit code prints no label, an empty date no date.
    b.Met("ETRANGER", "S0001", Rec({"XX"}));
    b.Imprime("AIDANT", {"S0001"});
    auto l = b.Section("DETAIL ETRANGER");
    ASSERT_GE(l.size(), 6u) << c.nationalite;
    EXPECT_EQ(l[1], c.pays);
    EXPECT_EQ(l[2], " Type carte           : ");
    EXPECT_EQ(l[5], " Fin validité         : ");
  }
}

// The invoicing address of a care recipient and the bank details of both
// dossier types.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/banc.h"

using banc::Banc;
using banc::Rec;

namespace {

const std::string kRetrait(24, ' ');

// An invoicing record from its attributes by number (the others empty).
marbrel::TabDyn Facturation(std::initializer_list<std::pair<long, std::string>> attributs) {
  marbrel::TabDyn r;
  for (const auto& [a, v] : attributs) r.Remplace(a, v);
  return r;
}

bool Contient(const std::vector<std::string>& lignes, const std::string& debut) {
  return std::any_of(lignes.begin(), lignes.end(),
                     [&](const std::string& l) { return l.rfind(debut, 0) == 0; });
}

}  // namespace

TEST(AdresseFacturation, FullAddressWithCedex) {
  Banc b;
  b.Met("ELTSFACTAIDE", "A0001",
        Facturation({{1, "M"},
                     {2, "LEROY Jeanne"},
                     {3, "12"},
                     {4, ""},
                     {5, "rue"},
                     {6, "des Lilas"},
                     {7, "Bâtiment B"},
                     {8, "75001"},
                     {9, "PARIS"},
                     {10, "1"},
                     {11, "05"},
                     {15, "Fille"}}));
  b.Imprime("AIDE", {"A0001"});
  auto l = b.Section("ADRESSE FACTURATION");
  const std::vector<std::string> attendu = {" ",
                                            " Périodicité          : Mensuelle",
                                            " Nom                  : LEROY Jeanne",
                                            " Adresse              : 12 rue des Lilas",
                                            kRetrait + "Bâtiment B",
                                            kRetrait + "75001 PARIS Cedex 05",
                                            " Relation             : Fille",
                                            " ",
                                            " "};
  EXPECT_EQ(l, attendu);
}

TEST(AdresseFacturation, AddressBlockAlwaysKeepsThreeLines) {
  struct Cas {
    std::vector<std::pair<long, std::string>> attributs;
    std::vector<std::string> bloc;
  };
  const std::vector<Cas> cas = {
      // Street without a fourth piece keeps the space after the third; no
      // Cedex unless the flag is exactly "1".
      {{{3, "3"}, {5, "avenue Foch"}, {8, "69006"}, {9, "LYON"}, {10, "0"}, {11, "02"}},
       {" Adresse              : 3 avenue Foch ", kRetrait + "69006 LYON", " "}},
      {{{7, "Résidence Les Pins"}, {8, "13001"}, {9, "MARSEILLE"}},
       {" Adresse              : Résidence Les Pins", kRetrait + "13001 MARSEILLE", " "}},
      {{{8, "33000"}, {9, "BORDEAUX"}}, {" Adresse              : 33000 BORDEAUX", " ", " "}},
  };
  for (const auto& c : cas) {
    Banc b;
    marbrel::TabDyn r;
    for (const auto& [a, v] : c.attributs) r.Remplace(a, v);
    r.Remplace(1, "m");  // the periodicity comparison is exact
    b.Met("ELTSFACTAIDE", "A0001", r);
    b.Imprime("AIDE", {"A0001"});
    auto l = b.Section("ADRESSE FACTURATION");
    ASSERT_GE(l.size(), 8u);
    EXPECT_EQ(l[1], " Périodicité          : ");
    EXPECT_EQ(std::vector<std::string>(l.begin() + 3, l.begin() + 6), c.bloc);
    EXPECT_EQ(l[6], " Relation             : ");
  }
}

TEST(AdresseBancaire, CareRecipientFromInvoicingRecord) {
  Banc b;
  b.Met("ELTSFACTAIDE", "A0001",
        Facturation({{1, "T"}, {18, "30004"}, {19, "00123"}, {20, "00012345678"}, {21, "42"}}));
  b.Met("BIC", "30004", Rec({"BNPAFRPP", "BNP PARIBAS]autre nom"}));
  b.Imprime("AIDE", {"A0001"});
  auto l = b.Section("ADRESSE BANCAIRE");
  const std::vector<std::string> attendu = {
      " ", " Nom banque           : BNP PARIBAS",
      " Code banque          : 30004" + std::string(25, ' ') + " Code guichet  : 00123",
      " Numéro de compte     : 00012345678" + std::string(19, ' ') + " Clé           : 42",
      // Empty refusal flag and a key: the direct debit is on.
      " Prélèvement          : OUI", " "};
  EXPECT_EQ(l, attendu);
  EXPECT_EQ(b.Section("ADRESSE FACTURATION").at(1), " Périodicité          : Trimestrielle");
}

TEST(AdresseBancaire, RefusedDebitAndUnknownBank) {
  Banc b;
  b.Met("ELTSFACTAIDE", "A0001", Facturation({{18, "99999"}, {25, "1"}}));
  b.Imprime("AIDE", {"A0001"});
  auto l = b.Section("ADRESSE BANCAIRE");
  ASSERT_GE(l.size(), 5u);
  EXPECT_EQ(l[1], " Nom banque           : ");
  EXPECT_EQ(l[4], " Prélèvement          : NON");

  // Without a key there is no answer at all.
  Banc c;
  c.Imprime("AIDE", {});
  auto m = c.Section("ADRESSE BANCAIRE");
  ASSERT_GE(m.size(), 5u);
  EXPECT_EQ(m[2], " Code banque          : " + std::string(30, ' ') + " Code guichet  : ");
  EXPECT_EQ(m[4], " Prélèvement          : ");
}

TEST(AdresseBancaire, CarerReadsOwnBankRecordAndHasNoDebitLine) {
  for (const std::string type : {"AIDANT", "BENEVOLE"}) {
    Banc b;
    b.Met("RIBAIDANT", "S0001", Rec({"x", "y", "20041", "01005", "0512345K020", "88"}));
    // An invoicing record under the same key is not the carer's.
    b.Met("ELTSFACTAIDE", "S0001", Facturation({{18, "30004"}}));
    b.Met("BIC", "20041", Rec({"PSSTFRPP", "LA BANQUE POSTALE"}));
    b.Imprime(type, {"S0001"});
    auto l = b.Section("ADRESSE BANCAIRE");
    ASSERT_GE(l.size(), 4u) << type;
    EXPECT_EQ(l[1], " Nom banque           : LA BANQUE POSTALE") << type;
    EXPECT_EQ(l[2],
              " Code banque          : 20041" + std::string(25, ' ') + " Code guichet  : 01005")
        << type;
    EXPECT_EQ(l[3],
              " Numéro de compte     : 0512345K020" + std::string(19, ' ') + " Clé           : 88")
        << type;
    EXPECT_FALSE(Contient(l, " Prélèvement")) << type;
  }
}

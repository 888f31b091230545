// The invoicing address of a care recipient and the bank details of every
// dossier type.
#include <gtest/gtest.h>

#include "tests/support/banc.h"

using banc::Rec;

namespace {

const std::string R(24, ' ');

marbrel::TabDyn Attributs(std::initializer_list<std::pair<long, std::string>> attributs) {
  marbrel::TabDyn r;
  for (const auto& [a, v] : attributs) r.Remplace(a, v);
  return r;
}

}  // namespace

TEST(Adresses, CareRecipientInvoicingAndBank) {
  banc::Banc b;
  b.Met("ELTSFACTAIDE", "A0001",
        Attributs({{1, "M"},
                   {2, "LEROY Jeanne"},
                   {3, "12"},
                   {5, "rue"},
                   {6, "des Lilas"},
                   {7, "Bât. B"},
                   {8, "75001"},
                   {9, "PARIS"},
                   {10, "1"},
                   {11, "05"},
                   {15, "Fille"},
                   {18, "30004"},
                   {19, "00123"},
                   {20, "00012345678"},
                   {21, "42"}}));
  b.Met("BIC", "30004", Rec({"BNPAFRPP", "BNP PARIBAS]autre"}));
  b.Imprime("AIDE", {"A0001"});
  const std::vector<std::string> facturation = {" ",
                                                " Périodicité          : Mensuelle",
                                                " Nom                  : LEROY Jeanne",
                                                " Adresse              : 12 rue des Lilas",
                                                R + "Bât. B",
                                                R + "75001 PARIS Cedex 05",
                                                " Relation             : Fille",
                                                " ",
                                                " "};
  EXPECT_EQ(b.Section("ADRESSE FACTURATION"), facturation);
  // A 5-character bank code is followed by 25 spaces; an empty refusal flag
  // with a key means the direct debit is on.
  const std::vector<std::string> banque = {
      " ",
      " Nom banque           : BNP PARIBAS",
      " Code banque          : 30004" + std::string(25, ' ') + " Code guichet  : 00123",
      " Numéro de compte     : 00012345678" + std::string(19, ' ') + " Clé           : 42",
      " Prélèvement          : OUI",
      " "};
  EXPECT_EQ(b.Section("ADRESSE BANCAIRE"), banque);
}

TEST(Adresses, ExactCodesShortAddressAndRefusedDebit) {
  banc::Banc b;
  b.Met(
      "ELTSFACTAIDE", "A0001",
      Attributs({{1, "m"}, {3, "3"}, {8, "69006"}, {9, "LYON"}, {10, "0"}, {18, "99"}, {25, "1"}}));
  b.Imprime("AIDE", {"A0001"});
  auto f = b.Section("ADRESSE FACTURATION");
  ASSERT_EQ(f.size(), 9u);
  EXPECT_EQ(f[1], " Périodicité          : ");
  // The street keeps its trailing space; the block still takes three lines.
  EXPECT_EQ(std::vector<std::string>(f.begin() + 3, f.begin() + 6),
            (std::vector<std::string>{" Adresse              : 3 ", R + "69006 LYON", " "}));
  auto l = b.Section("ADRESSE BANCAIRE");
  EXPECT_EQ(l.at(1), " Nom banque           : ");
  EXPECT_EQ(l.at(4), " Prélèvement          : NON");
}

TEST(Adresses, OtherDossierTypesUseTheirOwnBankRecordWithoutDebitLine) {
  for (const std::string type : {"AIDANT", "BENEVOLE"}) {
    banc::Banc b;
    b.Met("RIBAIDANT", "S0001", Rec({"", "", "20041", "01005", "0512345K020", "88"}));
    b.Met("BIC", "20041", Rec({"PSSTFRPP", "LA BANQUE POSTALE"}));
    b.Imprime(type, {"S0001"});
    const std::vector<std::string> attendu = {
        " ", " Nom banque           : LA BANQUE POSTALE",
        " Code banque          : 20041" + std::string(25, ' ') + " Code guichet  : 01005",
        " Numéro de compte     : 0512345K020" + std::string(19, ' ') + " Clé           : 88", " "};
    EXPECT_EQ(b.Section("ADRESSE BANCAIRE"), attendu) << type;
  }
}

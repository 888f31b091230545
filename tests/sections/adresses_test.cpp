#include "tests/support/releve.h"

TEST(Adresses, InvoicingAndBankOfEveryDossierType) {
  Banc b;
  b.Met("ELTSFACTAIDE", "A0001",
        Fiche("1=M|2=LEROY Jeanne|3=12|5=rue|6=des Lilas|7=Bât. B|8=75001|9=PARIS|10=1|"
              "11=05|15=Fille|18=30004|19=00123|20=00012345678|21=42"));
  b.Met("BIC", "30004", Rec({"BNPAFRPP", "BNP PARIBAS]autre"}));
  // "m" is no periodicity; an unknown bank has no name; a refusal flag stops the debit.
  b.Met("ELTSFACTAIDE", "A0002", Fiche("1=m|3=3|8=69006|9=LYON|10=0|18=99|25=1"));
  b.Imprime("AIDE", {"A0001", "A0002"});
  EXPECT_EQ(Bloc(b, "ADRESSE FACTURATION"),
            (V{" ", " Périodicité          : Mensuelle", " Nom                  : LEROY Jeanne",
               " Adresse              : 12 rue des Lilas", S(24) + "Bât. B",
               S(24) + "75001 PARIS Cedex 05", " Relation             : Fille", " "}));
  // A 5-character bank code is followed by 25 spaces; no refusal flag with a key: debit on.
  EXPECT_EQ(Bloc(b, "ADRESSE BANCAIRE"),
            (V{" ", " Nom banque           : BNP PARIBAS",
               " Code banque          : 30004" + S(25) + " Code guichet  : 00123",
               " Numéro de compte     : 00012345678" + S(19) + " Clé           : 42",
               " Prélèvement          : OUI"}));
  // The street keeps its trailing space; the block still takes three lines.
  EXPECT_EQ(
      Bloc(b, "ADRESSE FACTURATION", 1),
      (V{" ", " Périodicité          : ", " Nom                  : ", " Adresse              : 3 ",
         S(24) + "69006 LYON", " ", " Relation             : ", " "}));
  EXPECT_EQ(
      Bloc(b, "ADRESSE BANCAIRE", 1),
      (V{" ",
         " Nom banque           : ", " Code banque          : 99" + S(28) + " Code guichet  : ",
         " Numéro de compte     : " + S(30) + " Clé           : ", " Prélèvement          : NON"}));

  // The other dossier types read their own bank record and have no debit line.
  b.Met("RIBAIDANT", "S0001", Rec({"", "", "20041", "01005", "0512345K020", "88"}));
  b.Met("BIC", "20041", Rec({"PSSTFRPP", "LA BANQUE POSTALE"}));
  for (const std::string type : {"AIDANT", "BENEVOLE"}) {
    b.Imprime(type, {"S0001"});
    EXPECT_EQ(Bloc(b, "ADRESSE BANCAIRE"),
              (V{" ", " Nom banque           : LA BANQUE POSTALE",
                 " Code banque          : 20041" + S(25) + " Code guichet  : 01005",
                 " Numéro de compte     : 0512345K020" + S(19) + " Clé           : 88"}))
        << type;
  }
}

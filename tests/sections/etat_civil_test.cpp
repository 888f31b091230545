#include "tests/support/releve.h"

static V Imprime(std::string type, const marbrel::TabDyn& fiche, std::string jour = "15/03/2024") {
  Banc b;
  b.Met("TABLES", "SITSOCIOPROF", Rec({"", "ACT]RET", "Actif]Retraité"}));
  b.Met(type == "AIDE" ? "CIVILAIDE" : "CIVILAIDANT", "K1", fiche);
  b.Imprime(type, {"K1"}, jour);
  return Bloc(b, "ETAT CIVIL");
}

TEST(EtatCivil, CareRecipientAddressAgesCodesAndTheAddressBlocksHeight) {
  auto l = Imprime("AIDE", Fiche("5=12|6=rue|7=des Lilas|9=Bâtiment B|10=75001|11=PARIS|12=1|13=05|"
                                 "20=" +
                                 Jour("02/05/1940") + "|25=3|42=RET"));
  // Pieces 5 to 7 each bring a trailing space; piece 8 is empty.
  EXPECT_EQ(Tranche(l, 3, 6), (V{" Adresse              : 12 rue des Lilas ", S(24) + "Bâtiment B",
                                 S(24) + "75001 PARIS Cedex 05"}));
  EXPECT_EQ(l.at(13), " Date de naissance    : 02/05/1940          Age        : 83 ans");
  EXPECT_EQ(l.at(17) + "|" + l.at(19),
            " Situation familiale  : Veuf| Situation socio-prof : Retraité");
  // Ages around the 29th of February; unknown codes and no date print nothing.
  const std::string ligne = " Date de naissance    : 29/02/1980          Age        : ";
  const auto fiche = Fiche("20=" + Jour("29/02/1980"));
  EXPECT_EQ(Imprime("AIDE", fiche, "28/02/2000").at(13), ligne + "19 ans");  // 7304 days
  EXPECT_EQ(Imprime("AIDE", fiche, "29/02/2000").at(13), ligne + "20 ans");  // 7305 days
  for (const std::string code : {"8", "0", "01"}) {
    l = Imprime("AIDE", Fiche("25=" + code + "|42=" + code));
    EXPECT_EQ(l.at(13) + "|" + l.at(17) + "|" + l.at(19),
              " Date de naissance    : " + S(20) +
                  "Age        : | Situation familiale  : | Situation socio-prof : ")
        << code;
  }

  // The address block keeps its height; Cedex is for care recipients only.
  const std::string ville = S(24) + "75001 PARIS", a = " Adresse              : ";
  // Each case: the dossier type, street, complement, Cedex flag, the four lines.
  const std::vector<V> cas = {
      {"AIDE", "rue Haute", "", "0", a + "rue Haute ", ville, " ", " "},
      {"AIDE", "", "Bât. C", "", a + "Bât. C", ville, " ", " "},
      {"AIDE", "", "", "", a + "75001 PARIS", " ", " ", " "},
      // A carer's attribute 12 is the first telephone, even when it reads "1".
      {"AIDANT", "", "", "1", a + "75001 PARIS", " ", " ", " "},
  };
  for (const V& c : cas) {
    SCOPED_TRACE(c[0] + "|" + c[1] + "|" + c[2] + "|" + c[3]);
    l = Imprime(c[0],
                Fiche("6=" + c[1] + "|9=" + c[2] + "|10=75001|11=PARIS|12=" + c[3] + "|13=05"));
    EXPECT_EQ(Tranche(l, 3, 7), V(c.begin() + 4, c.end()));
    EXPECT_EQ(l.at(7).rfind(" Téléphone", 0), 0u);
  }
}

TEST(EtatCivil, CarerLinesAndDependantsFrame) {
  const std::string entete =
      "               Nom             Prénom        Date de nais.        Lien";
  std::string douze;  // a second carer's dependants: only ten print
  for (int i = 1; i <= 12; ++i) douze += (i > 1 ? "]NOM" : "NOM") + std::to_string(i);
  Banc b;
  // The lines of a carer's own: two telephones with their notes, the nationality.
  b.Met("CIVILAIDANT", "S0001",
        Fiche("12=04 11|13=bureau|14=06 55|15=portable|19=Française|22=ABCDEFGHIJKLMNOPQRST]MARTIN|"
              "23=Marie-Antoinette]Léa|24=" +
              Jour("10/06/2010") + "]" + Jour("01/09/2015") + "|25=1]9|26=" + Jour("16/03/1985")));
  b.Met("CIVILAIDANT", "S0002", Fiche("22=" + douze));
  b.Imprime("AIDANT", {"S0001", "S0002", "S0003"});
  const V l = Bloc(b, "ETAT CIVIL");
  EXPECT_EQ(Tranche(l, 7, 12),
            (V{" Téléphone 1          : 04 11", "        Observations  : bureau", " ",
               " Téléphone 2          : 06 55", "        Observations  : portable"}));
  EXPECT_EQ(l.at(15), " Nation               : Française");
  // Born the day after "today" 39 years ago: still 38.
  EXPECT_EQ(l.at(17), " Date de naissance    : 16/03/1985          Age        : 38 ans");
  // A 20-character name keeps its first 16 and one space; a 16-character
  // first name is followed by four; an unknown relation prints nothing.
  EXPECT_EQ(Tranche(l, 28, 31),
            (V{entete, "         ABCDEFGHIJKLMNOP Marie-Antoinette    10/06/2010    Enfant",
               "         MARTIN           Léa                 01/09/2015    "}));
  const auto douze_l = Bloc(b, "ETAT CIVIL", 1);
  ASSERT_EQ(douze_l.size(), l.size() + 8);
  EXPECT_EQ(douze_l.back().substr(0, 15), "         NOM10 ");
  EXPECT_EQ(Bloc(b, "ETAT CIVIL", 2).back(), entete);
  // The frame has eleven lines with ten, twelve or no dependants.
  for (int rang : {0, 1, 2})
    EXPECT_EQ(Cadre(b, entete, rang), "11 lignes, 2-18 cm: 6 10 14") << rang;
}

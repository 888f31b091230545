// ETAT CIVIL for both dossier types: the address block that keeps its height,
// the Cedex rule, ages around a birthday, the code words and a carer's
// dependants in their frame.
#include <gtest/gtest.h>

#include "tests/sections/cadre_sous.h"
#include "tests/sections/fiche_par_attribut.h"
#include "tests/support/section_seule.h"

using banc::Banc;
using banc::Fiche;
using banc::Jour;

namespace {

const std::string kRetrait(24, ' ');
const std::string kEnteteCharges =
    "               Nom             Prénom        Date de nais.        Lien";

std::vector<std::string> Imprime(const std::string& type, const marbrel::TabDyn& fiche,
                                 const std::string& aujourdhui = "15/03/2024") {
  Banc b;
  b.Met("TABLES", "SITSOCIOPROF", banc::Rec({"", "ACT]RET", "Actif]Retraité"}));
  b.Met(type == "AIDE" ? "CIVILAIDE" : "CIVILAIDANT", "K1", fiche);
  b.Imprime(type, {"K1"}, aujourdhui);
  return banc::Section_Seule(b, "ETAT CIVIL");
}

}  // namespace

TEST(EtatCivil, CareRecipientLines) {
  auto l = Imprime("AIDE", Fiche({{4, "DURAND"},
                                  {5, "12"},
                                  {6, "rue"},
                                  {7, "des Lilas"},
                                  {9, "Bâtiment B"},
                                  {10, "75001"},
                                  {11, "PARIS"},
                                  {12, "1"},
                                  {13, "05"},
                                  {14, "01 23 45"},
                                  {15, "le soir"},
                                  {18, "2400575123456"},
                                  {19, "12"},
                                  {20, Jour("02/05/1940")},
                                  {21, "Lyon"},
                                  {24, "France"},
                                  {25, "3"},
                                  {42, "RET"}}));
  const std::vector<std::string> attendu = {
      " ", " Nom patronymique     : DURAND", " ",
      // Pieces 5 to 7 each bring a trailing space; piece 8 is empty.
      " Adresse              : 12 rue des Lilas ", kRetrait + "Bâtiment B",
      kRetrait + "75001 PARIS Cedex 05", " ", " Téléphone            : 01 23 45",
      "        Observations  : le soir", " ", " N.I.R.               : 2400575123456 12", " ",
      // No nationality line for a care recipient, but its blank line stays.
      " ", " Date de naissance    : 02/05/1940          Age        : 83 ans",
      " Lieu de naissance    : Lyon", " Pays de naissance    : France", " ",
      " Situation familiale  : Veuf", " ", " Situation socio-prof : Retraité"};
  EXPECT_EQ(l, attendu);
}

TEST(EtatCivil, AddressBlockKeepsItsHeightAndCedexIsForCareRecipientsOnly) {
  const std::string ville = kRetrait + "75001 PARIS";
  struct Cas {
    std::string type, rue, complement, cedex;
    std::vector<std::string> bloc;
  };
  const std::string a = " Adresse              : ";
  const std::vector<Cas> cas = {
      {"AIDE", "rue Haute", "Bât. C", "", {a + "rue Haute ", kRetrait + "Bât. C", ville, " "}},
      {"AIDE", "rue Haute", "", "0", {a + "rue Haute ", ville, " ", " "}},
      {"AIDE", "", "Bât. C", "", {a + "Bât. C", ville, " ", " "}},
      {"AIDE", "", "", "", {a + "75001 PARIS", " ", " ", " "}},
      {"AIDE", "", "", "1", {a + "75001 PARIS Cedex 05", " ", " ", " "}},
      // A carer's attribute 12 is the first telephone, even when it reads "1".
      {"AIDANT", "", "", "1", {a + "75001 PARIS", " ", " ", " "}},
  };
  for (const auto& c : cas) {
    SCOPED_TRACE(c.type + "|" + c.rue + "|" + c.complement + "|" + c.cedex);
    auto l = Imprime(c.type, Fiche({{6, c.rue},
                                    {9, c.complement},
                                    {10, "75001"},
                                    {11, "PARIS"},
                                    {12, c.cedex},
                                    {13, "05"}}));
    ASSERT_GE(l.size(), 8u);
    EXPECT_EQ(std::vector<std::string>(l.begin() + 3, l.begin() + 7), c.bloc);
    EXPECT_EQ(l[7].rfind(" Téléphone", 0), 0u);
  }
}

TEST(EtatCivil, AgeAroundALeapBirthdayAndWithoutDate) {
  const std::string ligne = " Date de naissance    : 29/02/1980          Age        : ";
  const auto fiche = Fiche({{20, Jour("29/02/1980")}});
  EXPECT_EQ(Imprime("AIDE", fiche, "28/02/2000").at(13), ligne + "19 ans");  // 7304 days
  EXPECT_EQ(Imprime("AIDE", fiche, "29/02/2000").at(13), ligne + "20 ans");  // 7305 days
  EXPECT_EQ(Imprime("AIDE", Fiche({{4, "DURAND"}})).at(13),
            " Date de naissance    : " + std::string(20, ' ') + "Age        : ");
}

TEST(EtatCivil, UnknownCodesPrintNothingBehindTheirLabels) {
  for (const std::string code : {"8", "0", "01"}) {
    auto l = Imprime("AIDE", Fiche({{25, code}, {42, code}}));
    ASSERT_EQ(l.size(), 20u) << code;
    EXPECT_EQ(l[17], " Situation familiale  : ") << code;
    EXPECT_EQ(l[19], " Situation socio-prof : ") << code;
  }
}

TEST(EtatCivil, CarerLinesAndDependantsFrame) {
  Banc b;
  b.Met("CIVILAIDANT", "S0001",
        Fiche({{4, "MARTIN"},
               {5, "3"},
               {8, "allée des Pins"},
               {10, "69003"},
               {11, "LYON"},
               {12, "04 11"},
               {13, "bureau"},
               {14, "06 55"},
               {15, "portable"},
               {17, "1850669123456"},
               {18, "07"},
               {19, "Française"},
               {21, "2"},
               {22, "ABCDEFGHIJKLMNOPQRST]MARTIN"},
               {23, "Marie-Antoinette]Léa"},
               {24, Jour("10/06/2010") + "]" + Jour("01/09/2015")},
               {25, "1]9"},
               {26, Jour("16/03/1985")},
               {27, "Villeurbanne"},
               {30, "France"}}));
  b.Imprime("AIDANT", {"S0001"});
  const std::vector<std::string> attendu = {
      " ", " Nom patronymique     : MARTIN", " ", " Adresse              : 3 allée des Pins",
      kRetrait + "69003 LYON", " ", " ", " Téléphone 1          : 04 11",
      "        Observations  : bureau", " ", " Téléphone 2          : 06 55",
      "        Observations  : portable", " ", " N.I.R.               : 1850669123456 07", " ",
      " Nation               : Française", " ",
      // Born the day after "today" 39 years ago: still 38.
      " Date de naissance    : 16/03/1985          Age        : 38 ans",
      " Lieu de naissance    : Villeurbanne", " Pays de naissance    : France", " ",
      " Situation familiale  : Célibataire", " ", " ", " Personnes à charge", " ", " ", " ",
      kEnteteCharges,
      // A 20-character name keeps its first 16 and one space; a 16-character
      // first name is followed by four; an unknown relation prints nothing.
      "         ABCDEFGHIJKLMNOP Marie-Antoinette    10/06/2010    Enfant",
      "         MARTIN           Léa                 01/09/2015    "};
  EXPECT_EQ(banc::Section_Seule(b, "ETAT CIVIL"), attendu);

  auto cadre = banc::Cadre_Sous(b.Enregistrement(), kEnteteCharges);
  ASSERT_TRUE(cadre);
  EXPECT_NEAR(cadre->Lignes(), 11.0, 1e-3);
  EXPECT_NEAR(cadre->gauche, banc::Cm(2), 1e-3);
  EXPECT_NEAR(cadre->droite, banc::Cm(18), 1e-3);
  ASSERT_EQ(cadre->separateurs.size(), 3u);
  EXPECT_NEAR(cadre->separateurs[0], banc::Cm(6), 1e-3);
  EXPECT_NEAR(cadre->separateurs[2], banc::Cm(14), 1e-3);
}

TEST(EtatCivil, TenDependantsAtMostAndAnElevenLineFrameEvenWithNone) {
  std::string noms;
  for (int i = 1; i <= 12; ++i) noms += (i > 1 ? "]NOM" : "NOM") + std::to_string(i);
  for (const std::string& liste : {noms, std::string()}) {
    Banc b;
    b.Met("CIVILAIDANT", "S0001", Fiche({{22, liste}}));
    b.Imprime("AIDANT", {"S0001"});
    auto l = banc::Section_Seule(b, "ETAT CIVIL");
    auto entete = std::find(l.begin(), l.end(), kEnteteCharges);
    ASSERT_NE(entete, l.end());
    std::vector<std::string> rangees(entete + 1, l.end());
    ASSERT_EQ(rangees.size(), liste.empty() ? 0u : 10u);
    if (!liste.empty()) {
      EXPECT_EQ(rangees.back().substr(0, 15), "         NOM10 ");
    }
    auto cadre = banc::Cadre_Sous(b.Enregistrement(), kEnteteCharges);
    ASSERT_TRUE(cadre);
    EXPECT_NEAR(cadre->Lignes(), 11.0, 1e-3);
  }
}

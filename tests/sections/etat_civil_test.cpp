// ETAT CIVIL for both dossier types: the address block that keeps its height,
// the Cedex rule, ages around a birthday, the code words and the dependants'
// frame of a carer.
#include <gtest/gtest.h>

#include "marbrel/outils.h"
#include "tests/sections/cadre_sous.h"
#include "tests/support/banc.h"
#include "tests/support/section_seule.h"

using banc::Banc;
using banc::Rec;

namespace {

const std::string kRetrait(24, ' ');
const std::string kEnteteCharges =
    "               Nom             Prénom        Date de nais.        Lien";

// A record from its attributes by number, the others empty; "]" separates
// values inside an attribute.
marbrel::TabDyn Fiche(std::initializer_list<std::pair<long, std::string>> attributs) {
  marbrel::TabDyn r;
  for (const auto& [a, v] : attributs) r.Remplace(a, Rec({v}).Extrait(1));
  return r;
}

// The internal day number of a displayed date.
std::string J(const std::string& date) { return marbrel::Outils::Instance().Date_Interne(date); }

std::vector<std::string> Aide(Banc& b, const marbrel::TabDyn& fiche,
                              const std::string& aujourdhui = "15/03/2024") {
  b.Met("CIVILAIDE", "A0001", fiche);
  b.Imprime("AIDE", {"A0001"}, aujourdhui);
  return banc::Section_Seule(b, "ETAT CIVIL");
}

}  // namespace

TEST(EtatCivil, CareRecipientLinesWithCedexAndSocioProfessionalLabel) {
  Banc b;
  b.Met("TABLES", "SITSOCIOPROF", Rec({"", "ACT]RET", "Actif]Retraité de la fonction publique"}));
  auto l = Aide(b, Fiche({{4, "DURAND"},
                          {5, "12"},
                          {6, "rue"},
                          {7, "des Lilas"},
                          {9, "Bâtiment B"},
                          {10, "75001"},
                          {11, "PARIS"},
                          {12, "1"},
                          {13, "05"},
                          {14, "01 23 45 67 89"},
                          {15, "le soir"},
                          {18, "2400575123456"},
                          {19, "12"},
                          {20, J("02/05/1940")},
                          {21, "Lyon"},
                          {24, "France"},
                          {25, "3"},
                          {42, "RET"}}));
  const std::vector<std::string> attendu = {
      " ", " Nom patronymique     : DURAND", " ",
      // Pieces 5 to 7 each bring a trailing space; piece 8 is empty.
      " Adresse              : 12 rue des Lilas ", kRetrait + "Bâtiment B",
      kRetrait + "75001 PARIS Cedex 05", " ", " Téléphone            : 01 23 45 67 89",
      "        Observations  : le soir", " ", " N.I.R.               : 2400575123456 12", " ",
      // No nationality line for a care recipient, but its blank line stays.
      " ", " Date de naissance    : 02/05/1940          Age        : 83 ans",
      " Lieu de naissance    : Lyon", " Pays de naissance    : France", " ",
      " Situation familiale  : Veuf", " ",
      " Situation socio-prof : Retraité de la fonction publique"};
  EXPECT_EQ(l, attendu);
  // The spouse and the household follow directly.
  EXPECT_FALSE(b.Section("CONJOINT").empty());
  EXPECT_FALSE(b.Section("AUTRES PERSONNES AU FOYER").empty());
}

TEST(EtatCivil, AddressBlockKeepsItsHeightInEveryCase) {
  struct Cas {
    std::string rue, complement;
    std::vector<std::string> bloc;
  };
  const std::string ville = kRetrait + "75001 PARIS";
  const std::vector<Cas> cas = {
      {"rue Haute",
       "Bât. C",
       {" Adresse              : rue Haute ", kRetrait + "Bât. C", ville, " "}},
      {"rue Haute", "", {" Adresse              : rue Haute ", ville, " ", " "}},
      {"", "Bât. C", {" Adresse              : Bât. C", ville, " ", " "}},
      {"", "", {" Adresse              : 75001 PARIS", " ", " ", " "}},
  };
  for (const auto& c : cas) {
    SCOPED_TRACE(c.rue + "|" + c.complement);
    Banc b;
    auto l = Aide(
        b, Fiche({{4, "DURAND"}, {6, c.rue}, {9, c.complement}, {10, "75001"}, {11, "PARIS"}}));
    ASSERT_GE(l.size(), 8u);
    EXPECT_EQ(std::vector<std::string>(l.begin() + 3, l.begin() + 7), c.bloc);
    EXPECT_EQ(l[7], " Téléphone            : ");
  }
}

TEST(EtatCivil, CedexOnlyWithFlagOneAndOnlyForCareRecipients) {
  for (const std::string drapeau : {"0", ""}) {
    Banc b;
    auto l = Aide(
        b, Fiche({{8, "place Vendôme"}, {10, "75001"}, {11, "PARIS"}, {12, drapeau}, {13, "05"}}));
    ASSERT_GE(l.size(), 5u);
    EXPECT_EQ(l[3], " Adresse              : place Vendôme");
    EXPECT_EQ(l[4], kRetrait + "75001 PARIS");
  }
  // A carer's attribute 12 is the first telephone, even when it reads "1".
  Banc b;
  b.Met("CIVILAIDANT", "S0001", Fiche({{10, "75001"}, {11, "PARIS"}, {12, "1"}, {13, "05"}}));
  b.Imprime("AIDANT", {"S0001"});
  auto l = banc::Section_Seule(b, "ETAT CIVIL");
  ASSERT_GE(l.size(), 9u);
  EXPECT_EQ(l[3], " Adresse              : 75001 PARIS");
  EXPECT_EQ(l[7], " Téléphone 1          : 1");
  EXPECT_EQ(l[8], "        Observations  : 05");
}

TEST(EtatCivil, AgeCountsDaysOverQuarterDaysAroundALeapBirthday) {
  const std::string naissance = J("29/02/1980");
  const std::string ligne = " Date de naissance    : 29/02/1980          Age        : ";
  {
    Banc b;
    auto l = Aide(b, Fiche({{20, naissance}}), "28/02/2000");  // 7304 days
    ASSERT_GE(l.size(), 14u);
    EXPECT_EQ(l[13], ligne + "19 ans");
  }
  {
    Banc b;
    auto l = Aide(b, Fiche({{20, naissance}}), "29/02/2000");  // 7305 days
    ASSERT_GE(l.size(), 14u);
    EXPECT_EQ(l[13], ligne + "20 ans");
  }
  {
    // No date: no number and no " ans", the label stays in its column.
    Banc b;
    auto l = Aide(b, Fiche({{4, "DURAND"}}));
    ASSERT_GE(l.size(), 14u);
    EXPECT_EQ(l[13], " Date de naissance    : " + std::string(20, ' ') + "Age        : ");
  }
}

TEST(EtatCivil, UnknownCodesPrintNothingBehindTheirLabels) {
  for (const std::string code : {"8", "0", "01", ""}) {
    SCOPED_TRACE(code);
    Banc b;
    b.Met("TABLES", "SITSOCIOPROF", Rec({"", "ACT]RET", "Actif]Retraité"}));
    auto l = Aide(b, Fiche({{25, code}, {42, code}}));
    ASSERT_EQ(l.size(), 20u);
    EXPECT_EQ(l[17], " Situation familiale  : ");
    EXPECT_EQ(l[19], " Situation socio-prof : ");
  }
  // Without its code table the label is empty too.
  Banc b;
  auto l = Aide(b, Fiche({{25, "7"}, {42, "RET"}}));
  ASSERT_EQ(l.size(), 20u);
  EXPECT_EQ(l[17], " Situation familiale  : Pacs");
  EXPECT_EQ(l[19], " Situation socio-prof : ");
}

TEST(EtatCivil, CarerLinesAndDependantsFrame) {
  Banc b;
  b.Met("CIVILAIDANT", "S0001",
        Fiche({{4, "MARTIN"},
               {5, "3"},
               {8, "allée des Pins"},
               {10, "69003"},
               {11, "LYON"},
               {12, "04 11 22 33 44"},
               {13, "bureau"},
               {14, "06 55 66 77 88"},
               {15, "portable"},
               {17, "1850669123456"},
               {18, "07"},
               {19, "Française"},
               {21, "2"},
               {22, "ABCDEFGHIJKLMNOPQRST]MARTIN"},
               {23, "Marie-Antoinette]Léa"},
               {24, J("10/06/2010") + "]" + J("01/09/2015")},
               {25, "1]9"},
               {26, J("16/03/1985")},
               {27, "Villeurbanne"},
               {30, "France"}}));
  b.Imprime("AIDANT", {"S0001"});
  const std::vector<std::string> attendu = {
      " ", " Nom patronymique     : MARTIN", " ", " Adresse              : 3 allée des Pins",
      kRetrait + "69003 LYON", " ", " ", " Téléphone 1          : 04 11 22 33 44",
      "        Observations  : bureau", " ", " Téléphone 2          : 06 55 66 77 88",
      "        Observations  : portable", " ", " N.I.R.               : 1850669123456 07", " ",
      " Nation               : Française", " ",
      // Born the day after "today" 39 years ago: still 38.
      " Date de naissance    : 16/03/1985          Age        : 38 ans",
      " Lieu de naissance    : Villeurbanne", " Pays de naissance    : France", " ",
      " Situation familiale  : Célibataire", " ", " ", " Personnes à charge", " ", " ", " ",
      kEnteteCharges,
      // A 20-character name keeps its first 16 and one space; a 16-character
      // first name is followed by four.
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

TEST(EtatCivil, TenDependantsAtMostAndAlwaysAnElevenLineFrame) {
  std::string noms, prenoms;
  for (int i = 1; i <= 12; ++i) {
    noms += (i > 1 ? "]" : "") + std::string("NOM") + std::to_string(i);
    prenoms += (i > 1 ? "]" : "") + std::string("P") + std::to_string(i);
  }
  Banc b;
  b.Met("CIVILAIDANT", "S0001", Fiche({{22, noms}, {23, prenoms}}));
  b.Met("CIVILAIDANT", "S0002", Fiche({{4, "SEUL"}}));
  b.Imprime("AIDANT", {"S0001", "S0002"});
  auto l = banc::Section_Seule(b, "ETAT CIVIL");
  ASSERT_GE(l.size(), 10u);
  std::vector<std::string> rangees(std::find(l.begin(), l.end(), kEnteteCharges) + 1, l.end());
  ASSERT_EQ(rangees.size(), 10u);
  EXPECT_EQ(rangees.front().substr(0, 14), "         NOM1 ");
  // No date and no relation: the date column is empty, its four spaces stay.
  EXPECT_EQ(rangees.back(), "         NOM10            P10" + std::string(17 + 4, ' '));

  // The carer without dependants still gets the header and a frame of eleven
  // lines around ten empty rows.
  int cadres = 0;
  for (const auto& page : b.Enregistrement().pages) {
    for (const auto& e : page.elements) {
      const auto* t = std::get_if<printing::ElementTexte>(&e);
      if (!t || t->texte != kEnteteCharges) continue;
      printing::Enregistrement seule;
      seule.pages.push_back(page);
      auto cadre = banc::Cadre_Sous(seule, kEnteteCharges);
      ASSERT_TRUE(cadre);
      EXPECT_NEAR(cadre->Lignes(), 11.0, 1e-3);
      ++cadres;
    }
  }
  EXPECT_EQ(cadres, 2);
}

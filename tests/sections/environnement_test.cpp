// HABITAT, PERSONNE A PREVENIR and CONTACTS: the housing conditions two to a
// line, labels cut to their column, the person to notify from the right record.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/sections/fiche_par_attribut.h"
#include "tests/support/section_seule.h"

using banc::Banc;
using banc::Fiche;
using banc::Rec;

namespace {

const std::string kRetrait(24, ' ');

void Tables(Banc& b) {
  b.Met("TABLES", "QUALITEOCCUPANT", Rec({"", "P]L", "Propriétaire]Locataire"}));
  b.Met("TABLES", "DESCRIPLOGEMENT", Rec({"", "M]A", "Maison]Appartement"}));
  b.Met("TABLES", "ETATLOGEMENT",
        Rec({"", "B]V]H]E]S",
             "Bon état]Logement vétuste, travaux à prévoir vite]Humide]Escalier raide]Froid"}));
}

}  // namespace

TEST(Habitat, FourConditionsTwoToALineAndUnknownCodes) {
  Banc b;
  Tables(b);
  // Five conditions: only the first four print; the 40-character label keeps
  // its first 30 and one space.
  b.Met("ENVIRONAIDE", "A0001", Fiche({{1, "L"}, {2, "3"}, {3, "A"}, {4, "V]B]H]E]S"}}));
  b.Met("ENVIRONAIDE", "A0002", Fiche({{1, "X"}, {4, "Z]B"}}));
  b.Imprime("AIDE", {"A0001", "A0002"});
  const std::vector<std::string> attendu = {
      " ",
      " Qualité occupant     : Locataire",
      " Nombre pièces        : 3",
      " Type habitat         : Appartement",
      " Etat du logement     : Logement vétuste, travaux à pr Bon état",
      kRetrait + "Humide                         Escalier raide"};
  EXPECT_EQ(banc::Section_Seule(b, "HABITAT"), attendu);
  // Unknown and missing codes print nothing, and the block keeps its two lines.
  const auto l = b.Lignes();
  EXPECT_NE(std::find(l.begin(), l.end(), " Qualité occupant     : "), l.end());
  auto etat =
      std::find(l.begin(), l.end(), " Etat du logement     : " + std::string(31, ' ') + "Bon état");
  ASSERT_NE(etat, l.end());
  EXPECT_EQ(*(etat + 1), std::string(24 + 31, ' '));
}

TEST(PersonneAPrevenir, FromTheEnvironmentForACareRecipientAndContacts) {
  Banc b;
  b.Met("ENVIRONAIDE", "A0001",
        Fiche({{9, "LEROY Jeanne"},
               {10, "06 01"},
               {11, "Fille"},
               {12, "Le dimanche"},
               {13, "Voisine du 2e"},
               {14, "Boulangerie"}}));
  // A carer-style record under the same key is not the care recipient's.
  b.Met("INFOSAIDANT", "A0001", Fiche({{1, "AUTRE"}, {2, "00"}, {3, "non"}}));
  b.Imprime("AIDE", {"A0001"});
  const std::vector<std::string> prevenir = {" ", " Nom                  : LEROY Jeanne",
                                             " Téléphone            : 06 01",
                                             " Observations         : Fille"};
  EXPECT_EQ(banc::Section_Seule(b, "PERSONNE A PREVENIR"), prevenir);
  const std::vector<std::string> contacts = {" ", " Familiaux            : Le dimanche",
                                             " Voisinage            : Voisine du 2e",
                                             " Commerces            : Boulangerie"};
  EXPECT_EQ(banc::Section_Seule(b, "CONTACTS"), contacts);
}

TEST(PersonneAPrevenir, FromTheCarersInformationRecordOrEmpty) {
  Banc b;
  b.Met("INFOSAIDANT", "S0001", Fiche({{1, "MARTIN Paul"}, {2, "04 01"}, {3, "Frère"}}));
  b.Imprime("AIDANT", {"S0001", "S0002"});
  const std::vector<std::string> attendu = {" ", " Nom                  : MARTIN Paul",
                                            " Téléphone            : 04 01",
                                            " Observations         : Frère"};
  EXPECT_EQ(banc::Section_Seule(b, "PERSONNE A PREVENIR"), attendu);
  // The second carer has no record: the labels stand alone.
  const auto l = b.Lignes();
  auto nom = std::find(l.begin(), l.end(), " Nom                  : ");
  ASSERT_NE(nom, l.end());
  ASSERT_LT(nom + 2, l.end());
  EXPECT_EQ(*(nom + 1), " Téléphone            : ");
  EXPECT_EQ(*(nom + 2), " Observations         : ");
}

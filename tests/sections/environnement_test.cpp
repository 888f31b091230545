// HABITAT, PERSONNE A PREVENIR and CONTACTS: the housing conditions two to a
// line, labels cut to their column, the person to notify from the right
// record, and the two entry points that print nothing.
#include <gtest/gtest.h>

#include "db/variable.h"
#include "printing/recording.h"
#include "tests/support/banc.h"
#include "tests/support/section_seule.h"

using banc::Banc;
using banc::Rec;

namespace {

const std::string kRetrait(24, ' ');

marbrel::TabDyn Fiche(std::initializer_list<std::pair<long, std::string>> attributs) {
  marbrel::TabDyn r;
  for (const auto& [a, v] : attributs) r.Remplace(a, Rec({v}).Extrait(1));
  return r;
}

void Tables(Banc& b) {
  b.Met("TABLES", "QUALITEOCCUPANT", Rec({"", "P]L", "Propriétaire]Locataire"}));
  b.Met("TABLES", "DESCRIPLOGEMENT", Rec({"", "M]A", "Maison]Appartement"}));
  b.Met("TABLES", "ETATLOGEMENT",
        Rec({"", "B]V]H]E]S",
             "Bon état]Logement vétuste, travaux à prévoir vite]Humide]Escalier raide]Sans "
             "chauffage"}));
}

}  // namespace

TEST(Habitat, LabelsAndFourConditionsTwoToALine) {
  Banc b;
  Tables(b);
  // Five conditions: only the first four print; the 40-character label keeps
  // its first 30 and one space.
  b.Met("ENVIRONAIDE", "A0001", Fiche({{1, "L"}, {2, "3"}, {3, "A"}, {4, "V]B]H]E]S"}}));
  b.Imprime("AIDE", {"A0001"});
  const std::vector<std::string> attendu = {
      " ",
      " Qualité occupant     : Locataire",
      " Nombre pièces        : 3",
      " Type habitat         : Appartement",
      " Etat du logement     : Logement vétuste, travaux à pr Bon état",
      kRetrait + "Humide                         Escalier raide"};
  EXPECT_EQ(banc::Section_Seule(b, "HABITAT"), attendu);
}

TEST(Habitat, UnknownCodesAndMissingRecordKeepTheTwoConditionLines) {
  {
    Banc b;
    Tables(b);
    b.Met("ENVIRONAIDE", "A0001", Fiche({{1, "X"}, {3, ""}, {4, "Z]B"}}));
    b.Imprime("AIDE", {"A0001"});
    const std::vector<std::string> attendu = {
        " ",
        " Qualité occupant     : ",
        " Nombre pièces        : ",
        " Type habitat         : ",
        " Etat du logement     : " + std::string(31, ' ') + "Bon état",
        kRetrait + std::string(31, ' ')};
    EXPECT_EQ(banc::Section_Seule(b, "HABITAT"), attendu);
  }
  {
    Banc b;
    b.Met("CIVILAIDE", "A0001", Rec({"", "DURAND"}));
    b.Imprime("AIDE", {"A0001"});
    auto l = banc::Section_Seule(b, "HABITAT");
    ASSERT_EQ(l.size(), 6u);
    EXPECT_EQ(l[4], " Etat du logement     : " + std::string(31, ' '));
    EXPECT_EQ(l[5], std::string(24 + 31, ' '));
  }
}

TEST(PersonneAPrevenir, FromTheEnvironmentForACareRecipientAndContacts) {
  Banc b;
  b.Met("ENVIRONAIDE", "A0001",
        Fiche({{9, "LEROY Jeanne"},
               {10, "06 01 02 03 04"},
               {11, "Fille, habite à 5 min"},
               {12, "Visite de la fille le dimanche"},
               {13, "Voisine du 2e"},
               {14, "Boulangerie livre le pain"}}));
  // A carer-style record under the same key is not the care recipient's.
  b.Met("INFOSAIDANT", "A0001", Fiche({{1, "AUTRE"}, {2, "00"}, {3, "non"}}));
  b.Imprime("AIDE", {"A0001"});
  const std::vector<std::string> prevenir = {" ", " Nom                  : LEROY Jeanne",
                                             " Téléphone            : 06 01 02 03 04",
                                             " Observations         : Fille, habite à 5 min"};
  EXPECT_EQ(banc::Section_Seule(b, "PERSONNE A PREVENIR"), prevenir);
  const std::vector<std::string> contacts = {
      " ", " Familiaux            : Visite de la fille le dimanche",
      " Voisinage            : Voisine du 2e", " Commerces            : Boulangerie livre le pain"};
  EXPECT_EQ(banc::Section_Seule(b, "CONTACTS"), contacts);
}

TEST(PersonneAPrevenir, FromTheCarersInformationRecord) {
  Banc b;
  b.Met("INFOSAIDANT", "S0001", Fiche({{1, "MARTIN Paul"}, {2, "04 00 00 00 01"}, {3, "Frère"}}));
  b.Imprime("AIDANT", {"S0001", "S0002"});
  const std::vector<std::string> attendu = {" ", " Nom                  : MARTIN Paul",
                                            " Téléphone            : 04 00 00 00 01",
                                            " Observations         : Frère"};
  EXPECT_EQ(banc::Section_Seule(b, "PERSONNE A PREVENIR"), attendu);
  // The second carer has no record: the labels stand alone.
  std::vector<std::string> seconde;
  const auto l = b.Lignes();
  for (size_t i = 0; i + 3 < l.size(); ++i) {
    if (l[i] == " Nom                  : ") seconde.assign(l.begin() + i, l.begin() + i + 3);
  }
  const std::vector<std::string> vides = {
      " Nom                  : ", " Téléphone            : ", " Observations         : "};
  EXPECT_EQ(seconde, vides);
}

TEST(Environnement, MedecinTraitantAndIntervenantPrintAndChangeNothing) {
  Banc b;
  printing::Enregistrement rec;
  Ctr_Vesko& c = b.Controle();
  c.Commence_Sur(
      std::make_unique<printing::Printer>(std::make_unique<printing::RecordingSurface>(&rec)));
  c.Titre("AVANT");
  Variable::Enregistrement(Fic::ENVIRONAIDE) = Rec({"1", "2"});
  c.Num_Page = 3;
  c.Compteur_Ligne = 7;
  const double y = c.Imprimante()->CurrentY();
  const size_t elements = rec.pages.at(0).elements.size();

  c.Medecin_Traitant();
  c.Intervenant();

  EXPECT_EQ(rec.pages.size(), 1u);
  EXPECT_EQ(rec.pages[0].elements.size(), elements);
  EXPECT_EQ(c.Imprimante()->CurrentY(), y);
  EXPECT_EQ(c.Num_Page, 3);
  EXPECT_EQ(c.Compteur_Ligne, 7);
  EXPECT_EQ(Variable::Enregistrement(Fic::ENVIRONAIDE), Rec({"1", "2"}));
}

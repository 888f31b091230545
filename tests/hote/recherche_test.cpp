// Finding a person as staff type: accents and case ignored, several words in
// any order; the status bar counts what is shown; the store and the type are
// remembered from one session to the next.
#include <gtest/gtest.h>

#include <QCloseEvent>
#include <QStatusBar>

#include "app/gui/fenetre_hote.h"
#include "tests/app/programmes.h"

namespace {

TEST(RechercheHote, WordsInAnyOrderWithoutAccentsAndTheStatusBarCounts) {
  essai::Application();
  const essai::Dossier dossier;
  // The settings of this test only.
  setenv("XDG_CONFIG_HOME", (dossier / "config").c_str(), 1);
  const std::string json = dossier / "p.json", base = dossier / "base.vesko";
  std::ofstream(json) << R"({"CIVILAIDE": {"A0001": ["", "MASSON", "Inès"],
      "A0002": ["", "MASSON", "Paul"], "A0003": ["", "INESTA", "Marc"]},
      "CIVILAIDANT": {"S0001": ["", "BERNARD", "Sophie"]}})";
  ASSERT_EQ(essai::Vesko("init --db '" + base + "'").statut, 0);
  ASSERT_EQ(essai::Vesko("import --db '" + base + "' '" + json + "'").statut, 0);
  {
    hote::FenetreHote fenetre;
    fenetre.OuvreBase(QString::fromStdString(base));
    struct Cas {
      QString texte;
      int affichees;
      QString barre;
    } const cas[] = {
        {"masson ines", 1, "1 personne(s) affichée(s) sur 3 dans CIVILAIDE."},
        {"Inès MASSON", 1, "1 personne(s) affichée(s) sur 3 dans CIVILAIDE."},
        {"ines", 2, "2 personne(s) affichée(s) sur 3 dans CIVILAIDE."},
        {"  masson   a000 ", 2, "2 personne(s) affichée(s) sur 3 dans CIVILAIDE."},
        {"masson marc", 0, "0 personne(s) affichée(s) sur 3 dans CIVILAIDE."},
        {"", 3, "3 personne(s) dans CIVILAIDE."},
    };
    for (const Cas& c : cas) {
      SCOPED_TRACE(c.texte.toStdString());
      fenetre.Recherche(c.texte);
      EXPECT_EQ(fenetre.PersonnesAffichees(), c.affichees);
      EXPECT_EQ(fenetre.statusBar()->currentMessage(), c.barre);
    }
    fenetre.ChoisitType("AIDANT");
    fenetre.close();
  }
  EXPECT_EQ(hote::FenetreHote::BaseMemorisee(), QString::fromStdString(base));
  EXPECT_EQ(hote::FenetreHote::TypeMemorise(), "AIDANT");
  EXPECT_EQ(hote::Phrase("la base « x » n'existe pas"), "La base « x » n'existe pas.");
}

}  // namespace

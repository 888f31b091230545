// The preview of the host window is journaled like any print (the command's
// --preview needs a screen the tests do not have; the window's preview goes
// through the same Edition), and "Journal des impressions" shows it with the
// filters of `vesko journal`.
#include <gtest/gtest.h>

#include "app/gui/fenetre_hote.h"
#include "app/gui/fenetre_journal.h"
#include "tests/app/programmes.h"

namespace {

TEST(JournalFenetre, ThePreviewIsJournaledAndTheWindowListsAndFiltersIt) {
  QApplication& application = essai::Application();
  (void)application;
  essai::Dossier dossier;
  const std::string base = dossier / "base.vesko", json = dossier / "p.json";
  std::ofstream(json) << R"({"CIVILAIDE": {"A0001": ["", "MARTIN", "Jeanne"],
      "A0002": ["", "LEFEBVRE", "Marcel"]}})";
  ASSERT_EQ(essai::Vesko("init --db '" + base + "'").statut, 0);
  ASSERT_EQ(essai::Vesko("import --db '" + base + "' '" + json + "'").statut, 0);

  hote::FenetreHote fenetre;
  EXPECT_EQ(fenetre.OuvreJournal(), nullptr);  // no store, no journal
  fenetre.OuvreBase(QString::fromStdString(base));
  fenetre.Controle().Utilisateur("marie.dupont");
  fenetre.Selectionne({"A0001", "A0002"});
  const hote::Bilan bilan = fenetre.Apercu(/*montre=*/false);
  ASSERT_TRUE(bilan.fait) << bilan.alertes.join("\n").toStdString();

  hote::FenetreJournal* journal = fenetre.OuvreJournal();
  ASSERT_NE(journal, nullptr);
  EXPECT_EQ(journal->windowTitle(), "Journal des impressions");
  ASSERT_EQ(journal->Lignes(), 1) << journal->Etat().toStdString();
  EXPECT_EQ(journal->Cellule(0, 3), "marie.dupont");
  EXPECT_EQ(journal->Cellule(0, 5), "AIDE");
  EXPECT_EQ(journal->Cellule(0, 6), "A0001 A0002");
  EXPECT_EQ(journal->Cellule(0, 7), "Aperçu");
  EXPECT_EQ(journal->Cellule(0, 8),
            QString("terminée, %1 page(s)").arg(fenetre.DernierApercu().pages.size()));

  // Kept to be looked at, like vesko-gui.png.
  EXPECT_TRUE(journal->grab().save(VESKO_BINARY_DIR "/tests/journal-des-impressions.png"));

  const QDate aujourdhui = QDate::currentDate();
  const struct {
    QDate depuis, jusqu_a;
    QString cle, utilisateur;
    int lignes;
  } filtres[] = {
      {{}, {}, "A0002", "", 1},
      {{}, {}, "A0003", "", 0},
      {{}, {}, "", "marie.dupont", 1},
      {{}, {}, "", "jean", 0},
      {aujourdhui, aujourdhui, "", "", 1},
      {aujourdhui.addDays(1), {}, "", "", 0},
      {{}, aujourdhui.addDays(-1), "", "", 0},
  };
  for (const auto& f : filtres) {
    journal->Filtre(f.depuis, f.jusqu_a, f.cle, f.utilisateur);
    EXPECT_EQ(journal->Lignes(), f.lignes)
        << f.cle.toStdString() << f.utilisateur.toStdString() << journal->Etat().toStdString();
  }
}

}  // namespace

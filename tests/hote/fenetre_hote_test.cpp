// The reference host window: the persons it lists, its search and selection,
// the run that keeps it responsive, and the image vesko-gui draws of it under
// the offscreen platform.
#include "app/gui/fenetre_hote.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QImage>
#include <QLabel>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QPushButton>
#include <QTimer>
#include <set>

#include "printing/apercu.h"
#include "tests/app/programmes.h"

namespace {

// The pixels of zone whose grey is far from the background's: text drawn there.
int Encre(const QImage& image, const QRect& zone, QRgb fond) {
  int encre = 0;
  for (int y = zone.top(); y <= zone.bottom(); ++y)
    for (int x = zone.left(); x <= zone.right(); ++x)
      encre += std::abs(qGray(image.pixel(x, y)) - qGray(fond)) > 60;
  return encre;
}

class FenetreHoteTest : public ::testing::Test {
 protected:
  // Three care recipients and a carer, in a store made by `vesko init` and `vesko import`.
  void SetUp() override {
    const std::string json = dossier / "personnes.json";
    std::ofstream(json) << R"({"CIVILAIDANT": {"S0001": ["", "BERNARD", "Sophie"]},
        "CIVILAIDE": {"A0002": ["", "LEFEBVRE", "Marcel"], "A0001": ["", "MARTIN", "Jeanne"],
                      "A0003": ["", "LEFÈVRE", "Élise"]}})";
    ASSERT_EQ(essai::Vesko("init --db '" + base + "'").statut, 0);
    ASSERT_EQ(essai::Vesko("import --db '" + base + "' '" + json + "'").statut, 0);
    fenetre.OuvreBase(QString::fromStdString(base));
  }
  QAbstractItemView* Vue() { return fenetre.findChild<QAbstractItemView*>("Liste_Personnes"); }
  // The rows of the list, "key name first-name".
  QStringList Lignes() {
    QStringList lignes;
    for (int r = 0; r < Vue()->model()->rowCount(); ++r) {
      auto cellule = [&](int c) { return Vue()->model()->index(r, c).data().toString(); };
      lignes << cellule(0) + ' ' + cellule(1) + ' ' + cellule(2);
    }
    return lignes;
  }

  QApplication& application = essai::Application();  // before any widget
  essai::Dossier dossier;
  const std::string base = dossier / "base.vesko";
  hote::FenetreHote fenetre;
};

// The list, its search and selection, then a run of the selection that leaves
// the window alive, then nothing selected.
TEST_F(FenetreHoteTest, ListsSearchesSelectsAndPrintsWhileTheWindowStaysResponsive) {
  EXPECT_EQ(Lignes(),
            QStringList({"A0001 MARTIN Jeanne", "A0002 LEFEBVRE Marcel", "A0003 LEFÈVRE Élise"}));
  // By name or first name, whatever the case, accented letters included.
  fenetre.Recherche("lef");
  EXPECT_EQ(Lignes(), QStringList({"A0002 LEFEBVRE Marcel", "A0003 LEFÈVRE Élise"}));
  fenetre.Recherche("élise");
  EXPECT_EQ(Lignes(), QStringList({"A0003 LEFÈVRE Élise"}));
  fenetre.Recherche("");
  fenetre.Selectionne({"A0003", "A0002", "A0001"});
  EXPECT_EQ(fenetre.ClesChoisies(), QStringList({"A0001", "A0002", "A0003"}));
  fenetre.show();
  // A timer of the window fires while the control prints (disabled, so that
  // nobody starts a second run), from one person to the next.
  std::set<int> personnes_vues;
  QTimer minuterie;
  QObject::connect(&minuterie, &QTimer::timeout, [&] {
    const Ctr_Vesko& c = fenetre.Controle();
    if (!c.isEnabled() && c.Index_Personne > 0) personnes_vues.insert(c.Index_Personne);
  });
  minuterie.start(0);
  const hote::Bilan bilan = fenetre.Apercu(/*montre=*/false);
  minuterie.stop();
  ASSERT_TRUE(bilan.fait && bilan.alertes.empty()) << bilan.alertes.join("\n").toStdString();
  EXPECT_GE(personnes_vues.size(), 2u) << "la fenêtre n'a pas vécu pendant l'impression";
  EXPECT_TRUE(fenetre.Controle().isEnabled());

  const printing::Enregistrement& rec = fenetre.DernierApercu();
  ASSERT_GE(rec.pages.size(), 3u);
  EXPECT_EQ(bilan.resume, QString("Aperçu de 3 dossier(s), %1 page(s).").arg(rec.pages.size()));
  // The preview of that recording draws every page, on A4; the command
  // line's preview has no print button of its own.
  printing::DialogueApercu dialogue(rec, /*offre_impression=*/false);
  dialogue.Vue()->updatePreview();
  EXPECT_EQ(dialogue.Vue()->pageCount(), static_cast<int>(rec.pages.size()));
  EXPECT_EQ(dialogue.Imprimante().pageLayout().pageSize().id(), QPageSize::A4);
  EXPECT_EQ(dialogue.findChild<QPushButton*>("Bouton_Imprimer"), nullptr);

  fenetre.ChoisitType("AIDANT");
  EXPECT_EQ(Lignes(), QStringList({"S0001 BERNARD Sophie"}));
  const hote::Bilan rien = fenetre.Apercu(/*montre=*/false);
  EXPECT_FALSE(rien.fait);
  EXPECT_EQ(rien.resume, "Choisissez au moins une personne dans la liste.");
}

TEST_F(FenetreHoteTest, VeskoGuiDrawsTheFormWithTheCaptionAndTheSelectedPersons) {
  const std::string image = VESKO_BINARY_DIR "/tests/vesko-gui.png";  // kept, to be looked at
  std::filesystem::remove(image);
  const essai::Resultat r =
      essai::Lance("QT_QPA_PLATFORM=offscreen " VESKO_BINARY_DIR "/vesko-gui --db '" + base +
                   "' --type AIDE --select A0001,A0003 --capture '" + image + "'");
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  const QImage capture(QString::fromStdString(image));

  // The same window in this process tells where the caption and the rows are.
  fenetre.Selectionne({"A0001", "A0003"});
  fenetre.show();
  ASSERT_EQ(capture.size(), fenetre.size());
  auto* legende = fenetre.Controle().findChild<QLabel*>("Etq_Edition");
  ASSERT_NE(legende, nullptr);
  const QRect ou(legende->mapTo(&fenetre, QPoint(0, 0)), legende->size());
  EXPECT_GT(Encre(capture, ou, capture.pixel(ou.topLeft())), 30) << "légende non dessinée";

  auto cellule = [&](int ligne, int colonne) {
    const QRect r = Vue()->visualRect(Vue()->model()->index(ligne, colonne));
    return QRect(Vue()->viewport()->mapTo(&fenetre, r.topLeft()), r.size());
  };
  QRgb fonds[3];
  for (int ligne = 0; ligne < 3; ++ligne) {
    SCOPED_TRACE(ligne);
    const QRect prenom = cellule(ligne, 2);
    fonds[ligne] = capture.pixel(prenom.right() - 5, prenom.center().y());
    EXPECT_GT(Encre(capture, cellule(ligne, 0), fonds[ligne]), 30) << "clé non dessinée";
  }
  // The chosen persons stand out from the other one.
  EXPECT_EQ(fonds[0], fonds[2]);
  EXPECT_NE(fonds[0], fonds[1]);
}

}  // namespace

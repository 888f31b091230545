// The reference host window: the persons it lists, its search and selection,
// the run that keeps it responsive, its preview and its image under the
// offscreen platform.
#include "app/gui/fenetre_hote.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QTimer>
#include <cstdlib>
#include <filesystem>
#include <set>

#include "marbrel/creation_base.h"
#include "marbrel/marques.h"
#include "marbrel/sqlite_store.h"
#include "printing/apercu.h"

namespace {

namespace fs = std::filesystem;

QApplication& Application() {
  static int argc = 1;
  static char nom[] = "test_hote";
  static char* argv[] = {nom, nullptr};
  static QApplication* application = new QApplication(argc, argv);
  return *application;
}

// A store with three care recipients and one carer, made as `vesko init`
// makes one, removed at the end.
class BaseEssai {
 public:
  BaseEssai() {
    char modele[] = "/tmp/vesko-hote-XXXXXX";
    dossier_ = mkdtemp(modele);
    chemin_ = dossier_ + "/base.vesko";
    marbrel::SqliteStore store(chemin_, marbrel::SqliteStore::Mode::Creation);
    marbrel::CreeFichiersVesko(store);
    auto fiche = [](const std::string& nom, const std::string& prenom) {
      return std::string() + marbrel::AM + nom + marbrel::AM + prenom;
    };
    store.Ecrit("CIVILAIDE", "A0002", fiche("LEFEBVRE", "Marcel"));
    store.Ecrit("CIVILAIDE", "A0001", fiche("MARTIN", "Jeanne"));
    store.Ecrit("CIVILAIDE", "A0003", fiche("LEFÈVRE", "Élise"));
    store.Ecrit("CIVILAIDANT", "S0001", fiche("BERNARD", "Sophie"));
  }
  ~BaseEssai() { fs::remove_all(dossier_); }
  const std::string& Chemin() const { return chemin_; }
  std::string Dossier() const { return dossier_; }

 private:
  std::string dossier_;
  std::string chemin_;
};

class FenetreHoteTest : public ::testing::Test {
 protected:
  void SetUp() override {
    Application();
    fenetre = std::make_unique<hote::FenetreHote>();
    fenetre->OuvreBase(QString::fromStdString(base.Chemin()));
  }
  QStringList Colonne(int c) const {
    QStringList valeurs;
    auto* vue = fenetre->findChild<QAbstractItemView*>("Liste_Personnes");
    for (int r = 0; r < vue->model()->rowCount(); ++r)
      valeurs << vue->model()->index(r, c).data().toString();
    return valeurs;
  }

  BaseEssai base;
  std::unique_ptr<hote::FenetreHote> fenetre;
};

TEST_F(FenetreHoteTest, ListsThePersonsOfTheTypeWithTheirNamesSearchesAndSelectsSeveral) {
  EXPECT_EQ(Colonne(0), QStringList({"A0001", "A0002", "A0003"}));
  EXPECT_EQ(Colonne(1), QStringList({"MARTIN", "LEFEBVRE", "LEFÈVRE"}));
  EXPECT_EQ(Colonne(2), QStringList({"Jeanne", "Marcel", "Élise"}));

  // Key, name or first name, whatever the case.
  fenetre->Recherche("lef");
  EXPECT_EQ(Colonne(0), QStringList({"A0002", "A0003"}));
  fenetre->Recherche("élise");
  EXPECT_EQ(Colonne(0), QStringList({"A0003"}));
  fenetre->Recherche("");
  fenetre->Selectionne({"A0003", "A0001"});
  EXPECT_EQ(fenetre->ClesChoisies(), QStringList({"A0001", "A0003"}));

  fenetre->ChoisitType("AIDANT");
  EXPECT_EQ(Colonne(0), QStringList({"S0001"}));
  EXPECT_EQ(Colonne(1), QStringList({"BERNARD"}));
  EXPECT_THROW(fenetre->ChoisitType("AUTRE"), std::invalid_argument);

  // Nothing selected: nothing is printed, and the window says why.
  const hote::Bilan bilan = fenetre->Apercu(/*montre=*/false);
  EXPECT_FALSE(bilan.fait);
  EXPECT_EQ(bilan.resume, "Choisissez au moins une personne dans la liste.");
}

TEST_F(FenetreHoteTest, ARunKeepsTheWindowResponsiveAndThePreviewShowsEveryPage) {
  fenetre->Selectionne({"A0001", "A0002", "A0003"});
  fenetre->show();
  // A timer of the window fires during the run, person after person: the
  // window repaints and answers while the control prints.
  std::set<int> personnes_vues;
  bool controle_inactif = true;
  QTimer minuterie;
  QObject::connect(&minuterie, &QTimer::timeout, [&] {
    Ctr_Vesko& c = fenetre->Controle();
    if (c.Index_Personne == 0) return;  // before the driver starts
    personnes_vues.insert(c.Index_Personne);
    // The last person's document ends after the driver has enabled the
    // control again; before it, the control stays disabled.
    if (c.Index_Personne < c.Nb_Personne) controle_inactif = controle_inactif && !c.isEnabled();
  });
  minuterie.start(0);
  const hote::Bilan bilan = fenetre->Apercu(/*montre=*/false);
  minuterie.stop();
  ASSERT_TRUE(bilan.fait) << bilan.alertes.join("\n").toStdString();
  EXPECT_GE(personnes_vues.size(), 2u) << "la fenêtre n'a pas vécu pendant l'impression";
  EXPECT_TRUE(controle_inactif) << "le contrôle est désactivé pendant l'impression";
  EXPECT_TRUE(fenetre->Controle().isEnabled());
  EXPECT_TRUE(bilan.alertes.empty()) << bilan.alertes.join("\n").toStdString();

  const printing::Enregistrement& rec = fenetre->DernierApercu();
  ASSERT_GE(rec.pages.size(), 3u);
  EXPECT_EQ(bilan.resume, QString("Aperçu de 3 dossier(s), %1 page(s).").arg(rec.pages.size()));

  // Qt's preview draws every page of the recording.
  QPrinter imprimante(QPrinter::HighResolution);
  auto dialogue = printing::Apercu(rec, imprimante);
  auto* vue = dialogue->findChild<QPrintPreviewWidget*>();
  ASSERT_NE(vue, nullptr);
  vue->updatePreview();
  EXPECT_EQ(vue->pageCount(), static_cast<int>(rec.pages.size()));
  EXPECT_EQ(imprimante.pageLayout().pageSize().id(), QPageSize::A4);
}

TEST_F(FenetreHoteTest, TheFormShowsTheControlsCaptionAndTheList) {
  fenetre->show();
  auto* legende = fenetre->Controle().findChild<QLabel*>("Etq_Edition");
  ASSERT_NE(legende, nullptr);
  EXPECT_EQ(legende->text(), "Edition de la fiche");
  EXPECT_TRUE(legende->isVisible());
  // The caption is inside the form and drawn: ink where the label sits.
  const QRect ou(legende->mapTo(fenetre.get(), QPoint(0, 0)), legende->size());
  EXPECT_TRUE(fenetre->rect().contains(ou));
  const QImage image = fenetre->grab().toImage();
  int encre = 0;
  for (int y = ou.top(); y <= ou.bottom(); ++y)
    for (int x = ou.left(); x <= ou.right(); ++x) encre += qGray(image.pixel(x, y)) < 128;
  EXPECT_GT(encre, 30);
}

TEST(VeskoGui, TheProgramDrawsItsWindowIntoAnImageUnderTheOffscreenPlatform) {
  BaseEssai base;
  // Kept in the build folder, to be looked at.
  const std::string image = std::string(VESKO_BINARY_DIR) + "/tests/vesko-gui.png";
  fs::remove(image);
  const std::string commande =
      "QT_QPA_PLATFORM=offscreen " + std::string(VESKO_BINARY_DIR) + "/vesko-gui --db '" +
      base.Chemin() + "' --type AIDE --select A0001,A0003 --capture '" + image + "' 2>/dev/null";
  const int statut = std::system(commande.c_str());
  ASSERT_TRUE(WIFEXITED(statut) && WEXITSTATUS(statut) == 0);
  const QImage capture(QString::fromStdString(image));
  ASSERT_FALSE(capture.isNull());
  EXPECT_EQ(capture.size(), QSize(720, 480));

  const std::string mauvais = "QT_QPA_PLATFORM=offscreen " + std::string(VESKO_BINARY_DIR) +
                              "/vesko-gui --db '" + base.Dossier() + "/absente.vesko' 2>&1";
  FILE* flux = popen(mauvais.c_str(), "r");
  char tampon[512] = {};
  const size_t lus = fread(tampon, 1, sizeof tampon - 1, flux);
  const int fin = pclose(flux);
  EXPECT_EQ(WEXITSTATUS(fin), 1);
  EXPECT_NE(std::string(tampon, lus)
                .find("vesko-gui : la base « " + base.Dossier() +
                      "/absente.vesko » ne peut pas être ouverte"),
            std::string::npos)
      << tampon;
}

}  // namespace

// The host window on a real screen (Xvfb and a window manager), French, as
// staff use it: the print dialog waited on, the queue chosen there, the run
// cancelled from its progress, the pages and sides asked for, a stopped
// queue told before anything is drawn.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QElapsedTimer>
#include <QPrintDialog>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTimer>
#include <functional>
#include <thread>

#include "app/gui/fenetre_hote.h"
#include "marbrel/outils.h"
#include "printing/traductions.h"
#include "tests/bureau/ecran.h"
#include "tests/cups/serveur_cups.h"

namespace {

namespace fs = std::filesystem;

class Bureau : public essai_cups::AvecServeur {
 protected:
  void TearDown() override { fenetre.reset(); }
  void SetUp() override {
    if (!essai_bureau::Ecran().empty()) GTEST_SKIP() << essai_bureau::Ecran();
    AvecServeur::SetUp();
    static const bool traduit = printing::InstalleTraductionsQt(essai::Application());
    ASSERT_TRUE(traduit) << "traductions de Qt absentes (paquet qt6-translations-l10n)";
    fenetre = std::make_unique<hote::FenetreHote>();
    fenetre->Controle().Fixe_Aujourdhui(marbrel::Outils::Date_Interne(2024, 3, 15));
  }

  // Answers the print dialog once it is up: choisit sets it as the user
  // would (queue, pages…), after attente ms in it; then "Imprimer" is clicked.
  void RepondAuDialogue(int attente, std::function<void(QPrintDialog&)> choisit) {
    minuterie.callOnTimeout([this, attente, choisit] {
      auto* d = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget());
      if (d == nullptr || repondu) return;
      if (!dans_le_dialogue.isValid()) dans_le_dialogue.start();
      if (dans_le_dialogue.elapsed() < attente) {
        // Nothing may stand over the dialog while the user reads it.
        for (QWidget* w : QApplication::topLevelWidgets())
          if (qobject_cast<QProgressDialog*>(w) && w->isVisible()) progression_sur_dialogue = true;
        return;
      }
      repondu = true;
      titre_dialogue = d->windowTitle();
      auto* files = d->findChild<QComboBox*>("printers");
      files->setCurrentIndex(files->findText("CAPTURE"));
      choisit(*d);
      for (QAbstractButton* b : d->findChild<QDialogButtonBox*>()->buttons()) {
        if (d->findChild<QDialogButtonBox*>()->buttonRole(b) == QDialogButtonBox::AcceptRole) {
          texte_imprimer = b->text();
          b->click();
        }
      }
    });
    minuterie.start(50);
  }

  static int NumeroDe(const hote::Bilan& bilan) {
    return bilan.resume.section('-', 1).section(' ', 0, 0).toInt();
  }

  std::unique_ptr<hote::FenetreHote> fenetre;  // once the application runs on the screen
  QTimer minuterie;
  QElapsedTimer dans_le_dialogue;
  bool repondu = false, progression_sur_dialogue = false;
  QString titre_dialogue, texte_imprimer;
};

TEST_F(Bureau, TheUserTakesTwoSecondsInTheFrenchPrintDialogAndTheJobHasBothDossiers) {
  fenetre->OuvreBase(QString::fromStdString(essai_cups::BaseDemo()));
  fenetre->Selectionne({"A0001", "A0002"});
  fenetre->show();
  RepondAuDialogue(2000, [](QPrintDialog&) {});
  const hote::Bilan bilan = fenetre->Imprime();
  ASSERT_TRUE(repondu);
  EXPECT_FALSE(progression_sur_dialogue) << "la progression couvre le dialogue d'impression";
  EXPECT_EQ(titre_dialogue, "Imprimer les dossiers");
  EXPECT_EQ(texte_imprimer, "Im&primer") << "le dialogue de Qt n'est pas traduit";
  ASSERT_TRUE(bilan.fait) << bilan.alertes.join("\n").toStdString();
  const int numero = NumeroDe(bilan);
  EXPECT_EQ(bilan.resume,
            QString("Travail CAPTURE-%1 envoyé à l'imprimante « CAPTURE ».").arg(numero));
  const essai_cups::Capture job = AttendCapture("CAPTURE", numero);
  ASSERT_EQ(job.numero, numero) << Journal();
  EXPECT_EQ(job.infos, "DOSSIER AIDE A0001 1 A4");
  const std::string texte = essai::Lance("pdftotext '" + job.fichier + "' -").sortie;
  EXPECT_NE(texte.find("A0001 MARTIN Jeanne"), std::string::npos);
  EXPECT_NE(texte.find("A0002 LEFEBVRE Marcel"), std::string::npos) << "deux dossiers, un travail";
}

// Pages 2 to 3, last first, on both sides: the job holds those two pages in
// that order and asks for both sides; the dialog's own job options (the
// queue's advanced ones) reach the job too.
TEST_F(Bureau, ThePageRangeOrderSidesAndOptionsOfTheDialogReachTheJob) {
  fenetre->OuvreBase(QString::fromStdString(essai_cups::BaseDemo()));
  fenetre->Selectionne({"A0001"});
  fenetre->show();
  RepondAuDialogue(0, [&](QPrintDialog& d) {
    d.findChild<QRadioButton*>("printRange")->setChecked(true);
    d.findChild<QSpinBox*>("to")->setValue(3);
    d.findChild<QSpinBox*>("from")->setValue(2);
    d.findChild<QCheckBox*>("reverse")->setChecked(true);
    d.findChild<QRadioButton*>("duplexLong")->setChecked(true);
  });
  const hote::Bilan bilan = fenetre->Imprime();
  ASSERT_TRUE(bilan.fait) << bilan.alertes.join("\n").toStdString();
  const essai_cups::Capture job = AttendCapture("CAPTURE", NumeroDe(bilan));
  ASSERT_NE(job.numero, 0) << Journal();
  EXPECT_NE(essai::Lance("pdfinfo '" + job.fichier + "'").sortie.find("Pages:           2\n"),
            std::string::npos);
  const std::string texte = essai::Lance("pdftotext '" + job.fichier + "' -").sortie;
  ASSERT_NE(texte.find("Page 3"), std::string::npos) << texte;
  ASSERT_NE(texte.find("Page 2"), std::string::npos);
  EXPECT_LT(texte.find("Page 3"), texte.find("Page 2")) << "l'ordre inverse est perdu";
  EXPECT_EQ(texte.find("Page 1\n"), std::string::npos);
  EXPECT_NE(job.options.find("sides=two-sided-long-edge"), std::string::npos) << job.options;
  EXPECT_NE(job.options.find("number-up-layout=lrtb"), std::string::npos) << job.options;
}

// 300 dossiers, "Annuler" in the progress: no job, no temporary file, and
// the run stopped where it was.
TEST_F(Bureau, CancellingA300PersonRunSendsNothingAndLeavesNoFile) {
  std::string json = R"({"CIVILAIDE": {)";
  QStringList cles;
  for (int i = 1; i <= 300; ++i) {
    const QString cle = QString("B%1").arg(i, 4, 10, QChar('0'));
    cles << cle;
    json += (i > 1 ? "," : "") +
            ("\"" + cle.toStdString() + "\": [\"\", \"NOM" + std::to_string(i) + "\", \"Prénom\"]");
  }
  std::ofstream(dossier / "lot.json") << json << "}}";
  const std::string base = dossier / "lot.vesko";
  ASSERT_EQ(essai::Vesko("init --db '" + base + "'").statut, 0);
  ASSERT_EQ(essai::Vesko("import --db '" + base + "' '" + (dossier / "lot.json") + "'").statut, 0);
  fenetre->OuvreBase(QString::fromStdString(base));
  fenetre->Selectionne(cles);
  ASSERT_EQ(fenetre->ClesChoisies().size(), 300);
  fenetre->show();

  // The job's temporary PDF goes to a folder of this test only.
  fs::create_directories(dossier / "tmp");
  const char* tmp_avant = std::getenv("TMPDIR");
  const std::string ancien = tmp_avant ? tmp_avant : "";
  setenv("TMPDIR", (dossier / "tmp").c_str(), 1);
  const auto jobs = [] {
    return std::distance(fs::directory_iterator(DossierFiles() + "/CAPTURE"), {});
  };
  const auto jobs_avant = jobs();

  RepondAuDialogue(0, [](QPrintDialog&) {});
  QString titre_progression;
  QTimer annule;
  annule.callOnTimeout([&] {
    for (QWidget* w : QApplication::topLevelWidgets()) {
      auto* p = qobject_cast<QProgressDialog*>(w);
      if (p == nullptr || !p->isVisible() || p->value() < 3) continue;
      titre_progression = p->windowTitle();
      for (auto* b : p->findChildren<QPushButton*>())
        if (b->text() == "Annuler") b->click();
    }
  });
  annule.start(20);
  const hote::Bilan bilan = fenetre->Imprime();
  annule.stop();
  if (ancien.empty())
    unsetenv("TMPDIR");
  else
    setenv("TMPDIR", ancien.c_str(), 1);

  EXPECT_EQ(titre_progression, "Impression des dossiers");
  EXPECT_FALSE(bilan.fait);
  EXPECT_EQ(bilan.resume, "Impression annulée : rien n'a été envoyé.");
  EXPECT_TRUE(bilan.alertes.isEmpty()) << bilan.alertes.join("\n").toStdString();
  EXPECT_LT(fenetre->Controle().Index_Personne, 300) << "la fin du lot a quand même été calculée";
  EXPECT_TRUE(fs::is_empty(dossier / "tmp")) << "un PDF temporaire est resté";
  std::this_thread::sleep_for(std::chrono::seconds(1));
  EXPECT_EQ(jobs(), jobs_avant) << "un travail est parti";
  EXPECT_TRUE(fenetre->Controle().isEnabled());
  // The journal tells a cancelled run, not a completed one.
  const essai::Resultat journal = essai::Vesko("journal --db '" + base + "'");
  EXPECT_NE(journal.sortie.find("annulée"), std::string::npos) << journal.sortie;
  EXPECT_EQ(journal.sortie.find("terminée"), std::string::npos) << journal.sortie;
}

// A stopped queue is said before a single dossier is drawn.
TEST_F(Bureau, AStoppedQueueIsToldBeforeAnythingIsDrawn) {
  fenetre->OuvreBase(QString::fromStdString(essai_cups::BaseDemo()));
  fenetre->Selectionne({"A0001", "A0002"});
  fenetre->show();
  RepondAuDialogue(0, [](QPrintDialog& d) {
    auto* files = d.findChild<QComboBox*>("printers");
    files->setCurrentIndex(files->findText("ARRETEE"));
  });
  const hote::Bilan bilan = fenetre->Imprime();
  EXPECT_FALSE(bilan.fait);
  EXPECT_EQ(bilan.alertes,
            QStringList("L'imprimante « ARRETEE » est arrêtée : Bourrage papier dans le bac 2."));
  EXPECT_EQ(bilan.resume, "L'impression n'a pas été faite.");
  EXPECT_EQ(fenetre->Controle().Index_Personne, 0) << "des dossiers ont été calculés";
}

}  // namespace

namespace {

// vesko-gui with a store that does not exist: the window opens all the same
// and a French message box names the file.
TEST_F(Bureau, AStoreThatCannotBeOpenedIsToldInAMessageBoxOfTheOpenWindow) {
  const std::string absente = dossier / "absente.vesko";
  const std::string lancement = "cd '" + dossier.chemin +
                                "' && (" VESKO_BINARY_DIR "/vesko-gui --db '" + absente +
                                "' & echo $! > pid)";
  ASSERT_EQ(essai::Lance(lancement).statut, 0);
  std::string fenetres;
  for (int essai = 0; essai < 100; ++essai) {
    fenetres = essai::Lance("LC_ALL=C.UTF-8 xwininfo -root -tree").sortie;
    if (fenetres.find("\"Ouvrir une base\"") != std::string::npos) break;
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
  essai::Lance("kill $(cat '" + (dossier / "pid") + "')");
  EXPECT_NE(fenetres.find("\"Vesko — fiches des aidants et des aidés\""), std::string::npos)
      << fenetres;
  EXPECT_NE(fenetres.find("\"Ouvrir une base\""), std::string::npos) << fenetres;
}

}  // namespace

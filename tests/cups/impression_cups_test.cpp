// `vesko print` on print queues, against a print server of the tests' own
// (serveur_cups.h): the job that reaches the queue, the queues that cannot
// print, the fallback PDF and the wait for the job's end.
#include <gtest/gtest.h>

#include <QGuiApplication>
#include <filesystem>
#include <fstream>
#include <regex>

#include "printing/cups.h"
#include "printing/printer.h"
#include "tests/cups/magasin_demo.h"
#include "tests/cups/serveur_cups.h"

namespace {

namespace fs = std::filesystem;

// QPdfWriter, used for the drawing of a job, needs an application.
void Application() {
  static int argc = 1;
  static char nom[] = "test_cups";
  static char* argv[] = {nom, nullptr};
  static QGuiApplication* application =
      QGuiApplication::instance() != nullptr ? nullptr : new QGuiApplication(argc, argv);
  (void)application;
}
using essai_cups::Capture;
using essai_cups::Lance;
using essai_cups::ServeurCups;
using essai_demo::Resultat;
using essai_demo::Vesko;

class ImpressionCups : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string raison;
    serveur = ServeurCups::Instance(&raison);
    if (serveur == nullptr) GTEST_SKIP() << "pas de serveur d'impression privé : " << raison;
    ASSERT_FALSE(essai_demo::Base().empty()) << "la base de démonstration n'a pas pu être créée";
  }

  // `vesko print` of the care recipient A0001 on 15/03/2024 with more options.
  static Resultat Imprime(const std::string& options) {
    return Vesko("print --db '" + essai_demo::Base() + "' --type AIDE --date 2024-03-15 " +
                 options + " A0001");
  }

  // The job id `vesko print` reported: "Travail CAPTURE-12 envoyé…".
  static int Numero(const Resultat& r, const std::string& file) {
    std::smatch m;
    if (!std::regex_search(r.sortie, m, std::regex("^Travail " + file + "-([0-9]+) envoyé"))) {
      return 0;
    }
    return std::stoi(m[1]);
  }

  ServeurCups* serveur = nullptr;
};

TEST_F(ImpressionCups, OneJobReachesTheQueueWithItsTitleA4AndTheDossierText) {
  const size_t avant = serveur->Captures("CAPTURE").size();
  const Resultat r = Imprime("--printer CAPTURE");
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  EXPECT_EQ(r.erreurs, "");
  const int numero = Numero(r, "CAPTURE");
  ASSERT_GT(numero, 0) << r.sortie;
  EXPECT_EQ(r.sortie, "Travail CAPTURE-" + std::to_string(numero) +
                          " envoyé à l'imprimante « CAPTURE » (DOSSIER AIDE A0001).\n");

  const Capture job = serveur->AttendCapture("CAPTURE", numero);
  ASSERT_EQ(job.numero, numero) << serveur->Journal();
  EXPECT_EQ(serveur->Captures("CAPTURE").size(), avant + 1) << "un seul travail par impression";
  EXPECT_EQ(job.infos.at("title"), "DOSSIER AIDE A0001");
  EXPECT_EQ(job.infos.at("copies"), "1");
  EXPECT_EQ(job.options.at("media"), "A4");
  ASSERT_EQ(job.contenu.substr(0, 5), "%PDF-");

  essai_demo::Dossier dossier;
  const std::string pdf = dossier / "travail.pdf";
  std::ofstream(pdf, std::ios::binary) << job.contenu;
  int statut = -1;
  const std::string texte = Lance("pdftotext -layout '" + pdf + "' -", &statut);
  ASSERT_EQ(statut, 0) << "pdftotext (poppler-utils) est nécessaire";
  const Resultat reference = Imprime("--text '" + (dossier / "dossier.txt") + "'");
  ASSERT_EQ(reference.statut, 0) << reference.erreurs;
  const auto attendu = essai_demo::LignesDeMots(essai_cups::Lit(dossier / "dossier.txt"));
  EXPECT_GT(attendu.size(), 100u);
  EXPECT_EQ(essai_demo::LignesDeMots(texte), attendu);
  EXPECT_NE(Lance("pdfinfo '" + pdf + "'").find("(A4)"), std::string::npos);
}

TEST_F(ImpressionCups, CopiesAndPaperReachTheJobAndWaitSaysItCompleted) {
  const Resultat r = Imprime("--printer CAPTURE --copies 3 --paper A3 --wait");
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  const int numero = Numero(r, "CAPTURE");
  ASSERT_GT(numero, 0) << r.sortie;
  EXPECT_NE(r.sortie.find("\nLe travail CAPTURE-" + std::to_string(numero) +
                          " est terminé : l'imprimante « CAPTURE » l'a imprimé.\n"),
            std::string::npos)
      << r.sortie;
  // --wait returned once the server said completed: the job is already kept.
  const std::vector<Capture> captures = serveur->Captures("CAPTURE");
  ASSERT_FALSE(captures.empty());
  const Capture& job = captures.back();
  ASSERT_EQ(job.numero, numero);
  EXPECT_EQ(job.infos.at("copies"), "3");
  EXPECT_EQ(job.options.at("media"), "A3");

  essai_demo::Dossier dossier;
  std::ofstream(dossier / "a3.pdf", std::ios::binary) << job.contenu;
  EXPECT_NE(Lance("pdfinfo '" + (dossier / "a3.pdf") + "'").find("(A3)"), std::string::npos);
}

TEST_F(ImpressionCups, QueuesThatCannotPrintAreNamedWithTheirReasonAndNothingIsSent) {
  struct Cas {
    std::string file;
    std::string message;
  };
  const std::string serveur_adresse = serveur->Adresse();
  const Cas cas[] = {
      {"ARRETEE", "l'imprimante « ARRETEE » est arrêtée : Bourrage papier dans le bac 2."},
      {"REFUS", "l'imprimante « REFUS » refuse les travaux : Toner à remplacer."},
      {"FANTOME", "l'imprimante « FANTOME » est inconnue du serveur d'impression " +
                      serveur_adresse + " : aucune file de ce nom."},
  };
  for (const Cas& c : cas) {
    SCOPED_TRACE(c.file);
    const Resultat r = Imprime("--printer " + c.file);
    EXPECT_EQ(r.statut, 1);
    EXPECT_EQ(r.erreurs, "vesko : " + c.message + "\n");
    EXPECT_EQ(r.sortie, "");
    EXPECT_TRUE(serveur->Captures(c.file).empty());
  }

  // With a fallback PDF the document is kept there, and the reason is told.
  essai_demo::Dossier dossier;
  const std::string secours = dossier / "secours.pdf";
  const Resultat r = Imprime("--printer ARRETEE --fallback-pdf '" + secours + "'");
  EXPECT_EQ(r.statut, 0) << r.erreurs;
  EXPECT_EQ(r.erreurs,
            "vesko : l'imprimante « ARRETEE » est arrêtée : Bourrage papier dans le "
            "bac 2. Le document est écrit dans " +
                secours + " à la place.\n");
  EXPECT_NE(Lance("pdftotext -l 1 '" + secours + "' -").find("ETAT CIVIL"), std::string::npos);
  EXPECT_TRUE(serveur->Captures("ARRETEE").empty());
}

TEST_F(ImpressionCups, AStoppedServerIsNamedAndTheFallbackStillWorks) {
  serveur->Arrete();
  const Resultat r = Imprime("--printer CAPTURE");
  essai_demo::Dossier dossier;
  const Resultat secours =
      Imprime("--printer CAPTURE --fallback-pdf '" + (dossier / "s.pdf") + "'");
  ASSERT_TRUE(serveur->Relance()) << serveur->Journal();
  EXPECT_EQ(r.statut, 1);
  EXPECT_EQ(r.erreurs, "vesko : le serveur d'impression " + serveur->Adresse() +
                           " ne répond pas (connexion refusée) : impossible d'imprimer sur « "
                           "CAPTURE ».\n");
  EXPECT_EQ(secours.statut, 0) << secours.erreurs;
  EXPECT_TRUE(fs::exists(dossier / "s.pdf"));
}

TEST_F(ImpressionCups, WaitingForAJobThePrinterFailsSaysItFailedAndWhy) {
  const Resultat r = Imprime("--printer PANNE --wait");
  const int numero = Numero(r, "PANNE");
  ASSERT_GT(numero, 0) << r.sortie << r.erreurs;
  EXPECT_EQ(r.statut, 1);
  EXPECT_EQ(r.erreurs, "vesko : le travail PANNE-" + std::to_string(numero) +
                           " a échoué sur l'imprimante « PANNE » : Plus de papier dans le bac "
                           "1.\n");
}

TEST_F(ImpressionCups, AQueueThatStopsWhileTheDocumentIsDrawnKeepsItInTheFallbackPdf) {
  // The check before the run said yes; by the end of the document the queue
  // no longer prints: the job is not sent, the drawing is kept, and the
  // report says why.
  Application();
  essai_demo::Dossier dossier;
  auto reglages = std::make_shared<printing::cups::ReglagesEnvoi>();
  reglages->pdf_secours = dossier / "secours.pdf";
  std::vector<printing::cups::Envoi> envois;
  reglages->rapport = [&](const printing::cups::Envoi& e) { envois.push_back(e); };
  printing::Printer p(printing::cups::SurfaceFile("ARRETEE", {"DOSSIER AIDE A0001", 1}, reglages));
  p.Print(" Nom patronymique     : MARTIN");
  const std::string message =
      "l'imprimante « ARRETEE » est arrêtée : Bourrage papier dans le bac 2.";
  try {
    p.EndDoc();
    ADD_FAILURE() << "l'envoi doit échouer";
  } catch (const std::runtime_error& e) {
    EXPECT_EQ(e.what(), message);
  }
  ASSERT_EQ(envois.size(), 1u);
  EXPECT_EQ(envois[0].numero, 0);
  EXPECT_EQ(envois[0].erreur, message);
  EXPECT_EQ(envois[0].secours, dossier / "secours.pdf");
  EXPECT_EQ(Lance("pdftotext -raw '" + (dossier / "secours.pdf") + "' -"),
            "Nom patronymique : MARTIN\n\f");
  EXPECT_TRUE(serveur->Captures("ARRETEE").empty());
}

}  // namespace

// `vesko print` and `vesko printers` as an office uses them: lpoptions
// instances and -o options, the printers and their states, the menu on the
// terminal, the wait on a jammed printer, the progress of a long run.
#include <gtest/gtest.h>

#include <chrono>
#include <regex>

#include "tests/cups/serveur_cups.h"

namespace {

using essai::Lance;
using essai::Resultat;
using BureauCups = essai_cups::AvecServeur;

std::string Vesko(const std::string& arguments) { return VESKO_BINARY_DIR "/vesko " + arguments; }
std::string Print(const std::string& options, const std::string& cles = "A0001") {
  return Vesko("print --db '" + essai_cups::BaseDemo() + "' --type AIDE --date 2024-03-15 " +
               options + " " + cles);
}

int Numero(const std::string& sortie) {
  std::smatch m;
  if (!std::regex_search(sortie, m, std::regex("Travail [A-Z]+-([0-9]+) envoyé"))) return 0;
  return std::stoi(m[1].str());
}

// An instance's lpoptions reach the job as `lp -d QUEUE/instance` sends them,
// its paper becomes the document's, and -o options come on top.
TEST_F(BureauCups, AnInstancesOptionsAndDashOOptionsReachTheJob) {
  // The test's own HOME: its lpoptions only, never the user's.
  std::filesystem::create_directories(dossier / ".cups");
  std::ofstream(dossier / ".cups/lpoptions")
      << "Dest CAPTURE/recto sides=two-sided-long-edge media=A3 number-up=4\n";
  const std::string home = "HOME='" + dossier.chemin + "' ";

  Resultat r =
      Lance(home + Print("--printer CAPTURE/recto -o 'number-up=2 print-color-mode=color'"));
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  essai_cups::Capture job = AttendCapture("CAPTURE", Numero(r.sortie));
  ASSERT_NE(job.numero, 0) << r.sortie << Journal();
  EXPECT_EQ(job.infos, "DOSSIER AIDE A0001 1 A3");
  EXPECT_NE(job.options.find("sides=two-sided-long-edge"), std::string::npos) << job.options;
  EXPECT_NE(job.options.find("print-color-mode=color"), std::string::npos) << job.options;
  EXPECT_NE(job.options.find("number-up=2"), std::string::npos) << job.options;
  EXPECT_EQ(job.options.find("number-up=4"), std::string::npos) << "-o passe après l'instance";
  EXPECT_NE(Lance("pdfinfo '" + job.fichier + "'").sortie.find("(A3)"), std::string::npos)
      << "le document est dessiné sur le papier de l'instance";

  // --paper says otherwise: the user's word wins over the instance's.
  r = Lance(home + Print("--printer CAPTURE/recto --paper A4"));
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  job = AttendCapture("CAPTURE", Numero(r.sortie));
  EXPECT_EQ(job.infos, "DOSSIER AIDE A0001 1 A4");

  r = Lance(home + Print("--printer CAPTURE/verso"));
  EXPECT_EQ(r.statut, 1);
  EXPECT_EQ(r.erreurs,
            "vesko : l'imprimante « CAPTURE/verso » est inconnue du serveur "
            "d'impression " +
                Adresse() + " : aucune instance « verso » dans les fichiers lpoptions.\n");
  r = Lance(home + Print("--pdf x.pdf -o media=A3"));
  EXPECT_EQ(r.statut, 2);
}

TEST_F(BureauCups, PrintersListsTheQueuesWithTheirStateAndTheDefault) {
  const Resultat r = Lance("HOME='" + dossier.chemin + "' " + Vesko("printers"));
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  for (const char* ligne :
       {"CAPTURE (par défaut) — prête\n", "ARRETEE — arrêtée : Bourrage papier dans le bac 2\n",
        "REFUS — refuse les travaux : Toner à remplacer\n", "Imprimante par défaut : CAPTURE.\n"})
    EXPECT_NE(r.sortie.find(ligne), std::string::npos) << ligne << "\ndans\n" << r.sortie;
  const Resultat muet = Lance("CUPS_SERVER=127.0.0.1:1 " + Vesko("printers"));
  EXPECT_EQ(muet.statut, 1);
  EXPECT_EQ(muet.erreurs,
            "vesko : le serveur d'impression 127.0.0.1:1 ne répond pas (connexion refusée).\n");
}

// The menu on a terminal: default and states marked, a stopped queue refused
// and the question asked again; the menu never goes into standard output.
TEST_F(BureauCups, TheTerminalMenuMarksTheDefaultAndRefusesAStoppedQueue) {
  const std::string sortie = dossier / "sortie.txt";
  // script gives the command a terminal; its input is what the user types
  // (the braces keep Lance's </dev/null off script).
  const Resultat r = Lance("{ printf '2\\n1\\n' | HOME='" + dossier.chemin + "' script -qec \"" +
                           Print("") + " > '" + sortie + "'\" /dev/null; }");
  const std::string terminal = r.sortie;
  EXPECT_NE(terminal.find("1. CAPTURE (par défaut) — prête"), std::string::npos) << terminal;
  EXPECT_NE(terminal.find("2. ARRETEE — arrêtée : Bourrage papier dans le bac 2"),
            std::string::npos)
      << terminal;
  EXPECT_NE(terminal.find("Impossible : l'imprimante « ARRETEE » est arrêtée : Bourrage papier "
                          "dans le bac 2. Choisissez-en une autre."),
            std::string::npos)
      << terminal;
  const std::string redirige = essai::Lit(sortie);
  EXPECT_EQ(redirige.find("Imprimantes disponibles"), std::string::npos) << redirige;
  ASSERT_NE(Numero(redirige), 0) << redirige << terminal;
  EXPECT_NE(AttendCapture("CAPTURE", Numero(redirige)).numero, 0);
}

// A jammed printer keeps the job: --wait says what the printer says and
// --timeout ends the wait, status 1.
TEST_F(BureauCups, WaitOnAJammedPrinterShowsItsMessageAndEndsAtTheTimeout) {
  const auto debut = std::chrono::steady_clock::now();
  const Resultat r = Lance(Print("--printer BOURRAGE --wait --timeout 5"));
  const double secondes =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - debut).count();
  EXPECT_EQ(r.statut, 1);
  const int numero = Numero(r.sortie);
  ASSERT_NE(numero, 0) << r.sortie << r.erreurs;
  const std::string travail = "BOURRAGE-" + std::to_string(numero);
  EXPECT_EQ(r.erreurs,
            "vesko : l'imprimante « BOURRAGE » dit : Plus de papier dans le bac 1\n"
            "vesko : le travail " +
                travail +
                " n'est toujours pas imprimé sur « BOURRAGE » à la fin du délai d'attente : Plus "
                "de papier dans le bac 1.\n");
  EXPECT_GE(secondes, 4.5);
  EXPECT_LT(secondes, 15.0) << "l'attente ne s'arrête pas au délai";
  Lance("cancel " + travail);
}

// On a terminal a long run shows how far it is; redirected, nothing.
TEST_F(BureauCups, ALongRunShowsItsProgressOnATerminalOnly) {
  std::string cles;
  for (int i = 0; i < 60; ++i) cles += i % 2 ? " A0001" : " A0002";
  const std::string pdf = dossier / "lot.pdf";
  const Resultat terminal =
      Lance("script -qec \"" + Print("--pdf '" + pdf + "'", cles) + "\" /dev/null");
  EXPECT_TRUE(
      std::regex_search(terminal.sortie, std::regex("Dossier [0-9]+ sur 60 — [0-9]+ pages")))
      << terminal.sortie;
  EXPECT_TRUE(std::regex_search(terminal.sortie, std::regex("60 dossier\\(s\\), [1-9][0-9]+ page")))
      << terminal.sortie;
  const Resultat redirige = Lance(Print("--pdf '" + pdf + "'", cles));
  EXPECT_EQ(redirige.erreurs, "Dossiers imprimés dans " + pdf + "\n");
}

}  // namespace

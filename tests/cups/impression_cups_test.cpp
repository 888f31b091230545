// `vesko print` on the queues of serveur_cups.h: the job that reaches the queue,
// the queues that cannot print, the fallback PDF and the wait for the job's end.
#include <gtest/gtest.h>

#include <regex>
#include <sstream>

#include "printing/cups.h"
#include "printing/printer.h"
#include "tests/cups/serveur_cups.h"

namespace {

using essai::Lance;
using essai::Resultat;

// The words of every non-empty line, one space apart, and a line "\f" between
// pages: pdftotext -layout guesses a space's width from every font of the page,
// 16-point titles included, so where the words sit is the printing tests' concern.
std::vector<std::string> LignesDeMots(const std::string& texte) {
  std::vector<std::string> lignes;
  std::istringstream flux(std::regex_replace(texte, std::regex("\f"), "\n\f\n"));
  for (std::string l; std::getline(flux, l);) {
    l = std::regex_replace(l, std::regex("^ +| +$|( ) +"), "$1");
    if (!l.empty()) lignes.push_back(l);
  }
  if (!lignes.empty() && lignes.back() == "\f") lignes.pop_back();
  return lignes;
}

// serveur: "CUPS_SERVER=…" for another print server than the tests' own.
Resultat Imprime(const std::string& options, const std::string& serveur = "") {
  return Lance(serveur + " " VESKO_BINARY_DIR "/vesko print --db '" + essai_cups::BaseDemo() +
               "' --type AIDE --date 2024-03-15 " + options + " A0001");
}

using ImpressionCups = essai_cups::AvecServeur;

// One job, with its copies and paper, whose PDF gives back the text format's lines;
// --wait returns once the server says the job is completed, so it is already kept,
// or says why the printer failed it.
TEST_F(ImpressionCups, OneJobReachesTheQueueWithItsTitleCopiesPaperAndTheDossierText) {
  ASSERT_EQ(Imprime("--text '" + (dossier / "dossier.txt") + "'").statut, 0);
  const auto attendu = LignesDeMots(essai::Lit(dossier / "dossier.txt"));
  EXPECT_GT(attendu.size(), 100u);
  const Resultat r = Imprime("--printer CAPTURE --copies 3 --paper A3 --wait");
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  EXPECT_EQ(r.erreurs, "");
  std::smatch m;  // the job id the server gave
  ASSERT_TRUE(std::regex_search(r.sortie, m, std::regex("^Travail CAPTURE-([0-9]+) "))) << r.sortie;
  const std::string travail = "CAPTURE-" + m[1].str();
  EXPECT_EQ(r.sortie, "Travail " + travail +
                          " envoyé à l'imprimante « CAPTURE » (DOSSIER AIDE A0001).\nLe travail " +
                          travail + " est terminé : l'imprimante « CAPTURE » l'a imprimé.\n");

  const Resultat panne = Imprime("--printer PANNE --wait");
  EXPECT_EQ(panne.statut, 1);
  ASSERT_TRUE(std::regex_search(panne.sortie, m, std::regex("^Travail (PANNE-[0-9]+) ")));
  EXPECT_EQ(panne.erreurs,
            "vesko : le travail " + m[1].str() +
                " a échoué sur l'imprimante « PANNE » : Plus de papier dans le bac 1.\n");

  const essai_cups::Capture job = AttendCapture("CAPTURE", std::stoi(travail.substr(8)), 0);
  ASSERT_NE(job.numero, 0) << "--wait rend la main avant le travail\n" << Journal();
  EXPECT_EQ(job.infos, "DOSSIER AIDE A0001 3 A3");
  EXPECT_NE(Lance("pdfinfo '" + job.fichier + "'").sortie.find("(A3)"), std::string::npos);
  const Resultat texte = Lance("pdftotext -layout '" + job.fichier + "' -");
  ASSERT_EQ(texte.statut, 0) << "pdftotext (poppler-utils) est nécessaire";
  EXPECT_EQ(LignesDeMots(texte.sortie), attendu);
}

// Each way a queue cannot print is named with its reason; with --fallback-pdf
// the document is kept in that file instead.
TEST_F(ImpressionCups, QueuesThatCannotPrintAreNamedAndTheFallbackPdfKeepsTheDocument) {
  struct Cas {
    std::string file, message;
  } const cas[] = {
      {"ARRETEE", "l'imprimante « ARRETEE » est arrêtée : Bourrage papier dans le bac 2."},
      {"REFUS", "l'imprimante « REFUS » refuse les travaux : Toner à remplacer."},
      {"FANTOME", "l'imprimante « FANTOME » est inconnue du serveur d'impression " + Adresse() +
                      " : aucune file de ce nom."},
      {"CAPTURE",
       "le serveur d'impression 127.0.0.1:1 ne répond pas (connexion refusée) : impossible "
       "d'imprimer sur « CAPTURE »."},
  };
  for (const Cas& c : cas) {
    SCOPED_TRACE(c.file);
    // CAPTURE prints: its case is a server that does not answer (none listens on port 1).
    const std::string serveur = c.file == "CAPTURE" ? "CUPS_SERVER=127.0.0.1:1" : "";
    const Resultat r = Imprime("--printer " + c.file, serveur);
    const std::string secours = dossier / (c.file + ".pdf");
    const Resultat s =
        Imprime("--printer " + c.file + " --fallback-pdf '" + secours + "'", serveur);

    EXPECT_EQ(r.statut, 1);
    EXPECT_EQ(r.erreurs, "vesko : " + c.message + "\n");
    EXPECT_EQ(s.statut, 0) << s.erreurs;
    EXPECT_EQ(s.erreurs,
              "vesko : " + c.message + " Le document est écrit dans " + secours + " à la place.\n");
    EXPECT_NE(Lance("pdftotext -l 1 '" + secours + "' -").sortie.find("ETAT CIVIL"),
              std::string::npos);
  }
}

TEST_F(ImpressionCups, AQueueThatStopsWhileTheDocumentIsDrawnKeepsItInTheFallbackPdf) {
  // The check before the run said yes; by the end of the document the queue no
  // longer prints: the job is not sent, the drawing is kept, the report says why.
  auto reglages = std::make_shared<printing::cups::ReglagesEnvoi>();
  reglages->pdf_secours = dossier / "secours.pdf";
  std::vector<printing::cups::Envoi> envois;
  reglages->rapport = [&](const printing::cups::Envoi& e) { envois.push_back(e); };
  printing::Printer p(printing::cups::SurfaceFile("ARRETEE", {"DOSSIER AIDE A0001", 1}, reglages));
  p.Print(" Nom patronymique     : MARTIN");
  EXPECT_THROW(p.EndDoc(), std::runtime_error);
  ASSERT_EQ(envois.size(), 1u);
  EXPECT_EQ(envois[0].erreur,
            "l'imprimante « ARRETEE » est arrêtée : Bourrage papier dans le bac 2.");
  EXPECT_EQ(Lance("pdftotext -raw '" + (dossier / "secours.pdf") + "' -").sortie,
            "Nom patronymique : MARTIN\n\f");
}

}  // namespace

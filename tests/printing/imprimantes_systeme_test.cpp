// The system's printer list and a real print job, against a CUPS scheduler
// of the test's own whose queues capture what they receive.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>

#include "printing/imprimantes.h"
#include "printing/printer.h"
#include "printing/qt_surface.h"
#include "tests/printing/outils.h"

namespace {

class ImprimantesSystemeTest : public ::testing::Test {
 protected:
  void SetUp() override {
    serveur = essai::ServeurCups::Instance();
    if (serveur == nullptr) GTEST_SKIP() << "cupsd (paquet cups-daemon) ne démarre pas ici";
    ASSERT_TRUE(serveur->AjouteFile("alpha") && serveur->AjouteFile("beta") &&
                serveur->AjouteFile("gamma", /*defaut=*/true));
  }
  essai::ServeurCups* serveur = nullptr;
};

TEST_F(ImprimantesSystemeTest, DefaultQueueFirstThenTheOthersThenPdfAndAJobReachesItsQueue) {
  essai::DossierTemporaire dossier;
  const auto liste = printing::ListeImprimantes::Systeme();
  std::vector<std::string> noms;
  for (const auto& d : liste) noms.push_back(d.nom);
  EXPECT_EQ(noms, (std::vector<std::string>{"gamma", "alpha", "beta", "PDF"}));

  printing::Printer p(liste.at(1).ouvre({"DOSSIER AIDANT A01", 2}));
  p.Print(" Nom                   : DURAND");
  p.SetDrawWidth(3);
  p.Line(0, 300, 5000, 300);
  p.NewPage();
  p.Print(" Page suivante");
  p.EndDoc();
  const std::string job = serveur->Capture("alpha");
  ASSERT_EQ(job.substr(0, 5), "%PDF-");
  EXPECT_EQ(serveur->InfosCapture("alpha"), "title=DOSSIER AIDANT A01\ncopies=2\n");
  std::ofstream(dossier / "job.pdf", std::ios::binary) << job;
  EXPECT_EQ(essai::Lance("pdftotext -raw " + (dossier / "job.pdf") + " -"),
            "Nom : DURAND\n\fPage suivante\n\f");
  // Drawn as on a PDF file: 25 characters of 0.6 em from the origin, 5 mm in.
  std::smatch m;
  const std::string boites = essai::Lance("pdftotext -bbox " + (dossier / "job.pdf") + " -");
  ASSERT_TRUE(std::regex_search(boites, m, std::regex(R"re(xMin="([0-9.]+)"[^>]*>DURAND<)re")));
  EXPECT_NEAR(std::stod(m[1]), 14.173 + 25 * 6.6, 0.05);

  // "PDF" writes the file named when its document opens, not when the list was made.
  printing::ListeImprimantes::FixeFichierPdf(dossier / "choisi.pdf");
  printing::Printer pdf(liste.back().ouvre({}));
  pdf.Print("x");
  pdf.EndDoc();
  EXPECT_TRUE(std::filesystem::exists(dossier / "choisi.pdf"));
}

TEST_F(ImprimantesSystemeTest, AQueueThatIsGoneIsNamedInTheError) {
  try {
    printing::SurfaceImprimante("disparue", {});
    ADD_FAILURE() << "une file absente doit être signalée";
  } catch (const std::runtime_error& e) {
    EXPECT_STREQ(e.what(), "l'imprimante « disparue » n'existe pas sur ce système.");
  }
}

}  // namespace

// The system's printer list as the control sees it. The queues themselves are
// tested against a print server of the tests' own with the print command.
#include <gtest/gtest.h>

#include <filesystem>

#include "printing/imprimantes.h"
#include "printing/printer.h"
#include "printing/qt_surface.h"
#include "tests/printing/outils.h"

namespace {

TEST(ImprimantesSysteme, PdfWritesTheFileNamedWhenItOpensAndAGoneQueueIsNamed) {
  essai::DossierTemporaire dossier;
  const auto liste = printing::ListeImprimantes::Systeme();
  ASSERT_EQ(liste.back().nom, "PDF");
  printing::ListeImprimantes::FixeFichierPdf(dossier / "choisi.pdf");  // after the list
  printing::Printer pdf(liste.back().ouvre({}));
  pdf.Print("x");
  pdf.EndDoc();
  EXPECT_TRUE(std::filesystem::exists(dossier / "choisi.pdf"));
  try {
    printing::SurfaceImprimante("disparue", {});
    ADD_FAILURE() << "une file absente doit être signalée";
  } catch (const std::runtime_error& e) {
    EXPECT_STREQ(e.what(), "l'imprimante « disparue » n'existe pas sur ce système.");
  }
}

}  // namespace

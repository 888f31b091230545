// The options of `vesko print` that need no print server: pages as PNG
// images, the preview's need of a screen, and the wrong combinations.
#include <gtest/gtest.h>

#include <QImage>

#include "tests/cups/serveur_cups.h"

namespace {

using essai::Resultat;

// One image per page is the printing tests' concern; here, the report and the sheet.
TEST(OptionsImpression, PngWritesTheWholeSheetOfEveryPageAndSaysHowManyPages) {
  const essai::Dossier dossier;
  const Resultat r = essai::Vesko("print --db '" + essai_cups::BaseDemo() +
                                  "' --type AIDANT --png '" + (dossier / "pages") + "' S0001");
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  const auto images = std::filesystem::directory_iterator(dossier / "pages");
  EXPECT_EQ(r.erreurs, std::to_string(std::distance(begin(images), end(images))) +
                           " page(s) écrite(s) dans " + (dossier / "pages") + "\n");
  // A4 at 150 dots per inch, white around the print.
  const QImage premiere(QString::fromStdString(dossier / "pages/page-001.png"));
  EXPECT_EQ(premiere.size(), QSize(1240, 1754));
  EXPECT_EQ(premiere.pixel(3, 3), qRgb(255, 255, 255));
}

TEST(OptionsImpression, WrongCombinationsAndThePreviewWithoutAScreenAreNamed) {
  struct Cas {
    std::string options;
    int statut;
    std::string message;
  } const cas[] = {
      {"--pdf a.pdf --png d", 2,
       "une seule sortie à la fois : --pdf, --printer, --text, --json, --png ou --preview."},
      {"--pdf a.pdf --wait", 2, "--wait ne vaut qu'avec une imprimante (--printer FILE)."},
      {"--text a.txt --fallback-pdf b.pdf", 2,
       "--fallback-pdf ne vaut qu'avec une imprimante (--printer FILE)."},
      {"--pdf a.pdf --copies 2", 2, "--copies ne vaut qu'avec une imprimante (--printer FILE)."},
      {"--printer Q --copies 0", 2,
       "nombre d'exemplaires invalide « 0 » (--copies) : un entier de 1 à 999."},
      {"--printer Q --paper B5", 2,
       "format de papier inconnu « B5 » (--paper) : A4, A3 ou Letter."},
      {"--preview", 1,
       "l'aperçu (--preview) a besoin d'un écran : la plateforme « offscreen » n'en a pas "
       "(DISPLAY ou WAYLAND_DISPLAY absents)."},
  };
  setenv("QT_QPA_PLATFORM", "offscreen", 1);  // never a real dialog in a test
  for (const Cas& c : cas) {
    SCOPED_TRACE(c.options);
    const Resultat r = essai::Vesko("print --db '" + essai_cups::BaseDemo() + "' --type AIDE " +
                                    c.options + " A0001");
    EXPECT_EQ(r.statut, c.statut);
    EXPECT_EQ(r.erreurs, "vesko : " + c.message + "\n");
  }
}

}  // namespace

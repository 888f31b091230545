// The options of `vesko print` that need no print server: pages as PNG
// images, the preview's need of a screen, and the wrong combinations.
#include <gtest/gtest.h>

#include <QImage>
#include <algorithm>
#include <filesystem>

#include "tests/cups/magasin_demo.h"
#include "tests/cups/serveur_cups.h"

namespace {

namespace fs = std::filesystem;
using essai_demo::Resultat;

Resultat Imprime(const std::string& options) {
  return essai_demo::Vesko("print --db '" + essai_demo::Base() +
                           "' --type AIDANT --date 2024-03-15 " + options + " S0001");
}

TEST(OptionsImpression, PngWritesOneImageOfTheWholeSheetPerPage) {
  ASSERT_FALSE(essai_demo::Base().empty());
  essai_demo::Dossier dossier;
  const Resultat texte = Imprime("--text '" + (dossier / "d.txt") + "'");
  ASSERT_EQ(texte.statut, 0) << texte.erreurs;
  const auto lignes = essai_demo::LignesDeMots(essai_cups::Lit(dossier / "d.txt"));
  const long pages = std::count(lignes.begin(), lignes.end(), "\f") + 1;

  const Resultat r = Imprime("--png '" + (dossier / "pages") + "'");
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  EXPECT_EQ(r.erreurs,
            std::to_string(pages) + " page(s) écrite(s) dans " + (dossier / "pages") + "\n");
  long images = 0;
  for (const auto& e : fs::directory_iterator(dossier / "pages"))
    images += e.path().extension() == ".png";
  EXPECT_EQ(images, pages);
  // A4 at 150 dots per inch, white around the print.
  const QImage premiere(QString::fromStdString(dossier / "pages/page-001.png"));
  EXPECT_EQ(premiere.size(), QSize(1240, 1754));
  EXPECT_EQ(premiere.pixel(3, 3), qRgb(255, 255, 255));

  // A3 is the paper of the images too.
  ASSERT_EQ(Imprime("--paper a3 --png '" + (dossier / "a3") + "'").statut, 0);
  EXPECT_EQ(QImage(QString::fromStdString(dossier / "a3/page-001.png")).size(), QSize(1754, 2480));
}

TEST(OptionsImpression, ThePreviewWithoutAScreenSaysWhyAndPrintsNothing) {
  ASSERT_FALSE(essai_demo::Base().empty());
  setenv("QT_QPA_PLATFORM", "offscreen", 1);  // never a real dialog in a test
  const Resultat r =
      essai_demo::Vesko("print --db '" + essai_demo::Base() + "' --type AIDE --preview A0001");
  EXPECT_EQ(r.statut, 1);
  EXPECT_EQ(r.erreurs,
            "vesko : l'aperçu (--preview) a besoin d'un écran : la plateforme « offscreen » n'en "
            "a pas (DISPLAY ou WAYLAND_DISPLAY absents).\n");
}

TEST(OptionsImpression, WrongCombinationsAreUsageErrorsNamingTheOption) {
  const std::string base = "print --db /nulle/part.vesko --type AIDE ";
  struct Cas {
    std::string options;
    std::string message;
  };
  const Cas cas[] = {
      {"--pdf a.pdf --png d",
       "une seule sortie à la fois : --pdf, --printer, --text, --json, "
       "--png ou --preview."},
      {"--pdf a.pdf --wait", "--wait ne vaut qu'avec une imprimante (--printer FILE)."},
      {"--text a.txt --fallback-pdf b.pdf",
       "--fallback-pdf ne vaut qu'avec une imprimante (--printer FILE)."},
      {"--pdf a.pdf --copies 2", "--copies ne vaut qu'avec une imprimante (--printer FILE)."},
      {"--printer Q --copies 0",
       "nombre d'exemplaires invalide « 0 » (--copies) : un entier de 1 "
       "à 999."},
      {"--printer Q --copies 2.5",
       "nombre d'exemplaires invalide « 2.5 » (--copies) : un entier "
       "de 1 à 999."},
      {"--printer Q --paper B5", "format de papier inconnu « B5 » (--paper) : A4, A3 ou Letter."},
  };
  for (const Cas& c : cas) {
    SCOPED_TRACE(c.options);
    const Resultat r = essai_demo::Vesko(base + c.options + " A0001");
    EXPECT_EQ(r.statut, 2);
    EXPECT_EQ(r.erreurs, "vesko : " + c.message + "\n");
  }
}

}  // namespace

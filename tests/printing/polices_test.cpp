// Which family draws "Courier New", and the one notice when it is replaced.
#include "printing/polices.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QFont>
#include <QFontInfo>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/app/programmes.h"

namespace {

// Here Courier New or its metric twin is installed (the PDF test reads which
// one is embedded, and `vesko print` is checked to say nothing on its error
// output). A machine without either and without fonts-liberation is this
// program run again with a font configuration that holds only the DejaVu fonts.
TEST(PolicesTest, WithoutLiberationTheNearestFixedPitchFontIsUsedAndNamedOnce) {
  essai::Application();
  if (std::getenv("VESKO_ESSAI_SANS_LIBERATION") != nullptr) {  // the second run
    const std::string famille = printing::FamillePolice("Courier New");
    printing::FamillePolice("courier new");  // the same font: no second notice
    EXPECT_EQ(famille, "DejaVu Sans Mono");
    EXPECT_TRUE(QFontInfo(QFont(QString::fromStdString(famille))).fixedPitch());
    return;
  }
  const char* dejavu = "/usr/share/fonts/truetype/dejavu";
  if (!std::filesystem::exists(dejavu)) GTEST_SKIP() << "fonts-dejavu-core absent";
  const essai::Dossier dossier;
  std::ofstream(dossier / "fonts.conf")
      << "<?xml version=\"1.0\"?>\n<fontconfig><dir>" << dejavu << "</dir><cachedir>"
      << (dossier / "cache") << "</cachedir></fontconfig>\n";
  const essai::Resultat r =
      essai::Lance("VESKO_ESSAI_SANS_LIBERATION=1 QT_QPA_PLATFORM=offscreen FONTCONFIG_FILE=" +
                   (dossier / "fonts.conf") + " /proc/" + std::to_string(getpid()) +
                   "/exe --gtest_filter=PolicesTest.WithoutLiberation*");
  EXPECT_EQ(r.statut, 0) << r.sortie;
  std::istringstream flux(r.erreurs);
  std::vector<std::string> avis;  // the notice once, whatever else Qt says
  for (std::string ligne; std::getline(flux, ligne);)
    if (ligne.rfind("Vesko : ", 0) == 0) avis.push_back(ligne);
  EXPECT_EQ(avis, std::vector<std::string>{
                      "Vesko : ni la police « Courier New » ni « Liberation Mono » (mêmes "
                      "dimensions) ne sont installées ; le texte est imprimé en « DejaVu Sans "
                      "Mono », la police à chasse fixe la plus proche. Installez le paquet "
                      "fonts-liberation pour retrouver l'aspect prévu."});
}

}  // namespace

// Which family draws "Courier New", and the one notice when it is replaced.
#include "printing/polices.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QFont>
#include <QFontInfo>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <set>
#include <sstream>

#include "tests/printing/outils.h"

namespace {

TEST(PolicesTest, CourierNewHasAFamilyWithItsMetricsOnThisSystem) {
  ::testing::internal::CaptureStderr();
  const std::string famille = printing::FamillePolice("Courier New");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
  EXPECT_TRUE(famille == "Courier New" || famille == "Liberation Mono") << famille;
  QFont font(QString::fromStdString(famille));
  EXPECT_EQ(QFontInfo(font).family().toStdString(), famille);  // really installed
  EXPECT_TRUE(QFontInfo(font).fixedPitch());
  EXPECT_EQ(printing::FamillePolice("DejaVu Sans"), "DejaVu Sans");
}

TEST(PolicesTest, ReplacementIsAnnouncedOnceAndOtherNamesPassThrough) {
  std::set<std::string> installees = {"Liberation Mono"};
  int demandes = 0;
  std::ostringstream avis;
  printing::ResolveurPolices resolveur(
      [&](const std::string& f) { return installees.count(f) > 0; },
      [&](const std::string&) {
        ++demandes;
        return std::string("DejaVu Sans Mono");
      },
      avis);
  EXPECT_EQ(resolveur.Famille("Courier New"), "Liberation Mono");
  EXPECT_EQ(resolveur.Famille("Arial"), "Arial");

  installees.clear();  // a machine without fonts-liberation
  printing::ResolveurPolices sans_liberation(
      [&](const std::string& f) { return installees.count(f) > 0; },
      [&](const std::string&) {
        ++demandes;
        return std::string("DejaVu Sans Mono");
      },
      avis);
  EXPECT_EQ(sans_liberation.Famille("Courier New"), "DejaVu Sans Mono");
  EXPECT_EQ(sans_liberation.Famille("Courier New"), "DejaVu Sans Mono");
  EXPECT_EQ(sans_liberation.Famille("courier new"), "DejaVu Sans Mono");  // names ignore case
  EXPECT_EQ(sans_liberation.Famille("Arial"), "Arial");
  EXPECT_EQ(demandes, 1);
  const std::string texte = avis.str();
  EXPECT_EQ(texte.find("Vesko : ni la police « Courier New » ni « Liberation Mono »"), 0u) << texte;
  EXPECT_NE(texte.find("« DejaVu Sans Mono »"), std::string::npos);
  EXPECT_EQ(texte.find("Vesko", 1), std::string::npos);  // said once
}

// A machine without Courier New and without fonts-liberation: this program
// runs again with a font configuration that holds only the DejaVu fonts.
TEST(PolicesTest, WithoutLiberationTheNearestFixedPitchFontIsUsedAndNamedOnce) {
  if (std::getenv("VESKO_ESSAI_SANS_LIBERATION") != nullptr) {  // the second run
    const std::string famille = printing::FamillePolice("Courier New");
    printing::FamillePolice("Courier New");
    QFontInfo info{QFont(QString::fromStdString(famille))};
    std::cout << "famille=" << famille << " fixe=" << info.fixedPitch()
              << " reelle=" << info.family().toStdString() << "\n";
    return;
  }
  const char* dejavu = "/usr/share/fonts/truetype/dejavu";
  if (!std::filesystem::exists(dejavu)) GTEST_SKIP() << "fonts-dejavu-core absent";
  essai::DossierTemporaire dossier;
  std::ofstream(dossier / "fonts.conf")
      << "<?xml version=\"1.0\"?>\n<fontconfig><dir>" << dejavu << "</dir><cachedir>"
      << (dossier / "cache") << "</cachedir></fontconfig>\n";
  const std::string sortie =
      essai::Lance("VESKO_ESSAI_SANS_LIBERATION=1 QT_QPA_PLATFORM=offscreen FONTCONFIG_FILE=" +
                   (dossier / "fonts.conf") + " /proc/" + std::to_string(getpid()) +
                   "/exe --gtest_filter=PolicesTest.WithoutLiberation* 2>" + (dossier / "erreurs"));
  EXPECT_NE(sortie.find("famille=DejaVu Sans Mono fixe=1 reelle=DejaVu Sans Mono\n"),
            std::string::npos)
      << sortie;
  std::ifstream flux(dossier / "erreurs");
  int avis = 0;
  for (std::string ligne; std::getline(flux, ligne);) {
    if (ligne.rfind("Vesko : ", 0) != 0) continue;
    ++avis;
    EXPECT_NE(ligne.find("« DejaVu Sans Mono », la police à chasse fixe la plus proche"),
              std::string::npos)
        << ligne;
  }
  EXPECT_EQ(avis, 1);
}

}  // namespace

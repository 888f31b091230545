// Which family draws "Courier New", and the one notice when it is replaced.
#include "printing/polices.h"

#include <gtest/gtest.h>

#include <QFont>
#include <QFontInfo>
#include <set>
#include <sstream>

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

}  // namespace

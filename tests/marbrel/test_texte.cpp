#include <gtest/gtest.h>

#include "marbrel/texte.h"

namespace {

TEST(Texte, LesLongueursEtLesCoupesComptentDesCaracteres) {
  const std::string nom = "Hélène Bréval";  // 13 characters, 16 bytes
  EXPECT_EQ(nom.size(), 16u);
  EXPECT_EQ(texte::Len(nom), 13);
  EXPECT_EQ(texte::Left(nom, 2), "Hé");
  EXPECT_EQ(texte::Left(nom, 99), nom);
  EXPECT_EQ(texte::Left(nom, 0), "");
  EXPECT_EQ(texte::Mid(nom, 8, 3), "Bré");
  EXPECT_EQ(texte::Mid(nom, 8), "Bréval");
  EXPECT_EQ(texte::Mid(nom, 14), "");
  EXPECT_EQ(texte::Right(nom, 4), "éval");
  EXPECT_EQ(texte::Right(nom, 50), nom);
  EXPECT_EQ(texte::InStr(1, nom, "è"), 4);
  EXPECT_EQ(texte::InStr(5, nom, "é"), 10);
  EXPECT_EQ(texte::InStr(1, nom, "z"), 0);
}

TEST(Texte, LesColonnesSontRempliesEnCaracteresEtNeCoupentJamais) {
  EXPECT_EQ(texte::Pad("Prénom", 10), "Prénom    ");
  EXPECT_EQ(texte::Len(texte::Pad("Prénom", 10)), 10);
  EXPECT_EQ(texte::Pad("Très long texte", 5), "Très long texte");
  EXPECT_EQ(texte::PadLeft("9h30", 5), " 9h30");
  EXPECT_EQ(texte::PadLeft("Émile", 7), "  Émile");
  EXPECT_EQ(texte::Space(-3), "");
  EXPECT_EQ(texte::UpperAscii("avec é"), "AVEC é");
}

}  // namespace

#include <gtest/gtest.h>

#include "marbrel/texte.h"

namespace {

TEST(Texte, LesLongueursLesCoupesEtLesColonnesComptentDesCaracteres) {
  const std::string nom = "Hélène Bréval";  // 13 characters, 16 bytes
  EXPECT_EQ(texte::Len(nom), 13);
  EXPECT_EQ(texte::Left(nom, 2), "Hé");
  EXPECT_EQ(texte::Mid(nom, 8, 3), "Bré");
  EXPECT_EQ(texte::Right(nom, 4), "éval");
  EXPECT_EQ(texte::InStr(5, nom, "é"), 10);
  EXPECT_EQ(texte::Pad("Prénom", 10), "Prénom    ");
  EXPECT_EQ(texte::Pad("Très long texte", 5), "Très long texte");  // never cut
  EXPECT_EQ(texte::PadLeft("Émile", 7), "  Émile");
  EXPECT_EQ(texte::Space(-3), "");
  EXPECT_EQ(texte::UpperAscii("avec é"), "AVEC é");
}

}  // namespace

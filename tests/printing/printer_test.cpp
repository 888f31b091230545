// The printer object's semantics, on the recording surface.
#include "printing/printer.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "printing/recording.h"

namespace {

using printing::ElementTexte;
using printing::ElementTrait;

class PrinterTest : public ::testing::Test {
 protected:
  printing::Enregistrement rec;
  printing::Printer p{std::make_unique<printing::RecordingSurface>(&rec)};

  const ElementTexte& Texte(size_t page, size_t i) {
    return std::get<ElementTexte>(rec.pages.at(page).elements.at(i));
  }
};

constexpr double kLigne11 = 0.417 * 567;  // twips

TEST_F(PrinterTest, PrintEndsTheLineUnlessAskedAndEmptyPrintIsAnEmptyLine) {
  p.Print("Nom", false);
  EXPECT_DOUBLE_EQ(p.CurrentX(), 3 * 0.6 * 11 * 20);  // three characters of 0.6 em
  EXPECT_DOUBLE_EQ(p.CurrentY(), 0);
  p.Print("é : x");  // five characters, seven bytes
  EXPECT_DOUBLE_EQ(p.CurrentX(), 0);
  EXPECT_DOUBLE_EQ(p.CurrentY(), kLigne11);
  p.Print();
  p.Print("suite");
  ASSERT_EQ(rec.pages.size(), 1u);
  ASSERT_EQ(rec.pages[0].elements.size(), 4u);
  EXPECT_DOUBLE_EQ(Texte(0, 1).x, 396);
  EXPECT_DOUBLE_EQ(Texte(0, 1).y, 0);
  EXPECT_EQ(Texte(0, 2).texte, "");
  EXPECT_DOUBLE_EQ(Texte(0, 2).y, kLigne11);
  EXPECT_DOUBLE_EQ(Texte(0, 3).y, 2 * kLigne11);
}

TEST_F(PrinterTest, LineHeightFollowsTheTallestFontOfTheLine) {
  p.SetFontSize(16);
  p.Print("titre");
  EXPECT_NEAR(p.CurrentY(), kLigne11 * 16 / 11, 1e-9);
  p.SetFontSize(18);
  p.SetFontBold(true);
  p.Print("DOSSIER", false);
  p.SetFontSize(11);
  p.Print(" AIDE");  // the 11-point end of an 18-point line
  EXPECT_NEAR(p.CurrentY(), kLigne11 * (16 + 18) / 11, 1e-9);
  EXPECT_TRUE(Texte(0, 1).police.gras);
  EXPECT_EQ(Texte(0, 2).police.taille, 11);
  EXPECT_EQ(Texte(0, 2).y, Texte(0, 1).y);
}

TEST_F(PrinterTest, TheSixtyNinthElevenPointLineOfAnA4PageGoesToANewPage) {
  for (int i = 1; i <= 68; ++i) p.Print("ligne " + std::to_string(i));
  EXPECT_EQ(p.PageCount(), 1);
  // A line under way at the bottom stays where it began.
  p.Print("début", false);
  EXPECT_EQ(p.PageCount(), 2);
  p.Print(" fin");
  ASSERT_EQ(rec.pages.size(), 2u);
  EXPECT_EQ(rec.pages[0].elements.size(), 68u);
  EXPECT_DOUBLE_EQ(Texte(1, 0).y, 0);  // no header: the runtime only ejects
  EXPECT_DOUBLE_EQ(Texte(1, 1).y, 0);
  EXPECT_DOUBLE_EQ(p.CurrentY(), kLigne11);

  // A position set below the printable area is also caught by the next print.
  p.SetCurrentY(20000);
  p.Print("x");
  EXPECT_EQ(p.PageCount(), 3);
}

TEST_F(PrinterTest, NewPageLinesAndEndOfDocument) {
  p.EndDoc();
  EXPECT_TRUE(rec.pages.empty());  // nothing printed, no document
  EXPECT_FALSE(rec.termine);

  p.SetPaperSize(8);  // before the document begins: applied
  p.SetDrawWidth(0);
  p.Line(1, 2, 3, 4.6);
  p.SetCurrentX(500);
  p.NewPage();
  EXPECT_DOUBLE_EQ(p.CurrentX(), 0);
  p.SetDrawWidth(3);
  p.Line(0, 0, 10, 0);
  p.SetPaperSize(1);  // once begun: ignored
  p.EndDoc();
  EXPECT_TRUE(rec.termine);
  EXPECT_EQ(rec.papier.nom, "A3");
  ASSERT_EQ(rec.pages.size(), 2u);
  EXPECT_EQ(std::get<ElementTrait>(rec.pages[0].elements.at(0)).largeur, 1);
  EXPECT_EQ(std::get<ElementTrait>(rec.pages[1].elements.at(0)).largeur, 3);

  p.SetPaperSize(1);  // the next document takes the new paper
  p.Print("x");
  EXPECT_EQ(rec.papier.nom, "Letter");
  EXPECT_EQ(p.PageCount(), 1);
}

// A surface whose document cannot be completed (a full disk, a refused job).
class SurfaceEnPanne : public printing::RecordingSurface {
 public:
  using RecordingSurface::RecordingSurface;
  void FinDocument() override { throw std::runtime_error("disque plein"); }
};

TEST(PrinterPanneTest, AFailedEndStillEndsTheDocument) {
  printing::Enregistrement rec;
  printing::Printer p(std::make_unique<SurfaceEnPanne>(&rec));
  p.Print("a");
  EXPECT_THROW(p.EndDoc(), std::runtime_error);
  EXPECT_FALSE(p.DocumentStarted());
  p.Print("b");  // a new document, from the top of its first page
  ASSERT_EQ(rec.pages.size(), 2u);
  EXPECT_DOUBLE_EQ(std::get<ElementTexte>(rec.pages[1].elements.at(0)).y, 0);
}

}  // namespace

// The printer object's semantics, on the recording surface.
#include "printing/printer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>

#include "printing/recording.h"

namespace {

class PrinterTest : public ::testing::Test {
 protected:
  printing::Enregistrement rec;
  printing::Printer p{std::make_unique<printing::RecordingSurface>(&rec)};

  // The page's texts as "x,y:text" (twips, rounded) and the current position.
  std::vector<std::string> Page(size_t page) {
    std::vector<std::string> t;
    for (const auto& e : rec.pages.at(page).elements) {
      const auto& x = std::get<printing::ElementTexte>(e);
      t.push_back(std::to_string(std::lround(x.x)) + "," + std::to_string(std::lround(x.y)) + ":" +
                  x.texte);
    }
    t.push_back("@" + std::to_string(std::lround(p.CurrentX())) + "," +
                std::to_string(std::lround(p.CurrentY())));
    return t;
  }
};

using Lignes = std::vector<std::string>;

// A line is 0.417 cm (236 twips) at 11 points, a character 0.6 em (132 twips).
TEST_F(PrinterTest, PrintEndsTheLineUnlessAskedAndEmptyPrintIsAnEmptyLine) {
  p.Print("Nom", false);
  p.Print("é : x", false);  // five characters, seven bytes
  p.Print("!");
  p.Print();
  p.Print("suite");
  EXPECT_EQ(Page(0),
            (Lignes{"0,0:Nom", "396,0:é : x", "1056,0:!", "0,236:", "0,473:suite", "@0,709"}));
}

TEST_F(PrinterTest, LineHeightFollowsTheTallestFontOfTheLine) {
  p.SetFontSize(16);
  p.Print("titre");
  p.SetFontSize(18);
  p.SetFontBold(true);
  p.Print("DOSSIER", false);
  p.SetFontSize(11);
  p.Print(" AIDE");  // the 11-point end of an 18-point line
  EXPECT_EQ(Page(0), (Lignes{"0,0:titre", "0,344:DOSSIER", "1512,344: AIDE", "@0,731"}));
}

TEST_F(PrinterTest, TheSixtyNinthElevenPointLineOfAnA4PageGoesToANewPage) {
  for (int i = 1; i <= 68; ++i) p.Print("ligne " + std::to_string(i));
  EXPECT_EQ(p.PageCount(), 1);
  // A line under way at the bottom stays where it began; no header: the
  // runtime only ejects.
  p.Print("début", false);
  EXPECT_EQ(p.PageCount(), 2);
  p.Print(" fin");
  EXPECT_EQ(rec.pages.at(0).elements.size(), 68u);
  EXPECT_EQ(Page(1), (Lignes{"0,0:début", "660,0: fin", "@0,236"}));
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
  EXPECT_NO_THROW(p.EndDoc());  // not tried again, nor by the destructor
}

}  // namespace

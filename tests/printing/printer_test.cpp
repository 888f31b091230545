// The printer object's semantics, read back in the text and JSON forms of a
// recording.
#include "printing/printer.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "printing/print_formats.h"
#include "printing/recording.h"
#include "tests/support/utf8_valide.h"

namespace {

class PrinterTest : public ::testing::Test {
 protected:
  printing::Enregistrement rec;
  printing::Printer p{std::make_unique<printing::RecordingSurface>(&rec)};
};

// 68 lines of 11 points fill an A4 page. A line under way at the bottom goes
// whole to the next page, and no header comes: the runtime only ejects.
TEST_F(PrinterTest, TextKeepsEveryCharacterAndTheSixtyNinthLineGoesToANewPage) {
  std::string attendu;
  for (int i = 1; i <= 68; ++i) {
    p.Print("ligne " + std::to_string(i));
    attendu += "ligne " + std::to_string(i) + "\n";
  }
  p.Print(" début", false);
  p.Print(" fin  ", false);
  p.Print("");  // ends the line in pieces
  p.Print();    // an empty line
  p.Print(" ");
  p.NewPage();
  p.NewPage();  // a page with nothing on it
  p.Print("Hélène");
  p.EndDoc();
  EXPECT_EQ(printing::EnTexte(rec), attendu + "\f\n début fin  \n\n \n\f\n\f\nHélène\n");
}

// A character advances 0.6 em (132 twips at 11 points); a line is as high as
// its tallest font (344 twips at 16).
TEST_F(PrinterTest, JsonHasOneItemPerPrintCallInDrawingOrderWithRoundedTwips) {
  p.Print("a", false);
  p.SetFontSize(16);
  p.SetFontItalic(true);
  p.Print("é");  // one character, two bytes
  p.SetDrawWidth(3);
  p.Line(1134, 343.9, 2268.4999, 500.5);
  p.SetFontSize(11.5);
  p.Print("c");
  p.EndDoc();

  const auto attendu = nlohmann::ordered_json::parse(R"({"pages": [{"items": [
    {"text": "a", "x": 0, "y": 0, "font": {"name": "Courier New", "size": 11,
     "bold": false, "italic": false, "underline": false}},
    {"text": "é", "x": 132, "y": 0, "font": {"name": "Courier New", "size": 16,
     "bold": false, "italic": true, "underline": false}},
    {"line": [1134, 344, 2268, 501], "width": 3},
    {"text": "c", "x": 0, "y": 344, "font": {"name": "Courier New", "size": 11.5,
     "bold": false, "italic": true, "underline": false}}]}]})");
  // Compared as written: key order is part of the format, and coordinates and
  // sizes of whole points are JSON integers (344, not 344.0).
  EXPECT_EQ(nlohmann::ordered_json::parse(printing::EnJson(rec)).dump(1), attendu.dump(1));
}

// Whatever reaches the printer, the text and JSON forms are valid UTF-8 with
// one printed line per line: a store's mark between two values prints as a
// space, a control character as a space too (a stored line break, a form
// feed that would fake a page), and a byte that is not UTF-8 as U+FFFD.
TEST_F(PrinterTest, TextAndJsonAreValidUtf8AndCarryNeitherMarksNorControlCharacters) {
  p.Print(
      "Fille\xFDVoisine\xFCSoir\xFE"
      "fin");
  p.Print("avant\r\naprès\fpage\tonglet");
  p.Print("\xE9t\xE9 Hélène");  // "été" in Latin-1, then UTF-8
  p.EndDoc();
  const std::string texte = printing::EnTexte(rec);
  EXPECT_TRUE(essai::Utf8Valide(texte));
  EXPECT_EQ(texte, "Fille Voisine Soir fin\navant après page onglet\n\uFFFDt\uFFFD Hélène\n");
  const std::string json = printing::EnJson(rec);
  EXPECT_TRUE(essai::Utf8Valide(json));
  EXPECT_EQ(nlohmann::json::parse(json)["pages"][0]["items"][0]["text"], "Fille Voisine Soir fin");
}

}  // namespace

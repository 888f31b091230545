// The text and JSON forms of a recording.
#include "printing/print_formats.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "printing/printer.h"

namespace {

class FormatsTest : public ::testing::Test {
 protected:
  printing::Enregistrement rec;
  printing::Printer p{std::make_unique<printing::RecordingSurface>(&rec)};
};

TEST_F(FormatsTest, TextKeepsEveryCharacterJoinsPiecesAndMarksPageEjects) {
  EXPECT_EQ(printing::EnTexte(rec), "");
  p.Print(" Nom                   : ", false);
  p.Print("DUPONT  ", false);
  p.Print("");
  p.Print();
  p.Print(" ");
  p.NewPage();
  p.NewPage();  // a page with nothing on it
  p.Print("Hélène");
  p.EndDoc();
  EXPECT_EQ(printing::EnTexte(rec), " Nom                   : DUPONT  \n\n \n\f\n\f\nHélène\n");
}

TEST_F(FormatsTest, JsonHasOneItemPerPrintCallInDrawingOrderWithRoundedTwips) {
  p.Print("a", false);
  p.SetFontSize(16);
  p.SetFontItalic(true);
  p.Print("b");
  p.SetFontSize(11.5);
  p.SetFontItalic(false);
  p.SetDrawWidth(3);
  p.Line(1134, 343.9, 2268.4999, 500.5);
  p.Print("c");
  p.NewPage();
  p.EndDoc();

  const auto attendu = nlohmann::ordered_json::parse(R"({"pages": [{"items": [
    {"text": "a", "x": 0, "y": 0, "font": {"name": "Courier New", "size": 11,
     "bold": false, "italic": false, "underline": false}},
    {"text": "b", "x": 132, "y": 0, "font": {"name": "Courier New", "size": 16,
     "bold": false, "italic": true, "underline": false}},
    {"line": [1134, 344, 2268, 501], "width": 3},
    {"text": "c", "x": 0, "y": 344, "font": {"name": "Courier New", "size": 11.5,
     "bold": false, "italic": false, "underline": false}}]},
    {"items": []}]})");
  // Compared as written: key order is part of the format, and coordinates and
  // sizes of whole points are JSON integers (344, not 344.0).
  EXPECT_EQ(nlohmann::ordered_json::parse(printing::EnJson(rec)).dump(1), attendu.dump(1));
}

}  // namespace

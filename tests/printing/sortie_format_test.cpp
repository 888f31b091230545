// The text and JSON forms written page by page: the same bytes as the whole
// recording's, with one page held at a time.
#include "printing/sortie_format.h"

#include <gtest/gtest.h>

#include <sstream>

#include "printing/print_formats.h"
#include "printing/printer.h"

namespace {

// Two documents in a row (as two print runs into one recording): pages that
// overflow, an empty page, a line, another paper, odd bytes.
void Imprime(const std::function<std::unique_ptr<printing::Surface>()>& surface) {
  for (int document = 0; document < 2; ++document) {
    printing::Printer p(surface(), printing::PapierDeCode(document == 0 ? 9 : 8));
    for (int i = 0; i < 150; ++i) p.Print("ligne " + std::to_string(i) + " é\xFE");
    p.SetDrawWidth(3);
    p.Line(0, 10, 500, 10);
    p.NewPage();
    p.NewPage();
    p.SetFontSize(16);
    p.Print("fin", false);
    p.EndDoc();
  }
}

TEST(SortieFormatTest, PageByPageGivesTheBytesOfTheWholeRecordingAndAnEmptyRunItsEmptyForm) {
  printing::Enregistrement rec;
  Imprime([&] { return std::make_unique<printing::RecordingSurface>(&rec); });
  for (const auto format :
       {printing::SortieFormat::Format::Texte, printing::SortieFormat::Format::Json}) {
    const bool texte = format == printing::SortieFormat::Format::Texte;
    std::ostringstream flux;
    printing::SortieFormat sortie(flux, format, "sortie");
    Imprime([&] { return sortie.NouvelleSurface(); });
    sortie.Termine();
    EXPECT_EQ(sortie.Pages(), static_cast<long>(rec.pages.size()));
    EXPECT_EQ(flux.str(), texte ? printing::EnTexte(rec) : printing::EnJson(rec));

    std::ostringstream vide;
    printing::SortieFormat rien(vide, format, "rien");
    rien.Termine();
    EXPECT_EQ(vide.str(), texte ? printing::EnTexte({}) : printing::EnJson({}));
  }
}

TEST(SortieFormatTest, AFailedWriteIsAFrenchError) {
  std::ostringstream flux;
  flux.setstate(std::ios::badbit);
  printing::SortieFormat sortie(flux, printing::SortieFormat::Format::Texte, "lot.txt");
  Imprime([&] { return sortie.NouvelleSurface(); });
  try {
    sortie.Termine();
    ADD_FAILURE() << "aucune erreur";
  } catch (const std::runtime_error& e) {
    EXPECT_EQ(std::string(e.what()).rfind("l'écriture de « lot.txt » a échoué : ", 0), 0u)
        << e.what();
  }
}

}  // namespace

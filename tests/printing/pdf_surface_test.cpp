// Our PDF writer on its own: the characters of the data as they were typed,
// and writes that fail loudly.
#include "printing/pdf_surface.h"

#include <gtest/gtest.h>

#include <sstream>

#include "printing/printer.h"
#include "tests/app/programmes.h"

namespace {

std::string Erreur(const std::function<void()>& f) {
  try {
    f();
  } catch (const std::runtime_error& e) {
    return e.what();
  }
  return "aucune erreur";
}

// A stream whose medium takes `place` bytes and then refuses, like a disk
// that fills up during the print.
class FluxLimite : public std::streambuf {
 public:
  explicit FluxLimite(std::size_t place) : place_(place) {}
  std::size_t recus = 0;

 protected:
  std::streamsize xsputn(const char*, std::streamsize n) override {
    if (recus + static_cast<std::size_t>(n) > place_) return 0;
    recus += static_cast<std::size_t>(n);
    return n;
  }
  int_type overflow(int_type c) override {
    return xsputn(nullptr, 1) == 1 ? c : traits_type::eof();
  }

 private:
  std::size_t place_;
};

// Pages of 70 lines of 78 letters drawn at random, which compress badly.
void ImprimePages(printing::Printer& p, int pages) {
  static unsigned graine = 1;
  for (int i = 0; i < pages * 70; ++i) {
    std::string ligne;
    for (int c = 0; c < 78; ++c) {
      graine = graine * 1103515245u + 12345u;
      ligne.push_back(static_cast<char>('A' + (graine >> 16) % 26));
    }
    p.Print(ligne);
  }
}

TEST(PdfSurfaceTest, AccentsEuroAndSymbolsPrintAsTypedAndAMissingGlyphAsAQuestionMark) {
  const essai::Dossier dossier;
  const std::string pdf = dossier / "car.pdf";
  {
    printing::Printer p(printing::SurfacePdf(pdf, {"CARACTERES", 1}));
    p.Print("Hélène Œuvre à 12,50 € — « naïf » ½ ß Ω Жанна");
    p.SetFontBold(true);
    p.SetFontItalic(true);
    p.Print("Été");
    p.SetFontBold(false);
    p.Print("漢 \xC3 fin");  // no such glyph; a stray byte
    p.EndDoc();
  }
  const essai::Resultat r = essai::Lance("pdftotext '" + pdf + "' -");
  ASSERT_EQ(r.statut, 0);
  EXPECT_EQ(r.sortie, "Hélène Œuvre à 12,50 € — « naïf » ½ ß Ω Жанна\nÉté\n? ? fin\n\n\f");
  // Only the faces used are embedded.
  const std::string polices = essai::Lance("pdffonts '" + pdf + "'").sortie;
  EXPECT_NE(polices.find("+LiberationMono "), std::string::npos) << polices;
  EXPECT_NE(polices.find("+LiberationMono-BoldItalic "), std::string::npos) << polices;
  EXPECT_NE(polices.find("+LiberationMono-Italic "), std::string::npos) << polices;
  EXPECT_EQ(polices.find("+LiberationMono-Bold "), std::string::npos) << polices;
}

// An archive refuses strings over 32,767 bytes: a batch of thousands of
// dossiers names its first keys and how many there are.
TEST(PdfSurfaceTest, TheSubjectOfAHugeBatchNamesItsFirstKeysAndCountsThem) {
  const essai::Dossier dossier;
  const std::string pdf = dossier / "lot.pdf";
  printing::pdf::Metadonnees m;
  m.titre = "DOSSIER AIDE A0000";
  m.sujet = "Dossiers AIDE : A0000";
  for (int i = 1; i < 10000; ++i) m.sujet += ", A" + std::to_string(10000 + i).substr(1);
  printing::Printer p(std::make_unique<printing::PdfSurface>(pdf, m));
  p.Print("un");
  p.EndDoc();
  const std::string infos = essai::Lance("pdfinfo '" + pdf + "'").sortie;
  EXPECT_NE(infos.find("Subject:         Dossiers AIDE : A0000, A0001, A0002"), std::string::npos);
  EXPECT_NE(infos.find(", … (10000 en tout)\n"), std::string::npos) << infos.substr(0, 300);
  EXPECT_LT(infos.size(), 5000u);
  const std::string xmp = essai::Lance("pdfinfo -meta '" + pdf + "'").sortie;
  EXPECT_NE(xmp.find(", … (10000 en tout)</rdf:li>"), std::string::npos);
}

TEST(PdfSurfaceTest, AFailedWriteIsAFrenchErrorAtOnceAndAgainWhenTheDocumentEnds) {
  // A full disk: the file is written in blocks, the last one when it ends.
  {
    printing::Printer p(printing::SurfacePdf("/dev/full", {"PLEIN", 1}));
    ImprimePages(p, 1);
    EXPECT_EQ(Erreur([&] { p.EndDoc(); }),
              "l'écriture du PDF « /dev/full » a échoué : le disque est plein.");
  }
  // A stream that stops taking bytes in the middle of a long document: the
  // page that finds it out fails, and so does everything after it.
  FluxLimite limite(10 * 1024);
  std::ostream flux(&limite);
  printing::Printer p(
      std::make_unique<printing::PdfSurface>(flux, "le tube", printing::pdf::Metadonnees{}));
  std::string premiere;
  for (int i = 0; i < 400 && premiere.empty(); ++i) {
    premiere = Erreur([&] { ImprimePages(p, 1); });
    if (premiere == "aucune erreur") premiere.clear();
  }
  const std::string attendu = "l'écriture du PDF « le tube » a échoué : écriture interrompue.";
  EXPECT_EQ(premiere, attendu);
  EXPECT_EQ(Erreur([&] { p.Print("encore"); }), attendu);
  EXPECT_EQ(Erreur([&] { p.EndDoc(); }), attendu);
  EXPECT_LE(limite.recus, 10u * 1024);

  // One stream, one document.
  std::ostringstream sortie;
  printing::Printer deux(
      std::make_unique<printing::PdfSurface>(sortie, "la sortie", printing::pdf::Metadonnees{}));
  deux.Print("un");
  deux.EndDoc();
  EXPECT_EQ(sortie.str().substr(0, 8), "%PDF-1.7");
  EXPECT_EQ(sortie.str().substr(sortie.str().size() - 6), "%%EOF\n");
  EXPECT_EQ(Erreur([&] { deux.Print("deux"); }),
            "le flux PDF « la sortie » a déjà reçu un document : un seul document par flux.");
}

}  // namespace

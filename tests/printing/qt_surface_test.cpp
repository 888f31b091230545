// Real PDF files (the system list's "PDF", written by our PDF writer, and Qt's
// printer) and images through the Qt surface, read back with poppler
// (pdftotext, pdffonts, pdfinfo, pdftoppm) and checked against the recording
// of the same print.
#include "printing/qt_surface.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPrinter>
#include <cmath>
#include <filesystem>
#include <functional>
#include <regex>
#include <sstream>

#include "marbrel/texte.h"
#include "printing/imprimantes.h"
#include "printing/pdf_surface.h"
#include "printing/print_formats.h"
#include "printing/printer.h"
#include "printing/recording.h"
#include "printing/rendu.h"
#include "tests/app/programmes.h"

namespace {

// What a command writes on its standard output.
std::string Sortie(const std::string& commande) { return essai::Lance(commande).sortie; }

constexpr double kCm = 567, kLigne = 0.417 * kCm;

// A page of a dossier in miniature: a header, a framed table of two rows and
// a filler row, then on a second page a section title in its heavy font.
// Returns the position of the table's first row.
double ImprimeExemple(printing::Printer& p) {
  p.Print("Date : 15/03/2024" + texte::Space(55) + "Page 1");  // the full width, 78
  p.Print(" ");
  const double haut = p.CurrentY();
  // Nine spaces put the first column just inside the frame's left edge at 2 cm.
  p.Print(texte::Space(9) + texte::Pad("Nom", 17) + texte::Pad("Prénom", 13) + "Naissance");
  p.Print(texte::Space(9) + texte::Pad("DUPONT", 17) + texte::Pad("Hélène", 13) + "01/02/1950");
  p.Print(texte::Space(9), false);
  p.Print(texte::Pad("LE GALL", 17), false);  // one row printed in pieces
  p.Print(texte::Pad("Anne", 13) + "12/07/1960");
  p.Print("");
  p.SetDrawWidth(3);
  const double bas = haut + 4 * kLigne;
  p.Line(2 * kCm, haut, 12 * kCm, haut);
  p.Line(2 * kCm, bas, 12 * kCm, bas);
  for (double x : {2.0, 6.0, 9.0, 12.0}) p.Line(x * kCm, haut, x * kCm, bas);
  p.NewPage();
  p.Print("Page deux");
  p.SetFontSize(16);
  p.SetFontItalic(true);
  p.SetFontBold(true);
  p.Print("ETAT CIVIL");
  p.EndDoc();
  return haut;
}

// Pixel of a page rendered at 100 dpi for a position in twips.
int Px(double twips) { return static_cast<int>(std::lround((0.5 * kCm + twips) * 100 / 1440)); }

bool Encre(const QImage& image, int x, int y) { return qGray(image.pixel(x, y)) < 200; }

// The frame of ImprimeExemple is on the image: its four edges and the column
// separators are inked all along, and nothing is drawn beyond it.
void VerifieCadre(const QImage& image, double haut) {
  // A4 at 100 dpi (poppler rounds 841.9 points up to a whole pixel more).
  ASSERT_EQ(image.width(), 827);
  ASSERT_NEAR(image.height(), 1169, 1);
  const int g = Px(2 * kCm), d = Px(12 * kCm), h = Px(haut), b = Px(haut + 4 * kLigne);
  // The pixels along a rule from (x, y), its end pixels (partly inked) aside,
  // inked on it or next to it: all n - 1 of them.
  auto trace = [&](int x, int y, int dx, int dy, int n) {
    int k = 0;
    for (int i = 1; i < n; ++i)
      k += Encre(image, x + i * dx - dy, y + i * dy - dx) || Encre(image, x + i * dx, y + i * dy) ||
           Encre(image, x + i * dx + dy, y + i * dy + dx);
    return k;
  };
  for (int y : {h, b}) EXPECT_EQ(trace(g, y, 1, 0, d - g), d - g - 1) << y;
  for (double x : {2.0, 6.0, 9.0, 12.0})
    EXPECT_EQ(trace(Px(x * kCm), h, 0, 1, b - h), b - h - 1) << x << " cm";
  EXPECT_FALSE(Encre(image, Px(12.2 * kCm), h));  // the rule stops at the edge
  EXPECT_FALSE(Encre(image, Px(1.8 * kCm), b));
}

// The words of each non-empty line, and the form feeds between pages. Spacing
// is left out: pdftotext guesses it from the fonts on the page, so positions
// are checked on the words' boxes instead.
std::vector<std::string> LignesVisibles(const std::string& texte) {
  std::vector<std::string> lignes;
  std::istringstream flux(std::regex_replace(texte, std::regex("\f"), "\f\n"));
  for (std::string l; std::getline(flux, l);) {
    l = std::regex_replace(std::regex_replace(l, std::regex(" +"), " "), std::regex("^ | $"), "");
    if (!l.empty()) lignes.push_back(l);
  }
  if (!lignes.empty() && lignes.back() == "\f") lignes.pop_back();
  return lignes;
}

TEST(QtSurfaceTest, PdfFilesCarryTheTextFontsAndFramesAndAMissingFolderOrQueueIsNamed) {
  essai::Application();
  const essai::Dossier dossier;
  printing::Enregistrement rec;
  printing::Printer enregistreur(std::make_unique<printing::RecordingSurface>(&rec));
  const double haut = ImprimeExemple(enregistreur);

  // The system list's "PDF" writes the file named when its document opens, not
  // when the list was made (the print dialog names it afterwards).
  const auto liste = printing::ListeImprimantes::Systeme();
  ASSERT_EQ(liste.back().nom, "PDF");
  const std::string pdf = dossier / "exemple.pdf";
  printing::ListeImprimantes::FixeFichierPdf(pdf);
  printing::Printer imprimante(liste.back().ouvre({"DOSSIER AIDE S0001", 1}));
  ImprimeExemple(imprimante);

  const essai::Resultat r = essai::Lance("pdftotext -layout '" + pdf + "' -");
  ASSERT_EQ(r.statut, 0) << "pdftotext (poppler-utils) est nécessaire";
  EXPECT_EQ(LignesVisibles(r.sortie), LignesVisibles(printing::EnTexte(rec))) << r.sortie;

  const std::string polices = Sortie("pdffonts '" + pdf + "'");
  // Embedded, and the heavy title's face too.
  for (const char* motif : {R"(\n([A-Z]{6}\+)?(LiberationMono|CourierNew\w*) .* yes )",
                            R"((LiberationMono|CourierNew\w*)-BoldItalic)"})
    EXPECT_TRUE(std::regex_search(polices, std::regex(motif))) << polices;
  const std::string infos = Sortie("pdfinfo '" + pdf + "'");
  EXPECT_NE(infos.find("Title:           DOSSIER AIDE S0001"), std::string::npos) << infos;

  // Words sit on the grid of 0.6 em from the printable origin, 5 mm in, and
  // on the rows of 0.417 cm, on every page.
  const std::string boites = Sortie("pdftotext -bbox '" + pdf + "' -");
  auto verifie_mot = [&](const std::string& mot, int colonne, double y) {
    std::smatch m;
    ASSERT_TRUE(std::regex_search(
        boites, m, std::regex("xMin=\"([0-9.]+)\" yMin=\"([0-9.]+)\"[^>]*>" + mot + "<")))
        << mot;
    EXPECT_NEAR(std::stod(m[1]), 14.173 + colonne * 6.6, 0.05) << mot;
    EXPECT_NEAR(std::stod(m[2]), 14.173 + y / 20, 0.05) << mot;
  };
  verifie_mot("Anne", 26, haut + 2 * kLigne);  // a row printed in pieces
  verifie_mot("deux", 5, 0);                   // the origin holds on the next page

  essai::Lance("pdftoppm -png -r 100 -f 1 -l 1 " + pdf + " " + (dossier / "rendu"));
  VerifieCadre(QImage(QString::fromStdString(dossier / "rendu-1.png")), haut);
  // The recording replayed as images (`vesko print --png`) draws the same page.
  const auto images = printing::EcritPng(rec, dossier / "png", 100);
  ASSERT_EQ(images.size(), 2u);
  VerifieCadre(QImage(QString::fromStdString(images[0])), haut);

  // Qt's printer, as a system queue gets it, draws the same text (and through
  // the same drawing code, the same frame).
  auto qprinter = std::make_unique<QPrinter>(QPrinter::HighResolution);
  qprinter->setOutputFormat(QPrinter::PdfFormat);
  qprinter->setOutputFileName(QString::fromStdString(dossier / "file.pdf"));
  printing::Printer file(std::make_unique<printing::QtSurface>(std::move(qprinter), "file"));
  ImprimeExemple(file);
  EXPECT_EQ(Sortie("pdftotext -layout " + (dossier / "file.pdf") + " -"), r.sortie);

  // A document without pages writes nothing.
  printing::Printer(printing::SurfacePdf(dossier / "vide.pdf", {})).EndDoc();
  EXPECT_FALSE(std::filesystem::exists(dossier / "vide.pdf"));

  // A missing folder or queue is named.
  auto message = [](const std::function<void()>& ouvre) {
    try {
      ouvre();
    } catch (const std::runtime_error& e) {
      return std::string(e.what());
    }
    return std::string("aucune erreur");
  };
  const std::string perdu = dossier / "absent/dossier.pdf";
  EXPECT_EQ(message([&] { printing::SurfacePdf(perdu, {}); }),
            "le dossier du fichier PDF « " + perdu + " » n'existe pas.");
  EXPECT_EQ(message([] { printing::SurfaceImprimante("disparue", {}); }),
            "l'imprimante « disparue » n'existe pas sur ce système.");
}

}  // namespace

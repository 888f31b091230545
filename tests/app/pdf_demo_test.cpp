// The demo dossiers through `vesko print --pdf`, read back with poppler and
// checked against the recording of the same print (`--json`): every word
// where the recording put it, the pages looking like Qt's drawing of the same
// recording, and a file an archive accepts (PDF/A-2b).
#include <gtest/gtest.h>

#include <QImage>
#include <cmath>
#include <map>
#include <nlohmann/json.hpp>
#include <regex>

#include "printing/qt_surface.h"
#include "printing/recording.h"
#include "printing/rendu.h"
#include "tests/app/programmes.h"

namespace {

// A word on a page, in points from the top-left corner of the sheet.
struct Mot {
  int page;
  std::string texte;
  double x_min, y_min, x_max;
};

// The recording written by --json, back in memory.
printing::Enregistrement LitJson(const std::string& chemin) {
  const auto racine = nlohmann::json::parse(essai::Lit(chemin));
  printing::Enregistrement e;
  for (const auto& page : racine.at("pages")) {
    e.pages.emplace_back();
    for (const auto& item : page.at("items")) {
      if (item.contains("text")) {
        const auto& f = item.at("font");
        printing::Police police{f.at("name"), f.at("size"), f.at("bold"), f.at("italic"),
                                f.at("underline")};
        e.pages.back().elements.push_back(
            printing::ElementTexte{item.at("x"), item.at("y"), police, item.at("text")});
      } else {
        const auto& l = item.at("line");
        e.pages.back().elements.push_back(
            printing::ElementTrait{l[0], l[1], l[2], l[3], item.at("width")});
      }
    }
  }
  return e;
}

// The words the recording puts on its pages: runs of visible characters
// that follow each other on the grid, across the pieces of a line.
std::vector<Mot> MotsAttendus(const printing::Enregistrement& e) {
  constexpr double kMarge = 72 / 2.54 * 0.5;
  std::vector<Mot> mots;
  for (size_t p = 0; p < e.pages.size(); ++p) {
    // Each character with its left edge and width, by line (its y and size).
    std::map<std::pair<double, double>, std::map<double, std::pair<std::u32string, double>>> lignes;
    for (const auto& el : e.pages[p].elements) {
      const auto* t = std::get_if<printing::ElementTexte>(&el);
      if (!t) continue;
      const double l = 0.6 * t->police.taille * 20;
      std::u32string s = QString::fromStdString(t->texte).toStdU32String();
      for (size_t i = 0; i < s.size(); ++i) {
        lignes[{t->y, t->police.taille}][t->x + i * l] = {std::u32string(1, s[i]), l};
      }
    }
    for (const auto& [cle, caracteres] : lignes) {
      Mot mot{static_cast<int>(p + 1), "", 0, 0, 0};
      double fin = -1;
      auto termine = [&] {
        if (!mot.texte.empty()) mots.push_back(mot);
        mot.texte.clear();
      };
      for (const auto& [x, c] : caracteres) {
        if (c.first == U" " || std::abs(x - fin) > 1) termine();
        if (c.first == U" ") continue;
        if (mot.texte.empty()) {
          mot.x_min = kMarge + x / 20;
          mot.y_min = kMarge + cle.first / 20;
        }
        mot.texte += QString::fromStdU32String(c.first).toStdString();
        mot.x_max = kMarge + (x + c.second) / 20;
        fin = x + c.second;
      }
      termine();
    }
  }
  return mots;
}

std::vector<Mot> MotsDuPdf(const std::string& pdf) {
  const essai::Resultat r = essai::Lance("pdftotext -bbox '" + pdf + "' -");
  EXPECT_EQ(r.statut, 0) << "pdftotext (poppler-utils) est nécessaire";
  std::vector<Mot> mots;
  const std::regex motif(
      R"re(<page |<word xMin="([0-9.]+)" yMin="([0-9.]+)" xMax="([0-9.]+)" yMax="[0-9.]+">([^<]*)</word>)re");
  int page = 0;
  for (auto it = std::sregex_iterator(r.sortie.begin(), r.sortie.end(), motif);
       it != std::sregex_iterator(); ++it) {
    const std::smatch& m = *it;
    if (m.str(0) == "<page ") {
      ++page;
      continue;
    }
    std::string texte = m.str(4);
    for (const auto& [entite, caractere] : {std::pair{"&lt;", "<"},
                                            {"&gt;", ">"},
                                            {"&apos;", "'"},
                                            {"&quot;", "\""},
                                            {"&amp;", "&"}}) {
      texte = std::regex_replace(texte, std::regex(entite), caractere);
    }
    mots.push_back({page, texte, std::stod(m.str(1)), std::stod(m.str(2)), std::stod(m.str(3))});
  }
  return mots;
}

// The share of pixels inked on one image and not on the other (or the
// reverse), over the common area of two pages rendered alike.
double PartDifferente(const QImage& a, const QImage& b) {
  const int l = std::min(a.width(), b.width()), h = std::min(a.height(), b.height());
  long differents = 0;
  for (int y = 0; y < h; ++y) {
    for (int x = 0; x < l; ++x) {
      differents += (qGray(a.pixel(x, y)) < 128) != (qGray(b.pixel(x, y)) < 128);
    }
  }
  return static_cast<double>(differents) / (static_cast<double>(l) * h);
}

class PdfDemo : public ::testing::Test {
 protected:
  void SetUp() override {
    essai::Application();
    ASSERT_EQ(Vesko("init").statut, 0);
    ASSERT_EQ(Vesko("import", VESKO_SOURCE_DIR "/demo/*.json").statut, 0);
    // The author is a setting of the user's: here, of a private configuration.
    std::filesystem::create_directories(dossier / "config/Vesko");
    std::ofstream(dossier / "config/Vesko/vesko.ini")
        << "[impression]\nauteur=Service Aide & Soins\n";
  }
  essai::Resultat Vesko(const std::string& commande, const std::string& suite = "") {
    return essai::Lance("XDG_CONFIG_HOME='" + (dossier / "config") +
                        "' " VESKO_BINARY_DIR "/vesko " + commande + " --db '" + base + "' " +
                        suite);
  }

  essai::Dossier dossier;
  const std::string base = dossier / "base.vesko";
};

TEST_F(PdfDemo, EveryWordWhereTheRecordingPutItAndThePagesAsQtDrawsThem) {
  for (const auto& [type, cle] : {std::pair{"AIDE", "A0001"}, {"AIDANT", "S0001"}}) {
    SCOPED_TRACE(cle);
    const std::string options = std::string("--type ") + type + " --date 2024-03-15 ";
    const std::string pdf = dossier / (std::string(cle) + ".pdf");
    const std::string json = dossier / (std::string(cle) + ".json");
    ASSERT_EQ(Vesko("print", options + "--pdf '" + pdf + "' " + cle).statut, 0);
    ASSERT_EQ(Vesko("print", options + "--json '" + json + "' " + cle).statut, 0);
    const printing::Enregistrement rec = LitJson(json);

    // Each word of the PDF matches one word of the recording, same text,
    // its box within half a point; none is missing, none is left over.
    std::vector<Mot> attendus = MotsAttendus(rec);
    const std::vector<Mot> lus = MotsDuPdf(pdf);
    EXPECT_GT(lus.size(), 300u);
    for (const Mot& m : lus) {
      auto trouve = std::find_if(attendus.begin(), attendus.end(), [&](const Mot& a) {
        return a.page == m.page && a.texte == m.texte && std::abs(a.x_min - m.x_min) <= 0.5 &&
               std::abs(a.y_min - m.y_min) <= 0.5 && std::abs(a.x_max - m.x_max) <= 0.5;
      });
      if (trouve == attendus.end()) {
        ADD_FAILURE() << "page " << m.page << " : « " << m.texte << " » en " << m.x_min << ", "
                      << m.y_min << " n'est pas à sa place";
      } else {
        attendus.erase(trouve);
      }
    }
    for (const Mot& a : attendus) {
      ADD_FAILURE() << "page " << a.page << " : « " << a.texte << " » absent du PDF";
    }

    // Qt's PDF engine draws the same recording; both rendered by poppler at
    // 100 dpi differ on less than 0.5 % of the pixels of any page: letters
    // hinted a little differently (0.3 % at most on the demo pages), where a
    // line one row off or a missing word would cost several times that.
    const std::string qt = dossier / (std::string(cle) + "-qt.pdf");
    {
      auto surface = printing::SurfacePdfQt(qt, {"DOSSIER", 1});
      printing::Rejoue(rec, *surface);
    }
    essai::Lance("pdftoppm -r 100 -gray '" + pdf + "' '" + (dossier / "n") + "'");
    essai::Lance("pdftoppm -r 100 -gray '" + qt + "' '" + (dossier / "q") + "'");
    for (size_t p = 1; p <= rec.pages.size(); ++p) {
      const std::string n = std::to_string(p);
      const std::string suffixe = (rec.pages.size() >= 10 && p < 10 ? "-0" : "-") + n + ".pgm";
      const QImage nouveau(QString::fromStdString(dossier / ("n" + suffixe)));
      const QImage reference(QString::fromStdString(dossier / ("q" + suffixe)));
      ASSERT_FALSE(nouveau.isNull()) << n;
      ASSERT_FALSE(reference.isNull()) << n;
      EXPECT_LT(PartDifferente(nouveau, reference), 0.005) << "page " << n;
    }
  }
}

TEST_F(PdfDemo, AFileAnArchiveAcceptsWithItsTitleAuthorSubjectAndEmbeddedSubsets) {
  const std::string pdf = dossier / "lot.pdf";
  ASSERT_EQ(Vesko("print", "--type AIDE --date 2024-03-15 --pdf '" + pdf + "' A0001 A0002").statut,
            0);

  // The structure (qpdf) and ghostscript's reading, stopping at any warning,
  // through its PDF/A-2 output.
  const essai::Resultat q = essai::Lance("qpdf --check '" + pdf + "'");
  EXPECT_EQ(q.statut, 0) << q.sortie << q.erreurs;
  const essai::Resultat g = essai::Lance(
      "gs -q -dBATCH -dNOPAUSE -dPDFSTOPONERROR -dPDFSTOPONWARNING -dPDFA=2 "
      "-dPDFACompatibilityPolicy=2 -sColorConversionStrategy=RGB -sDEVICE=pdfwrite "
      "-sOutputFile=/dev/null '" +
      pdf + "'");
  EXPECT_EQ(g.statut, 0) << g.sortie << g.erreurs;

  // Every font embedded as a tagged subset with its map to Unicode.
  const std::string polices = essai::Lance("pdffonts '" + pdf + "'").sortie;
  const std::regex police(
      R"re(\n[A-Z]{6}\+LiberationMono(-Bold|-Italic|-BoldItalic)? +CID TrueType +Identity-H +yes yes yes )re");
  EXPECT_EQ(std::distance(std::sregex_iterator(polices.begin(), polices.end(), police),
                          std::sregex_iterator()),
            3)
      << polices;

  // The information dictionary and the XMP packet say the same.
  const std::string infos = essai::Lance("pdfinfo '" + pdf + "'").sortie;
  for (const char* ligne :
       {"Title:           DOSSIER AIDE A0001", "Subject:         Dossiers AIDE : A0001, A0002",
        "Author:          Service Aide & Soins", "Creator:         Vesko"}) {
    EXPECT_NE(infos.find(ligne), std::string::npos) << ligne << "\n" << infos;
  }
  const std::string xmp = essai::Lance("pdfinfo -meta '" + pdf + "'").sortie;
  for (const char* element :
       {"<pdfaid:part>2</pdfaid:part>", "<pdfaid:conformance>B</pdfaid:conformance>",
        ">DOSSIER AIDE A0001</rdf:li>", ">Dossiers AIDE : A0001, A0002</rdf:li>",
        "<rdf:li>Service Aide &amp; Soins</rdf:li>", "<xmp:CreatorTool>Vesko</xmp:CreatorTool>"}) {
    EXPECT_NE(xmp.find(element), std::string::npos) << element << "\n" << xmp;
  }
  std::smatch date;
  ASSERT_TRUE(std::regex_search(xmp, date, std::regex("<xmp:CreateDate>([^<]+)<")));
  EXPECT_NE(xmp.find("<xmp:ModifyDate>" + date.str(1) + "<"), std::string::npos);
  // The sRGB output intent an archive needs to know what the black is.
  EXPECT_NE(essai::Lit(pdf).find("/OutputIntents[<</Type/OutputIntent/S/GTS_PDFA1"),
            std::string::npos);
}

}  // namespace

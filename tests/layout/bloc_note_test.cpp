// The notes block: the wrap boundaries, the block's own page breaks with the
// running header, the empty cases, and the word-wrap rule beneath them.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "marbrel/texte.h"
#include "tests/support/banc.h"

using banc::Banc;
using banc::Rec;

// The tests' door to the private word-wrap rule (a friend of the control).
struct Essai_Coupure {
  static std::int32_t Position(Ctr_Vesko& c, const std::string& texte) {
    return c.Position_Coupure(texte);
  }
};

namespace {

const std::string CRLF = "\r\n";

// Every printed line after the notes title and its blank line (page ejects
// and the running headers included): the notes end the dossier.
std::vector<std::string> Notes(Banc& b, const std::string& type, const std::string& fichier,
                               const std::string& texte) {
  const std::string cle = type == "AIDE" ? "A0001" : "S0001";
  b.Met(type == "AIDE" ? "CIVILAIDE" : "CIVILAIDANT", cle, Rec({"", "DURAND", "Marie"}));
  b.Met(fichier, cle, Rec({texte}));
  b.Imprime(type, {cle});
  auto l = b.Lignes();
  auto titre = std::find(l.rbegin(), l.rend(), "BLOC-NOTES");
  EXPECT_NE(titre, l.rend());
  if (titre == l.rend()) return {};
  std::vector<std::string> apres(titre.base(), l.end());
  EXPECT_FALSE(apres.empty());
  if (!apres.empty()) apres.erase(apres.begin());  // the blank under the title
  return apres;
}

std::vector<std::string> Notes_Aide(const std::string& texte) {
  Banc b;
  return Notes(b, "AIDE", "BLOCNOTAIDE", texte);
}

// n distinct letters in a cycle, so a lost or repeated one shows.
std::string Lettres(long n, char depart = 'a') {
  std::string s;
  for (long i = 0; i < n; ++i) s += static_cast<char>('a' + (depart - 'a' + i) % 26);
  return s;
}

}  // namespace

TEST(PositionCoupure, CutsBeforeTheLastSpace) {
  Banc b;
  Ctr_Vesko& c = b.Controle();
  EXPECT_EQ(Essai_Coupure::Position(c, "abc defg"), 3);
  EXPECT_EQ(Essai_Coupure::Position(c, "abc efg"), 3);  // 7 characters, space at 4
  EXPECT_EQ(Essai_Coupure::Position(c, "abcdef"), 6);
  EXPECT_EQ(Essai_Coupure::Position(c, "abc "), 3);
  EXPECT_EQ(Essai_Coupure::Position(c, "un deux trois"), 7);
  EXPECT_EQ(Essai_Coupure::Position(c, " abc"), 0);
  EXPECT_EQ(Essai_Coupure::Position(c, ""), 0);
  // Characters, not bytes.
  EXPECT_EQ(Essai_Coupure::Position(c, "été été"), 3);
}

TEST(BlocNote, WrapBoundaries) {
  // 76 characters fit whole (accents count as one); so do 77: the rest-fits
  // test is "more than i + 76".
  const std::string e76 = [] {
    std::string s;
    for (int i = 0; i < 76; ++i) s += "é";
    return s;
  }();
  EXPECT_EQ(Notes_Aide(e76), std::vector<std::string>{" " + e76});
  EXPECT_EQ(Notes_Aide(Lettres(77)), std::vector<std::string>{" " + Lettres(77)});

  // 200 letters without a space: 76, the 77th dropped, 76, the 153rd dropped,
  // then the 46 left.
  const std::string l200 = Lettres(200);
  EXPECT_EQ(Notes_Aide(l200),
            (std::vector<std::string>{" " + l200.substr(0, 76), " " + l200.substr(77, 76),
                                      " " + l200.substr(154)}));

  // Words are cut at the last space of the 76 characters, which is dropped:
  // here the only one is the 4th, so the line holds 3 characters.
  const std::string mots = "abc " + Lettres(72) + " " + Lettres(10, 'k');
  EXPECT_EQ(Notes_Aide(mots),
            (std::vector<std::string>{" abc", " " + Lettres(72), " " + Lettres(10, 'k')}));
  const std::string espace_en_76 = Lettres(75) + " " + Lettres(20, 'c');
  EXPECT_EQ(Notes_Aide(espace_en_76),
            (std::vector<std::string>{" " + Lettres(75), " " + Lettres(20, 'c')}));
}

TEST(BlocNote, LineBreaks) {
  // Two breaks in a row print a line holding one space.
  EXPECT_EQ(Notes_Aide("un" + CRLF + CRLF + "deux"),
            (std::vector<std::string>{" un", " ", " deux"}));
  // A break within reach wins over the spaces before it.
  const std::string avant = "mot " + Lettres(60) + " fin";
  EXPECT_EQ(
      Notes_Aide(avant + CRLF + Lettres(90)),
      (std::vector<std::string>{" " + avant, " " + Lettres(76), " " + Lettres(90).substr(77)}));
  // A break right after 76 characters (at i + 76) is still within reach.
  EXPECT_EQ(Notes_Aide(Lettres(76) + CRLF + "suite"),
            (std::vector<std::string>{" " + Lettres(76), " suite"}));
  // One character further it is not: the cut comes first, at the space.
  const std::string loin = "x " + Lettres(75);
  EXPECT_EQ(Notes_Aide(loin + CRLF + "suite"),
            (std::vector<std::string>{" x", " " + Lettres(75), " suite"}));
}

TEST(BlocNote, FinalLoneCharacterIsNotPrinted) {
  EXPECT_TRUE(Notes_Aide("x").empty());
  EXPECT_EQ(Notes_Aide("ab"), std::vector<std::string>{" ab"});
  EXPECT_EQ(Notes_Aide("abc" + CRLF + "z"), std::vector<std::string>{" abc"});
}

TEST(BlocNote, NoRecordOrNoCodeGivesTheTitleAlone) {
  Banc b;
  b.Imprime("AIDE", {"A0001"});
  EXPECT_EQ(b.Section("BLOC-NOTES"), std::vector<std::string>{" "});
  Banc vide;
  vide.Met("BLOCNOTAIDE", "", Rec({"ne doit pas sortir"}));
  vide.Imprime("AIDE", {""});
  EXPECT_EQ(vide.Section("BLOC-NOTES"), std::vector<std::string>{" "});
}

TEST(BlocNote, CarerReadsTheCarersNotes) {
  Banc b;
  b.Met("BLOCNOTAIDE", "S0001", Rec({"celle de l'aidé"}));
  EXPECT_EQ(Notes(b, "AIDANT", "BLOCNOTAIDANT", "Disponible le samedi."),
            std::vector<std::string>{" Disponible le samedi."});
}

TEST(BlocNote, PagesAfter34LinesThenEvery60WithTheirHeaders) {
  std::string texte;
  for (int i = 1; i <= 100; ++i) texte += "ligne " + std::to_string(i) + CRLF;
  Banc b;
  auto l = Notes(b, "AIDE", "BLOCNOTAIDE", texte);
  // The running header; its date line is compared apart below.
  auto en_tete = [](int page) {
    return std::vector<std::string>{
        "\f",
        " ",
        " ",
        "Date : 15/03/2024" + std::string(55, ' ') + "Page " + std::to_string(page),
        " ",
        " ",
        "A0001 DURAND Marie",
        " ",
        " "};
  };
  std::vector<std::string> attendu;
  for (int i = 1; i <= 100; ++i) {
    if (i == 35 || i == 95) {
      auto h = en_tete(0);
      attendu.insert(attendu.end(), h.begin(), h.end());
    }
    attendu.push_back(" ligne " + std::to_string(i));
  }
  ASSERT_EQ(l.size(), attendu.size());
  // The page numbers follow the dossier's own; compare them apart.
  std::vector<int> numeros;
  for (size_t k = 0; k < l.size(); ++k) {
    if (attendu[k].rfind("Date : ", 0) == 0) {
      ASSERT_EQ(l[k].rfind("Date : 15/03/2024" + std::string(55, ' ') + "Page ", 0), 0u) << l[k];
      numeros.push_back(std::stoi(l[k].substr(l[k].rfind(' ') + 1)));
    } else {
      EXPECT_EQ(l[k], attendu[k]) << "line " << k;
    }
  }
  ASSERT_EQ(numeros.size(), 2u);
  EXPECT_EQ(numeros[1], numeros[0] + 1);
  // Each following page holds its 8 header lines and 60 lines of notes.
  const auto& pages = b.Enregistrement().pages;
  EXPECT_EQ(pages[pages.size() - 2].elements.size(), 68u);
}

TEST(BlocNote, LongNoteKeepsEveryWord) {
  // Prose with irregular words: rejoining the printed lines gives the text
  // back, minus only the spaces at the cuts; no line is longer than 77.
  std::string texte;
  const std::vector<std::string> mots = {"aide",           "à",       "domicile",
                                         "hebdomadaire,",  "courses", "et",
                                         "accompagnement", "médical", "l'après-midi"};
  for (int i = 0; i < 400; ++i) texte += mots[(i * 7) % mots.size()] + " ";
  texte += "fin.";
  auto l = Notes_Aide(texte);
  std::string rejoint;
  for (const auto& ligne : l) {
    if (ligne == "\f" || ligne.rfind(" ", 0) != 0 || ligne.size() < 2) continue;
    EXPECT_LE(texte::Len(ligne), 77) << ligne;
    rejoint += (rejoint.empty() ? "" : " ") + ligne.substr(1);
  }
  EXPECT_EQ(rejoint, texte);
}

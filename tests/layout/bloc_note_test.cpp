// The notes block: the wrap boundaries, the block's own page breaks under the
// running header, and the word-wrap rule beneath them.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/banc.h"

using banc::Rec;
using V = std::vector<std::string>;

// The tests' door to the private word-wrap rule (a friend of the control).
struct Essai_Coupure {
  static std::int32_t Position(Ctr_Vesko& c, const std::string& t) { return c.Position_Coupure(t); }
};

namespace {

const std::string CRLF = "\r\n";

// The lines printed under the notes title (the notes end the dossier).
V Notes(const std::string& texte, const std::string& type = "AIDE") {
  banc::Banc b;
  const bool aide = type == "AIDE";
  b.Met(aide ? "CIVILAIDE" : "CIVILAIDANT", "P1", Rec({"", "DURAND", "Marie"}));
  b.Met(aide ? "BLOCNOTAIDE" : "BLOCNOTAIDANT", "P1", Rec({texte}));
  b.Imprime(type, {"P1"});
  V l = b.Lignes();
  auto titre = std::find(l.rbegin(), l.rend(), "BLOC-NOTES");
  if (titre == l.rend() || titre == l.rbegin()) return {"(no notes title)"};
  return V(titre.base() + 1, l.end());  // after the title's blank line
}

// n letters in a cycle, so that a lost or repeated one shows.
std::string L(long n) {
  std::string s;
  for (long i = 0; i < n; ++i) s += static_cast<char>('a' + i % 26);
  return s;
}

}  // namespace

TEST(PositionCoupure, CutsBeforeTheLastSpace) {
  banc::Banc b;
  EXPECT_EQ(Essai_Coupure::Position(b.Controle(), "abc efg"), 3);
  EXPECT_EQ(Essai_Coupure::Position(b.Controle(), "abcdef"), 6);
  EXPECT_EQ(Essai_Coupure::Position(b.Controle(), "abc "), 3);
  EXPECT_EQ(Essai_Coupure::Position(b.Controle(), "été été"), 3);  // characters, not bytes
}

TEST(BlocNote, WrapBoundaries) {
  // 76 characters fit whole (an accent counts as one), and so do 77.
  EXPECT_EQ(Notes("é" + L(75)), V{" é" + L(75)});
  EXPECT_EQ(Notes(L(77)), V{" " + L(77)});
  // 200 letters: 76, the 77th lost as if it were the space, 76, the 153rd lost.
  const std::string l200 = L(200);
  EXPECT_EQ(Notes(l200),
            (V{" " + l200.substr(0, 76), " " + l200.substr(77, 76), " " + l200.substr(154)}));
  // The cut falls before the last space within the 76 characters.
  EXPECT_EQ(Notes("abc " + L(72) + " " + L(10)), (V{" abc", " " + L(72), " " + L(10)}));
  EXPECT_EQ(Notes(L(75) + " " + L(20)), (V{" " + L(75), " " + L(20)}));
}

TEST(BlocNote, LineBreaksAndTheFinalCharacter) {
  EXPECT_EQ(Notes("un" + CRLF + CRLF + "deux"), (V{" un", " ", " deux"}));
  // A break within reach wins over the spaces before it, up to i + 76.
  const std::string avant = "mot " + L(60) + " fin";
  EXPECT_EQ(Notes(avant + CRLF + L(90)), (V{" " + avant, " " + L(76), " " + L(90).substr(77)}));
  EXPECT_EQ(Notes(L(76) + CRLF + "suite"), (V{" " + L(76), " suite"}));
  // The strict less-than: a lone final character is never printed.
  EXPECT_TRUE(Notes("x").empty());
  EXPECT_EQ(Notes("abc" + CRLF + "z"), V{" abc"});
  // A carer's notes come from their own file. (A dossier without notes still
  // ends with their title: the driver tests check it.)
  EXPECT_EQ(Notes("Disponible le samedi.", "AIDANT"), V{" Disponible le samedi."});
}

TEST(BlocNote, PagesAfter34LinesThenEvery60UnderTheRunningHeader) {
  std::string texte;
  for (int i = 1; i <= 100; ++i) texte += "ligne " + std::to_string(i) + CRLF;
  V l = Notes(texte);
  ASSERT_EQ(l.size(), 100u + 2 * 9);  // two ejects, each with its 8 header lines
  EXPECT_EQ(V(l.begin() + 33, l.begin() + 35), (V{" ligne 34", "\f"}));
  EXPECT_EQ(l[43], " ligne 35");
  EXPECT_EQ(V(l.begin() + 102, l.begin() + 104), (V{" ligne 94", "\f"}));
  EXPECT_EQ(l[112], " ligne 95");
}

// The resources table: its rows, the frame over thirteen lines whatever the
// number of rows, and the closing line with the quotient and the exact total.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/banc.h"

using banc::Rec;

namespace {

const std::string kEntete =
    "               Nature                Type        Allocation       Droit   Montant ";
std::string S(int n) { return std::string(n, ' '); }
std::string Fin(const std::string& quotient) {
  return "  Quotient famillial :" + quotient + "Total :";
}

std::vector<std::string> Ressources(banc::Banc& b, const marbrel::TabDyn& r) {
  b.Met("RESSOURCESAIDE", "A0001", r);
  b.Imprime("AIDE", {"A0001"});
  return b.Section("RESSOURCES");
}

}  // namespace

TEST(Ressources, RowsWordsAmountsAndFrame) {
  banc::Banc b;
  // A 35-character nature meets the type word; a longer one is cut to 35; an
  // unknown type prints as stored, moving the allocation four places left.
  auto l =
      Ressources(b, Rec({"Pension de réversion complémentaire]Allocation logement sociale, révisée",
                         "P]X", "CNAV]CAF", "C]A", "123456]5", ""}));
  const std::vector<std::string> attendu = {
      " ",
      " ",
      kEntete,
      "  Pension de réversion complémentairePrin.  CNAV" + S(16) + "  Conj.   1234.56",
      "  Allocation logement sociale, réviséX  CAF" + S(17) + "  Autre      0.05",
      "",
      "",
      Fin(S(43)) + " 1234.61",
      " "};
  EXPECT_EQ(l, attendu);

  // The frame starts at the left margin and spans the header and 12 rows.
  double y = -1, gauche = 1e9, bas = 0;
  int traits = 0;
  for (const auto& e : b.Enregistrement().pages.at(1).elements) {
    if (const auto* t = std::get_if<printing::ElementTexte>(&e)) {
      if (t->texte == kEntete) y = t->y;
      if (y >= 0 && t->police.taille == 16) break;
    } else if (y >= 0) {
      const auto& r = std::get<printing::ElementTrait>(e);
      ++traits;
      gauche = std::min({gauche, r.x1, r.x2});
      bas = std::max({bas, r.y1, r.y2});
    }
  }
  EXPECT_EQ(traits, 8);
  EXPECT_NEAR(gauche, 0.3 * 567, 0.5);
  EXPECT_NEAR(bas, y + 13 * 0.417 * 567, 0.5);
}

TEST(Ressources, FifteenResourcesPrintTwelveAndTheirTotal) {
  std::string natures = "R1", montants = "101";
  for (int i = 2; i <= 15; ++i) {
    natures += "]R" + std::to_string(i);
    montants += "]" + std::to_string(101 * i);
  }
  banc::Banc b;
  auto l = Ressources(b, Rec({natures, "", "", "", montants, "45678"}));
  ASSERT_EQ(l.size(), 19u);
  EXPECT_EQ(l[14], "  R12" + S(32) + "  " + S(20) + "    " + "   12.12");
  // 1.01 × (1 + … + 12); the gap after the quotient counts the five stored
  // characters, not the printed six.
  EXPECT_EQ(l[17], Fin("  456.78" + S(35)) + "   78.78");
}

TEST(Ressources, ClosingLineWithoutResourcesAndUnreadableAmount) {
  banc::Banc vide;
  EXPECT_EQ(Ressources(vide, Rec({"", "", "", "", "", "45678"})).at(5), Fin(S(43)));

  banc::Banc b;
  auto l = Ressources(b, Rec({"a]b", "", "", "", "12,50]1000", ""}));
  EXPECT_EQ(l.at(3), "  a" + S(34) + "  " + S(20) + "    " + S(8));
  EXPECT_EQ(l.at(7), Fin(S(43)) + "   10.00");
  int signales = 0;
  for (const auto& i : b.Controle().Incidents()) {
    if (i.section != "Ressource_Aide") continue;
    ++signales;
    EXPECT_NE(i.message.find("« 12,50 » dans RESSOURCESAIDE A0001, attribut 5, valeur 1"),
              std::string::npos);
  }
  EXPECT_EQ(signales, 1);
}

// The resources table of a care recipient: its rows, its frame and the
// closing line with the family quotient and the total.
#include <gtest/gtest.h>

#include <algorithm>

#include "marbrel/texte.h"
#include "tests/support/banc.h"

using banc::Banc;
using banc::Rec;

namespace {

const std::string kEntete =
    "               Nature                Type        Allocation       Droit   Montant ";
const std::string kQuotient = "  Quotient famillial :";

// The section's lines after its title: a blank, the header, the rows, two
// empty lines, the closing line (and the blank before the next title).
std::vector<std::string> Ressources(Banc& b, const std::string& cle = "A0001") {
  b.Imprime("AIDE", {cle});
  return b.Section("RESSOURCES");
}

// n resources whose amounts are 1.01, 2.02, ... (hundredths 101, 202, ...).
marbrel::TabDyn Serie(int n, const std::string& quotient) {
  std::string natures, types, allocations, droits, montants;
  for (int i = 1; i <= n; ++i) {
    std::string sep = i == 1 ? "" : "]";
    natures += sep + "Ressource " + std::to_string(i);
    types += sep + "C";
    allocations += sep + "Alloc " + std::to_string(i);
    droits += sep + "P";
    montants += sep + std::to_string(101 * i);
  }
  return Rec({natures, types, allocations, droits, montants, quotient});
}

// This section's incidents only (other sections of the dossier may have
// their own).
std::vector<Incident> Incidents_Ressources(Banc& b) {
  std::vector<Incident> les_siens;
  for (const auto& i : b.Controle().Incidents())
    if (i.section == "Ressource_Aide") les_siens.push_back(i);
  return les_siens;
}

}  // namespace

TEST(Ressources, RowsCodesWordsAndAmounts) {
  Banc b;
  const std::string nature35 = "Pension de réversion complémentair";  // 34 characters
  ASSERT_EQ(texte::Len(nature35 + "e"), 35);
  b.Met("RESSOURCESAIDE", "A0001",
        Rec({nature35 + "e]Allocation logement sociale, montant révisé]Rente", "P]X]A",
             "CNAV]CAF de Paris]AGIRC-ARRCO complémentaire", "C]A]Z", "123456]5]", ""}));
  auto l = Ressources(b);
  ASSERT_GE(l.size(), 10u);
  EXPECT_EQ(l[0], " ");
  EXPECT_EQ(l[1], " ");
  EXPECT_EQ(l[2], kEntete);
  // A 35-character nature is followed directly by the type word; the amount
  // is right-aligned in eight characters.
  EXPECT_EQ(l[3], "  " + nature35 + "e" + "Prin." + "  " + "CNAV" + std::string(16, ' ') + "  " +
                      "Conj." + "  " + " 1234.56");
  // A longer nature is cut to 35; an unknown type prints as stored, so the
  // allocation moves four characters to the left.
  EXPECT_EQ(l[4],
            "  Allocation logement sociale, montan"
            "X"
            "  "
            "CAF de Paris" +
                std::string(8, ' ') + "  " + "Autre" + "  " + "    0.05");
  // An allocation wider than its column is kept whole; an empty amount prints
  // an empty column.
  EXPECT_EQ(l[5], "  Rente" + std::string(30, ' ') + "Autre  AGIRC-ARRCO complémentaire  Z  " +
                      std::string(8, ' '));
  EXPECT_EQ(l[6], "");
  EXPECT_EQ(l[7], "");
  // Attribute 6 empty: no quotient, the total of the amounts printed.
  EXPECT_EQ(l[8], kQuotient + std::string(43, ' ') + "Total :" + " 1234.61");
  EXPECT_TRUE(Incidents_Ressources(b).empty());
}

TEST(Ressources, FifteenResourcesPrintTwelveAndTheirExactTotal) {
  Banc b;
  b.Met("RESSOURCESAIDE", "A0001", Serie(15, "45678"));
  auto l = Ressources(b);
  ASSERT_GE(l.size(), 18u);
  EXPECT_EQ(l[2], kEntete);
  EXPECT_EQ(l[3], "  Ressource 1" + std::string(24, ' ') + "Compl  Alloc 1" + std::string(13, ' ') +
                      "  Pers.  " + "    1.01");
  EXPECT_EQ(l[14], "  Ressource 12" + std::string(23, ' ') + "Compl  Alloc 12" +
                       std::string(12, ' ') + "  Pers.  " + "   12.12");
  EXPECT_EQ(l[15], "");
  EXPECT_EQ(l[16], "");
  // 1.01 × (1 + … + 12) = 78.78; the quotient's gap counts the five stored
  // characters, not the printed six.
  EXPECT_EQ(l[17], kQuotient + "  456.78" + std::string(35, ' ') + "Total :" + "   78.78");
  for (const auto& ligne : l) EXPECT_EQ(ligne.find("Ressource 13"), std::string::npos);
}

TEST(Ressources, TotalIsExactInHundredths) {
  // Amounts a binary float cannot hold exactly: their sum must still be the
  // sum of the hundredths.
  Banc b;
  b.Met("RESSOURCESAIDE", "A0001",
        Rec({"a]b]c]d]e]f]g]h]i]j]k]l", "P]P]P]P]P]P]P]P]P]P]P]P", "", "",
             "999999]10]20]999999]999999]999999]999999]999999]999999]999999]999999]-1", "3"}));
  auto l = Ressources(b);
  ASSERT_GE(l.size(), 18u);
  // 9 × 9999.99 + 0.10 + 0.20 − 0.01 = 90000.20, wider than the column: whole.
  EXPECT_EQ(l[17], kQuotient + "    0.03" + std::string(39, ' ') + "Total :" + "90000.20");
}

TEST(Ressources, AbsentRecordPrintsEmptyFrameAndBareClosingLine) {
  Banc b;
  auto l = Ressources(b);
  ASSERT_GE(l.size(), 6u);
  EXPECT_EQ(l[2], kEntete);
  EXPECT_EQ(l[3], "");
  EXPECT_EQ(l[4], "");
  EXPECT_EQ(l[5], kQuotient + std::string(43, ' ') + "Total :");

  // A quotient without resources prints no numbers either.
  Banc c;
  c.Met("RESSOURCESAIDE", "A0001", Rec({"", "", "", "", "", "45678"}));
  auto m = Ressources(c);
  ASSERT_GE(m.size(), 6u);
  EXPECT_EQ(m[5], kQuotient + std::string(43, ' ') + "Total :");
}

TEST(Ressources, FrameSpansHeaderAndTwelveRowsFromTheLeftMargin) {
  Banc b;
  b.Met("RESSOURCESAIDE", "A0001", Serie(2, ""));
  b.Imprime("AIDE", {"A0001"});
  // The header's position and the rules drawn after it, on its page.
  double y = -1;
  std::vector<printing::ElementTrait> traits;
  for (const auto& page : b.Enregistrement().pages) {
    for (const auto& e : page.elements) {
      if (const auto* t = std::get_if<printing::ElementTexte>(&e)) {
        if (t->texte == kEntete) y = t->y;
        if (y >= 0 && t->police.taille == 16) break;
      } else if (y >= 0) {
        traits.push_back(std::get<printing::ElementTrait>(e));
      }
    }
    if (y >= 0) break;
  }
  ASSERT_GE(y, 0);
  ASSERT_EQ(traits.size(), 8u);  // four sides, four separators
  const double cm = 567, bas = y + 13 * 0.417 * cm;
  double gauche = 1e9, droite = 0, haut = 1e9, fond = 0;
  std::vector<double> separateurs;
  for (const auto& t : traits) {
    EXPECT_EQ(t.largeur, 3);
    gauche = std::min({gauche, t.x1, t.x2});
    droite = std::max({droite, t.x1, t.x2});
    haut = std::min({haut, t.y1, t.y2});
    fond = std::max({fond, t.y1, t.y2});
    if (t.x1 == t.x2 && t.x1 > 0.3 * cm + 1 && t.x1 < 19.1 * cm - 1) separateurs.push_back(t.x1);
  }
  EXPECT_NEAR(gauche, 0.3 * cm, 0.5);
  EXPECT_NEAR(droite, 19.1 * cm, 0.5);
  EXPECT_NEAR(haut, y, 0.5);
  EXPECT_NEAR(fond, bas, 0.5);
  std::sort(separateurs.begin(), separateurs.end());
  ASSERT_EQ(separateurs.size(), 4u);
  EXPECT_NEAR(separateurs[0], 8.5 * cm, 0.5);
  EXPECT_NEAR(separateurs[1], 9.9 * cm, 0.5);
  EXPECT_NEAR(separateurs[2], 15.2 * cm, 0.5);
  EXPECT_NEAR(separateurs[3], 16.6 * cm, 0.5);
  // The flag is one-shot: it is cleared by the frame itself.
  EXPECT_FALSE(b.Controle().Cadre_Gauche);
}

TEST(Ressources, UnreadableAmountIsLeftOutAndReported) {
  Banc b;
  b.Met("RESSOURCESAIDE", "A0001", Rec({"Retraite]Pension", "P]P", "", "", "12,50]1000", ""}));
  auto l = Ressources(b);
  ASSERT_GE(l.size(), 8u);
  EXPECT_EQ(texte::Right(l[3], 8), std::string(8, ' '));
  EXPECT_EQ(l[7], kQuotient + std::string(43, ' ') + "Total :" + "   10.00");
  const auto incidents = Incidents_Ressources(b);
  ASSERT_EQ(incidents.size(), 1u);
  EXPECT_EQ(incidents[0].section, "Ressource_Aide");
  EXPECT_EQ(incidents[0].cle, "A0001");
  EXPECT_NE(incidents[0].message.find("« 12,50 »"), std::string::npos);
  EXPECT_NE(incidents[0].message.find("attribut 5, valeur 1"), std::string::npos);
}

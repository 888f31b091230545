#include "tests/support/releve.h"

static const std::string kEntete =
    "               Nature                Type        Allocation       Droit   Montant ";
static std::string Fin(const std::string& q) { return "  Quotient famillial :" + q + "Total :"; }

TEST(Ressources, RowsWordsAmountsTotalsAndFrame) {
  std::string natures = "R1", montants = "101";
  for (int i = 2; i <= 15; ++i)
    natures += "]R" + std::to_string(i), montants += "]" + std::to_string(101 * i);
  Banc b;
  // A 35-character nature meets the type word; a longer one is cut to 35; an
  // unknown type prints as stored, moving the allocation four places left.
  b.Met("RESSOURCESAIDE", "A0001",
        Rec({"Pension de réversion complémentaire]Allocation logement sociale, révisée", "P]X",
             "CNAV]CAF", "C]A", "123456]5", ""}));
  b.Met("RESSOURCESAIDE", "A0002", Rec({natures, "", "", "", montants, "45678"}));
  b.Met("RESSOURCESAIDE", "A0004", Rec({"a]b", "", "", "", "12,50]1000", ""}));
  b.Imprime("AIDE", {"A0001", "A0002", "A0003", "A0004"});
  EXPECT_EQ(Bloc(b, "RESSOURCES"),
            (V{" ", " ", kEntete,
               "  Pension de réversion complémentairePrin.  CNAV" + S(16) + "  Conj.   1234.56",
               "  Allocation logement sociale, réviséX  CAF" + S(17) + "  Autre      0.05", "", "",
               Fin(S(43)) + " 1234.61"}));
  EXPECT_EQ(Cadre(b, kEntete), "13 lignes, 0.3-19.1 cm: 8.5 9.9 15.2 16.6");

  // Fifteen resources: twelve rows and their total, 1.01 × (1 + … + 12); the
  // gap after the quotient counts the five stored characters, not the printed six.
  auto l = Bloc(b, "RESSOURCES", 1);
  ASSERT_EQ(l.size(), 18u);
  EXPECT_EQ(l[14], "  R12" + S(32) + "  " + S(20) + "    " + "   12.12");
  EXPECT_EQ(l[17], Fin("  456.78" + S(35)) + "   78.78");
  // Without resources the closing line has no total.
  EXPECT_EQ(Bloc(b, "RESSOURCES", 2).at(5), Fin(S(43)));

  // An unreadable amount prints blank, counts nothing and is reported.
  l = Bloc(b, "RESSOURCES", 3);
  EXPECT_EQ(l.at(3), "  a" + S(34) + "  " + S(20) + "    " + S(8));
  EXPECT_EQ(l.at(7), Fin(S(43)) + "   10.00");
  ASSERT_EQ(b.Controle().Incidents().size(), 1u);
  EXPECT_EQ(
      b.Controle().Incidents()[0].cle + ": " + b.Controle().Incidents()[0].message,
      "A0004: Nombre illisible « 12,50 » dans RESSOURCESAIDE A0004, attribut 5, valeur 1 : la "
      "ressource est imprimée sans montant et n'entre pas dans le total.");
}

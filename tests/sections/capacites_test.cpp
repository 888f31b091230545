#include "marbrel/texte.h"
#include "tests/support/releve.h"

static const std::string TEMPS = "                Libellé                        Temps";
static const std::string VALEUR = S(25) + "Libellé" + S(41) + "Valeur";
static const std::string NOTE = "                Libellé                        Note";
static std::string Rangee(const std::string& libelle, const std::string& valeur) {
  return "  " + texte::Pad(libelle, 43) + " " + texte::PadLeft(valeur, 9);
}
static std::string Total(const std::string& total) { return S(38) + "Total :  " + total; }

TEST(CapaciteTache, CarerTotalsAFormALongListAndTheCareRecipientsKey) {
  Banc b;
  b.Met("TABLES", "DEFTECH",
        Rec({"Tâches", "MEN]REP]COU", "Ménage]Préparation des repas]Courses"}));
  b.Met("TABLES", "IMPGENE", Rec({"Comportement", "PONC]DISC", "Ponctualité]Discrétion"}));
  // The carer's record gives the keys' suffixes: capacities in 49, behaviour in 50.
  b.Met("CIVILAIDANT", "S0001", Fiche("49=1|50=2"));
  b.Met("CAPIMPAIDANT", "S0001C1", Rec({"", "MEN]REP", "250]75"}));
  b.Met("CAPIMPAIDANT", "S0001I2", Rec({"", "PONC]DISC", "3]4"}));
  b.Met("CIVILAIDANT", "S0002", Fiche("49=1|50=1"));
  // Seventy capacities go on under the running header, each page with its frame.
  b.Met("CIVILAIDANT", "S0003", Fiche("49=1|50=1"));
  std::string codes = "MEN", valeurs = "100";
  for (int i = 2; i <= 70; ++i) codes += "]MEN", valeurs += "]100";
  b.Met("CAPIMPAIDANT", "S0003C1", Rec({"", codes, valeurs}));
  b.Imprime("AIDANT", {"S0001", "S0002", "S0003"});
  EXPECT_EQ(Bloc(b, "CAPACITES"),
            (V{" ", TEMPS, Rangee("Ménage", "    2.50"),
               Rangee("Préparation des repas", "    0.75"), "", "", Total("    3.25"), " "}));
  EXPECT_EQ(Bloc(b, "COMPORTEMENT"),
            (V{" ", NOTE, Rangee("Ponctualité", "3"), Rangee("Discrétion", "4"), "", "",
               Total("       7"), " "}));
  // Without capacities the whole table prints as a form to fill in.
  EXPECT_EQ(Bloc(b, "CAPACITES", 1), (V{" ", TEMPS, S(9) + "Ménage", S(9) + "Préparation des repas",
                                        S(9) + "Courses", "", "", Total("    0.00"), " "}));
  const V l = b.Lignes();
  // The last column header opens the second page, after its eject and running header.
  const long fin = std::find(l.rbegin(), l.rend(), TEMPS).base() - l.begin();
  EXPECT_EQ(Tranche(l, size_t(fin - 10), size_t(fin + 1)),
            (V{"\f", " ", " ", "Date : 15/03/2024" + S(55) + "Page 4", " ", " ", "S0003  ", " ",
               " ", TEMPS, Rangee("Ménage", "    1.00")}));
  EXPECT_EQ(Cadre(b, TEMPS, 2) + " / " + Cadre(b, TEMPS, 3),
            "53 lignes, 0.3-13 cm: 10.5 / 19 lignes, 0.3-13 cm: 10.5");

  // A care recipient's values and behaviour are read under the key that the
  // needs record (read by the modalities section) completes.
  b.Met("BESOINSAIDE", "A0001", Rec({"*1"}));
  b.Met("AIDEDETAILTACHE", "A0001*1", Fiche("14=PONC|15=3"));
  // A second person without needs record must not inherit the first's suffix.
  b.Met("AIDEDETAILTACHE", "A0002*1", Fiche("14=DISC|15=faux"));
  b.Imprime("AIDE", {"A0001", "A0002"});
  EXPECT_EQ(Bloc(b, "COMPORTEMENT"), (V{" ", NOTE, Rangee("Ponctualité", "3"), "", "", " "}));
  EXPECT_EQ(b.Texte().find("faux"), std::string::npos);
}

TEST(CapaciteTache, BehaviourStaysOnTheTasksPageUpTo36Lines) {
  for (int n : {36, 37}) {
    Banc b;
    b.Met("TYPETACHE", "MENAGE", Rec({"1"}));
    b.Met("GROUPETACHE", "Entretien", Rec({"1", "MENAGE"}));
    for (int i = 10; i < 10 + n; ++i)
      b.Met("TACHE", "t" + std::to_string(i), Rec({std::to_string(i), "Entretien"}));
    b.Imprime("AIDE", {"A0001"});
    const V l = b.Lignes();
    const auto taches = std::find(l.begin(), l.end(), "TACHES A ACCOMPLIR");
    EXPECT_EQ(std::count(taches, std::find(taches, l.end(), "COMPORTEMENT"), "\f"), n == 36 ? 0 : 1)
        << n << " tasks";
    // All the tasks are on their own page, in one frame.
    EXPECT_EQ(Cadre(b, VALEUR), std::to_string(n + 1) + " lignes, 0.3-18.8 cm: 16.3");
  }
}

// Capacities, tasks and behaviour in whole dossiers: the keys built from the
// carer's record and from the needs record, the empty form, a list longer
// than a page, the totals, and the driver's page break before the behaviour.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "marbrel/marques.h"
#include "marbrel/texte.h"
#include "printing/geometrie.h"
#include "printing/recording.h"
#include "tests/support/banc.h"
#include "tests/support/section_seule.h"

using banc::Banc;
using banc::Rec;
using banc::Section_Seule;

namespace {

const std::string TEMPS = "                Libellé                        Temps";
const std::string VALEUR =
    "                         Libellé                                         Valeur";
const std::string NOTE = "                Libellé                        Note";

// A carer's main record with the capacities and behaviour suffixes in 49, 50.
marbrel::TabDyn Aidant(const std::string& capacites, const std::string& comportement) {
  std::vector<std::string> a(50);
  a[1] = "BERNARD";
  a[2] = "Sophie";
  a[48] = capacites;
  a[49] = comportement;
  std::string texte;
  for (size_t i = 0; i < a.size(); ++i) texte += (i ? std::string(1, marbrel::AM) : "") + a[i];
  return marbrel::TabDyn(texte);
}

void Tables(Banc& b) {
  b.Met("TABLES", "DEFTECH",
        Rec({"Tâches", "MEN]REP]COU", "Ménage]Préparation des repas]Courses"}));
  b.Met("TABLES", "IMPGENE", Rec({"Comportement", "PONC]DISC", "Ponctualité]Discrétion"}));
}

std::string Rangee(const std::string& libelle, const std::string& valeur, long place = 43) {
  return "  " + texte::Pad(libelle, place) + " " + texte::PadLeft(valeur, 9);
}
std::string Total(const std::string& total) { return std::string(38, ' ') + "Total :  " + total; }

// The page (from 0) that holds a title.
long Page_Du_Titre(const Banc& b, const std::string& titre) {
  const auto& pages = b.Enregistrement().pages;
  for (size_t p = 0; p < pages.size(); ++p) {
    for (const auto& e : pages[p].elements) {
      const auto* t = std::get_if<printing::ElementTexte>(&e);
      if (t && t->police.taille == 16 && t->texte == titre) return static_cast<long>(p);
    }
  }
  return -1;
}

// The frames of a page drawn from the left margin: top and height in lines.
std::vector<std::pair<double, double>> Cadres(const printing::PageEnregistree& page) {
  std::vector<std::pair<double, double>> c;
  for (const auto& e : page.elements) {
    const auto* t = std::get_if<printing::ElementTrait>(&e);
    if (t && t->x1 == t->x2 && std::abs(t->x1 - 0.3 * 567) < 0.01) {
      c.push_back({std::min(t->y1, t->y2), std::abs(t->y2 - t->y1) / printing::kHauteurLigne11});
    }
  }
  return c;
}

// A catalogue of n tasks in one type and one group.
void Catalogue(Banc& b, int n) {
  b.Met("TYPETACHE", "MENAGE", Rec({"1"}));
  b.Met("GROUPETACHE", "Entretien", Rec({"1", "MENAGE"}));
  for (int i = 1; i <= n; ++i) {
    const std::string code = (i < 10 ? "t0" : "t") + std::to_string(i);
    b.Met("TACHE", code, Rec({code, "Entretien"}));
  }
}

}  // namespace

TEST(CapaciteTache, CarerCapacitiesAndBehaviourWithTheirTotals) {
  Banc b;
  Tables(b);
  b.Met("CIVILAIDANT", "S0001", Aidant("1", "2"));
  b.Met("CAPIMPAIDANT", "S0001C1", Rec({"", "MEN]REP", "250]75"}));
  b.Met("CAPIMPAIDANT", "S0001I2", Rec({"", "PONC]DISC", "3]4"}));
  b.Met("CAPIMPAIDANT", "S0001I1", Rec({"", "PONC", "9"}));  // the capacities' suffix
  b.Imprime("AIDANT", {"S0001"});
  EXPECT_EQ(Section_Seule(b, "CAPACITES"),
            (std::vector<std::string>{" ", TEMPS, Rangee("Ménage", "    2.50"),
                                      Rangee("Préparation des repas", "    0.75"), "", "",
                                      Total("    3.25"), " "}));
  EXPECT_EQ(Section_Seule(b, "COMPORTEMENT"),
            (std::vector<std::string>{" ", NOTE, Rangee("Ponctualité", "3"),
                                      Rangee("Discrétion", "4"), "", "", Total("       7"), " "}));
  EXPECT_TRUE(b.Controle().Incidents().empty());
}

TEST(CapaciteTache, CarerWithoutCapacitiesGetsTheWholeTableAsAForm) {
  Banc b;
  Tables(b);
  b.Met("CIVILAIDANT", "S0001", Aidant("1", "1"));
  b.Imprime("AIDANT", {"S0001"});
  EXPECT_EQ(
      Section_Seule(b, "CAPACITES"),
      (std::vector<std::string>{" ", TEMPS, "         Ménage", "         Préparation des repas",
                                "         Courses", "", "", Total("    0.00"), " "}));
  EXPECT_EQ(Section_Seule(b, "COMPORTEMENT"),
            (std::vector<std::string>{" ", NOTE, "         Ponctualité", "         Discrétion", "",
                                      "", Total("       0"), " "}));
}

TEST(CapaciteTache, CapacitiesLongerThanAPageAreFramedOnEachPage) {
  Banc b;
  b.Met("CIVILAIDANT", "S0001", Aidant("1", "1"));
  marbrel::TabDyn capacites, table;
  for (int i = 1; i <= 70; ++i) {
    capacites.Remplace(2, i, "C" + std::to_string(i));
    capacites.Remplace(3, i, "100");
    table.Remplace(2, i, "C" + std::to_string(i));
    table.Remplace(3, i, "Capacité " + std::to_string(i));
  }
  b.Met("CAPIMPAIDANT", "S0001C1", capacites);
  b.Met("TABLES", "DEFTECH", table);
  b.Imprime("AIDANT", {"S0001"});

  const long p = Page_Du_Titre(b, "CAPACITES");
  ASSERT_GE(p, 0);
  const auto& pages = b.Enregistrement().pages;
  // Rows of each page, and the frame drawn around each page's rows.
  std::vector<std::string> rangees;
  for (long q : {p, p + 1}) {
    long sur_la_page = 0;
    for (const auto& e : pages.at(q).elements) {
      const auto* t = std::get_if<printing::ElementTexte>(&e);
      if (t && t->texte.rfind("  Capacité ", 0) == 0) {
        rangees.push_back(t->texte);
        ++sur_la_page;
      }
    }
    const auto cadres = Cadres(pages.at(q));
    // The behaviour's own frame follows the rest of the list on its page.
    ASSERT_EQ(cadres.size(), q == p ? 1u : 2u) << "page " << q + 1;
    EXPECT_NEAR(cadres[0].second, sur_la_page + 1, 1e-3) << "page " << q + 1;
    EXPECT_GT(sur_la_page, 0);
  }
  ASSERT_EQ(rangees.size(), 70u);
  EXPECT_EQ(rangees.front(), Rangee("Capacité 1", "    1.00"));
  EXPECT_EQ(rangees.back(), Rangee("Capacité 70", "    1.00"));
  // The second page opens with the running header and the column header.
  const auto& suite = pages.at(p + 1).elements;
  EXPECT_EQ(std::get<printing::ElementTexte>(suite.at(5)).texte, "S0001 BERNARD Sophie");
  EXPECT_EQ(std::get<printing::ElementTexte>(suite.at(8)).texte, TEMPS);
  auto l = Section_Seule(b, "COMPORTEMENT");
  ASSERT_FALSE(l.empty());
  EXPECT_EQ(Page_Du_Titre(b, "COMPORTEMENT"), p + 1);
  const auto s = b.Lignes();
  EXPECT_NE(std::find(s.begin(), s.end(), Total("   70.00")), s.end());
}

TEST(CapaciteTache, CareRecipientTasksAreTheCatalogueWithTheirValues) {
  Banc b;
  Tables(b);
  b.Met("CIVILAIDE", "A0001", Rec({"", "DURAND", "Marie"}));
  b.Met("TYPETACHE", "ENTRETIEN", Rec({"1"}));
  b.Met("TYPETACHE", "SOINS", Rec({"2"}));
  b.Met("GROUPETACHE", "Ménage", Rec({"1", "ENTRETIEN"}));
  b.Met("GROUPETACHE", "Toilette", Rec({"1", "SOINS"}));
  b.Met("TACHE", "Aspirateur", Rec({"1", "Ménage"}));
  b.Met("TACHE", "Vaisselle", Rec({"2", "Ménage"}));
  b.Met("TACHE", "Douche", Rec({"1", "Toilette"}));
  // The needs record, left by the modalities section, completes the key.
  b.Met("BESOINSAIDE", "A0001", Rec({"*1"}));
  marbrel::TabDyn taches = Rec({"Douche]Aspirateur", "Lun Jeu]2 h"});
  taches.Remplace(14, "PONC");
  taches.Remplace(15, "3");
  b.Met("AIDEDETAILTACHE", "A0001*1", taches);
  b.Met("AIDEDETAILTACHE", "A0001", Rec({"Vaisselle", "faux"}));  // not the key
  b.Imprime("AIDE", {"A0001"});

  auto ligne = [](const std::string& type, const std::string& groupe, const std::string& tache) {
    return texte::Pad(type, 21) + texte::Pad(groupe, 21) + tache;
  };
  EXPECT_EQ(Section_Seule(b, "TACHES A ACCOMPLIR"),
            (std::vector<std::string>{
                " ", VALEUR, Rangee(ligne("ENTRETIEN", "Ménage", "Aspirateur"), "2 h", 68),
                Rangee(ligne("", "", "Vaisselle"), "", 68),
                Rangee(ligne("SOINS", "Toilette", "Douche"), "Lun Jeu", 68), "", "", " "}));
  // The care recipient's behaviour comes from the same record, without total.
  EXPECT_EQ(Section_Seule(b, "COMPORTEMENT"),
            (std::vector<std::string>{" ", NOTE, Rangee("Ponctualité", "3"), "", "", " "}));

  // The tasks' frame holds the header and the three lines.
  const auto& page = b.Enregistrement().pages.at(Page_Du_Titre(b, "TACHES A ACCOMPLIR"));
  EXPECT_NEAR(Cadres(page).at(0).second, 4, 1e-3);
}

TEST(CapaciteTache, BehaviourStaysOnTheTasksPageUpTo36Lines) {
  for (int n : {36, 37}) {
    Banc b;
    b.Met("CIVILAIDE", "A0001", Rec({"", "DURAND", "Marie"}));
    Catalogue(b, n);
    b.Imprime("AIDE", {"A0001"});
    const long taches = Page_Du_Titre(b, "TACHES A ACCOMPLIR");
    const long comportement = Page_Du_Titre(b, "COMPORTEMENT");
    ASSERT_GE(taches, 0);
    EXPECT_EQ(comportement, n == 36 ? taches : taches + 1) << n << " tasks";
    // All the tasks are on their own page, in one frame.
    EXPECT_NEAR(Cadres(b.Enregistrement().pages.at(taches)).at(0).second, n + 1, 1e-3);
  }
}

// The framed label-and-value lists: the row layout inside its frame, rows left out, the carer's
// total, chunks that fit their pages under the running header, and a list of the other kind of
// dossier.
#include "layout/liste_donnees.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "db/lecture.h"
#include "db/variable.h"
#include "layout/lignes.h"
#include "marbrel/outils.h"
#include "marbrel/texte.h"
#include "printing/geometrie.h"
#include "printing/recording.h"
#include "tests/support/banc.h"

using banc::Rec;

namespace {

const std::string ENTETE = "                Libellé                        Temps";

// A frame as the recording shows it: its left edge gives its top and height.
struct Cadre {
  double haut, lignes;
};

// The control on a recording printer, a list set up as its caller would.
class Liste {
 public:
  explicit Liste(const std::string& type) : c_(b_.Controle()) {
    c_.Commence_Sur(
        std::make_unique<printing::Printer>(std::make_unique<printing::RecordingSurface>(&rec_)));
    c_.Type_Dossier = type;
    c_.Num_Page = 1;
    Variable::Principal = Rec({"", "MARTIN", "Paul"});
    db::FixeAujourdhui(std::stol(marbrel::Outils::Instance().Date_Interne("15/03/2024")));
    c_.Liste_Largeur = 55;
    c_.Liste_Type = type == "AIDANT" ? 2 : 1;
    c_.Liste_Attribut = 2;
    c_.Liste_Entete = ENTETE;
    c_.Liste_Taille_Col = mise_en_page::Largeurs({"8.5", "2.5"});
    c_.Liste_Ligne_Par_Page = 50;
  }

  Ctr_Vesko& C() { return c_; }

  // Prints the header as a caller does and runs the list.
  void Imprime(const marbrel::TabDyn& source, const marbrel::TabDyn& table) {
    c_.Liste_Source = source;
    c_.Liste_Nb_Ligne = static_cast<std::int32_t>(source.DCount());
    Variable::Tables = table;
    c_.W_PointDepart = mise_en_page::Monnaie::De(c_.Imprimante()->CurrentY());
    c_.Imprimante()->Print(c_.Liste_Entete);
    std::string code = "S0001";
    c_.ImprimeDonnées(code);
    c_.Imprimante()->EndDoc();
  }

  std::vector<std::string> Textes(size_t page) const {
    std::vector<std::string> t;
    for (const auto& e : rec_.pages.at(page).elements)
      if (const auto* x = std::get_if<printing::ElementTexte>(&e)) t.push_back(x->texte);
    return t;
  }
  std::vector<Cadre> Cadres(size_t page) const {
    std::vector<Cadre> cadres;
    for (const auto& e : rec_.pages.at(page).elements) {
      const auto* t = std::get_if<printing::ElementTrait>(&e);
      if (t && t->x1 == t->x2 && std::abs(t->x1 - 0.3 * 567) < 0.01)
        cadres.push_back(
            {std::min(t->y1, t->y2), std::abs(t->y2 - t->y1) / printing::kHauteurLigne11});
    }
    return cadres;
  }
  size_t Pages() const { return rec_.pages.size(); }

 private:
  banc::Banc b_;
  printing::Enregistrement rec_;
  Ctr_Vesko& c_;
};

std::string Rangee(const std::string& libelle, const std::string& valeur) {
  return "  " + texte::Pad(libelle, 43) + " " + texte::PadLeft(valeur, 9);
}

}  // namespace

TEST(ImprimeDonnees, RowsSitInTheirColumnsAndTheEmptyOnesAreLeftOut) {
  Liste l("AIDANT");
  l.C().Liste_Centiemes = true;
  const std::string longue = "Accompagnement aux rendez-vous médicaux et aux courses";
  l.Imprime(Rec({"", "MEN]XXX]REP]YYY]COU]LNG", "250]]75]130]abc]"}),
            Rec({"DEFTECH", "MEN]REP]COU]LNG", "Ménage]Préparation des repas]Courses]" + longue}));
  // The unknown code with no value is left out; the unknown code with a
  // value keeps its row; a known code without value keeps its row.
  EXPECT_EQ(l.Textes(0), (std::vector<std::string>{ENTETE, Rangee("Ménage", "    2.50"),
                                                   Rangee("Préparation des repas", "    0.75"),
                                                   Rangee("", "    1.30"), Rangee("Courses", "abc"),
                                                   Rangee(texte::Left(longue, 43), "")}));
  // The cut label is written back into the code table held in memory.
  EXPECT_EQ(Variable::Tables(3, 4), texte::Left(longue, 43));
  EXPECT_EQ(l.C().Liste_Total, 455);
  // The frame holds the header and the five rows; sections check where its rules lie.
  EXPECT_NEAR(l.Cadres(0).at(0).lignes, 6, 1e-3);
}

TEST(ImprimeDonnees, AVeryLongListNeverLetsThePrinterEjectABarePage) {
  Liste l("AIDANT");
  marbrel::TabDyn source, table;  // 300 capacities whose codes are their labels
  for (long i = 1; i <= 300; ++i) {
    for (auto* t : {&source, &table}) t->Remplace(2, i, "C" + std::to_string(i));
    source.Remplace(3, i, "1");
  }
  table.Remplace(3, source(2));
  l.Imprime(source, table);
  long rangees = 0;
  for (size_t p = 0; p < l.Pages(); ++p) {
    auto t = l.Textes(p);
    const size_t debut = p == 0 ? 1 : 9;  // rows follow the header(s)
    ASSERT_EQ(l.Cadres(p).size(), 1u) << "page " << p + 1;
    EXPECT_NEAR(l.Cadres(p)[0].lignes, static_cast<double>(t.size() - debut + 1), 1e-3);
    rangees += static_cast<long>(t.size() - debut);
    // Room is left under the last row for the lines the caller prints after.
    const double bas = l.Cadres(p)[0].haut + l.Cadres(p)[0].lignes * printing::kHauteurLigne11;
    EXPECT_LE(bas + 4 * printing::kHauteurLigne11, printing::Papier{}.HauteurImprimable() + 0.5);
  }
  EXPECT_EQ(rangees, 300);
}

TEST(ImprimeDonnees, AListOfTheOtherKindPrintsItsHeaderAndKeepsThePreviousChunk) {
  // A care recipient's list during a carer's run.
  Liste l("AIDANT");
  l.C().Liste_Type = 1;
  l.C().Liste_Lignes_Chunk = 2;  // what the previous list left
  l.Imprime(Rec({"", "A]B]C", "1]2]3"}), Rec({"T", "A]B]C", "Un]Deux]Trois"}));
  EXPECT_EQ(l.Textes(0),
            (std::vector<std::string>{ENTETE, ENTETE, Rangee("Un", "1"), Rangee("Deux", "2")}));
  EXPECT_NEAR(l.Cadres(0)[0].lignes, 4, 1e-3);
  ASSERT_EQ(l.Pages(), 2u);
  EXPECT_EQ(l.Textes(1).back(), Rangee("Trois", "3"));
}

TEST(ImprimeDonnees, TheLineCounterCountsEveryRowOfAListThatRunsOverTwoPages) {
  // The driver reads the counter after the tasks to decide whether the next
  // section still has room: a list ending on its second page counts both.
  Liste l("AIDANT");
  marbrel::TabDyn source, table;
  for (long i = 1; i <= 80; ++i) {
    for (auto* t : {&source, &table}) t->Remplace(2, i, "C" + std::to_string(i));
    source.Remplace(3, i, "1");
  }
  table.Remplace(3, source(2));
  l.Imprime(source, table);
  ASSERT_EQ(l.Pages(), 2u);
  EXPECT_EQ(l.C().Compteur_Ligne, 80);
  // Each page's frame keeps its own height: the header and that page's rows.
  EXPECT_NEAR(l.Cadres(0).at(0).lignes, 51, 1e-3);
  EXPECT_NEAR(l.Cadres(1).at(0).lignes, 31, 1e-3);
}

// The task catalogue merged into printable lines: the 21/21/25 columns and
// their cuts, the person's values matched by position, and the rows whose
// parent does not exist or comes too late for cursors that never go back.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "db/variable.h"
#include "marbrel/base.h"
#include "marbrel/texte.h"
#include "tests/support/banc.h"

using banc::Rec;

namespace {

// A bench whose store the control selects from directly.
class Catalogue {
 public:
  Catalogue() : c_(b_.Controle()) {}
  ~Catalogue() { c_.TheDatabase(nullptr); }

  using S = const std::string&;
  void Type(S code, S ordre) { b_.Met("TYPETACHE", code, Rec({ordre})); }
  void Groupe(S code, S ordre, S type) { b_.Met("GROUPETACHE", code, Rec({ordre, type})); }
  void Tache(S code, S ordre, S groupe) { b_.Met("TACHE", code, Rec({ordre, groupe})); }

  Ctr_Vesko& Remplit(const marbrel::TabDyn& personne = {}) {
    c_.TheDatabase(marbrel::Base::OuvreSqlite(b_.Chemin(), true));
    c_.Tache_Personne = personne;
    c_.Tache_Attribut = 1;
    c_.Remplir_Liste_Tache();
    return c_;
  }

  std::vector<std::string> Lignes() const {
    std::vector<std::string> l;
    for (long i = 1; i <= c_.Liste_Tache.DCount(1); ++i) l.push_back(c_.Liste_Tache(1, i));
    return l;
  }

 private:
  banc::Banc b_;
  Ctr_Vesko& c_;
};

std::string Col(const std::string& s, long n) { return texte::Pad(s, n); }
const std::string VIDE = std::string(21, ' ');

}  // namespace

TEST(RemplirListeTache, ColumnsCutLabelsAndCarryThePersonsValues) {
  // Keys and orders agree, as the merge needs: types, then groups within a
  // type, sort the same way by code as by attribute 1.
  Catalogue cat;
  const std::string type_long = "ENTRETIEN DU LOGEMENT ET DU LINGE";  // 33 characters
  const std::string groupe_long = "Nettoyage des pièces à vivre";     // 28 characters
  const std::string tache_longue = "Lavage des vitres et des encadrements";
  cat.Type(type_long, "1");
  cat.Groupe(groupe_long, "1", type_long);
  cat.Groupe("Soin du linge", "2", type_long);
  cat.Tache("Aspirateur", "1", groupe_long);
  cat.Tache(tache_longue, "2", groupe_long);
  cat.Tache("Repassage", "1", "Soin du linge");

  // The person has two tasks, in an order of their own; the long one is not one of them.
  Ctr_Vesko& c = cat.Remplit(Rec({"Repassage]Aspirateur", "1 h]X"}));
  EXPECT_EQ(cat.Lignes(),
            (std::vector<std::string>{
                Col("ENTRETIEN DU LOGEMEN", 21) + Col("Nettoyage des pièces", 21) + "Aspirateur",
                VIDE + VIDE + texte::Left(tache_longue, 25),
                VIDE + Col("Soin du linge", 21) + "Repassage",
            }));
  EXPECT_EQ(c.Liste_Tache(2), Rec({"X]]1 h"}).Extrait(1));
  EXPECT_EQ(c.Liste_Nb_Ligne, 3);
}

TEST(RemplirListeTache, RowsWithoutAParentOrWithoutChildrenGiveNoLine) {
  Catalogue cat;
  for (const std::string t : {"1", "2", "3"}) cat.Type("T" + t, t);  // T2 has no group at all
  cat.Groupe("G0", "1", "T0");                                       // its type does not exist
  cat.Groupe("G1", "1", "T1");  // no task: the type column waits for G2
  cat.Groupe("G2", "2", "T1");
  cat.Groupe("G3", "1", "T3");
  cat.Tache("a", "1", "G0");  // under a group that is never listed
  cat.Tache("b", "1", "G2");
  cat.Tache("c", "1", "G3");
  cat.Tache("d", "1", "G9");  // its group does not exist
  // A person whose task codes stop at an empty value: what follows is not read.
  Ctr_Vesko& c = cat.Remplit(Rec({"b]]c", "1]2]3"}));
  EXPECT_EQ(cat.Lignes(), (std::vector<std::string>{Col("T1", 21) + Col("G2", 21) + "b",
                                                    Col("T3", 21) + Col("G3", 21) + "c"}));
  EXPECT_EQ(c.Liste_Tache(2), "1");
  EXPECT_EQ(c.Nb_Tache, 4);  // the catalogue's size, listed or not
}

TEST(RemplirListeTache, TypesOutOfStepWithTheirGroupsLoseTheSkippedGroups) {
  // Types sort by attribute 1, groups by their type's code: here "TB" comes
  // first although its groups come after those of "TA", which the forward-only
  // cursor has then passed.
  Catalogue cat;
  cat.Type("TA", "2");
  cat.Type("TB", "1");
  cat.Groupe("GA", "1", "TA");
  cat.Groupe("GB", "1", "TB");
  cat.Tache("ta", "1", "GA");
  cat.Tache("tb", "1", "GB");
  cat.Remplit();
  EXPECT_EQ(cat.Lignes(), (std::vector<std::string>{Col("TB", 21) + Col("GB", 21) + "tb"}));
}

#include <gtest/gtest.h>

#include "marbrel/tabdyn.h"

using marbrel::TabDyn;

namespace {

// Record text written with "^" for attribute marks, "]" for value marks and
// "\" for sub-value marks.
std::string M(std::string s) {
  for (char& c : s) c = c == '^' ? '\xFE' : c == ']' ? '\xFD' : c == '\\' ? '\xFC' : c;
  return s;
}

TEST(TabDyn, LesMarquesSeparentLesTroisNiveauxEtLireAuDelaDonneUnTexteVide) {
  TabDyn r(M("DUPONT^Jean]Paul\\Marie^^75001"));
  EXPECT_EQ(r(2), M("Jean]Paul\\Marie"));
  EXPECT_EQ(r(2, 2), M("Paul\\Marie"));
  EXPECT_EQ(r(2, 2, 2), "Marie");
  EXPECT_EQ(r(2, 1, 1), "Jean");
  EXPECT_EQ(r(4), "75001");
  EXPECT_EQ(r.Extrait(-1, -1, -1), r.Texte());
  EXPECT_EQ(r.Compte(-1), 4);
  EXPECT_EQ(r.Compte(2, 2), 2);
  EXPECT_EQ(r.Compte(3), 0);
  const int hors[][3] = {{3, -1, -1}, {5, -1, -1}, {2, 3, -1}, {2, 1, 2},
                         {1, 2, -1},  {0, -1, -1}, {2, 0, -1}, {-5, -1, -1}};
  for (auto [a, v, s] : hors) EXPECT_EQ(r.Extrait(a, v, s), "") << a << "," << v << "," << s;
  EXPECT_EQ(TabDyn()(7, 3, 2), "");
}

TEST(TabDyn, EcrireAuDelaDeLaFinAjouteDesElementsVides) {
  TabDyn r;
  r.Remplace(3, 2, 2, "x");
  EXPECT_EQ(r.Texte(), M("^^]\\x"));
  TabDyn p(M("A^B"));
  p.Remplace(2, 3, "C");  // value 3 of an attribute holding one value
  EXPECT_EQ(p.Texte(), M("A^B]]C"));
  p.Remplace(1, "Zoé");  // replacing a whole attribute keeps the others
  EXPECT_EQ(p.Texte(), M("Zoé^B]]C"));
  p.Remplace(2, 1, "");  // emptying a value keeps its place
  EXPECT_EQ(p(2, 3), "C");
}

TEST(TabDyn, DCountCompteLesLignesDUneTableAssociee) {
  // Dependants: names (3 values), first names (2), dates (empty).
  TabDyn r(M("^MARTIN]DURAND]PETIT^Léa]Tom^"));
  EXPECT_EQ(r.DCount(1), 0);
  EXPECT_EQ(r.DCount(3), 2);
  EXPECT_EQ(r.DCount(), 3);
  EXPECT_EQ(TabDyn("seul").DCount(), 1);
  EXPECT_EQ(TabDyn(M("^^")).DCount(), 0);
}

}  // namespace

// The incompatible carers: the selection by care recipient in name order, the
// first ten only, names from the carers' file, always ten framed rows.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "printing/recording.h"
#include "tests/sections/cadre_sous.h"
#include "tests/support/banc.h"
#include "tests/support/section_seule.h"

using banc::Banc;
using banc::Rec;
using banc::Section_Seule;

namespace {

const std::string ENTETE = "           Code               Nom Prénom";
const std::string VIDE = std::string(14, ' ');  // a row past the last carer

std::string Rangee(const std::string& code, const std::string& nom, const std::string& prenom) {
  return std::string(10, ' ') + code + "   " + nom + " " + prenom;
}

// The dictionary items the selection names.
void Dictionnaire(Banc& b) {
  b.MetDict("TPSINCOMPATIBILITES", "CodeAide", Rec({"D", "1", "", "Code aidé", "10L", "S"}));
  b.MetDict("TPSINCOMPATIBILITES", "NomPrenomAidantIncomp",
            Rec({"D", "2", "", "Aidant incompatible", "30L", "S"}));
}

// A carer declared incompatible with a care recipient.
void Incompatible(Banc& b, const std::string& aidant, const std::string& aide,
                  const std::string& nom, const std::string& prenom) {
  b.Met("TPSINCOMPATIBILITES", aidant + aide, Rec({aide, nom + " " + prenom}));
  b.Met("CIVILAIDANT", aidant, Rec({"", nom, prenom}));
}

}  // namespace

TEST(AidantIncompatible, OnlyTheFirstTenInNameOrder) {
  Banc b;
  Dictionnaire(b);
  const std::vector<std::string> noms = {"MOREAU", "ANDRE",  "PETIT", "LAMBERT", "BLANC", "GIRARD",
                                         "ROUX",   "DUBOIS", "FAURE", "CLEMENT", "NOEL",  "VIDAL"};
  for (size_t i = 0; i < noms.size(); ++i) {
    Incompatible(b, "S01" + std::to_string(10 + i), "A0001", noms[i], "Léa");
  }
  Incompatible(b, "S0200", "A0002", "AUBERT", "Jean");  // another care recipient's
  b.Imprime("AIDE", {"A0001"});

  std::vector<std::string> attendu = {" ", ENTETE};
  std::vector<std::pair<std::string, std::string>> tries;
  for (size_t i = 0; i < noms.size(); ++i)
    tries.push_back({noms[i], "S01" + std::to_string(10 + i)});
  std::sort(tries.begin(), tries.end());
  for (size_t i = 0; i < 10; ++i) attendu.push_back(Rangee(tries[i].second, tries[i].first, "Léa"));
  EXPECT_EQ(Section_Seule(b, "AIDANTS INCOMPATIBLES"), attendu);
  EXPECT_TRUE(b.Controle().Incidents().empty());
}

TEST(AidantIncompatible, TenRowsFramedEvenWhenFewer) {
  Banc b;
  Dictionnaire(b);
  Incompatible(b, "S0007", "A0001", "MARTIN", "Paul");
  // A key whose carer is gone from the carers' file keeps its code.
  b.Met("TPSINCOMPATIBILITES", "S0999A0001", Rec({"A0001", "ZOLA Emile"}));
  b.Imprime("AIDE", {"A0001"});
  std::vector<std::string> attendu = {" ", ENTETE, Rangee("S0007", "MARTIN", "Paul"),
                                      Rangee("S0999", "", "")};
  attendu.resize(12, VIDE);
  EXPECT_EQ(Section_Seule(b, "AIDANTS INCOMPATIBLES"), attendu);

  const auto cadre = banc::Cadre_Sous(b.Enregistrement(), ENTETE);
  ASSERT_TRUE(cadre);
  EXPECT_NEAR(cadre->Lignes(), 11, 1e-3);
  EXPECT_NEAR(cadre->gauche, banc::Cm(2), 0.01);
  EXPECT_NEAR(cadre->droite, banc::Cm(13), 0.01);
  ASSERT_EQ(cadre->separateurs.size(), 1u);
  EXPECT_NEAR(cadre->separateurs[0], banc::Cm(4), 0.01);
}

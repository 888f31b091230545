// The incompatible carers: the first ten in name order, always ten framed rows.
#include "tests/sections/releve.h"

static const std::string ENTETE = "           Code               Nom Prénom";

static std::string Rangee(const std::string& code, const std::string& nom,
                          const std::string& prenom) {
  return S(10) + code + "   " + nom + " " + prenom;
}

// A carer declared incompatible with a care recipient.
static void Incompatible(Banc& b, const std::string& aidant, const std::string& aide,
                         const std::string& nom) {
  b.Met("TPSINCOMPATIBILITES", aidant + aide, Rec({aide, nom + " Léa"}));
  b.Met("CIVILAIDANT", aidant, Rec({"", nom, "Léa"}));
}

TEST(AidantIncompatible, FirstTenInNameOrderAndTenFramedRowsEvenWhenFewer) {
  Banc b;
  // The dictionary items the selection names.
  b.MetDict("TPSINCOMPATIBILITES", "CodeAide", Rec({"D", "1", "", "Code aidé", "10L", "S"}));
  b.MetDict("TPSINCOMPATIBILITES", "NomPrenomAidantIncomp",
            Rec({"D", "2", "", "Aidant incompatible", "30L", "S"}));
  const V noms = {"MOREAU", "ANDRE",  "PETIT", "LAMBERT", "BLANC", "GIRARD",
                  "ROUX",   "DUBOIS", "FAURE", "CLEMENT", "NOEL",  "VIDAL"};
  std::vector<std::pair<std::string, std::string>> tries;
  for (size_t i = 0; i < noms.size(); ++i) {
    Incompatible(b, "S01" + std::to_string(10 + i), "A0001", noms[i]);
    tries.push_back({noms[i], "S01" + std::to_string(10 + i)});
  }
  Incompatible(b, "S0007", "A0002", "MARTIN");
  // A key whose carer is gone from the carers' file keeps its code.
  b.Met("TPSINCOMPATIBILITES", "S0999A0002", Rec({"A0002", "ZOLA Emile"}));
  b.Imprime("AIDE", {"A0001", "A0002"});

  V attendu = {" ", ENTETE};
  std::sort(tries.begin(), tries.end());
  for (size_t i = 0; i < 10; ++i) attendu.push_back(Rangee(tries[i].second, tries[i].first, "Léa"));
  EXPECT_EQ(Bloc(b, "AIDANTS INCOMPATIBLES"), attendu);
  EXPECT_TRUE(b.Controle().Incidents().empty());

  attendu = {" ", ENTETE, Rangee("S0007", "MARTIN", "Léa"), Rangee("S0999", "", "")};
  attendu.resize(12, S(14));  // rows past the last carer
  EXPECT_EQ(Bloc(b, "AIDANTS INCOMPATIBLES", 1), attendu);
  EXPECT_EQ(Cadre(b, ENTETE, 1), "11 lignes, 2-13 cm: 4");
}

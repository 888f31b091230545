#include "tests/support/releve.h"

static const std::string ENTETE = "           Code               Nom Prénom";
static std::string Rangee(std::string code, std::string nom) { return S(10) + code + "   " + nom; }

TEST(AidantIncompatible, FirstTenInNameOrderAndTenFramedRowsEvenWhenFewer) {
  Banc b;
  // The dictionary items the selection names.
  b.MetDict("TPSINCOMPATIBILITES", "CodeAide", Rec({"D", "1", "", "Code aidé", "10L", "S"}));
  b.MetDict("TPSINCOMPATIBILITES", "NomPrenomAidantIncomp",
            Rec({"D", "2", "", "Aidant incompatible", "30L", "S"}));
  const V noms = {"MOREAU", "ANDRE", "PETIT",   "LAMBERT", "BLANC", "GIRARD", "ROUX",
                  "DUBOIS", "FAURE", "CLEMENT", "NOEL",    "VIDAL", "MARTIN"};
  for (size_t i = 0; i < noms.size(); ++i) {
    const std::string aidant = "S01" + std::to_string(10 + i), aide = i < 12 ? "A0001" : "A0002";
    b.Met("TPSINCOMPATIBILITES", aidant + aide, Rec({aide, noms[i] + " Léa"}));
    b.Met("CIVILAIDANT", aidant, Rec({"", noms[i], "Léa"}));
  }
  // A key whose carer is gone from the carers' file keeps its code.
  b.Met("TPSINCOMPATIBILITES", "S0999A0002", Rec({"A0002", "ZOLA Emile"}));
  b.Imprime("AIDE", {"A0001", "A0002"});
  // By name, the first ten: ROUX and VIDAL are left out.
  V attendu = {" ", ENTETE};
  for (const char* c : {"S0111ANDRE", "S0114BLANC", "S0119CLEMENT", "S0117DUBOIS", "S0118FAURE",
                        "S0115GIRARD", "S0113LAMBERT", "S0110MOREAU", "S0120NOEL", "S0112PETIT"})
    attendu.push_back(Rangee(std::string(c).substr(0, 5), std::string(c).substr(5) + " Léa"));
  EXPECT_EQ(Bloc(b, "AIDANTS INCOMPATIBLES"), attendu);
  attendu = {" ", ENTETE, Rangee("S0122", "MARTIN Léa"), Rangee("S0999", " ")};
  attendu.resize(12, S(14));  // rows past the last carer
  EXPECT_EQ(Bloc(b, "AIDANTS INCOMPATIBLES", 1), attendu);
  EXPECT_EQ(Cadre(b, ENTETE, 1), "11 lignes, 2-13 cm: 4");
}

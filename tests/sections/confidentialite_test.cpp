// No dossier ever shows another person's data: persons whose codes share a
// beginning, are equal as numbers, or hold the query language's own
// characters each get a dossier with their own marks only. A code that the
// selections cannot isolate is refused for those sections, with an incident.
#include <cstdio>

#include "db/code_personne.h"
#include "tests/support/releve.h"

namespace {

// The mark of the n-th person: no mark is part of another.
std::string Marque(size_t n) {
  char m[8];
  std::snprintf(m, sizeof m, "Q%02zuQ", n);
  return m;
}

struct Personne {
  std::string code;
  bool isolable;
};

const std::vector<Personne> kPersonnes = {
    {"00001", true},   {"000010", false}, {"00001X", false}, {"0001", false},
    {"+0001", true},   {"1.000", true},   {"1", false},      {"00002", true},
    {"A\"001", false}, {"A'001", false},  {"[0001", false},  {"0001]", false},
    {"0000]", false},  {"A]001", false},  {"A0\n01", false}, {"", true},
};

// A store where every person has a name, an incompatible carer, an
// unavailability starting tomorrow and a behaviour note, each holding the
// person's mark.
void Remplit(Banc& b, const std::string& demain) {
  b.MetDict("TPSINCOMPATIBILITES", "CodeAide", Rec({"D", "1", "", "Code aidé", "10L", "S"}));
  b.MetDict("TPSINCOMPATIBILITES", "NomPrenomAidantIncomp",
            Rec({"D", "2", "", "Aidant incompatible", "30L", "S"}));
  marbrel::TabDyn debut;  // written by attribute: "]" separates values in Rec
  for (long a = 1; const char* v : {"I", "@ID[6,5]", "", "Début indispo", "5R", "S"}) {
    debut.Remplace(a++, v);
  }
  b.MetDict("TPSAIDEINDISPO", "DateDebIndispo", debut);
  // The behaviour table is shared: an empty list prints all of it as a form.
  b.Met("TABLES", "IMPGENE", Rec({"", "K", "Bavard"}));
  for (size_t n = 0; n < kPersonnes.size(); ++n) {
    const std::string& code = kPersonnes[n].code;
    if (code.empty()) continue;
    const std::string m = Marque(n);
    b.Met("CIVILAIDE", code, Rec({"", "NOM" + m, "Prénom"}));
    const std::string aidant = "S" + m.substr(1, 2) + "00";
    b.Met("CIVILAIDANT", aidant, Rec({"", "AIDANT" + m, "Léa"}));
    b.Met("TPSINCOMPATIBILITES", aidant + code, Rec({code, "AIDANT" + m}));
    b.Met("TPSAIDEINDISPO", code + demain + "30900", Rec({"", "1000", "1", "OBS" + m}));
    b.Met("BESOINSAIDE", code, Rec({"T"}));
    b.Met("AIDEDETAILTACHE", code + "T", Fiche("14=K|15=" + m));
  }
}

}  // namespace

TEST(Confidentialite, EveryDossierHoldsOnlyItsOwnPersonsMarks) {
  Banc b;
  const std::string demain = Jour("16/03/2024");
  Remplit(b, demain);
  for (size_t n = 0; n < kPersonnes.size(); ++n) {
    const Personne& p = kPersonnes[n];
    SCOPED_TRACE("code « " + p.code + " »");
    b.Imprime("AIDE", {p.code});
    const std::string texte = b.Texte();
    for (size_t autre = 0; autre < kPersonnes.size(); ++autre) {
      if (autre != n) {
        EXPECT_EQ(texte.find(Marque(autre)), std::string::npos) << Marque(autre);
      }
    }
    std::vector<std::string> refusees;
    for (const Incident& i : b.Controle().Incidents()) {
      if (i.message.find("Section non imprimée") != std::string::npos) {
        refusees.push_back(i.section);
      }
    }
    if (p.code.empty()) {
      EXPECT_TRUE(b.Controle().Incidents().empty());
    } else if (p.isolable) {
      EXPECT_TRUE(refusees.empty());
      for (const char* quoi : {"AIDANT", "OBS"}) {
        EXPECT_NE(texte.find(quoi + Marque(n)), std::string::npos) << quoi;
      }
      std::string comportement;
      for (const std::string& l : Bloc(b, "COMPORTEMENT")) comportement += l;
      EXPECT_NE(comportement.find(Marque(n)), std::string::npos);
    } else {
      // Refused where the code selects or composes keys; the name still prints.
      EXPECT_EQ(refusees, V({"Aidant_Incompatible", "Capacite_Tache", "Comportement", "Indispo"}));
      EXPECT_NE(texte.find("NOM" + Marque(n)), std::string::npos);
    }
  }
}

TEST(Confidentialite, CodesRefusedOnlyWhenTheSelectionCannotIsolateThem) {
  for (const Personne& p : kPersonnes) {
    EXPECT_EQ(db::Refus_Code(p.code).empty(), p.isolable) << p.code;
  }
  // Accents count as one character each.
  EXPECT_EQ(db::Refus_Code("Hélèn"), "");
  // The reason names the code with its control characters made visible.
  EXPECT_NE(db::Refus_Code("A0\n01").find("A0\\n01"), std::string::npos);
}

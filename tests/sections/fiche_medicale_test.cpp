// The medical part of a care recipient's dossier: the technical aids two to a
// line, the latest dated entry of history, diagnosis and treatment (at most
// 15 lines), and the treatment table with its unit words.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "marbrel/outils.h"
#include "marbrel/texte.h"
#include "printing/recording.h"
#include "sections/medical/traitement.h"
#include "tests/support/banc.h"
#include "tests/support/section_seule.h"

using banc::Banc;
using banc::Rec;
using banc::Section_Seule;

namespace {

const std::string CRLF = "\r\n";
const std::string ENTETE =
    "Médication                 Quantité        Fréquence       Durée        Date de fin";

std::string Jour(const std::string& date) { return marbrel::Outils::Instance().Date_Interne(date); }

// A dossier whose medical sheet is fiche.
struct Dossier {
  explicit Dossier(const marbrel::TabDyn& fiche) {
    b.Met("FICHEMEDAIDE", "A0001", fiche);
    b.Imprime("AIDE", {"A0001"});
  }
  Banc b;
};

}  // namespace

TEST(AideTechnique, SixAidsOnThreeLinesAndLoneAids) {
  auto aides = [](const std::string& codes) {
    Banc b;
    b.Met("TABLES", "AIDETECHNIQUE",
          Rec({"", "LM]FR]DE]BA]CH]TE]SP",
               "Lit médicalisé]Fauteuil roulant]Déambulateur]Barre d'appui]Chaise percée]"
               "Téléalarme]Siège de douche pivotant"}));
    b.Met("ENVIRONAIDE", "A0001",
          Rec({"", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "", codes}));
    b.Imprime("AIDE", {"A0001"});
    return Section_Seule(b, "AIDES TECHNIQUES");
  };
  auto col = [](const std::string& libelle) {
    return " " + libelle + std::string(40 - texte::Len(libelle), ' ');
  };
  EXPECT_EQ(aides("LM]FR]DE]BA]CH]TE"),
            (std::vector<std::string>{" ", col("Lit médicalisé") + "Fauteuil roulant",
                                      col("Déambulateur") + "Barre d'appui",
                                      col("Chaise percée") + "Téléalarme"}));
  // An aid at an odd position with nothing beside it ends its line with one
  // space; an unknown code prints an empty label; empty pairs print nothing.
  EXPECT_EQ(
      aides("SP]]DE]??"),
      (std::vector<std::string>{" ", col("Siège de douche pivotant") + " ", col("Déambulateur")}));
  EXPECT_EQ(aides(""), std::vector<std::string>{" "});
}

TEST(FicheMed, OnlyTheLatestEntryWithItsDateInEmphasis) {
  Dossier d(Rec({"",
                 Jour("02/01/2020") + "\\Appendicectomie 1975.]" + Jour("10/06/2022") +
                     "\\Fracture du poignet.]" + Jour("12/02/2024") + "\\Diabète de type 2" + CRLF +
                     "Hypertension artérielle.",
                 "", Jour("01/03/2024") + "\\Perte d'autonomie modérée."}));
  EXPECT_EQ(Section_Seule(d.b, "ANTECEDENTS MEDICAUX"),
            (std::vector<std::string>{" ", " Date : 12/02/2024", " Diabète de type 2",
                                      " Hypertension artérielle."}));
  EXPECT_EQ(Section_Seule(d.b, "DIAGNOSTIC"),
            (std::vector<std::string>{" ", " Date : 01/03/2024", " Perte d'autonomie modérée."}));
  // The label alone is in bold; the date that follows is not.
  int dates = 0;
  for (const auto& page : d.b.Enregistrement().pages) {
    for (size_t k = 0; k + 1 < page.elements.size(); ++k) {
      const auto* t = std::get_if<printing::ElementTexte>(&page.elements[k]);
      if (!t || t->texte != "Date :") continue;
      ++dates;
      EXPECT_TRUE(t->police.gras);
      const auto& suite = std::get<printing::ElementTexte>(page.elements[k + 1]);
      EXPECT_FALSE(suite.police.gras);
      EXPECT_EQ(suite.y, t->y);
    }
  }
  EXPECT_EQ(dates, 2);
}

TEST(FicheMed, AnEntryPrintsAtMost15LinesWrappedAt76) {
  std::string texte;
  for (int i = 1; i <= 20; ++i) texte += (i > 1 ? CRLF : "") + "Ligne " + std::to_string(i);
  std::string long_texte;
  for (int i = 0; i < 12; ++i) long_texte += "traitement ";  // 132 characters
  Dossier d(Rec({"", "", "", Jour("01/03/2024") + "\\" + texte, "",
                 Jour("01/03/2024") + "\\" + long_texte + "fin"}));
  auto l = Section_Seule(d.b, "DIAGNOSTIC");
  ASSERT_EQ(l.size(), 17u);  // blank, date line, 15 lines
  EXPECT_EQ(l[2], " Ligne 1");
  EXPECT_EQ(l[16], " Ligne 15");
  auto t = Section_Seule(d.b, "TRAITEMENT MEDICAL");
  ASSERT_GE(t.size(), 4u);
  EXPECT_EQ(t[2], " traitement traitement traitement traitement traitement traitement");
  EXPECT_EQ(t[3], " traitement traitement traitement traitement traitement traitement fin");
}

TEST(FicheMed, NoSheetPrintsTitlesAndTheTableHeader) {
  Dossier d{marbrel::TabDyn()};
  EXPECT_EQ(Section_Seule(d.b, "ANTECEDENTS MEDICAUX"), std::vector<std::string>{" "});
  EXPECT_EQ(Section_Seule(d.b, "DIAGNOSTIC"), std::vector<std::string>{" "});
  EXPECT_EQ(Section_Seule(d.b, "TRAITEMENT MEDICAL"), (std::vector<std::string>{" ", " ", ENTETE}));
}

TEST(TraitMed, TableRowsWithTheirUnitWords) {
  const std::string fin = Jour("30/04/2024");
  Dossier d(
      Rec({"", "", "", "", "", Jour("01/03/2024") + "\\Traitement en cours.", "", "", "",
           "Metformine 500 mg\\1 comprimé\\3 fois par jour\\3\\M\\" + fin +
               "]Amoxicilline\\1 gélule\\2 fois par jour\\1\\S\\" + fin +
               "]Kinésithérapie respiratoire intensive\\1 séance\\2 par semaine\\2\\S\\" + fin +
               "]Paracétamol\\1 g\\si douleur\\1\\J\\]Collyre\\1 goutte\\matin\\10\\J\\" + fin +
               "]Pansement\\1\\le soir\\4\\?\\"}));
  auto l = Section_Seule(d.b, "TRAITEMENT MEDICAL");
  const std::vector<std::string> attendu = {
      " ",
      " Date : 01/03/2024",
      " Traitement en cours.",
      " ",
      ENTETE,
      "Metformine 500 mg          1 comprimé      3 fois par jour 3 Mois       30/04/2024",
      "Amoxicilline               1 gélule        2 fois par jour 1 Semaine    30/04/2024",
      "Kinésithérapie respiratoir 1 séance        2 par semaine   2 Semaines   30/04/2024",
      "Paracétamol                1 g             si douleur      1 Jour       ",
      "Collyre                    1 goutte        matin           10 Jours     30/04/2024",
      "Pansement                  1               le soir         4 Jour       "};
  EXPECT_EQ(l, attendu);
}

TEST(TraitMed, UnitWords) {
  using traitement::Unite_Duree;
  EXPECT_EQ(Unite_Duree("M", "1"), "Mois");
  EXPECT_EQ(Unite_Duree("M", "6"), "Mois");
  EXPECT_EQ(Unite_Duree("S", "1"), "Semaine");
  EXPECT_EQ(Unite_Duree("S", "2"), "Semaines");
  EXPECT_EQ(Unite_Duree("J", "1"), "Jour");
  EXPECT_EQ(Unite_Duree("J", "15"), "Jours");
  // Nothing else matches: the fallback.
  EXPECT_EQ(Unite_Duree("S", "0"), "Jour");
  EXPECT_EQ(Unite_Duree("S", "deux"), "Jour");
  EXPECT_EQ(Unite_Duree("A", "2"), "Jour");
  EXPECT_EQ(Unite_Duree("", ""), "Jour");
}

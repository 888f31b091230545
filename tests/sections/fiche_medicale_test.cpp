#include "marbrel/texte.h"
#include "tests/support/releve.h"

// The aids column: the label and spaces up to 40.
static std::string Col(const std::string& libelle) { return " " + texte::Pad(libelle, 40); }

TEST(FicheMed, AidsTwoToALineLatestEntryAtMost15LinesAndTheTreatmentsWithTheirUnitWords) {
  std::string vingt;
  for (int i = 1; i <= 20; ++i) vingt += (i > 1 ? CRLF : "") + "Ligne " + std::to_string(i);
  const std::string fin = Jour("30/04/2024");
  Banc b;
  b.Met("FICHEMEDAIDE", "A0001",
        Rec({"", "", "", Jour("02/01/2020") + "\\Ancien.]" + Jour("01/03/2024") + "\\" + vingt, "",
             Jour("01/03/2024") + "\\Insuline", "", "", "",
             "Metformine 500 mg\\1 comprimé\\3 fois par jour\\3\\M\\" + fin +
                 "]Amoxicilline\\1 gélule\\2 fois par jour\\1\\S\\" + fin +
                 "]Kinésithérapie respiratoire intensive\\1 séance\\2 par semaine\\2\\S\\" + fin +
                 "]Paracétamol\\1 g\\si douleur\\1\\J\\]Collyre\\1 goutte\\matin\\10\\J\\" + fin +
                 "]Pansement\\1\\le soir\\4\\?\\"}));
  b.Met("ENVIRONAIDE", "A0001", Fiche("19=LM]FR]DE]BA]CH]TE"));
  b.Met("ENVIRONAIDE", "A0002", Fiche("19=BA]]DE]??"));
  b.Met(
      "TABLES", "AIDETECHNIQUE",
      Rec({"", "LM]FR]DE]BA]CH]TE",
           "Lit médicalisé]Fauteuil roulant]Déambulateur]Barre d'appui]Chaise percée]Téléalarme"}));
  b.Imprime("AIDE", {"A0001", "A0002"});
  EXPECT_EQ(Bloc(b, "AIDES TECHNIQUES"),
            (V{" ", Col("Lit médicalisé") + "Fauteuil roulant",
               Col("Déambulateur") + "Barre d'appui", Col("Chaise percée") + "Téléalarme"}));
  // Alone on its line an aid ends with one space; an unknown code has no
  // label; the pair with neither aid is a blank line.
  EXPECT_EQ(Bloc(b, "AIDES TECHNIQUES", 1),
            (V{" ", Col("Barre d'appui") + " ", Col("Déambulateur"), " "}));
  // The latest entry, 15 of its lines at most.
  V diagnostic = Bloc(b, "DIAGNOSTIC");
  ASSERT_EQ(diagnostic.size(), 17u);  // blank, date, 15 lines
  EXPECT_EQ(diagnostic[1] + diagnostic[16], " Date : 01/03/2024 Ligne 15");
  // Only the label "Date :" is in bold.
  std::string gras;
  for (const auto& t : Suite(b, "Date :", 2)) gras += t.texte + (t.police.gras ? "*|" : "|");
  EXPECT_EQ(gras, "Date :*| 01/03/2024|");
  // The units are worded by code and count.
  EXPECT_EQ(
      Bloc(b, "TRAITEMENT MEDICAL"),
      (V{" ", " Date : 01/03/2024", " Insuline", " ",
         "Médication                 Quantité        Fréquence       Durée        Date de fin",
         "Metformine 500 mg          1 comprimé      3 fois par jour 3 Mois       30/04/2024",
         "Amoxicilline               1 gélule        2 fois par jour 1 Semaine    30/04/2024",
         "Kinésithérapie respiratoir 1 séance        2 par semaine   2 Semaines   30/04/2024",
         "Paracétamol                1 g             si douleur      1 Jour       ",
         "Collyre                    1 goutte        matin           10 Jours     30/04/2024",
         "Pansement                  1               le soir         4 Jour       "}));
}

TEST(FicheMed, AnAidAloneInTheRightColumnStartsItsLineAndAnEmptyPairPrintsABlank) {
  Banc b;
  b.Met("ENVIRONAIDE", "A0001", Fiche("19=]FR]DE]BA"));
  b.Met("TABLES", "AIDETECHNIQUE",
        Rec({"", "FR]DE]BA", "Fauteuil roulant]Déambulateur]Barre d'appui"}));
  b.Imprime("AIDE", {"A0001"});
  // Like the activities: an empty left column prints nothing at all, so the
  // right aid starts the line; a pair with neither aid is a blank line.
  EXPECT_EQ(Bloc(b, "AIDES TECHNIQUES"),
            (V{" ", "Fauteuil roulant", Col("Déambulateur") + "Barre d'appui", " "}));
}

// Availability and unavailabilities; the run's date is 15/03/2024, day 20529.
#include "tests/support/releve.h"

static const std::string kEnteteAide =
    "         Jour      Date debut Date fin    De    A    Freq  Observations        ";

TEST(Indispo, RowsAroundTheRunDateOnlyTheirOwnFifteenAtMostAShortKeyAndTheCarersPart) {
  Banc b;
  // The start day of an unavailability is read from its key by the dictionary.
  for (const char* f : {"TPSAIDEINDISPO", "TPSAIDANTINDISPO"}) {
    marbrel::TabDyn item = Rec({"I", "", "", "Début", "5R", "S"});
    item.Remplace(2, "@ID[6,5]");  // set apart: in Rec a "]" separates values
    b.MetDict(f, "DateDebIndispo", item);
  }
  std::string f = "TPSAIDEINDISPO";
  b.Met(f, "A00012033640800", Rec({"", "1200", "1", "Dialyse"}));  // open-ended, since 2023
  b.Met(f, "A00012046200950",
        Rec({"20636", "1230", "2", "Kinésithérapie au cabinet du docteur Lefèvre"}));
  b.Met(f, "A00012048621425", Rec({"20528", "1500", "1", "fini hier"}));
  b.Met(f, "A00012048631400", Rec({"20529", "1600", "1", ""}));         // ends today
  b.Met(f, "A00012052950875", Rec({"", "1000", "1", "Courses"}));       // starts today
  b.Met(f, "A00012053071000", Rec({"20546", "800", "4", "Vacances"}));  // tomorrow, day "7"
  // A short key ends the section: no further row, no frame, and it is reported.
  b.Met(f, "A0001206", Rec({"", "1000", "1", "Clé trop courte"}));
  b.Met(f, "A00012071009000", Rec({"", "1000", "1", "Après"}));
  // Another person: a key that shares nothing with A0001's, open-ended.
  b.Met(f, "B00022033640800", Rec({"", "1800", "1", "AUTRE PERSONNE"}));
  // Seventeen rows for A0002, fifteen print.
  for (int i = 20530; i < 20547; ++i)
    b.Met(f, "A0002" + std::to_string(i) + "10900", Rec({"", "1000", "1", "n°"}));
  b.Imprime("AIDE", {"A0001", "A0002"});
  EXPECT_EQ(
      Bloc(b, "INDISPONIBILITES"),
      (V{" ", kEnteteAide, S(9) + "VENDREDI  04/09/2023" + S(12) + " 8h00 12h00 1/1 Dialyse",
         S(9) + "LUNDI     08/01/2024 30/06/2024  9h30 12h18 1/2 Kinésithérapie au cabinet du d",
         S(9) + "JEUDI     01/02/2024 15/03/2024 14h00 16h00 1/1 ",
         S(9) + "SAMEDI    15/03/2024" + S(12) + " 8h45 10h00 1/1 Courses",
         S(19) + "16/03/2024 01/04/2024 10h00  8h00 1/4 Vacances"}));
  EXPECT_EQ(Cadre(b, kEnteteAide), "");
  EXPECT_EQ(b.Texte().find("AUTRE PERSONNE"), std::string::npos);
  auto l = Bloc(b, "INDISPONIBILITES", 1);
  ASSERT_EQ(l.size(), 18u);
  EXPECT_EQ(l[16], S(9) + "MARDI     30/03/2024" + S(12) + " 9h00 10h00 1/1 n°");
  ASSERT_EQ(b.Controle().Incidents().size(), 1u);
  EXPECT_EQ(b.Controle().Incidents()[0].cle + ": " + b.Controle().Incidents()[0].message,
            "A0001: Indisponibilité « A0001206 » : pas d'heure de début («  » en positions 12 à "
            "15) ; une clé d'indisponibilité compte 15 caractères.");

  // A carer's availability: hours, weekend and night (only "O" and "N" are
  // words), the period, then the unavailabilities with the employer column.
  b.Met("TPSAIDANTDISPO", "S0001", Rec({"3550", "", "", "", "", "N", "O", "X"}));
  b.Met("FORMEXPAIDANT", "S0001", Fiche("12=20486|13=20820"));  // the availability period
  f = "TPSAIDANTINDISPO";
  b.Met(f, "S00012046200800", Rec({"20636", "1200", "1", "Formation continue CAP", "o"}));
  b.Met(f, "S00012053041400", Rec({"", "1800", "2", "Enfant", "O"}));
  b.Met(f, "S00012053051400", Rec({"", "1800", "2", "Vingt et un caractère", ""}));
  b.Imprime("AIDANT", {"S0001"});
  const std::string samedi = " Samedi          : ", entete = kEnteteAide + " Empl.";
  l = Bloc(b, "DISPONIBILITES");
  EXPECT_EQ(l.at(1), " Nombre d'heures :   35.50");
  EXPECT_EQ(l.at(3), " Début dispo     : 01/02/2024   Fin dispo : 31/12/2024");
  // A 22-character observation is cut to 21 and two spaces; 21 are padded to 23.
  EXPECT_EQ(
      Tranche(l, 6, 10),
      (V{entete,
         S(9) + "LUNDI     08/01/2024 30/06/2024  8h00 12h00 1/1 Formation continue CA  NON",
         S(9) + "VENDREDI  16/03/2024" + S(12) + "14h00 18h00 1/2 Enfant" + S(17) + "OUI",
         S(9) + "SAMEDI    16/03/2024" + S(12) + "14h00 18h00 1/2 Vingt et un caractère  NON"}));
  EXPECT_EQ(Cadre(b, entete), "16 lignes, 2-19.8 cm: 4.3 6.8 9.4 10.8 12.2 13.3 18.4");
  // The weekend line is printed in pieces, each where the text says.
  std::string morceaux;
  for (const auto& t : Suite(b, samedi, 6)) morceaux += t.texte + "|";
  EXPECT_EQ(morceaux, samedi + "|OUI" + S(10) + "|Dimanche  : |" + S(13) + "|Nuit : |NON|");
}

// A carer's availability, and the unavailabilities of both dossier types:
// which rows the selection keeps around the run's date, whose rows they are,
// how a row is laid out, and what a malformed key does.
#include <gtest/gtest.h>

#include "tests/sections/releve.h"

using banc::Banc;
using banc::Bloc;
using banc::Rec;
using banc::S;

namespace {

// The run's date of every test: 15/03/2024 is day 20529.
const std::string kEnteteAide =
    "         Jour      Date debut Date fin    De    A    Freq  Observations        ";
const std::string kEnteteAidant =
    "         Jour      Date debut Date fin    De    A    Freq  Observations         Empl.";
const std::string kCadreAide = "16 lignes, 2-19.8 cm: 4.3 6.8 9.4 10.8 12.2 13.3";

// The start day of an unavailability is read from its key by the dictionary.
void Dictionnaires(Banc& b) {
  for (const char* f : {"TPSAIDEINDISPO", "TPSAIDANTINDISPO"}) {
    marbrel::TabDyn item = Rec({"I", "", "", "Début", "5R", "S"});
    item.Remplace(2, "@ID[6,5]");  // set apart: in Rec a "]" separates values
    b.MetDict(f, "DateDebIndispo", item);
  }
}

}  // namespace

TEST(Dispo, HoursWeekendNightPeriodAndAbsentRecords) {
  Banc b;
  b.Met("TPSAIDANTDISPO", "S0001", Rec({"3550", "", "", "", "", "N", "O", ""}));
  b.Met("FORMEXPAIDANT", "S0001",
        Rec({"", "", "", "", "", "", "", "", "", "", "", "20486", "20820"}));
  b.Met("TPSAIDANTDISPO", "S0003", Rec({"", "", "", "", "", "O", "N", "X"}));
  b.Imprime("AIDANT", {"S0001", "S0002", "S0003"});
  const std::string samedi = " Samedi          : ";
  auto l = Bloc(b, "DISPONIBILITES");
  ASSERT_GE(l.size(), 4u);
  EXPECT_EQ(l[1], " Nombre d'heures :   35.50");
  EXPECT_EQ(l[2], samedi + "OUI" + S(10) + "Dimanche  : " + S(13) + "Nuit : NON");
  EXPECT_EQ(l[3], " Début dispo     : 01/02/2024   Fin dispo : 31/12/2024");
  // The line is printed in pieces; the pieces start where the text says.
  std::vector<std::string> morceaux;
  for (const auto& page : b.Enregistrement().pages) {
    for (const auto& e : page.elements) {
      const auto* t = banc::Texte(e);
      if (t && (t->texte == samedi || !morceaux.empty()) && morceaux.size() < 6) {
        morceaux.push_back(t->texte);
      }
    }
  }
  EXPECT_EQ(morceaux, (std::vector<std::string>{samedi, "OUI" + S(10), "Dimanche  : ", S(13),
                                                "Nuit : ", "NON"}));
  // Without records every value is blank; only "O" and "N" are words.
  l = Bloc(b, "DISPONIBILITES", 1);
  ASSERT_GE(l.size(), 4u);
  EXPECT_EQ(l[1], " Nombre d'heures : ");
  EXPECT_EQ(l[2], samedi + S(13) + "Dimanche  : " + S(13) + "Nuit : ");
  EXPECT_EQ(l[3], " Début dispo     : " + S(13) + "Fin dispo : ");
  EXPECT_EQ(Bloc(b, "DISPONIBILITES", 2).at(2),
            samedi + "NON" + S(10) + "Dimanche  : " + S(13) + "Nuit : OUI");
}

TEST(Indispo, CareRecipientRowsAroundTheRunDateAndOnlyTheirOwn) {
  Banc b;
  Dictionnaires(b);
  const std::string f = "TPSAIDEINDISPO";
  b.Met(f, "A00012033640800", Rec({"", "1200", "1", "Dialyse"}));  // open-ended, since 2023
  b.Met(f, "A00012046200950",
        Rec({"20636", "1230", "2", "Kinésithérapie au cabinet du docteur Lefèvre"}));
  b.Met(f, "A00012048621425", Rec({"20528", "1500", "1", "fini hier"}));
  b.Met(f, "A00012048631400", Rec({"20529", "1600", "1", ""}));         // ends today
  b.Met(f, "A00012052950875", Rec({"", "1000", "1", "Courses"}));       // starts today
  b.Met(f, "A00012053071000", Rec({"20546", "800", "4", "Vacances"}));  // tomorrow, day "7"
  b.Met(f, "A00012010010900", Rec({"20200", "1000", "1", "ancien"}));
  // Another person: a key that shares nothing with A0001's, open-ended and coming.
  b.Met(f, "B00022033640800", Rec({"", "1800", "1", "AUTRE PERSONNE"}));
  b.Met(f, "B00022053070900", Rec({"", "1000", "1", "AUTRE PERSONNE"}));
  b.Imprime("AIDE", {"A0001"});

  auto l = Bloc(b, "INDISPONIBILITES");
  ASSERT_EQ(l.size(), 18u);
  EXPECT_EQ(l[1], kEnteteAide);
  const std::vector<std::string> lignes = {
      S(9) + "VENDREDI" + S(2) + "04/09/2023" + " " + S(11) + " 8h00 12h00 1/1 Dialyse",
      S(9) + "LUNDI" + S(5) + "08/01/2024 30/06/2024" + S(1) +
          " 9h30 12h18 1/2 Kinésithérapie au cabinet du d",
      S(9) + "JEUDI" + S(5) + "01/02/2024 15/03/2024" + S(1) + "14h00 16h00 1/1 ",
      S(9) + "SAMEDI" + S(4) + "15/03/2024" + " " + S(11) + " 8h45 10h00 1/1 Courses",
      S(9) + S(10) + "16/03/2024 01/04/2024" + S(1) + "10h00  8h00 1/4 Vacances",
  };
  EXPECT_EQ(std::vector<std::string>(l.begin() + 2, l.begin() + 7), lignes);
  EXPECT_EQ(std::vector<std::string>(l.begin() + 7, l.end()), std::vector<std::string>(11, " "));
  EXPECT_EQ(b.Texte().find("AUTRE PERSONNE"), std::string::npos);
  // The end time is padded in the result itself.
  EXPECT_EQ(b.Controle().Resultat_Selection(5, 3), "0800");
  EXPECT_EQ(b.Controle().Resultat_Selection(5, 1), "A00012053071000");
  EXPECT_EQ(b.Controle().Resultat_Selection(6), "");

  // The other person sees their own two rows only; an empty key, none.
  b.Imprime("AIDE", {"B0002", ""});
  l = Bloc(b, "INDISPONIBILITES");
  ASSERT_EQ(l.size(), 18u);
  EXPECT_EQ(l[2], S(9) + "VENDREDI" + S(2) + "04/09/2023" + " " + S(11) +
                      " 8h00 18h00 1/1 AUTRE PERSONNE");
  EXPECT_EQ(l[3], S(9) + S(10) + "16/03/2024" + " " + S(11) + " 9h00 10h00 1/1 AUTRE PERSONNE");
  EXPECT_EQ(l[4], " ");
  l = Bloc(b, "INDISPONIBILITES", 1);
  EXPECT_EQ(std::vector<std::string>(l.begin() + 2, l.end()), std::vector<std::string>(16, " "));
  EXPECT_EQ(banc::Cadre(b, kEnteteAide, 1), kCadreAide);
  EXPECT_TRUE(banc::Incidents(b, {"Indispo"}).empty());
}

TEST(Indispo, FifteenRowsAtMostInASixteenLineFrame) {
  Banc b;
  Dictionnaires(b);
  for (int i = 0; i < 17; ++i) {
    std::string jour = std::to_string(20530 + i);
    b.Met("TPSAIDEINDISPO", "A0001" + jour + "10900", Rec({"", "1000", "1", "n° " + jour}));
  }
  b.Imprime("AIDE", {"A0001"});
  auto l = Bloc(b, "INDISPONIBILITES");
  ASSERT_EQ(l.size(), 18u);
  EXPECT_NE(l[16].find("n° 20544"), std::string::npos);
  EXPECT_EQ(l[17], " ");
  EXPECT_EQ(b.Texte().find("n° 20545"), std::string::npos);
  EXPECT_EQ(banc::Cadre(b, kEnteteAide), kCadreAide);
}

TEST(Indispo, CarerRowsCarryTheEmployerColumn) {
  Banc b;
  Dictionnaires(b);
  const std::string f = "TPSAIDANTINDISPO";
  b.Met(f, "S00012046200800", Rec({"20636", "1200", "1", "Formation continue CAP", "o"}));
  b.Met(f, "S00012053041400", Rec({"", "1800", "2", "Enfant", "O"}));
  b.Met(f, "S00012053051400", Rec({"", "1800", "2", "Vingt et un caractère", ""}));
  b.Met(f, "T00092033640800", Rec({"", "1800", "1", "AUTRE AIDANT", "O"}));
  b.Imprime("AIDANT", {"S0001"});
  auto l = Bloc(b, "DISPONIBILITES");
  ASSERT_EQ(l.size(), 23u);
  EXPECT_EQ(l[4], " Indisponibilités personnelles");
  EXPECT_EQ(l[5], " ");
  EXPECT_EQ(l[6], kEnteteAidant);
  // 22 characters are cut to 21 and two spaces; 21 are padded to 23.
  EXPECT_EQ(l[7], S(9) + "LUNDI" + S(5) + "08/01/2024 30/06/2024" + S(1) +
                      " 8h00 12h00 1/1 Formation continue CA" + S(2) + "NON");
  EXPECT_EQ(l[8], S(9) + "VENDREDI" + S(2) + "16/03/2024" + " " + S(11) + "14h00 18h00 1/2 Enfant" +
                      S(17) + "OUI");
  EXPECT_EQ(l[9], S(9) + "SAMEDI" + S(4) + "16/03/2024" + " " + S(11) +
                      "14h00 18h00 1/2 Vingt et un caractère" + S(2) + "NON");
  EXPECT_EQ(l[10], " ");
  EXPECT_EQ(b.Texte().find("AUTRE AIDANT"), std::string::npos);
  EXPECT_EQ(banc::Cadre(b, kEnteteAidant), "16 lignes, 2-19.8 cm: 4.3 6.8 9.4 10.8 12.2 13.3 18.4");
}

TEST(Indispo, ShortKeyEndsTheSectionAndNamesTheRow) {
  Banc b;
  Dictionnaires(b);
  b.Met("TPSAIDEINDISPO", "A00012046200950", Rec({"20636", "1230", "2", "Avant"}));
  b.Met("TPSAIDEINDISPO", "A0001205300", Rec({"", "1000", "1", "Clé trop courte"}));
  b.Met("TPSAIDEINDISPO", "A00012053109000", Rec({"", "1000", "1", "Après"}));
  b.Imprime("AIDE", {"A0001"});
  auto l = Bloc(b, "INDISPONIBILITES");
  // The rows before the faulty one are printed; no further row, no frame.
  ASSERT_EQ(l.size(), 3u);
  EXPECT_EQ(l[1], kEnteteAide);
  EXPECT_NE(l[2].find("Avant"), std::string::npos);
  EXPECT_EQ(banc::Cadre(b, kEnteteAide), "");
  const auto incidents = banc::Incidents(b, {"Indispo"});
  ASSERT_EQ(incidents.size(), 1u);
  EXPECT_EQ(incidents[0].cle, "A0001");
  EXPECT_NE(incidents[0].message.find("« A0001205300 »"), std::string::npos);
  // The dossier goes on with the next section.
  EXPECT_FALSE(Bloc(b, "HABITAT").empty());
}

#include "tests/support/releve.h"

static const std::string kEntete =
    "            Date           Formation             Heures       Observations";

TEST(Formation, StudiesTrainingRowsCutsFrameExperienceAndActivities) {
  Banc b;
  b.Met("TABLES", "DIPLOMES", Rec({"", "CAP]BAC", "CAP petite enfance]Baccalauréat"}));
  b.Met("TABLES", "FORMPRO",
        Rec({"", "SST]PSC1]ALZ",
             "Sauveteur secouriste du travail (SST)]Prévention et secours "
             "civiques 1]Accompagnement Alzheimer"}));
  // Eleven trainings: full, a code only, none, then eight more; the eleventh has no room.
  b.Met("FORMEXPAIDANT", "S0001",
        Rec({"D", "BAC", "1998", "Auxiliaire de vie sociale",
             "20462]]20529]20336]]]]]]]20529",  // 08/01/2024, 04/09/2023
             "SST]PSC1]]ALZ]ALZ]ALZ]ALZ]ALZ]ALZ]ALZ]SST", "750]]800]1400]]]]]]]350",
             "Recyclage tous les deux ans]]]Stage]]]]]]]onzième",
             "Garde d'enfants (3 ans)]]Aide ménagère]]]]Cantine]8e", "]REP]MEN]COU]ABSENT]"}));
  for (const V& a : std::vector<V>{{"REP", "Repassage"}, {"COU", "Courses"}, {"MEN", "Ménage"}})
    b.Met("ACTIVITES", a[0], Rec({a[1]}));
  b.Met("FORMEXPAIDANT", "S0002", Rec({"d", "XYZ", "2001"}));
  b.Imprime("AIDANT", {"S0001", "S0002"});
  V attendu = {" ", " Etudes               : Baccalauréat" + S(18) + " Année         : 1998",
               " Diplôme / Niveau     : Diplôme",
               " Spécialité           : Auxiliaire de vie sociale", " ", kEntete,
               // Labels cut to 26 characters (accents count as one), hours / 100, notes to 17.
               S(9) + "08/01/2024  Sauveteur secouriste du tr      7.50  Recyclage tous le",
               // A code alone: no date, no hours, no observation.
               S(21) + "Prévention et secours civi" + S(12), " ",
               S(9) + "04/09/2023  Accompagnement Alzheimer       14.00  Stage"};
  // Rows 5 to 10, then the blank after the frame: the eleventh never prints.
  attendu.resize(16, S(21) + "Accompagnement Alzheimer" + S(14));
  attendu.push_back(" ");
  EXPECT_EQ(Bloc(b, "FORMATION"), attendu);
  EXPECT_EQ(Cadre(b, kEntete), "11 lignes, 2-18 cm: 4.9 11.3 13.8");
  // Seven lines of experience, the eighth value never printed.
  EXPECT_EQ(Bloc(b, "EXPERIENCES"),
            (V{" ", " Garde d'enfants (3 ans)", " ", " Aide ménagère", " ", " ", " ", " Cantine"}));
  // Activities two to a line: line 1 only the right one, line 2 both, line 3
  // one missing from ACTIVITES.
  EXPECT_EQ(Bloc(b, "ACTIVITES POSSIBLES"),
            (V{" ", "Repassage", " Ménage" + S(34) + "Courses", S(41) + " "}));

  // "d" is not "D", an unknown diploma prints nothing.
  EXPECT_EQ(
      Tranche(Bloc(b, "FORMATION", 1), 1, 3),
      (V{" Etudes               : " + S(30) + " Année         : 2001", " Diplôme / Niveau     :"}));
}

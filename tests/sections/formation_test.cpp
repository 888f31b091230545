// A carer's training (the ten-row frame), experience and possible activities.
#include <gtest/gtest.h>

#include <algorithm>

#include "db/procedure.h"
#include "db/variable.h"
#include "printing/recording.h"
#include "tests/support/banc.h"

using banc::Banc;
using banc::Rec;

namespace {

const std::string kEntete =
    "            Date           Formation             Heures       Observations";

// The incidents of the three sections printed here (other sections of a
// carer's dossier may have their own).
std::vector<Incident> Incidents(Banc& b) {
  std::vector<Incident> miens;
  for (const Incident& i : b.Controle().Incidents()) {
    if (i.section.rfind("Formation", 0) == 0 || i.section.rfind("Experience", 0) == 0 ||
        i.section.rfind("Activite", 0) == 0) {
      miens.push_back(i);
    }
  }
  return miens;
}

std::string S(long n) { return std::string(static_cast<size_t>(n), ' '); }

void Tables(Banc& b) {
  b.Met("TABLES", "DIPLOMES",
        Rec({"", "CAP]BAC]BTS", "CAP petite enfance]Baccalauréat]Brevet de technicien supérieur"}));
  b.Met("TABLES", "FORMPRO",
        Rec({"", "SST]PSC1]ALZ",
             "Sauveteur secouriste du travail (SST)]Prévention et secours "
             "civiques 1]Accompagnement Alzheimer"}));
}

// Eleven trainings: a full one, one with a code only, an empty code between
// filled rows, and eight more so that the eleventh has no room.
marbrel::TabDyn Formations() {
  return Rec({"D", "BAC", "1998", "Auxiliaire de vie sociale",
              "20462]]20529]20336]]]]]]]20529",             // 08/01/2024, 04/09/2023
              "SST]PSC1]]ALZ]ALZ]ALZ]ALZ]ALZ]ALZ]ALZ]SST",  //
              "750]]800]1400]]]]]]]350",                    //
              "Recyclage tous les deux ans]]]Stage]]]]]]]onzième"});
}

// The vertical rules (in cm) drawn after the line `entete`, the extent of
// all rules, and that line's position.
struct Cadre {
  double y = -1, haut = 1e9, bas = 0;
  std::vector<double> x;
};
Cadre CadreApres(const Banc& b, const std::string& entete) {
  Cadre c;
  for (const auto& page : b.Enregistrement().pages) {
    for (const auto& e : page.elements) {
      if (const auto* t = std::get_if<printing::ElementTexte>(&e)) {
        if (c.y < 0 && t->texte == entete) c.y = t->y;
        if (!c.x.empty()) return c;
      } else if (c.y >= 0) {
        const auto& l = std::get<printing::ElementTrait>(e);
        c.haut = std::min({c.haut, l.y1, l.y2});
        c.bas = std::max({c.bas, l.y1, l.y2});
        if (l.x1 == l.x2) c.x.push_back(l.x1 / 567);
      }
    }
  }
  return c;
}

}  // namespace

TEST(Formation, StudiesTrainingRowsCutsAndFrame) {
  Banc b;
  Tables(b);
  b.Met("FORMEXPAIDANT", "S0001", Formations());
  b.Imprime("AIDANT", {"S0001"});
  auto l = b.Section("FORMATION");
  const std::vector<std::string> attendu = {
      " ",
      " Etudes               : Baccalauréat" + S(18) + " Année         : 1998",
      " Diplôme / Niveau     : Diplôme",
      " Spécialité           : Auxiliaire de vie sociale",
      " ",
      kEntete,
      // Labels cut to 26 characters (accents count as one), hours / 100,
      // observations cut to 17.
      S(9) + "08/01/2024" + S(2) + "Sauveteur secouriste du tr" + S(2) + "    7.50" + S(2) +
          "Recyclage tous le",
      // A code alone: no date, no hours, no observation.
      S(21) + "Prévention et secours civi" + S(2) + S(10),
      " ",
      S(9) + "04/09/2023" + S(2) + "Accompagnement Alzheimer" + S(4) + "   14.00" + S(2) + "Stage",
  };
  ASSERT_GE(l.size(), attendu.size());
  EXPECT_EQ(std::vector<std::string>(l.begin(), l.begin() + 10), attendu);
  // Rows 5 to 10, then the blank after the frame: the eleventh never prints.
  ASSERT_EQ(l.size(), 18u);  // and the blank line before the next title
  for (size_t i = 10; i < 16; ++i)
    EXPECT_EQ(l[i], S(21) + "Accompagnement Alzheimer" + S(4) + S(10));
  EXPECT_EQ(l[16], " ");
  EXPECT_EQ(b.Texte().find("onzième"), std::string::npos);
  EXPECT_TRUE(Incidents(b).empty());

  // The frame holds the header and the ten rows: 11 lines of 0.417 cm.
  Cadre c = CadreApres(b, kEntete);
  EXPECT_NEAR(c.haut, c.y, 0.5);
  EXPECT_NEAR(c.bas, c.y + 11 * 0.417 * 567, 0.5);
  std::sort(c.x.begin(), c.x.end());
  const std::vector<double> x = {2, 4.9, 11.3, 13.8, 18};
  ASSERT_EQ(c.x.size(), x.size());
  for (size_t i = 0; i < x.size(); ++i) EXPECT_NEAR(c.x[i], x[i], 0.001) << i;
}

TEST(Formation, ExactCodesAndAnAbsentRecord) {
  // "d" is not "D"; an absent training record prints every field empty, ten
  // blank rows, seven blank experiences and three blank activity lines.
  Banc b;
  Tables(b);
  b.Met("FORMEXPAIDANT", "S0001", Rec({"d", "XYZ", "2001"}));
  b.Imprime("AIDANT", {"S0001", "S0002"});
  auto l = b.Section("FORMATION");
  ASSERT_GE(l.size(), 3u);
  EXPECT_EQ(l[1], " Etudes               : " + S(30) + " Année         : 2001");
  EXPECT_EQ(l[2], " Diplôme / Niveau     :");

  // The second carer has no record at all.
  auto lignes = b.Lignes();
  auto deuxieme = std::find(lignes.begin(), lignes.end(), "S0002  ");
  ASSERT_NE(deuxieme, lignes.end());
  auto titre = std::find(deuxieme, lignes.end(), "FORMATION");
  ASSERT_NE(titre, lignes.end());
  std::vector<std::string> vide(titre + 1, titre + 18);
  const std::vector<std::string> attendu = {
      " ",
      " Etudes               : " + S(30) + " Année         : ",
      " Diplôme / Niveau     :",
      " Spécialité           : ",
      " ",
      kEntete,
      " ",
      " ",
      " ",
      " ",
      " ",
      " ",
      " ",
      " ",
      " ",
      " ",
      " "};
  EXPECT_EQ(vide, attendu);
  auto exp = std::find(titre, lignes.end(), "EXPERIENCES");
  ASSERT_NE(exp, lignes.end());
  EXPECT_EQ(std::vector<std::string>(exp + 1, exp + 10), std::vector<std::string>(9, " "));
  auto act = std::find(titre, lignes.end(), "ACTIVITES POSSIBLES");
  ASSERT_NE(act, lignes.end());
  EXPECT_EQ(std::vector<std::string>(act + 1, act + 5), std::vector<std::string>(4, " "));
}

TEST(Formation, CutLabelIsWrittenBackIntoTheTableInMemory) {
  Banc b;
  Tables(b);
  b.Met("FORMEXPAIDANT", "S0001", Formations());
  Ctr_Vesko& c = b.Controle();
  printing::Enregistrement rec;
  c.Commence_Sur(
      std::make_unique<printing::Printer>(std::make_unique<printing::RecordingSurface>(&rec)));
  Variable::Base = marbrel::Base::OuvreSqlite(b.Chemin(), true);
  Procedure::Ouvre_Fichiers();
  std::string code = "S0001";
  c.Formation(code);
  EXPECT_EQ(Variable::Tables(3, 1), "Sauveteur secouriste du tr");
  EXPECT_EQ(Variable::Tables(3, 2), "Prévention et secours civi");
  EXPECT_EQ(Variable::Tables(3, 3), "Accompagnement Alzheimer");
  const auto& formexp = Variable::Enregistrement(Fic::FORMEXPAIDANT);
  EXPECT_EQ(formexp(8, 1), "Recyclage tous le");
  Procedure::Ferme_Fichiers();
}

TEST(Formation, UnreadableHoursArePrintedAsStoredAndReported) {
  Banc b;
  Tables(b);
  b.Met("FORMEXPAIDANT", "S0001", Rec({"N", "", "", "", "", "ALZ]SST", "]7h30"}));
  b.Imprime("AIDANT", {"S0001"});
  auto l = b.Section("FORMATION");
  ASSERT_GE(l.size(), 8u);
  EXPECT_EQ(l[2], " Diplôme / Niveau     : Niveau");
  EXPECT_EQ(l[7], S(21) + "Sauveteur secouriste du tr" + S(2) + "    7h30" + S(2));
  const auto incidents = Incidents(b);
  ASSERT_EQ(incidents.size(), 1u);
  EXPECT_EQ(incidents[0].cle, "S0001");
  EXPECT_NE(incidents[0].message.find("« 7h30 »"), std::string::npos);
  EXPECT_NE(incidents[0].message.find("attribut 7, valeur 2"), std::string::npos);
}

TEST(Experience, SevenLinesFromTheTrainingRecord) {
  Banc b;
  b.Met("FORMEXPAIDANT", "S0001",
        Rec({"", "", "", "", "", "", "", "",
             "Garde d'enfants (3 ans)]]Aide ménagère]]]]Cantine]8e"}));
  b.Imprime("AIDANT", {"S0001"});
  auto l = b.Section("EXPERIENCES");
  const std::vector<std::string> attendu = {
      " ", " Garde d'enfants (3 ans)", " ", " Aide ménagère", " ", " ", " ", " Cantine", " "};
  EXPECT_EQ(l, attendu);
}

TEST(Activite, TwoToALineWithTheLeftColumnRules) {
  Banc b;
  b.Met("ACTIVITES", "REP", Rec({"Repassage"}));
  b.Met("ACTIVITES", "COU", Rec({"Courses"}));
  b.Met("ACTIVITES", "MEN", Rec({"Ménage"}));
  // Line 1: only the right activity; line 2: both; line 3: an activity
  // missing from ACTIVITES, nothing on the right.
  b.Met("FORMEXPAIDANT", "S0001",
        Rec({"", "", "", "", "", "", "", "", "", "]REP]MEN]COU]ABSENT]", "", "20486", "20820"}));
  b.Imprime("AIDANT", {"S0001"});
  auto l = b.Section("ACTIVITES POSSIBLES");
  const std::vector<std::string> attendu = {" ", "Repassage", " Ménage" + S(34) + "Courses",
                                            S(41) + " "};
  EXPECT_EQ(l, attendu);
}

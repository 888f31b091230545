// The outside professionals: the columns and their cuts, the types looked up
// in "AUTRINTERVENANT", the table that keeps eight rows, its frame, and the
// observations under the names.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "marbrel/texte.h"
#include "tests/sections/cadre_sous.h"
#include "tests/support/banc.h"
#include "tests/support/section_seule.h"

using banc::Banc;
using banc::Rec;
using banc::Section_Seule;

namespace {

const std::string CRLF = "\r\n";

std::string Rangee(const std::string& type, const std::string& nom, const std::string& telephone,
                   const std::string& adresse) {
  return "  " + texte::Pad(type, 16) + "  " + texte::Pad(nom, 22) + "  " +
         texte::Pad(telephone, 14) + "  " + adresse;
}
const std::string ENTETE = Rangee("Type", "Nom", "Téléphone", "Adresse ou ville");

void Base(Banc& b) {
  b.Met("CIVILAIDE", "A0001", Rec({"", "DURAND", "Marie"}));
  b.Met("TABLES", "AUTRINTERVENANT",
        Rec({"Intervenants", "INF]KINE", "Infirmier(ère)]Kinésithérapeute à domicile"}));
}

}  // namespace

TEST(IntervenantsExterieurs, ColumnsCutsFillerRowsAndObservations) {
  Banc b;
  Base(b);
  b.Met("INTERVENANTEXT", "A0001",
        Rec({"INF]KINE]INF", "Cabinet infirmier Weppes-Lys]M. LEFEBVRE]",
             "03 20 11 22 33]+33 6 11 22 33 44]", "Rue de Lille, Haubourdin]LOOS]",
             "Passe matin et soir." + CRLF +
                 "Prévenir la fille de Mme DURAND en cas d'absence au rendez-vous du jeudi.]]"
                 "Remplacement l'été"}));
  b.Imprime("AIDE", {"A0001"});

  std::vector<std::string> attendu = {
      " ",
      ENTETE,
      Rangee("Infirmier(ère)", "Cabinet infirmier Wepp", "03 20 11 22 33", "Rue de Lille, Haub"),
      Rangee("Kinésithérapeute", "M. LEFEBVRE", "+33 6 11 22 33", "LOOS"),
      Rangee("Infirmier(ère)", "", "", ""),
      "",
      "",
      "",
      "",
      "",  // the table keeps eight rows
      " ",
      " Observations :",
      " ",
      "  Cabinet infirmier Wepp : Passe matin et soir.",
      std::string(27, ' ') + "Prévenir la fille de Mme DURAND en cas d'absence",
      std::string(27, ' ') + "au rendez-vous du jeudi.",
      // Without a name, a professional is known by its type.
      "  Infirmier(ère)         : Remplacement l'été",
  };
  EXPECT_EQ(Section_Seule(b, "INTERVENANTS EXTERIEURS"), attendu);
  EXPECT_TRUE(b.Controle().Incidents().empty());

  // The frame: header and eight rows, from the left margin, each separator
  // between the two spaces that part two columns.
  const auto cadre = banc::Cadre_Sous(b.Enregistrement(), ENTETE);
  ASSERT_TRUE(cadre);
  EXPECT_NEAR(cadre->Lignes(), 9, 1e-3);
  EXPECT_NEAR(cadre->gauche, banc::Cm(0.3), 0.01);
  const double caractere = 132;  // twips of one 11-point character
  ASSERT_EQ(cadre->separateurs.size(), 3u);
  for (long fin : {18L, 42L, 58L}) {  // the first space after each column
    const double x = cadre->separateurs[fin == 18 ? 0 : fin == 42 ? 1 : 2];
    EXPECT_GT(x, fin * caractere) << fin;
    EXPECT_LT(x, (fin + 2) * caractere) << fin;
  }
  EXPECT_GT(cadre->droite, 78 * caractere);
}

TEST(IntervenantsExterieurs, NoneGivesEightEmptyRowsAndNoObservations) {
  Banc b;
  Base(b);
  b.Imprime("AIDE", {"A0001"});
  std::vector<std::string> attendu = {" ", ENTETE};
  attendu.resize(10, "");
  EXPECT_EQ(Section_Seule(b, "INTERVENANTS EXTERIEURS"), attendu);
}

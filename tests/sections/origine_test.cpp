// The file origin: the five labels, the contact-origin lookup, and the free
// texts laid out under their label in pieces of at most 60 characters.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "marbrel/outils.h"
#include "tests/support/banc.h"
#include "tests/support/section_seule.h"

using banc::Banc;
using banc::Rec;
using banc::Section_Seule;

namespace {

const std::string CRLF = "\r\n";
const std::string NOM = " Nom du contact       : ";
const std::string BESOINS = " Besoins formulés     : ";
const std::string SUITE(24, ' ');

// The lines of ORIGINE DOSSIER for a care recipient holding this record.
std::vector<std::string> Origine(const marbrel::TabDyn& origine) {
  Banc b;
  b.Met("ORIGINEAIDE", "A0001", origine);
  b.Met("TABLES", "ORIGINECONTACT", Rec({"", "MED]FAM]CCAS", "Médecin traitant]Famille]CCAS"}));
  b.Imprime("AIDE", {"A0001"});
  return Section_Seule(b, "ORIGINE DOSSIER");
}

// The needs lines of a record holding only a needs text.
std::vector<std::string> Besoins(const std::string& texte) {
  auto l = Origine(Rec({"", "", "", "", texte}));
  return std::vector<std::string>(l.begin() + 5, l.end());
}

std::string Lettres(long n) {
  std::string s;
  for (long i = 0; i < n; ++i) s += static_cast<char>('a' + i % 26);
  return s;
}

}  // namespace

TEST(OrigineDossier, NoRecordPrintsTheFiveLabels) {
  EXPECT_EQ(Origine(marbrel::TabDyn()),
            (std::vector<std::string>{" ", " Date 1er contact     : ", " Type du contact      : ",
                                      " Origine contact      : ", NOM, BESOINS}));
}

TEST(OrigineDossier, FirstContactAndItsOrigin) {
  const std::string jour = marbrel::Outils::Instance().Date_Interne("04/01/2024");
  auto l = Origine(Rec({jour, "Téléphone", "FAM", "Mme Lefèvre (fille)", "Aide au lever"}));
  EXPECT_EQ(l, (std::vector<std::string>{" ", " Date 1er contact     : 04/01/2024",
                                         " Type du contact      : Téléphone",
                                         " Origine contact      : Famille",
                                         NOM + "Mme Lefèvre (fille)", BESOINS + "Aide au lever"}));
  // A code the table does not hold prints no label.
  EXPECT_EQ(Origine(Rec({"", "", "XYZ"}))[3], " Origine contact      : ");
}

TEST(OrigineContact, NeedsOf150CharactersMakeThreeLines) {
  // Words of 9 letters and a space: the last space within 60 characters is
  // the 60th, so each line holds 59 characters and the space is dropped.
  std::string texte;
  for (int i = 0; i < 15; ++i) texte += (i ? " " : "") + std::string(9, static_cast<char>('a' + i));
  ASSERT_EQ(texte.size(), 149u);
  texte += ".";
  auto l = Besoins(texte);
  ASSERT_EQ(l.size(), 3u);
  EXPECT_EQ(l[0], BESOINS + texte.substr(0, 59));
  EXPECT_EQ(l[1], SUITE + texte.substr(60, 59));
  EXPECT_EQ(l[2], SUITE + texte.substr(120));
}

TEST(OrigineContact, StoredLinesAndPieces) {
  // Two short stored lines: the second under the value column.
  EXPECT_EQ(Besoins("Courses" + CRLF + "Ménage"),
            (std::vector<std::string>{BESOINS + "Courses", SUITE + "Ménage"}));
  // A piece of exactly 60 characters that ends its stored line fits whole;
  // the next stored line starts its own line, with no empty one between.
  const std::string soixante = "Préparation des repas du midi, et aide à la prise des repas.";
  ASSERT_EQ(soixante.size(), 62u);  // 60 characters, 2 of them two bytes long
  EXPECT_EQ(Besoins(soixante + CRLF + "Toilette"),
            (std::vector<std::string>{BESOINS + soixante, SUITE + "Toilette"}));
  // A word longer than the piece is cut at 60 characters, none lost.
  EXPECT_EQ(Besoins(Lettres(130)), (std::vector<std::string>{BESOINS + Lettres(130).substr(0, 60),
                                                             SUITE + Lettres(130).substr(60, 60),
                                                             SUITE + Lettres(130).substr(120)}));
  // An empty stored line keeps its place; the final line break adds none.
  EXPECT_EQ(Besoins("Courses" + CRLF + CRLF + "Ménage" + CRLF),
            (std::vector<std::string>{BESOINS + "Courses", SUITE, SUITE + "Ménage"}));
}

TEST(OrigineContact, AVeryLongTextGoesOnUnderTheRunningHeader) {
  std::string texte;
  for (int i = 1; i <= 90; ++i) texte += "Besoin " + std::to_string(i) + CRLF;
  Banc b;
  b.Met("CIVILAIDE", "A0001", Rec({"", "DURAND", "Marie"}));
  b.Met("ORIGINEAIDE", "A0001", Rec({"", "", "", "", texte}));
  b.Imprime("AIDE", {"A0001"});
  auto l = b.Lignes();
  // Every stored line is printed once, and the page it fills is followed by
  // an eject and the running header, not a bare page.
  for (int i = 1; i <= 90; ++i) {
    const std::string attendu = (i == 1 ? BESOINS : SUITE) + "Besoin " + std::to_string(i);
    EXPECT_EQ(std::count(l.begin(), l.end(), attendu), 1) << attendu;
  }
  auto saut = std::find(std::find(l.begin(), l.end(), BESOINS + "Besoin 1"), l.end(), "\f");
  ASSERT_NE(saut, l.end());
  EXPECT_EQ((saut + 3)->rfind("Date : 15/03/2024", 0), 0u);
  EXPECT_EQ(*(saut + 6), "A0001 DURAND Marie");
  EXPECT_EQ((saut + 9)->rfind(SUITE + "Besoin ", 0), 0u);
}

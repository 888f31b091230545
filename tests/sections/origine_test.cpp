#include "tests/support/releve.h"

static const std::string BESOINS = " Besoins formulés     : ";

static V Origine(const marbrel::TabDyn& origine) {
  Banc b;
  b.Met("ORIGINEAIDE", "A0001", origine);
  b.Met("TABLES", "ORIGINECONTACT", Rec({"", "MED]FAM", "Médecin traitant]Famille"}));
  b.Imprime("AIDE", {"A0001"});
  return Bloc(b, "ORIGINE DOSSIER");
}

// The needs lines of a record holding only a needs text.
static V Besoins(const std::string& texte) {
  V l = Origine(Rec({"", "", "", "", texte}));
  return l.size() < 5 ? l : V(l.begin() + 5, l.end());
}

TEST(OrigineDossier, LabelsTheOriginLabelAndTheNeedsInPieces) {
  // The origin's code is worded by its table; an unknown one prints nothing.
  EXPECT_EQ(Tranche(Origine(Rec({Jour("04/01/2024"), "", "FAM"})), 1, 4),
            (V{" Date 1er contact     : 04/01/2024",
               " Type du contact      : ", " Origine contact      : Famille"}));
  EXPECT_EQ(Origine(Rec({"", "", "XYZ"})).at(3), " Origine contact      : ");
  // Pieces of at most 60: in 150 characters of 9-letter words the 60th is a space, dropped.
  std::string t;
  for (int i = 0; i < 15; ++i) t += (i ? " " : "") + std::string(9, static_cast<char>('a' + i));
  t += ".";
  EXPECT_EQ(Besoins(t),
            (V{BESOINS + t.substr(0, 59), S(24) + t.substr(60, 59), S(24) + t.substr(120)}));
  // Stored lines start new lines; an empty one keeps its place, a final break adds none.
  EXPECT_EQ(Besoins("Courses" + CRLF + CRLF + "Ménage" + CRLF),
            (V{BESOINS + "Courses", S(24), S(24) + "Ménage"}));
  // A piece of exactly 60 characters ending its stored line fits whole.
  const std::string soixante = "Préparation des repas du midi, et aide à la prise des repas.";
  EXPECT_EQ(Besoins(soixante + CRLF + "Toilette"), (V{BESOINS + soixante, S(24) + "Toilette"}));
  // A word longer than a piece is cut at 60 characters, none lost.
  const std::string mot(130, 'x');
  EXPECT_EQ(Besoins(mot),
            (V{BESOINS + mot.substr(0, 60), S(24) + mot.substr(0, 60), S(24) + mot.substr(0, 10)}));
}

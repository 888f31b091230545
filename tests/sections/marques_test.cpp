// Text stored as several values never reaches the page as the store's marks:
// a wrapped text starts a new line at each value, a one-line field joins its
// values with a space, and the text format stays valid UTF-8.
#include "tests/support/releve.h"
#include "tests/support/utf8_valide.h"

TEST(Marques, MultivaluedTextStartsNewLinesWhenWrappedAndIsJoinedBySpacesOnOneLine) {
  Banc b;
  b.Met("BLOCNOTAIDE", "A0001", Rec({"Premier paragraphe]Second paragraphe"}));
  // Person to notify (9 to 11) and contacts (12 to 14) of the environment record.
  b.Met("ENVIRONAIDE", "A0001",
        Fiche("9=DURAND]Marie|10=03 20 11 22 33]06 11 22 33 44|11=Fille]Clés|12=Fille]Fils|"
              "13=Mme LEROY\\voisine|14=Boulangerie"));
  b.Met("ORIGINEAIDE", "A0001", Fiche("5=Courses]Ménage"));
  b.Met("BESOINSAIDE", "A0001", Fiche("5=Sonner deux fois.]Clé chez la voisine."));
  b.Met("INFOSAIDANT", "S0001", Fiche("1=MARTIN]Paul|3=Frère\\aîné"));
  b.Imprime("AIDE", {"A0001"});
  const std::string aide = b.Texte();

  EXPECT_EQ(Tranche(Bloc(b, "PERSONNE A PREVENIR"), 1, 4),
            (V{" Nom                  : DURAND Marie",
               " Téléphone            : 03 20 11 22 33 06 11 22 33 44",
               " Observations         : Fille Clés"}));
  EXPECT_EQ(Tranche(Bloc(b, "CONTACTS"), 1, 4),
            (V{" Familiaux            : Fille Fils", " Voisinage            : Mme LEROY voisine",
               " Commerces            : Boulangerie"}));
  EXPECT_EQ(Tranche(Bloc(b, "ORIGINE DOSSIER"), 5, 7),
            (V{" Besoins formulés     : Courses", S(24) + "Ménage"}));
  EXPECT_EQ(Tranche(Bloc(b, "MODALITES D'INTERVENTION"), 3, 5),
            (V{" Sonner deux fois.", " Clé chez la voisine."}));
  const V notes = Bloc(b, "BLOC-NOTES");
  EXPECT_EQ(V(notes.end() - 2, notes.end()), (V{" Premier paragraphe", " Second paragraphe"}));

  b.Imprime("AIDANT", {"S0001"});
  EXPECT_EQ(Tranche(Bloc(b, "PERSONNE A PREVENIR"), 1, 4),
            (V{" Nom                  : MARTIN Paul",
               " Téléphone            : ", " Observations         : Frère aîné"}));
  for (const std::string& texte : {aide, b.Texte()}) {
    EXPECT_TRUE(essai::Utf8Valide(texte));
    EXPECT_EQ(texte.find_first_of("\xFC\xFD\xFE"), std::string::npos);
  }
}

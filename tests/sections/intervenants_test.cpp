#include "marbrel/texte.h"
#include "tests/support/releve.h"

static std::string Rangee(std::string type, std::string nom, std::string tel, std::string adr) {
  return "  " + texte::Pad(type, 16) + "  " + texte::Pad(nom, 22) + "  " + texte::Pad(tel, 14) +
         "  " + adr;
}
static const std::string ENTETE = Rangee("Type", "Nom", "Téléphone", "Adresse ou ville");

TEST(IntervenantsExterieurs, ColumnsCutsFillerRowsAndObservations) {
  Banc b;
  b.Met("TABLES", "AUTRINTERVENANT",
        Rec({"Intervenants", "INF]KINE", "Infirmier(ère)]Kinésithérapeute à domicile"}));
  b.Met("INTERVENANTEXT", "A0001",
        Rec({"INF]KINE]INF", "Cabinet infirmier Weppes-Lys]M. LEFEBVRE]",
             "03 20 11 22 33]+33 6 11 22 33 44]", "Rue de Lille, Haubourdin]LOOS]",
             "Passe matin et soir.\r\nPrévenir la fille de Mme DURAND en cas d'absence au "
             "rendez-vous du jeudi.]]Remplacement l'été"}));
  b.Met("INTERVENANTEXT", "A0002", Rec({"KINE", "M. LEFEBVRE"}));  // no observation
  b.Imprime("AIDE", {"A0001", "A0002"});
  const V attendu = {
      " ", ENTETE,
      Rangee("Infirmier(ère)", "Cabinet infirmier Wepp", "03 20 11 22 33", "Rue de Lille, Haub"),
      Rangee("Kinésithérapeute", "M. LEFEBVRE", "+33 6 11 22 33", "LOOS"),
      Rangee("Infirmier(ère)", "", "", ""), "", "", "", "", "",  // the table keeps eight rows
      " ", " Observations :", " ", "  Cabinet infirmier Wepp : Passe matin et soir.",
      S(27) + "Prévenir la fille de Mme DURAND en cas d'absence",
      S(27) + "au rendez-vous du jeudi.",
      // Without a name, a professional is known by its type.
      "  Infirmier(ère)         : Remplacement l'été"};
  EXPECT_EQ(Bloc(b, "INTERVENANTS EXTERIEURS"), attendu);
  // Each separator lies in the two spaces between columns (characters 18, 42, 58 of 0.233 cm).
  EXPECT_EQ(Cadre(b, ENTETE), "9 lignes, 0.3-18.4 cm: 4.4 10 13.7");
  // Without any observation, no heading for them: the table's ten lines only.
  EXPECT_EQ(Bloc(b, "INTERVENANTS EXTERIEURS", 1).size(), 10u);
}

#include "marbrel/texte.h"
#include "tests/support/releve.h"

static std::string Rangee(std::string type, std::string nom, std::string tel, std::string adr) {
  return "  " + texte::Pad(type, 16) + "  " + texte::Pad(nom, 18) + "  " + texte::Pad(tel, 20) +
         "  " + adr;
}
static const std::string ENTETE = Rangee("Type", "Nom", "Téléphone", "Adresse ou ville");

TEST(IntervenantsExterieurs, CellsWrapWholeFillerRowsAndObservations) {
  Banc b;
  b.Met("TABLES", "AUTRINTERVENANT",
        Rec({"Intervenants", "INF]KINE", "Infirmier(ère)]Kinésithérapeute à domicile"}));
  b.Met("INTERVENANTEXT", "A0001",
        Rec({"INF]KINE]INF", "Cabinet infirmier Weppes-Lys]M. LEFEBVRE]",
             "+33 (0)3 20 55 66 77]03 20 11 22 33\\06 11 22 33 44]",
             "12 rue Nationale, 59000 LILLE]LOOS]",
             "Passe matin et soir.\r\nPrévenir la fille de Mme DURAND en cas d'absence au "
             "rendez-vous du jeudi.]]Remplacement l'été"}));
  b.Met("INTERVENANTEXT", "A0002", Rec({"KINE", "M. LEFEBVRE"}));  // no observation
  b.Imprime("AIDE", {"A0001", "A0002"});
  // Nothing is cut: a cell wraps at its spaces onto more lines of its row,
  // one line per value; the telephone and the town print whole.
  const V attendu = {
      " ", ENTETE, Rangee("Infirmier(ère)", "Cabinet infirmier", "+33 (0)3 20 55 66 77", "12 rue"),
      Rangee("", "Weppes-Lys", "", "Nationale,"), Rangee("", "", "", "59000 LILLE"),
      Rangee("Kinésithérapeute", "M. LEFEBVRE", "03 20 11 22 33", "LOOS"),
      Rangee("à domicile", "", "06 11 22 33 44", ""), Rangee("Infirmier(ère)", "", "", ""), "", "",
      "", "", "",  // the table keeps eight rows
      " ", " Observations :", " ", "  Cabinet infirmier Weppes-Lys : Passe matin et soir.",
      S(27) + "Prévenir la fille de Mme DURAND en cas d'absence",
      S(27) + "au rendez-vous du jeudi.",
      // Without a name, a professional is known by its type.
      "  Infirmier(ère)         : Remplacement l'été"};
  EXPECT_EQ(Bloc(b, "INTERVENANTS EXTERIEURS"), attendu);
  // Each separator lies in the two spaces between columns (characters 18, 38, 60 of 0.233 cm).
  EXPECT_EQ(Cadre(b, ENTETE), "12 lignes, 0.3-18.4 cm: 4.4 9.1 14.15");
  // Without any observation, no heading for them: the table only, its type on two lines.
  EXPECT_EQ(Bloc(b, "INTERVENANTS EXTERIEURS", 1).size(), 11u);
}

TEST(IntervenantsExterieurs, ALongTableBreaksWithAFramePerPageAndTheHeaderOnTheNextPage) {
  Banc b;
  std::string types, noms, telephones;
  for (int i = 1; i <= 70; ++i) {
    types += (i > 1 ? "]" : "") + std::string("INF");
    noms += (i > 1 ? "]" : "") + ("Soignant " + std::to_string(i));
    telephones += (i > 1 ? "]" : "") + std::string("+33 (0)3 20 55 66 77");
  }
  b.Met("TABLES", "AUTRINTERVENANT", Rec({"", "INF", "Infirmier"}));
  b.Met("INTERVENANTEXT", "A0001", Rec({types, noms, telephones}));
  b.Imprime("AIDE", {"A0001"});
  // Every row prints once; every page the table reaches starts with the
  // running header (never a page the printer ejected by itself), carries the
  // column header and one frame of its own height.
  int rangees = 0, pages_du_tableau = 0;
  for (const auto& page : b.Enregistrement().pages) {
    std::vector<std::string> textes;
    for (const auto& e : page.elements)
      if (Texte(e)) textes.push_back(Texte(e)->texte);
    const auto entete = std::find(textes.begin(), textes.end(), ENTETE);
    if (entete == textes.end()) continue;
    ++pages_du_tableau;
    EXPECT_EQ(textes.at(2).rfind("Date : ", 0), 0u) << "page " << pages_du_tableau;
    int ici = 0;
    for (const auto& t : textes) ici += t.find("Soignant ") != std::string::npos;
    rangees += ici;
    EXPECT_EQ(Cadre(b, ENTETE, pages_du_tableau - 1),
              std::to_string(ici + 1) + " lignes, 0.3-18.4 cm: 4.4 9.1 14.15");
  }
  EXPECT_EQ(rangees, 70);
  EXPECT_EQ(pages_du_tableau, 2);
}

// The control as a component: its caption, its published interface, and the
// layout primitives every section draws with.
#include <gtest/gtest.h>

#include <QImage>
#include <QLabel>

#include "control/interface.h"
#include "layout/lignes.h"
#include "printing/print_formats.h"
#include "printing/recording.h"
#include "tests/support/banc.h"

using banc::Banc;
using banc::Rec;

namespace {

// A control printing its building blocks onto a recording.
struct Atelier {
  Banc banc;
  printing::Enregistrement rec;
  Ctr_Vesko& c = banc.Controle();
  Atelier() {
    c.Commence_Sur(
        std::make_unique<printing::Printer>(std::make_unique<printing::RecordingSurface>(&rec)));
  }
  std::vector<printing::ElementTrait> Traits() const {
    std::vector<printing::ElementTrait> t;
    for (const auto& p : rec.pages)
      for (const auto& e : p.elements)
        if (auto* l = std::get_if<printing::ElementTrait>(&e)) t.push_back(*l);
    return t;
  }
  std::vector<printing::ElementTexte> Textes() const {
    std::vector<printing::ElementTexte> t;
    for (const auto& p : rec.pages)
      for (const auto& e : p.elements)
        if (auto* x = std::get_if<printing::ElementTexte>(&e)) t.push_back(*x);
    return t;
  }
};

bool Trait(const printing::ElementTrait& l, double x1, double y1, double x2, double y2) {
  auto proche = [](double a, double b) { return std::abs(a - b) < 0.01; };
  return proche(l.x1, x1) && proche(l.y1, y1) && proche(l.x2, x2) && proche(l.y2, y2);
}

}  // namespace

TEST(Controle, ShowsItsCaptionWhenPlacedInAWindow) {
  Banc b;
  QWidget fenetre;
  Ctr_Vesko* c = new Ctr_Vesko(&fenetre);
  fenetre.resize(300, 80);
  fenetre.show();
  auto* etiquette = c->findChild<QLabel*>("Etq_Edition");
  ASSERT_NE(etiquette, nullptr);
  EXPECT_EQ(etiquette->text(), QString("Edition de la fiche"));
  QImage image = fenetre.grab().toImage();
  ASSERT_FALSE(image.isNull());
  // The label's text is drawn: some pixels differ from the background.
  QRgb fond = image.pixel(image.width() - 1, image.height() - 1);
  int encres = 0;
  for (int y = 0; y < c->height(); ++y)
    for (int x = 0; x < c->width(); ++x)
      if (image.pixel(x, y) != fond) ++encres;
  EXPECT_GT(encres, 20);
  image.save(QString::fromUtf8(VESKO_BINARY_DIR) + "/controle.png");
}

TEST(Interface, PublishedMembersInSlotOrderAndCallByName) {
  const auto& m = interface_vesko::Membres();
  ASSERT_EQ(m.size(), 45u);
  for (size_t i = 0; i < m.size(); ++i) EXPECT_EQ(m[i].slot, static_cast<int>(i + 1));
  EXPECT_EQ(m[0].nom, "TheClient");
  EXPECT_EQ(m[0].genre, interface_vesko::Genre::Propriete);
  EXPECT_EQ(m[42].nom, "Cadre");
  EXPECT_EQ(m[42].parametres.at(0).type, "Monnaie");
  EXPECT_EQ(m[43].nom, "ImprimeDonnées");
  EXPECT_EQ(m[44].nom, "Remplir_Liste_Tache");

  Atelier a;
  std::vector<interface_vesko::Argument> args = {std::string("HABITAT")};
  interface_vesko::Appelle(a.c, "Titre", args);
  ASSERT_EQ(a.Textes().size(), 3u);
  EXPECT_EQ(a.Textes()[1].texte, "HABITAT");

  std::vector<interface_vesko::Argument> faux = {std::int32_t{3}};
  EXPECT_THROW(interface_vesko::Appelle(a.c, "Titre", faux), std::invalid_argument);
  EXPECT_THROW(interface_vesko::Appelle(a.c, "Indispo", args), std::invalid_argument);
  std::vector<interface_vesko::Argument> aucun;
  EXPECT_THROW(interface_vesko::Appelle(a.c, "Titre", aucun), std::invalid_argument);
}

TEST(Titre, HeavyHeadingThenBackToPlainElevenPoints) {
  Atelier a;
  a.c.Imprimante()->SetFontBold(true);
  a.c.Imprimante()->SetFontSize(18);
  a.c.Titre("");
  auto t = a.Textes();
  ASSERT_EQ(t.size(), 3u);
  EXPECT_EQ(t[0].texte, " ");
  EXPECT_EQ(t[0].police.taille, 18);  // the blank before is in whatever font is current
  EXPECT_EQ(t[1].texte, "");
  EXPECT_EQ(t[1].police.taille, 16);
  EXPECT_TRUE(t[1].police.gras && t[1].police.italique && t[1].police.souligne);
  EXPECT_EQ(t[2].texte, " ");
  const printing::Police& p = a.c.Imprimante()->Font();
  EXPECT_EQ(p.taille, 11);
  EXPECT_FALSE(p.gras || p.italique || p.souligne);
}

TEST(Cadre, BoxAndSeparatorsWhereTheWidthsSay) {
  Atelier a;
  const double cm = 567, pas = 0.417 * 567;
  a.c.Cadre(Monnaie::De(1000), 3, mise_en_page::Largeurs({"8.5", "2.5"}));
  auto t = a.Traits();
  ASSERT_EQ(t.size(), 5u);
  EXPECT_TRUE(Trait(t[0], 2 * cm, 1000, 13 * cm, 1000));                      // top
  EXPECT_TRUE(Trait(t[1], 2 * cm, 1000, 2 * cm, 1000 + 3 * pas));             // left
  EXPECT_TRUE(Trait(t[2], 2 * cm, 1000 + 3 * pas, 13 * cm, 1000 + 3 * pas));  // bottom
  EXPECT_TRUE(Trait(t[3], 13 * cm, 1000, 13 * cm, 1000 + 3 * pas));           // right
  EXPECT_TRUE(Trait(t[4], 10.5 * cm, 1000, 10.5 * cm, 1000 + 3 * pas));       // separator
  for (const auto& l : t) EXPECT_EQ(l.largeur, 3);
}

TEST(Cadre, LeftFlagWidensOnlyTheFirstColumnOfOneFrame) {
  Atelier a;
  const double cm = 567;
  a.c.Cadre_Gauche = true;
  a.c.Cadre(Monnaie::De(0), 2, mise_en_page::Largeurs({"14.3", "2.5"}));
  EXPECT_FALSE(a.c.Cadre_Gauche);
  a.c.Cadre(Monnaie::De(0), 2, mise_en_page::Largeurs({"14.3", "2.5"}));
  auto t = a.Traits();
  ASSERT_EQ(t.size(), 10u);
  EXPECT_TRUE(Trait(t[0], 0.3 * cm, 0, 18.8 * cm, 0));
  EXPECT_TRUE(Trait(t[4], 16.3 * cm, 0, 16.3 * cm, 2 * 0.417 * cm));  // separator unmoved
  EXPECT_TRUE(Trait(t[5], 2 * cm, 0, 18.8 * cm, 0));                  // the next frame: 2 cm
}

TEST(Cadre, DegenerateFrames) {
  Atelier a;
  const double cm = 567;
  a.c.Cadre(Monnaie::De(500), 0, marbrel::TabDyn());
  auto t = a.Traits();
  ASSERT_EQ(t.size(), 4u);  // no columns: no separator
  EXPECT_TRUE(Trait(t[0], 2 * cm, 500, 2 * cm, 500));
  EXPECT_TRUE(Trait(t[2], 2 * cm, 500, 2 * cm, 500));  // bottom on the top rule
}

TEST(Driver, AFailingSectionDoesNotStopTheRun) {
  Banc b;
  b.Met("CIVILAIDE", "A0001", Rec({"", "DURAND", "Marie"}));
  b.FaitEchouer("RESSOURCESAIDE");
  b.Imprime("AIDE", {"A0001"});
  const auto& incidents = b.Controle().Incidents();
  ASSERT_EQ(incidents.size(), 1u);
  EXPECT_EQ(incidents[0].section, "Ressource_Aide");
  EXPECT_EQ(incidents[0].cle, "A0001");
  EXPECT_NE(incidents[0].message.find("RESSOURCESAIDE"), std::string::npos);
  // The sections after the failing one still printed and the document ended.
  EXPECT_TRUE(b.Enregistrement().termine);
  auto l = b.Lignes();
  EXPECT_NE(std::find(l.begin(), l.end(), "ORIGINE DOSSIER"), l.end());
  EXPECT_NE(std::find(l.begin(), l.end(), "BLOC-NOTES"), l.end());
}

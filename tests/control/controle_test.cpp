// The control as a component: calls by name, and the layout primitives every
// section draws with. Its caption is checked on vesko-gui's image (tests/hote).
#include "control/interface.h"
#include "db/lecture.h"
#include "db/variable.h"
#include "layout/lignes.h"
#include "printing/print_formats.h"
#include "tests/support/releve.h"

namespace {

// A control printing its building blocks onto a recording.
struct Atelier {
  Banc banc;  // for the application and a clean set of slots
  printing::Enregistrement rec;
  Ctr_Vesko& c = banc.Controle();
  Atelier() {
    c.Commence_Sur(
        std::make_unique<printing::Printer>(std::make_unique<printing::RecordingSurface>(&rec)));
  }
  template <typename Element>
  std::vector<Element> Tous() const {
    std::vector<Element> t;  // the tests draw on one page, one kind of item
    for (const auto& e : rec.pages.at(0).elements) t.push_back(std::get<Element>(e));
    return t;
  }
};

constexpr double kCm = 567, kPas = 0.417 * kCm;

bool Trait(const printing::ElementTrait& l, double x1, double y1, double x2, double y2) {
  auto proche = [](double a, double b) { return std::abs(a - b) < 0.01; };
  return proche(l.x1, x1) && proche(l.y1, y1) && proche(l.x2, x2) && proche(l.y2, y2);
}

}  // namespace

TEST(Titre, CalledByNameAHeavyHeadingThenBackToPlainElevenPoints) {
  Atelier a;
  a.c.Imprimante()->SetFontBold(true);
  a.c.Imprimante()->SetFontSize(18);
  std::vector<interface_vesko::Argument> args = {std::string("HABITAT")};
  interface_vesko::Appelle(a.c, "Titre", args);
  const auto t = a.Tous<printing::ElementTexte>();
  ASSERT_EQ(t.size(), 3u);
  EXPECT_EQ(t[0].texte + "|" + t[1].texte + "|" + t[2].texte, " |HABITAT| ");
  EXPECT_EQ(t[0].police.taille, 18);  // the blank before is in whatever font is current
  EXPECT_EQ(t[1].police.taille, 16);
  EXPECT_TRUE(t[1].police.gras && t[1].police.italique && t[1].police.souligne);
  const printing::Police& p = a.c.Imprimante()->Font();
  EXPECT_EQ(p.taille, 11);
  EXPECT_FALSE(p.gras || p.italique || p.souligne);

  // A wrong argument, none, or a private member is refused.
  std::vector<interface_vesko::Argument> faux = {std::int32_t{3}}, aucun;
  EXPECT_THROW(interface_vesko::Appelle(a.c, "Titre", faux), std::invalid_argument);
  EXPECT_THROW(interface_vesko::Appelle(a.c, "Titre", aucun), std::invalid_argument);
  EXPECT_THROW(interface_vesko::Appelle(a.c, "Indispo", args), std::invalid_argument);
}

TEST(Entete, PageTwelveIsOneCharacterLonger) {
  Atelier a;
  Variable::Principal = Rec({"", "MARTIN", "Paul"});
  db::FixeAujourdhui(std::stol(Jour("29/02/2024")));
  std::string code = "S0001";
  a.c.Entete_Page(code);
  for (int i = 0; i < 11; ++i) a.c.NewPage(code);
  a.c.Imprimante()->EndDoc();
  const std::string texte = printing::EnTexte(a.rec);
  // Eight header lines after the last eject, nothing else.
  EXPECT_EQ(std::count(texte.begin(), texte.end(), '\f'), 11);
  EXPECT_EQ(texte.substr(texte.rfind('\f')),
            "\f\n \n \nDate : 29/02/2024" + S(55) + "Page 12\n \n \nS0001 MARTIN Paul\n \n \n");
}

// The frames' edges and separators are checked section by section; here the
// left flag, which widens one frame only, and a frame of nothing.
TEST(Cadre, LeftFlagServesOneFrameAndAnEmptyFrameIsFlat) {
  Atelier a;
  a.c.Cadre_Gauche = true;
  a.c.Cadre(Monnaie::De(0), 2, mise_en_page::Largeurs({"14.3", "2.5"}));
  a.c.Cadre(Monnaie::De(0), 2, mise_en_page::Largeurs({"14.3", "2.5"}));
  a.c.Cadre(Monnaie::De(500), 0, marbrel::TabDyn());
  const auto t = a.Tous<printing::ElementTrait>();
  ASSERT_EQ(t.size(), 14u);
  EXPECT_TRUE(Trait(t[0], 0.3 * kCm, 0, 18.8 * kCm, 0));
  EXPECT_TRUE(Trait(t[4], 16.3 * kCm, 0, 16.3 * kCm, 2 * kPas));  // separator unmoved
  EXPECT_TRUE(Trait(t[5], 2 * kCm, 0, 18.8 * kCm, 0));            // the next frame: 2 cm
  EXPECT_TRUE(Trait(t[10], 2 * kCm, 500, 2 * kCm, 500));          // no columns: no width
  EXPECT_TRUE(Trait(t[12], 2 * kCm, 500, 2 * kCm, 500));          // no lines: bottom on top
  for (const auto& l : t) EXPECT_EQ(l.largeur, 3);
}

// Section titles and the ruled frames drawn over printed tables.
#include "control/ctr_vesko.h"

void Ctr_Vesko::Titre(const std::string& Libelle) {
  P().Print(" ");
  // The heading is deliberately heavy: 16 points, italic, underlined and bold.
  P().SetFontSize(16);
  P().SetFontItalic(true);
  P().SetFontUnderline(true);
  P().SetFontBold(true);
  P().Print(Libelle);
  P().SetFontItalic(false);
  P().SetFontUnderline(false);
  P().SetFontBold(false);
  P().SetFontSize(11);
  P().Print(" ");
}

void Ctr_Vesko::Cadre(Monnaie W_PointDepart, std::int32_t W_Nbligne, const TabDyn& W_TailleCol) {
  const long n = W_TailleCol.DCount();
  const Monnaie cm{static_cast<std::int64_t>(Un_Centimetre) * 10000};
  const Monnaie deux = Monnaie::Lit("2");
  auto largeur = [&](long i) { return Monnaie::Lit(W_TailleCol(1, i)); };
  // The running sum of the first k widths, walked from the first column.
  auto cumul = [&](long k) {
    Monnaie s = deux;
    for (long i = 1; i <= k; ++i) s = s + largeur(i);
    return s;
  };
  const Monnaie total = cumul(n);
  P().SetDrawWidth(3);
  // The one-shot flag moves only the left edge: the first column widens.
  Monnaie gauche = deux;
  if (Cadre_Gauche) {
    Cadre_Gauche = false;
    gauche = Monnaie::Lit("0.3");
  }
  const Monnaie haut = W_PointDepart;
  const Monnaie bas = haut + cm * Monnaie::Lit("0.417") * Monnaie::Lit(std::to_string(W_Nbligne));
  auto trait = [&](Monnaie x1, Monnaie y1, Monnaie x2, Monnaie y2) {
    P().Line(static_cast<float>(x1.EnDouble()), static_cast<float>(y1.EnDouble()),
             static_cast<float>(x2.EnDouble()), static_cast<float>(y2.EnDouble()));
  };
  trait(gauche * cm, haut, total * cm, haut);
  trait(gauche * cm, haut, gauche * cm, bas);
  trait(gauche * cm, bas, total * cm, bas);
  trait(total * cm, haut, total * cm, bas);
  for (long k = 1; k <= n - 1; ++k) {
    Monnaie x = cumul(k) * cm;
    trait(x, haut, x, bas);
  }
}

#include "layout/monnaie.h"

#include "marbrel/outils.h"

namespace mise_en_page {

Monnaie Monnaie::Lit(const std::string& texte) {
  if (!marbrel::EstNumerique(texte)) return {};
  bool negatif = texte[0] == '-';
  size_t i = (texte[0] == '-' || texte[0] == '+') ? 1 : 0;
  std::int64_t entier = 0, fraction = 0;
  int chiffres = 0;
  for (; i < texte.size() && texte[i] != '.'; ++i) entier = entier * 10 + (texte[i] - '0');
  if (i < texte.size()) {
    for (++i; i < texte.size() && chiffres < 4; ++i, ++chiffres) {
      fraction = fraction * 10 + (texte[i] - '0');
    }
  }
  for (; chiffres < 4; ++chiffres) fraction *= 10;
  std::int64_t v = entier * 10000 + fraction;
  return {negatif ? -v : v};
}

Monnaie Monnaie::operator*(Monnaie o) const {
  // Page positions stay far below the range where this product could overflow.
  std::int64_t p = dix_milliemes * o.dix_milliemes;
  std::int64_t q = p / 10000, r = p % 10000;
  if (r >= 5000) ++q;
  if (r <= -5000) --q;
  return {q};
}

}  // namespace mise_en_page

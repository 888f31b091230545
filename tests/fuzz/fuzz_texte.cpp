// The text conversions on any bytes: cuts and paddings that count characters
// put the text back together, escapes leave no control character, dates and
// numbers convert without failing and back.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "marbrel/outils.h"
#include "marbrel/query/comparaison.h"
#include "marbrel/texte.h"
#include "marbrel/visible.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* donnees, std::size_t taille) {
  if (taille == 0) return 0;
  const long n = donnees[0] % 40;
  const std::string s(reinterpret_cast<const char*>(donnees + 1), taille - 1);

  if (texte::Left(s, n) + texte::Mid(s, n + 1) != s) std::abort();
  if (texte::Left(s, n) + texte::Right(s, texte::Len(s) - n) != s && n <= texte::Len(s))
    std::abort();
  if (texte::Len(texte::Pad(s, n)) != std::max(texte::Len(s), n)) std::abort();
  if (texte::Len(texte::PadLeft(s, n)) != std::max(texte::Len(s), n)) std::abort();
  for (unsigned char c : texte::Visible(s)) {
    if (c < 0x20 || c == 0x7F) std::abort();
  }

  // Numbers: the comparison is an order (antisymmetric, reflexive).
  const std::size_t milieu = s.size() / 2;
  const std::string a = s.substr(0, milieu), b = s.substr(milieu);
  using marbrel::requete::CompareValeurs;
  if (CompareValeurs(a, b) != -CompareValeurs(b, a)) std::abort();
  if (CompareValeurs(a, a) != 0) std::abort();

  // Dates: a day number shown and read back is the same day.
  const auto& outils = marbrel::Outils::Instance();
  const long jour = (static_cast<long>(donnees[0]) << 8 | (taille > 1 ? donnees[1] : 0)) * 3;
  const std::string affichee = outils.Date_Externe(std::to_string(jour));
  if (!affichee.empty() && outils.Date_Interne(affichee) != std::to_string(jour)) std::abort();
  (void)outils.Date_Externe(s);
  (void)outils.Date_Interne(s);
  (void)outils.Format_Montant(s, 4, 2, 0);
  return 0;
}

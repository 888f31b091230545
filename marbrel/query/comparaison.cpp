#include "marbrel/query/comparaison.h"

#include <string>

#include "marbrel/outils.h"

namespace marbrel::requete {

namespace {

struct Decimal {
  bool negatif = false;
  std::string_view entier;    // no leading zeros
  std::string_view fraction;  // no trailing zeros
};

Decimal Decompose(std::string_view s) {
  Decimal d;
  if (!s.empty() && (s[0] == '-' || s[0] == '+')) {
    d.negatif = s[0] == '-';
    s.remove_prefix(1);
  }
  std::size_t point = s.find('.');
  d.entier = s.substr(0, point);
  d.fraction = point == std::string_view::npos ? std::string_view() : s.substr(point + 1);
  while (!d.entier.empty() && d.entier.front() == '0') d.entier.remove_prefix(1);
  while (!d.fraction.empty() && d.fraction.back() == '0') d.fraction.remove_suffix(1);
  if (d.entier.empty() && d.fraction.empty()) d.negatif = false;  // -0 is 0
  return d;
}

// Compares two magnitudes.
int CompareGrandeurs(const Decimal& a, const Decimal& b) {
  if (a.entier.size() != b.entier.size()) return a.entier.size() < b.entier.size() ? -1 : 1;
  if (int c = CompareOctets(a.entier, b.entier)) return c;
  return CompareOctets(a.fraction, b.fraction);
}

bool EstNombre(std::string_view s) { return EstNumerique(std::string(s)); }

int Compare(std::string_view a, std::string_view b, bool texte) {
  return texte ? CompareOctets(a, b) : CompareValeurs(a, b);
}

bool Egal(std::string_view valeur, std::string_view litteral, bool texte) {
  bool debut_libre = !litteral.empty() && litteral.front() == '[';
  bool fin_libre = litteral.size() > (debut_libre ? 1u : 0u) && litteral.back() == ']';
  if (debut_libre || fin_libre) {
    std::string_view motif = litteral;
    if (debut_libre) motif.remove_prefix(1);
    if (fin_libre) motif.remove_suffix(1);
    if (debut_libre && fin_libre) return valeur.find(motif) != std::string_view::npos;
    if (fin_libre) return valeur.substr(0, motif.size()) == motif;
    return valeur.size() >= motif.size() && valeur.substr(valeur.size() - motif.size()) == motif;
  }
  return Compare(valeur, litteral, texte) == 0;
}

}  // namespace

int CompareOctets(std::string_view a, std::string_view b) {
  // std::char_traits<char> compares as unsigned char, which is the byte order.
  int c = a.compare(b);
  return c < 0 ? -1 : (c > 0 ? 1 : 0);
}

int CompareNombres(std::string_view a, std::string_view b) {
  Decimal da = Decompose(a);
  Decimal db = Decompose(b);
  if (da.negatif != db.negatif) return da.negatif ? -1 : 1;
  int c = CompareGrandeurs(da, db);
  return da.negatif ? -c : c;
}

int CompareValeurs(std::string_view a, std::string_view b) {
  if (EstNombre(a) && EstNombre(b)) return CompareNombres(a, b);
  return CompareOctets(a, b);
}

bool Satisfait(std::string_view valeur, Operateur op, std::string_view litteral, bool texte) {
  switch (op) {
    case Operateur::Egal:
      return Egal(valeur, litteral, texte);
    case Operateur::Different:
      return !Egal(valeur, litteral, texte);
    case Operateur::Inferieur:
      return Compare(valeur, litteral, texte) < 0;
    case Operateur::Superieur:
      return Compare(valeur, litteral, texte) > 0;
    case Operateur::InferieurEgal:
      return Compare(valeur, litteral, texte) <= 0;
    case Operateur::SuperieurEgal:
      return Compare(valeur, litteral, texte) >= 0;
  }
  return false;
}

int CompareTri(std::string_view a, std::string_view b, bool numerique) {
  if (!numerique) return CompareOctets(a, b);
  auto rang = [](std::string_view s) { return s.empty() ? 0 : (EstNombre(s) ? 1 : 2); };
  int ra = rang(a), rb = rang(b);
  if (ra != rb) return ra < rb ? -1 : 1;
  if (ra == 1) return CompareNombres(a, b);
  return CompareOctets(a, b);
}

}  // namespace marbrel::requete

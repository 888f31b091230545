#include "marbrel/tabdyn.h"

#include <algorithm>

#include "marbrel/marques.h"

namespace marbrel {

namespace {

// The span [begin, end) of the n-th (1-based) piece of s between marks; when
// the piece does not exist, found is false.
struct Piece {
  size_t debut = 0;
  size_t fin = 0;
  bool trouve = false;
};

Piece Trouve(std::string_view s, char marque, long n) {
  Piece p;
  if (n < 1) return p;
  size_t debut = 0;
  for (long i = 1; i < n; ++i) {
    size_t m = s.find(marque, debut);
    if (m == std::string_view::npos) return p;
    debut = m + 1;
  }
  size_t fin = s.find(marque, debut);
  p.debut = debut;
  p.fin = fin == std::string_view::npos ? s.size() : fin;
  p.trouve = true;
  return p;
}

long CompteMorceaux(std::string_view s, char marque) {
  if (s.empty()) return 0;
  return static_cast<long>(std::count(s.begin(), s.end(), marque)) + 1;
}

// Replaces piece n of s (1-based), extending with marks when s is too short.
void RemplaceMorceau(std::string& s, char marque, long n, std::string_view valeur) {
  long existants = s.empty() ? 1 : CompteMorceaux(s, marque);
  if (n > existants) {
    s.append(static_cast<size_t>(n - existants), marque);
  }
  Piece p = Trouve(s, marque, n);
  s.replace(p.debut, p.fin - p.debut, valeur);
}

}  // namespace

std::string TabDyn::Extrait(long a, long v, long s) const {
  if (a == -1) return texte_;
  if (a < 1) return "";
  std::string_view tout(texte_);
  Piece pa = Trouve(tout, AM, a);
  if (!pa.trouve) return "";
  std::string_view attribut = tout.substr(pa.debut, pa.fin - pa.debut);
  if (v == -1) return std::string(attribut);
  if (v < 1) return "";
  Piece pv = Trouve(attribut, VM, v);
  if (!pv.trouve) return "";
  std::string_view valeur = attribut.substr(pv.debut, pv.fin - pv.debut);
  if (s == -1) return std::string(valeur);
  if (s < 1) return "";
  Piece ps = Trouve(valeur, SM, s);
  if (!ps.trouve) return "";
  return std::string(valeur.substr(ps.debut, ps.fin - ps.debut));
}

void TabDyn::Remplace(long a, long v, long s, std::string_view valeur) {
  if (a == -1) {
    texte_ = std::string(valeur);
    return;
  }
  if (a < 1) return;
  if (v == -1 || v < 1) {
    if (v != -1) return;
    RemplaceMorceau(texte_, AM, a, valeur);
    return;
  }
  std::string attribut = Extrait(a);
  if (s == -1 || s < 1) {
    if (s != -1) return;
    RemplaceMorceau(attribut, VM, v, valeur);
  } else {
    std::string val = Extrait(a, v);
    RemplaceMorceau(val, SM, s, valeur);
    RemplaceMorceau(attribut, VM, v, val);
  }
  RemplaceMorceau(texte_, AM, a, attribut);
}

long TabDyn::Compte(long a, long v) const {
  if (a == -1) return CompteMorceaux(texte_, AM);
  if (v == -1) return CompteMorceaux(Extrait(a), VM);
  return CompteMorceaux(Extrait(a, v), SM);
}

long TabDyn::DCount() const {
  long lignes = 0;
  long n = Compte(-1);
  std::string_view tout(texte_);
  size_t debut = 0;
  for (long a = 1; a <= n; ++a) {
    size_t fin = tout.find(AM, debut);
    if (fin == std::string_view::npos) fin = tout.size();
    lignes = std::max(lignes, CompteMorceaux(tout.substr(debut, fin - debut), VM));
    debut = fin + 1;
  }
  return lignes;
}

std::vector<std::string> TabDyn::Attributs(std::int32_t n) const {
  std::vector<std::string> attributs;
  attributs.reserve(static_cast<size_t>(std::max<std::int32_t>(n, 0)));
  size_t debut = 0;
  while (static_cast<std::int32_t>(attributs.size()) < n) {
    if (debut > texte_.size()) {
      attributs.emplace_back();
      continue;
    }
    size_t fin = texte_.find(AM, debut);
    if (fin == std::string::npos) fin = texte_.size();
    attributs.push_back(texte_.substr(debut, fin - debut));
    debut = fin + 1;
  }
  return attributs;
}

}  // namespace marbrel

// TabDyn against a model of nested lists: each input is a record text and a
// list of replacements; after each, every element read through the class
// equals the model's, and so does the whole text.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "marbrel/marques.h"
#include "marbrel/tabdyn.h"

namespace {

using marbrel::AM;
using marbrel::SM;
using marbrel::VM;

// attributes → values → sub-values; an empty record has no attribute.
using Modele = std::vector<std::vector<std::vector<std::string>>>;

std::vector<std::string> Coupe(const std::string& s, char marque) {
  std::vector<std::string> morceaux(1);
  for (char c : s) {
    if (c == marque) {
      morceaux.emplace_back();
    } else {
      morceaux.back() += c;
    }
  }
  return morceaux;
}

Modele Lit(const std::string& texte) {
  Modele m;
  if (texte.empty()) return m;
  for (const std::string& a : Coupe(texte, AM)) {
    m.emplace_back();
    for (const std::string& v : Coupe(a, VM)) m.back().push_back(Coupe(v, SM));
  }
  return m;
}

std::string Texte(const Modele& m) {
  std::string t;
  for (std::size_t a = 0; a < m.size(); ++a) {
    if (a) t += AM;
    for (std::size_t v = 0; v < m[a].size(); ++v) {
      if (v) t += VM;
      for (std::size_t s = 0; s < m[a][v].size(); ++s) {
        if (s) t += SM;
        t += m[a][v][s];
      }
    }
  }
  return t;
}

std::string Element(const Modele& m, long a, long v, long s) {
  if (a < 1 || static_cast<std::size_t>(a) > m.size()) return "";
  const auto& attribut = m[static_cast<std::size_t>(a - 1)];
  if (v < 1 || static_cast<std::size_t>(v) > attribut.size()) return "";
  const auto& valeur = attribut[static_cast<std::size_t>(v - 1)];
  if (s < 1 || static_cast<std::size_t>(s) > valeur.size()) return "";
  return valeur[static_cast<std::size_t>(s - 1)];
}

// Replaces sub-value (a, v, s) of the model, creating what is missing.
void Remplace(Modele& m, long a, long v, long s, const std::string& x) {
  if (m.size() < static_cast<std::size_t>(a)) m.resize(static_cast<std::size_t>(a), {{""}});
  auto& attribut = m[static_cast<std::size_t>(a - 1)];
  if (attribut.size() < static_cast<std::size_t>(v))
    attribut.resize(static_cast<std::size_t>(v), {""});
  auto& valeur = attribut[static_cast<std::size_t>(v - 1)];
  if (valeur.size() < static_cast<std::size_t>(s)) valeur.resize(static_cast<std::size_t>(s), "");
  valeur[static_cast<std::size_t>(s - 1)] = x;
}

void Compare(const marbrel::TabDyn& t, const Modele& m) {
  if (t.Texte() != Texte(m)) std::abort();
  const long na = static_cast<long>(m.size());
  for (long a = 1; a <= na + 1; ++a) {
    for (long v = 1; v <= 4; ++v) {
      for (long s = 1; s <= 4; ++s) {
        if (t.Extrait(a, v, s) != Element(m, a, v, s)) std::abort();
      }
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* donnees, std::size_t taille) {
  // The record text up to the first byte 0x01, then operations of four bytes:
  // attribute, value, sub-value (1 to 8 each) and a letter written there.
  std::size_t i = 0;
  std::string texte;
  while (i < taille && donnees[i] != 0x01) texte += static_cast<char>(donnees[i++]);
  ++i;
  marbrel::TabDyn t(texte);
  Modele m = Lit(texte);
  Compare(t, m);
  for (; i + 4 <= taille; i += 4) {
    const long a = 1 + donnees[i] % 8, v = 1 + donnees[i + 1] % 8, s = 1 + donnees[i + 2] % 8;
    const std::string x(1, static_cast<char>('a' + donnees[i + 3] % 26));
    t.Remplace(a, v, s, x);
    Remplace(m, a, v, s, x);
    Compare(t, m);
  }
  return 0;
}

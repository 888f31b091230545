// What the section and driver tests read back from a print run (a section's
// lines, the frame under a column header, pieces of a line) and the records
// they write.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>
#include <variant>

#include "marbrel/outils.h"
#include "tests/support/banc.h"

using namespace banc;  // NOLINT: the section tests are written in the bench's words

using V = std::vector<std::string>;
inline std::string S(size_t n) { return std::string(n, ' '); }
inline const std::string CRLF = "\r\n";  // a stored line break
// Lines debut to fin (excluded), or all of them when there are fewer.
inline V Tranche(const V& l, size_t debut, size_t fin) {
  return fin <= l.size() ? V(l.begin() + long(debut), l.begin() + long(fin)) : l;
}

// The attributes given by number ("4=DURAND|12=1"), the others empty; within
// a value "]" separates values.
inline marbrel::TabDyn Fiche(const std::string& attributs) {
  marbrel::TabDyn r;
  std::istringstream s(attributs);
  for (std::string a; std::getline(s, a, '|');) {
    const size_t egal = a.find('=');
    r.Remplace(std::stol(a.substr(0, egal)), Rec({a.substr(egal + 1)}).Extrait(1));
  }
  return r;
}

// The internal day number of a displayed date, as the records store it.
inline std::string Jour(const std::string& d) {
  return marbrel::Outils::Instance().Date_Interne(d);
}

inline const printing::ElementTexte* Texte(const printing::Element& e) {
  return std::get_if<printing::ElementTexte>(&e);
}

// The lines of the rang-th section titled `titre` (from 0) up to the next
// title or the end of its page, without the blank line that a next title on
// the same page prints before itself.
inline V Bloc(const Banc& b, const std::string& titre, int rang = 0) {
  V l;
  bool dedans = false;
  for (const auto& page : b.Enregistrement().pages) {
    double y = -1;
    for (const auto& e : page.elements) {
      const auto* t = Texte(e);
      if (!t) continue;
      if (t->police.taille == 16) {
        if (dedans) return !l.empty() && l.back() == " " ? V(l.begin(), l.end() - 1) : l;
        dedans = t->texte == titre && rang-- == 0;
      } else if (dedans) {
        // A piece at the height of the previous one continues its line.
        (t->y == y && !l.empty() ? l.back() : l.emplace_back()) += t->texte;
        y = t->y;
      }
    }
    if (dedans) return l;
  }
  return l;
}

// The frame whose top rule lies on the line of the rang-th text `entete`, as
// "<height in 11-point lines> lignes, <left>-<right> cm: <inner verticals>";
// "" when there is no such text or frame.
inline std::string Cadre(const Banc& b, const std::string& entete, int rang = 0) {
  auto cm = [](double x) { return std::round(x / 5.67) / 100; };
  for (const auto& page : b.Enregistrement().pages) {
    const printing::ElementTexte* ligne = nullptr;
    for (const auto& e : page.elements)
      if (Texte(e) && Texte(e)->texte == entete && rang-- == 0) ligne = Texte(e);
    if (!ligne) continue;
    double bas = ligne->y, gauche = 1e9, droite = -1;
    std::vector<double> verticales;
    for (const auto& e : page.elements) {
      const auto* t = std::get_if<printing::ElementTrait>(&e);
      if (!t || std::abs(std::min(t->y1, t->y2) - ligne->y) > 0.01) continue;
      bas = std::max({bas, t->y1, t->y2});
      gauche = std::min({gauche, t->x1, t->x2});
      droite = std::max({droite, t->x1, t->x2});
      if (t->x1 == t->x2) verticales.push_back(t->x1);
    }
    if (droite < 0) return "";
    std::sort(verticales.begin(), verticales.end());
    std::ostringstream s;
    s << std::round((bas - ligne->y) / (0.417 * 567) * 1000) / 1000 << " lignes, " << cm(gauche)
      << "-" << cm(droite) << " cm:";
    for (double x : verticales)
      if (x != gauche && x != droite) s << " " << cm(x);
    return s.str();
  }
  return "";
}

// The texts drawn from the first one equal to `debut`, n at most, with their
// fonts: a line printed in pieces, a label and its value.
inline std::vector<printing::ElementTexte> Suite(const Banc& b, std::string debut, size_t n) {
  std::vector<printing::ElementTexte> m;
  for (const auto& page : b.Enregistrement().pages)
    for (const auto& e : page.elements)
      if (Texte(e) && (Texte(e)->texte == debut || !m.empty()) && m.size() < n)
        m.push_back(*Texte(e));
  return m;
}

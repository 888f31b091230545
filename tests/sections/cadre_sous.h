// The ruled frame drawn over a printed table, found from the table's column
// header: what the section tests check of a frame's place on the page.
#pragma once

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "printing/recording.h"

namespace banc {

struct CadreTrouve {
  double haut = 0, bas = 0, gauche = 0, droite = 0;
  std::vector<double> separateurs;  // the inner verticals, left to right
  // The frame's height in 11-point lines.
  double Lignes() const { return (bas - haut) / (0.417 * 567.0); }
};

// The frame whose top rule lies on the line of the text `entete` (the first
// such text of the recording); nothing when there is no such text or frame.
inline std::optional<CadreTrouve> Cadre_Sous(const printing::Enregistrement& rec,
                                             const std::string& entete) {
  for (const auto& page : rec.pages) {
    const printing::ElementTexte* ligne = nullptr;
    for (const auto& e : page.elements) {
      const auto* t = std::get_if<printing::ElementTexte>(&e);
      if (t && t->texte == entete) {
        ligne = t;
        break;
      }
    }
    if (!ligne) continue;
    CadreTrouve c;
    c.haut = ligne->y;
    std::vector<double> verticales;
    bool trouve = false;
    for (const auto& e : page.elements) {
      const auto* t = std::get_if<printing::ElementTrait>(&e);
      if (!t || std::abs(std::min(t->y1, t->y2) - ligne->y) > 0.01) continue;
      if (!trouve) c.gauche = std::min(t->x1, t->x2);
      trouve = true;
      c.bas = std::max({c.bas, t->y1, t->y2});
      c.gauche = std::min({c.gauche, t->x1, t->x2});
      c.droite = std::max({c.droite, t->x1, t->x2});
      if (t->x1 == t->x2) verticales.push_back(t->x1);
    }
    if (!trouve) return std::nullopt;
    std::sort(verticales.begin(), verticales.end());
    for (double x : verticales) {
      if (x != c.gauche && x != c.droite) c.separateurs.push_back(x);
    }
    return c;
  }
  return std::nullopt;
}

// A position in centimetres, as the frames give them, in twips.
inline double Cm(double cm) { return cm * 567.0; }

}  // namespace banc

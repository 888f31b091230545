#include "printing/print_formats.h"

#include <cmath>
#include <nlohmann/json.hpp>

namespace printing {

void AjouteTextePage(const PageEnregistree& page, std::string& sortie) {
  // Pieces printed at the same height, one after the other, form one line.
  bool ligne_ouverte = false;
  double y_ligne = 0;
  for (const Element& e : page.elements) {
    const auto* t = std::get_if<ElementTexte>(&e);
    if (!t) continue;
    if (ligne_ouverte && t->y == y_ligne) {
      sortie += t->texte;
      continue;
    }
    if (ligne_ouverte) sortie += "\n";
    sortie += t->texte;
    y_ligne = t->y;
    ligne_ouverte = true;
  }
  if (ligne_ouverte) sortie += "\n";
}

std::string EnTexte(const Enregistrement& enregistrement) {
  std::string sortie;
  bool premiere_page = true;
  for (const PageEnregistree& page : enregistrement.pages) {
    if (!premiere_page) sortie += "\f\n";
    premiere_page = false;
    AjouteTextePage(page, sortie);
  }
  return sortie;
}

namespace {

long long Arrondi(double v) { return std::llround(v); }

nlohmann::ordered_json JsonPage(const PageEnregistree& page) {
  nlohmann::ordered_json items = nlohmann::ordered_json::array();
  for (const Element& e : page.elements) {
    if (const auto* t = std::get_if<ElementTexte>(&e)) {
      nlohmann::ordered_json item;
      item["text"] = t->texte;
      item["x"] = Arrondi(t->x);
      item["y"] = Arrondi(t->y);
      nlohmann::ordered_json font;
      font["name"] = t->police.nom;
      double taille = t->police.taille;
      if (taille == std::floor(taille)) {
        font["size"] = static_cast<long long>(taille);
      } else {
        font["size"] = taille;
      }
      font["bold"] = t->police.gras;
      font["italic"] = t->police.italique;
      font["underline"] = t->police.souligne;
      item["font"] = font;
      items.push_back(item);
    } else {
      const auto& l = std::get<ElementTrait>(e);
      nlohmann::ordered_json item;
      item["line"] = {Arrondi(l.x1), Arrondi(l.y1), Arrondi(l.x2), Arrondi(l.y2)};
      item["width"] = l.largeur;
      items.push_back(item);
    }
  }
  nlohmann::ordered_json p;
  p["items"] = items;
  return p;
}

// Invalid UTF-8 (a stray mark byte) is replaced rather than failing the dump.
std::string Dump(const nlohmann::ordered_json& j) {
  return j.dump(1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

}  // namespace

std::string EnJson(const Enregistrement& enregistrement) {
  nlohmann::ordered_json pages = nlohmann::ordered_json::array();
  for (const PageEnregistree& page : enregistrement.pages) pages.push_back(JsonPage(page));
  nlohmann::ordered_json racine;
  racine["pages"] = pages;
  return Dump(racine) + "\n";
}

void AjouteJsonPage(const PageEnregistree& page, std::string& sortie) {
  // The page as EnJson writes it: two levels in, each line indented by two.
  const std::string objet = Dump(JsonPage(page));
  sortie += "  ";
  for (char c : objet) {
    sortie.push_back(c);
    if (c == '\n') sortie += "  ";
  }
}

}  // namespace printing

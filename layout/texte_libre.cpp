#include "layout/texte_libre.h"

#include "marbrel/texte.h"

namespace mise_en_page {

namespace {

const std::string kRetourLigne = "\r\n";

void Decoupe_Ligne(const std::string& ligne, long largeur, const Regle_Coupure& coupure,
                   std::vector<std::string>& lignes) {
  std::string reste = ligne;
  if (reste.empty()) lignes.emplace_back();
  while (!reste.empty()) {
    if (texte::Len(reste) <= largeur) {
      lignes.push_back(reste);
      return;
    }
    const std::string morceau = texte::Left(reste, largeur);
    long c = coupure(morceau);
    // A space only in first place would cut before anything: the piece then
    // goes whole, like a piece without any space.
    if (c <= 0) c = largeur;
    lignes.push_back(texte::Left(reste, c));
    // Below the full width the cut fell on a space, which the line break replaces.
    reste = texte::Mid(reste, c < largeur ? c + 2 : c + 1);
  }
}

}  // namespace

std::vector<std::string> Decoupe_Texte(const std::string& stocke, long largeur,
                                       const Regle_Coupure& coupure) {
  // A text held as several values starts a new line at each of them.
  const std::string texte = texte::Marques_En_Retours(stocke);
  std::vector<std::string> lignes;
  std::size_t debut = 0;
  while (debut < texte.size()) {
    std::size_t fin = texte.find(kRetourLigne, debut);
    if (fin == std::string::npos) fin = texte.size();
    Decoupe_Ligne(texte.substr(debut, fin - debut), largeur, coupure, lignes);
    debut = fin + kRetourLigne.size();
  }
  return lignes;
}

}  // namespace mise_en_page

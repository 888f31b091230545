#include "layout/lignes.h"

#include "marbrel/texte.h"

namespace mise_en_page {

std::string Etiquette(const std::string& libelle) { return " " + texte::Pad(libelle, 21) + ": "; }

void Ligne(printing::Printer& p, const std::string& libelle, const std::string& valeur) {
  p.Print(Etiquette(libelle) + valeur);
}

void Blanc(printing::Printer& p) { p.Print(" "); }
void Ligne_Vide(printing::Printer& p) { p.Print(""); }

std::string Coupe(marbrel::TabDyn& enregistrement, long a, long v, long largeur) {
  std::string valeur = enregistrement(a, v);
  // Only a real cut is written back: writing an element that is not there
  // would grow the record with empty values its later readers would count.
  if (texte::Len(valeur) <= largeur) return valeur;
  std::string coupe = texte::Left(valeur, largeur);
  enregistrement.Remplace(a, v, coupe);
  return coupe;
}

std::string OuiNon(const std::string& code) {
  if (code == "O") return "OUI";
  if (code == "N") return "NON";
  return "";
}

marbrel::TabDyn Largeurs(std::initializer_list<const char*> largeurs) {
  marbrel::TabDyn liste;
  long i = 0;
  for (const char* l : largeurs) liste.Remplace(1, ++i, l);
  return liste;
}

}  // namespace mise_en_page

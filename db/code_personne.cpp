#include "db/code_personne.h"

#include "marbrel/erreur.h"
#include "marbrel/texte.h"
#include "marbrel/visible.h"

namespace db {

std::string Refus_Code(const std::string& code) {
  if (code.empty()) return "";
  const std::string nom = "le code « " + texte::Visible(code) + " »";
  if (texte::Len(code) != kLongueurCode) {
    return nom + " ne compte pas exactement " + std::to_string(kLongueurCode) +
           " caractères : ses lignes ne peuvent pas être séparées de celles des codes qui le "
           "prolongent.";
  }
  for (unsigned char c : code) {
    if (c < 0x20 || c == 0x7F || c >= 0xF8) {
      return nom + " contient un caractère de contrôle ou une marque de séparation.";
    }
    if (c == '"' || c == '\'') return nom + " contient un guillemet.";
    if (c == '[' || c == ']') {
      return nom +
             " contient un crochet, qui dans une sélection veut dire « commence par » "
             "ou « finit par ».";
    }
  }
  return "";
}

void Exige_Code_Isolable(const std::string& code) {
  const std::string refus = Refus_Code(code);
  if (!refus.empty()) {
    throw marbrel::Erreur(marbrel::ERR_CODE_PERSONNE, "Section non imprimée : " + refus +
                                                          " Les données d'autres personnes "
                                                          "pourraient y apparaître.");
  }
}

}  // namespace db

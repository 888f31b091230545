#include "app/gui/personnes.h"

#include "marbrel/tabdyn.h"

namespace hote {

std::string FichierPrincipal(const std::string& type) {
  return type == "AIDANT" ? "CIVILAIDANT" : "CIVILAIDE";
}

std::vector<Personne> Personnes(const marbrel::Base& base, const std::string& type) {
  const std::string fichier = FichierPrincipal(type);
  // Opening the file first gives the library's message when the store lacks it.
  base.Ouvre_Fichier(fichier);
  std::vector<Personne> personnes;
  base.Magasin().Parcourt(fichier, [&](const std::string& cle, const std::string& texte) {
    const marbrel::TabDyn fiche(texte);
    personnes.push_back({cle, fiche(2), fiche(3)});
    return true;
  });
  return personnes;
}

}  // namespace hote

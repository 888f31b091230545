#include "marbrel/query/erreur_requete.h"

#include "marbrel/erreur.h"
#include "marbrel/texte.h"

namespace marbrel::requete {

void ErreurRequete(std::string_view phrase, std::size_t octet, const std::string& quoi) {
  std::string ou;
  if (octet >= phrase.size()) {
    ou = "à la fin de la phrase";
  } else {
    // Positions are counted in characters: that is what a user sees.
    long position = texte::Len(phrase.substr(0, octet)) + 1;
    ou = "à la position " + std::to_string(position) + " de la phrase";
  }
  throw Erreur(ERR_REQUETE, quoi + " " + ou + " « " + std::string(phrase) + " ».");
}

}  // namespace marbrel::requete

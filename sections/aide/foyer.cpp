// Not written yet: each section prints its title until its own work lands.
#include "control/ctr_vesko.h"

void Ctr_Vesko::Conjoint_Aide() {
  Titre("CONJOINT");
}

void Ctr_Vesko::Autres_Personnes_Foyer() {
  Titre("AUTRES PERSONNES AU FOYER");
}

void Ctr_Vesko::Enfant_Hors_Foyer() {
  Titre("ENTOURAGE");
}

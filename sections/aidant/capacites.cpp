// Not written yet: each section prints its title until its own work lands.
#include "control/ctr_vesko.h"

void Ctr_Vesko::Capacite_Tache(std::string& /*W_Code*/) {
  Titre("CAPACITES");
}

void Ctr_Vesko::Comportement() {
  Titre("COMPORTEMENT");
}

// Not written yet: each section prints its title until its own work lands.
#include "control/ctr_vesko.h"

void Ctr_Vesko::Formation(std::string& /*W_Code*/) {
  Titre("FORMATION");
}

void Ctr_Vesko::Experience() {
  Titre("EXPERIENCES");
}

void Ctr_Vesko::Activite() {
  Titre("ACTIVITES POSSIBLES");
}

// Not written yet: each section prints its title until its own work lands.
#include "control/ctr_vesko.h"

void Ctr_Vesko::Dispo(std::string& /*W_Code*/) {
  Titre("DISPONIBILITES");
}

void Ctr_Vesko::Indispo(std::string& /*W_Code*/) {
  Titre("INDISPONIBILITES");
}

// Not written yet: each section prints its title until its own work lands.
#include "control/ctr_vesko.h"

void Ctr_Vesko::Ressource_Aide(std::string& /*W_Code*/) {
  Titre("RESSOURCES");
}

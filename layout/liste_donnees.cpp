// Not written yet: each section prints its title until its own work lands.
#include "control/ctr_vesko.h"

void Ctr_Vesko::ImprimeDonnées(std::string& /*W_Code*/) {}

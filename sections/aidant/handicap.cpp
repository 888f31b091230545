// Not written yet: each section prints its title until its own work lands.
#include "control/ctr_vesko.h"

void Ctr_Vesko::Handicap() {
  Titre("HANDICAP");
}

void Ctr_Vesko::Detail_Etranger(std::string& /*W_Code*/) {
  Titre("DETAIL ETRANGER");
}

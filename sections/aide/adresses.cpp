// Not written yet: each section prints its title until its own work lands.
#include "control/ctr_vesko.h"

void Ctr_Vesko::Adresse_Facturation(std::string& /*W_Code*/) {
  Titre("ADRESSE FACTURATION");
}

void Ctr_Vesko::Adresse_Bancaire(std::string& /*W_Code*/) {
  Titre("ADRESSE BANCAIRE");
}

// Not written yet: each section prints its title until its own work lands.
#include "control/ctr_vesko.h"

void Ctr_Vesko::Habitat(std::string& /*W_Code*/) {
  Titre("HABITAT");
}

void Ctr_Vesko::Personne_A_Prevenir(std::string& /*W_Code*/) {
  Titre("PERSONNE A PREVENIR");
}

void Ctr_Vesko::Contact() {
  Titre("CONTACTS");
}

void Ctr_Vesko::Medecin_Traitant() {
}

void Ctr_Vesko::Intervenant() {
}

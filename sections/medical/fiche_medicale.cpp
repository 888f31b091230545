// Not written yet: each section prints its title until its own work lands.
#include "control/ctr_vesko.h"

void Ctr_Vesko::Aide_Technique() {
  Titre("AIDES TECHNIQUES");
}

void Ctr_Vesko::Antecedent(std::string& /*W_Code*/) {
  Titre("ANTECEDENTS MEDICAUX");
}

void Ctr_Vesko::Diagnostic() {
  Titre("DIAGNOSTIC");
}

void Ctr_Vesko::Trait_Med() {
  Titre("TRAITEMENT MEDICAL");
}

void Ctr_Vesko::Fiche_Med(std::int32_t& /*W_Att*/) {
}

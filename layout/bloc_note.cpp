// Not written yet: each section prints its title until its own work lands.
#include "control/ctr_vesko.h"

void Ctr_Vesko::Bloc_Note(TabDyn& /*W_Bloc*/, std::string& /*W_Code*/) {}

void Ctr_Vesko::Bloc_Note_Aidant(std::string& /*W_Code*/) { Titre("BLOC-NOTES"); }

void Ctr_Vesko::Bloc_Note_Aide(std::string& /*W_Code*/) { Titre("BLOC-NOTES"); }

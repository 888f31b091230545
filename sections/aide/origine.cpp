// Not written yet: each section prints its title until its own work lands.
#include "control/ctr_vesko.h"

void Ctr_Vesko::Origine_Dossier(std::string& /*W_Code*/) {
  Titre("ORIGINE DOSSIER");
}

void Ctr_Vesko::Origine_Contact(std::int32_t& /*W_Att*/, std::string& /*W_Lib*/) {
}

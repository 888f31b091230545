#include "db/variable.h"

namespace Variable {

std::shared_ptr<marbrel::Client> Client;
std::shared_ptr<marbrel::Base> Base;
std::array<std::shared_ptr<marbrel::Fichier>, kNombreFichiers> Fichiers;
std::array<marbrel::TabDyn, kNombreFichiers> Enregistrements;
marbrel::TabDyn Principal;
marbrel::TabDyn Tables;

}  // namespace Variable

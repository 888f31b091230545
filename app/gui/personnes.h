// The persons a host lists before printing: the keys of the main file of a
// dossier type with the names their record holds.
#pragma once

#include <string>
#include <vector>

#include "marbrel/base.h"

namespace hote {

struct Personne {
  std::string cle;
  std::string nom;     // attribute 2 of the main record
  std::string prenom;  // attribute 3
};

// The main file of a dossier type: CIVILAIDANT for "AIDANT", CIVILAIDE
// otherwise (the driver reads the same one).
std::string FichierPrincipal(const std::string& type);

// Every person of the type, in key order. Fails with the library's French
// message when the store lacks the file.
std::vector<Personne> Personnes(const marbrel::Base& base, const std::string& type);

}  // namespace hote

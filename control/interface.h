// The control's type library: a static description of its published interface
// (slot, name, kind, parameters with their types), read by hosts and tools,
// and a way for a host to call a member by name through it.
//
// The description is ours rather than Qt's meta-object: member names such as
// ImprimeDonnées are not ASCII, which moc cannot parse as invokable methods.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "control/ctr_vesko.h"

namespace interface_vesko {

enum class Genre { Propriete, Procedure };

struct Parametre {
  std::string nom;   // e.g. "W_Code"
  std::string type;  // "Client", "Base", "TabDyn", "Texte", "Entier32", "Monnaie"
};

struct Membre {
  int slot;  // 1-based, in the published order; 0 for the private members
  std::string nom;
  Genre genre;
  std::vector<Parametre> parametres;
};

// The published members in slot order: the 45 historic ones, then Utilisateur.
const std::vector<Membre>& Membres();
// The two private procedures (Indispo, Position_Coupure), for the record.
const std::vector<Membre>& MembresPrives();
// The member of that name, or nullptr.
const Membre* Cherche(const std::string& nom);

// An argument passed by reference, as the control's members take them.
using Argument = std::variant<std::string, std::int32_t, TabDyn, Monnaie,
                              std::shared_ptr<marbrel::Base>, std::shared_ptr<marbrel::Client>>;

// Calls the published member `nom` with `arguments` (written back, since every
// argument is passed by reference). An unknown member, a wrong number of
// arguments or an argument of the wrong type fails with std::invalid_argument
// and a French message naming the member and the parameter.
void Appelle(Ctr_Vesko& controle, const std::string& nom, std::vector<Argument>& arguments);

}  // namespace interface_vesko

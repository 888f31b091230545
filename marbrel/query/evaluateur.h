// Criteria ready to run: every field resolved to its item once, then tested on
// each record.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "marbrel/query/dictionnaire.h"
#include "marbrel/query/requete.h"
#include "marbrel/tabdyn.h"

namespace marbrel::requete {

struct CritereCompile {
  Critere::Sorte sorte = Critere::Sorte::Clause;
  Item item;                             // Clause
  const Condition* condition = nullptr;  // Clause; points into the Requete
  std::vector<CritereCompile> enfants;   // Et, Ou
};

// Resolves the fields of the criteria with resout (which reports unknown
// fields itself). The result points into criteres, which must outlive it.
CritereCompile Compile(const Critere& criteres, const std::function<Item(const Champ&)>& resout);

// True when the record satisfies the criteria. A clause holds when one value
// of its field satisfies the whole of its condition.
bool Vrai(const CritereCompile& critere, const std::string& cle, const TabDyn& enregistrement);

// True when one value satisfies the condition of a clause; texte compares as
// text (a left-justified item).
bool VraiPour(const Condition& condition, const std::string& valeur, bool texte = false);

}  // namespace marbrel::requete

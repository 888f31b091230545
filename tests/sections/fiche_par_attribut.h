// Records for the section tests, written by attribute number.
#pragma once

#include <initializer_list>
#include <string>
#include <utility>

#include "marbrel/outils.h"
#include "marbrel/tabdyn.h"
#include "tests/support/banc.h"

namespace banc {

// The attributes given by number, the others empty; "]" separates values.
inline marbrel::TabDyn Fiche(std::initializer_list<std::pair<long, std::string>> attributs) {
  marbrel::TabDyn r;
  for (const auto& [a, v] : attributs) r.Remplace(a, Rec({v}).Extrait(1));
  return r;
}

// The internal day number of a displayed date, as the records store it.
inline std::string Jour(const std::string& date) {
  return marbrel::Outils::Instance().Date_Interne(date);
}

}  // namespace banc

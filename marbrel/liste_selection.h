// The result of a selection: for each selected record, in order, the fields
// the command asked for. Row r (from 1) holds field f (from 1) as value f.
#pragma once

#include <string>
#include <vector>

#include "marbrel/tabdyn.h"

namespace marbrel {

class Liste_Selection {
 public:
  Liste_Selection() = default;

  void Ajoute(const std::vector<std::string>& champs);

  // The number of rows.
  long DCount() const { return lignes_; }
  // Row r as text, its fields separated by value marks; "" past the end.
  std::string operator()(long r) const { return table_.Extrait(r); }
  // Field f of row r; "" past the end.
  std::string operator()(long r, long f) const { return table_.Extrait(r, f); }
  // All rows, separated by attribute marks; "" when nothing was selected.
  const std::string& Texte() const { return table_.Texte(); }

 private:
  TabDyn table_;
  long lignes_ = 0;
};

}  // namespace marbrel

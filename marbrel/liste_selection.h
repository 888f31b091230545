// The result of a selection: for each selected record, in order, the fields
// the command asked for. Row r (from 1) holds field f (from 1) as value f.
#pragma once

#include <string>
#include <vector>

#include "marbrel/tabdyn.h"  // callers read rows as records

namespace marbrel {

class Liste_Selection {
 public:
  Liste_Selection() = default;

  void Ajoute(const std::vector<std::string>& champs);

  // The number of rows.
  long DCount() const { return static_cast<long>(lignes_.size()); }
  // Row r as text, its fields separated by value marks; "" past the end.
  std::string operator()(long r) const;
  // Field f of row r; "" past the end.
  std::string operator()(long r, long f) const;
  // All rows, separated by attribute marks; "" when nothing was selected.
  const std::string& Texte() const;

 private:
  // Rows are kept apart so that adding and reading one costs the same for the
  // millionth row as for the first; the joined text is built when asked for.
  std::vector<std::string> lignes_;
  mutable std::string texte_;
  mutable bool texte_a_jour_ = true;
};

}  // namespace marbrel

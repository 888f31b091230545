// TabDyn: a multivalue record (dynamic array).
//
// Attributes, values and sub-values are numbered from 1 and hold UTF-8 text,
// separated by the marks of marques.h. Reading past the end gives "" and never
// fails; writing past the end extends the record with empty elements. -1 for a
// level means "the whole of that level": Extrait(-1, -1, -1) is the whole
// record, Extrait(3, -1, -1) the whole of attribute 3 with its marks.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace marbrel {

class TabDyn {
 public:
  TabDyn() = default;
  // Takes the text of a record as stored, marks included.
  explicit TabDyn(std::string texte) : texte_(std::move(texte)) {}

  // The element's text; "" for anything past the end or for level 0.
  std::string Extrait(long a, long v = -1, long s = -1) const;
  std::string operator()(long a) const { return Extrait(a, -1, -1); }
  std::string operator()(long a, long v) const { return Extrait(a, v, -1); }
  std::string operator()(long a, long v, long s) const { return Extrait(a, v, s); }

  // Replaces one element (a level of -1 replaces the whole of the level above).
  // Missing attributes, values and sub-values are created empty.
  void Remplace(long a, long v, long s, std::string_view valeur);
  void Remplace(long a, long v, std::string_view valeur) { Remplace(a, v, -1, valeur); }
  void Remplace(long a, std::string_view valeur) { Remplace(a, -1, -1, valeur); }

  // Compte(-1): the number of attributes (0 for an empty record).
  // Compte(a): the number of values of attribute a (0 when it is empty).
  // Compte(a, v): the number of sub-values of value v.
  long Compte(long a, long v = -1) const;

  // The values held in attribute a; 0 when the attribute is empty.
  long DCount(long a) const { return a < 1 ? 0 : Compte(a, -1); }
  // The rows of the record seen as a table of associated multivalues: the
  // largest DCount(a) over its attributes.
  long DCount() const;

  // Attributes 1 to n, as Extrait(i) gives them ("" past the end), in one
  // pass: reading attribute i alone walks the record from its start, which a
  // list of many thousand keys cannot afford once per key.
  std::vector<std::string> Attributs(std::int32_t n) const;

  // The whole stored text, marks included.
  const std::string& Texte() const { return texte_; }
  bool Vide() const { return texte_.empty(); }

  bool operator==(const TabDyn& autre) const = default;

 private:
  std::string texte_;
};

}  // namespace marbrel

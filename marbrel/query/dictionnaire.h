// Fields of a sentence: attribute numbers and dictionary items.
//
// A dictionary item is a record of the file "DICT NAME", keyed by the item's
// name:
//   attribute 1  type: "D" (data) or "I" (computed)
//   attribute 2  D: the attribute number, 0 being the key
//                I: @ID, @ID[start,length], Fn or Fn[start,length]
//                   (characters of the key or of attribute n, from 1)
//   attribute 3  conversion (kept, not applied by selections)
//   attribute 4  heading
//   attribute 5  format: width and justification, "10L", "5R"; a right-
//                justified item sorts numerically, a left-justified one
//                compares as text
//   attribute 6  "S" single-valued or "M" multivalued
#pragma once

#include <string>
#include <vector>

#include "marbrel/store.h"
#include "marbrel/tabdyn.h"

namespace marbrel::requete {

struct Item {
  long attribut = 0;       // 0 = the key
  long debut = 0;          // 0 = the whole text; otherwise characters from debut
  long longueur = -1;      // -1 = to the end
  bool numerique = false;  // right-justified format: PAR sorts numerically
  // Left-justified format: a text such as a code, compared byte by byte even
  // when it looks like a number ("1" is not "0001", "1.0" or "+1").
  bool texte = false;

  // Every value and sub-value of the field, each as its own element; an empty
  // field gives one empty value so that = "" can match it.
  std::vector<std::string> Valeurs(const std::string& cle, const TabDyn& enregistrement) const;
  // The field as one value of a selection row: its values joined by sub-value
  // marks, so that a multivalued attribute keeps every value.
  std::string Texte(const std::string& cle, const TabDyn& enregistrement) const;
  // The first value: what PAR sorts on.
  std::string PremiereValeur(const std::string& cle, const TabDyn& enregistrement) const;
};

// The field named nom in a sentence on fichier: digits name that attribute
// (0 the key); any other name is read from "DICT fichier". Fails with
// std::invalid_argument carrying the French reason (unknown item, missing
// dictionary, item of an unknown type or expression).
Item ResoutChamp(Store& store, const std::string& fichier, const std::string& nom);

// The item a dictionary record describes; the same failures as ResoutChamp.
Item ItemDepuis(const std::string& nom, const TabDyn& definition);

}  // namespace marbrel::requete

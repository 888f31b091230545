// How a value becomes a literal of a sentence. Every sentence built from data
// (a person's code, a date) quotes its values here and nowhere else, so that
// no value can end its literal early and add criteria of its own.
#pragma once

#include <string>

namespace marbrel::requete {

// The value between double quotes, or between single quotes when it holds a
// double quote. The language has no escape: a value holding both kinds of
// quote cannot be written as one literal and fails with Erreur(ERR_REQUETE)
// naming it. Quoting does not hide the "starts with" and "ends with" marks
// ("]" last, "[" first) of = and #: a caller that wants an exact match checks
// its value for them (see db/code_personne.h for the persons' codes).
std::string Litteral(const std::string& valeur);

}  // namespace marbrel::requete

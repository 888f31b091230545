// A person's code where a section selects or composes keys with it.
//
// The selections by code were written for codes of exactly five characters:
// an unavailability key is the code followed by ten fixed characters, a
// capacities key is the code followed by a letter, and the incompatible
// carers are found by the code stored in their record. A code of another
// length, or one holding a quote, a "[" or "]" (the "ends with" and "starts
// with" marks of the query language) or a control character, cannot be told
// apart from its neighbours ("00001" would see the rows of "000010"): such a
// code is refused for that section, never widened into someone else's rows.
#pragma once

#include <string>

namespace db {

inline constexpr long kLongueurCode = 5;  // characters, not bytes

// Why code cannot isolate one person's rows, as a French sentence; "" when it
// can. The empty code (an empty dossier) is accepted: it selects nobody's
// rows, since a section prints no row for it.
std::string Refus_Code(const std::string& code);

// Fails with marbrel::Erreur(ERR_CODE_PERSONNE) carrying Refus_Code's reason
// when code is refused, so that the section stops before reading anything and
// the run records an incident for it.
void Exige_Code_Isolable(const std::string& code);

}  // namespace db

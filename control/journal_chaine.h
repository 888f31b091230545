// The journal's chain, in one place for every store that keeps a journal: the
// canonical form of an entry, its SHA-256 hash over the previous entry's
// hash, and the walk that finds the first entry at fault.
//
// An entry's hash is SHA-256 over: the previous entry's hash (64 hex digits),
// a newline, then the entry's fields as compact JSON with sorted keys (every
// field of Entree but empreinte, precedent included). The first entry of a
// journal follows kOrigine; after a purge, the first remaining entry follows
// the hash of the last entry removed, which the purge entry keeps.
#pragma once

#include <string>
#include <vector>

#include "control/journal.h"

namespace journal {

// The hash the first entry of a journal follows: 64 zeros.
extern const std::string kOrigine;

// The canonical text of e that its hash covers.
std::string FormeCanonique(const Entree& e);
// SHA-256 of e chained over e.precedent, as 64 lower-case hex digits.
std::string Empreinte(const Entree& e);
// Links e after the entry whose hash is precedent: sets e.precedent and
// e.empreinte.
void Chaine(Entree& e, const std::string& precedent);

// Checks entries (all of a journal, in the order of their numbers): numbers
// follow each other, each hash is that of its fields, each entry follows the
// one before it. The chain starts at 1 from kOrigine, or after the anchor of
// the latest purge entry. Names the first fault: a missing number is a
// removal, a hash that no longer matches its fields a change, an entry that
// does not follow its predecessor an insertion.
Verdict VerifieChaine(const std::vector<Entree>& entrees);

}  // namespace journal

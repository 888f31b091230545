// What every journal computes the same way from its entries, whatever keeps
// them: the runs a listing shows, and what a purge removes and records.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "control/journal.h"

namespace journal {

// The runs of entrees (all of a journal, in the order of their numbers) that
// match f, oldest first, each with its outcome when it has one.
std::vector<Passage> Passages(const std::vector<Entree>& entrees, const Filtre& f);

// A purge of the entries dated before avant: the longest run of them from
// the start of the chain, so that what stays is one unbroken piece.
struct PlanPurge {
  std::int64_t limite = 0;    // entries numbered below it go
  std::int64_t retirees = 0;  // how many
  std::string derniere;       // hash of the journal's last entry, that e follows
};
// Plans the purge of entrees and fills in e, the purge entry (kind, limit,
// what goes, its number and message) — all but its chain, which follows
// PlanPurge::derniere.
PlanPurge PlanifiePurge(const std::vector<Entree>& entrees, const std::string& avant, Entree& e);

}  // namespace journal

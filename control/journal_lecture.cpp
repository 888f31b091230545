#include "control/journal_lecture.h"

#include <algorithm>
#include <unordered_map>

#include "control/journal_chaine.h"

namespace journal {

std::vector<Passage> Passages(const std::vector<Entree>& entrees, const Filtre& f) {
  std::unordered_map<std::int64_t, const Entree*> issues;
  for (const Entree& e : entrees) {
    if (e.genre == kIssue) issues.emplace(e.impression, &e);
  }
  std::vector<Passage> passages;
  for (const Entree& e : entrees) {
    if (e.genre != kImpression) continue;
    if (!f.depuis.empty() && e.heure_utc < f.depuis) continue;
    if (!f.jusqu_a.empty() && !(e.heure_utc < f.jusqu_a)) continue;
    if (!f.cle.empty() && std::find(e.cles.begin(), e.cles.end(), f.cle) == e.cles.end()) continue;
    if (!f.utilisateur.empty() && e.utilisateur != f.utilisateur &&
        e.utilisateur_systeme != f.utilisateur) {
      continue;
    }
    Passage p;
    p.impression = e;
    if (auto issue = issues.find(e.numero); issue != issues.end()) p.issue = *issue->second;
    passages.push_back(std::move(p));
  }
  return passages;
}

PlanPurge PlanifiePurge(const std::vector<Entree>& entrees, const std::string& avant, Entree& e) {
  PlanPurge plan;
  const std::int64_t dernier = entrees.empty() ? 0 : entrees.back().numero;
  plan.derniere = entrees.empty() ? kOrigine : entrees.back().empreinte;
  plan.limite = dernier + 1;
  for (const Entree& x : entrees) {
    if (x.heure_utc >= avant) {
      plan.limite = x.numero;
      break;
    }
  }
  e.genre = kPurge;
  e.avant = avant;
  e.retire_premier = e.retire_dernier = 0;
  e.retire_empreinte = kOrigine;
  for (const Entree& x : entrees) {
    if (x.numero >= plan.limite) break;
    if (plan.retirees++ == 0) e.retire_premier = x.numero;
    e.retire_dernier = x.numero;
    e.retire_empreinte = x.empreinte;
  }
  if (plan.retirees == 0) {
    // Nothing removed: the chain still starts where the latest purge said.
    e.retire_premier = 0;
    for (auto x = entrees.rbegin(); x != entrees.rend(); ++x) {
      if (x->genre == kPurge) {
        e.retire_dernier = x->retire_dernier;
        e.retire_empreinte = x->retire_empreinte;
        break;
      }
    }
  }
  e.message = std::to_string(plan.retirees) + " entrée(s) antérieure(s) à " + avant +
              " supprimée(s)" +
              (plan.retirees > 0 ? " (n° " + std::to_string(e.retire_premier) + " à " +
                                       std::to_string(e.retire_dernier) + ")"
                                 : std::string()) +
              ".";
  e.numero = dernier + 1;
  return plan;
}

}  // namespace journal

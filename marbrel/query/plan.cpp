#include "marbrel/query/plan.h"

#include <algorithm>

#include "marbrel/outils.h"

namespace marbrel::requete {

namespace {

using Prefixes = std::optional<std::vector<std::string>>;

Prefixes Normalise(std::vector<std::string> p) {
  std::sort(p.begin(), p.end());
  std::vector<std::string> gardes;
  for (std::string& s : p) {
    // Sorted, so a prefix of s, if any, is the last one kept.
    if (!gardes.empty() && s.compare(0, gardes.back().size(), gardes.back()) == 0) continue;
    gardes.push_back(std::move(s));
  }
  return gardes;
}

// Prefers the narrowest walk: the longest shortest prefix, then the fewest.
bool Meilleur(const std::vector<std::string>& a, const std::vector<std::string>& b) {
  auto plus_court = [](const std::vector<std::string>& p) {
    std::size_t n = std::string::npos;
    for (const std::string& s : p) n = std::min(n, s.size());
    return n;
  };
  if (plus_court(a) != plus_court(b)) return plus_court(a) > plus_court(b);
  return a.size() < b.size();
}

Prefixes DeLaCondition(const Condition& c) {
  switch (c.sorte) {
    case Condition::Sorte::Comparaison: {
      if (c.op != Operateur::Egal) return std::nullopt;
      const std::string& l = c.litteral;
      if (!l.empty() && l.front() == '[') return std::nullopt;
      if (!l.empty() && l.back() == ']') return std::vector<std::string>{l.substr(0, l.size() - 1)};
      // A numeric literal compares as a number ("12" = "012"): no prefix.
      if (EstNumerique(l)) return std::nullopt;
      return std::vector<std::string>{l};
    }
    case Condition::Sorte::Et: {
      Prefixes meilleur;
      for (const Condition& e : c.enfants) {
        Prefixes p = DeLaCondition(e);
        if (p && (!meilleur || Meilleur(*p, *meilleur))) meilleur = std::move(p);
      }
      return meilleur;
    }
    case Condition::Sorte::Ou: {
      std::vector<std::string> tous;
      for (const Condition& e : c.enfants) {
        Prefixes p = DeLaCondition(e);
        if (!p) return std::nullopt;
        tous.insert(tous.end(), p->begin(), p->end());
      }
      return Normalise(std::move(tous));
    }
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::vector<std::string>> PrefixesCle(const CritereCompile& critere) {
  switch (critere.sorte) {
    case Critere::Sorte::Clause: {
      // The key itself, or characters of the key taken from its first one.
      const Item& item = critere.item;
      if (item.attribut != 0 || item.debut > 1) return std::nullopt;
      Prefixes p = DeLaCondition(*critere.condition);
      if (p) return Normalise(std::move(*p));
      return std::nullopt;
    }
    case Critere::Sorte::Et: {
      Prefixes meilleur;
      for (const CritereCompile& e : critere.enfants) {
        Prefixes p = PrefixesCle(e);
        if (p && (!meilleur || Meilleur(*p, *meilleur))) meilleur = std::move(p);
      }
      return meilleur;
    }
    case Critere::Sorte::Ou: {
      std::vector<std::string> tous;
      for (const CritereCompile& e : critere.enfants) {
        Prefixes p = PrefixesCle(e);
        if (!p) return std::nullopt;
        tous.insert(tous.end(), p->begin(), p->end());
      }
      return Normalise(std::move(tous));
    }
  }
  return std::nullopt;
}

}  // namespace marbrel::requete

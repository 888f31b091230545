#include "marbrel/query/evaluateur.h"

#include "marbrel/query/comparaison.h"

namespace marbrel::requete {

CritereCompile Compile(const Critere& criteres, const std::function<Item(const Champ&)>& resout) {
  CritereCompile c;
  c.sorte = criteres.sorte;
  if (criteres.sorte == Critere::Sorte::Clause) {
    c.item = resout(criteres.champ);
    c.condition = &criteres.condition;
    return c;
  }
  for (const Critere& enfant : criteres.enfants) c.enfants.push_back(Compile(enfant, resout));
  return c;
}

bool VraiPour(const Condition& condition, const std::string& valeur, bool texte) {
  switch (condition.sorte) {
    case Condition::Sorte::Comparaison:
      return Satisfait(valeur, condition.op, condition.litteral, texte);
    case Condition::Sorte::Et:
      for (const Condition& e : condition.enfants) {
        if (!VraiPour(e, valeur, texte)) return false;
      }
      return true;
    case Condition::Sorte::Ou:
      for (const Condition& e : condition.enfants) {
        if (VraiPour(e, valeur, texte)) return true;
      }
      return false;
  }
  return false;
}

bool Vrai(const CritereCompile& critere, const std::string& cle, const TabDyn& enregistrement) {
  switch (critere.sorte) {
    case Critere::Sorte::Clause:
      for (const std::string& valeur : critere.item.Valeurs(cle, enregistrement)) {
        if (VraiPour(*critere.condition, valeur, critere.item.texte)) return true;
      }
      return false;
    case Critere::Sorte::Et:
      for (const CritereCompile& e : critere.enfants) {
        if (!Vrai(e, cle, enregistrement)) return false;
      }
      return true;
    case Critere::Sorte::Ou:
      for (const CritereCompile& e : critere.enfants) {
        if (Vrai(e, cle, enregistrement)) return true;
      }
      return false;
  }
  return false;
}

}  // namespace marbrel::requete

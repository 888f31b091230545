// The task catalogue as printable lines: type, group and task in fixed
// columns, each line paired with the value the person recorded for that task.
#include <string>
#include <vector>

#include "control/compteur32.h"
#include "control/ctr_vesko.h"
#include "db/lecture.h"
#include "marbrel/marques.h"
#include "marbrel/texte.h"

namespace {

constexpr long kColonneParent = 21;  // type and group columns, label cut to 20
constexpr long kColonneTache = 25;

// The first row at or after `depuis` whose parent code (field 3) is `parent`;
// 0 when there is none, and then the cursor stays where it is, so that a type
// or group without children does not consume the rows of the ones after it.
long Premier_Enfant(const marbrel::Liste_Selection& liste, long depuis, const std::string& parent) {
  for (long r = depuis; r <= liste.DCount(); ++r) {
    if (liste(r, 3) == parent) return r;
  }
  return 0;
}

std::string Colonne_Parent(const std::string& code) {
  return texte::Pad(texte::Left(code, kColonneParent - 1), kColonneParent);
}

std::string Joint(const std::vector<std::string>& valeurs) {
  std::string texte;
  for (size_t i = 0; i < valeurs.size(); ++i) {
    if (i > 0) texte += marbrel::VM;
    texte += valeurs[i];
  }
  return texte;
}

}  // namespace

void Ctr_Vesko::Remplir_Liste_Tache() {
  Liste_Tache = TabDyn();
  Ligne_Tache = 1;
  // The catalogue is the same for every dossier of the run: selected once.
  const marbrel::Liste_Selection& types =
      db::Selection_Du_Run("SSELECT TYPETACHE PAR 1", "TYPETACHE", "0 1");
  const marbrel::Liste_Selection& groupes =
      db::Selection_Du_Run("SSELECT GROUPETACHE PAR 2 PAR 1", "GROUPETACHE", "0 1 2");
  const marbrel::Liste_Selection& taches =
      db::Selection_Du_Run("SSELECT TACHE PAR 2 PAR 1", "TACHE", "0 1 2");
  Nb_Tache = compteur::Entier32(taches.DCount(), "Le nombre de tâches du catalogue");
  // The caller prints the list from these two counters.
  Liste_Nb_Ligne = Nb_Tache;
  Liste_Lignes_Restantes = Nb_Tache;
  if (types.Texte().empty()) return;

  // The lines are gathered apart and stored at the end: one write for the
  // whole list rather than one per task.
  std::vector<std::string> lignes, valeurs;
  long g = 1, k = 1;  // the group and task cursors never go back
  for (long t = 1; t <= types.DCount(); ++t) {
    const std::string type = types(t, 1);
    const long premier_groupe = Premier_Enfant(groupes, g, type);
    if (premier_groupe == 0) continue;
    bool debut_type = true;
    for (g = premier_groupe; g <= groupes.DCount() && groupes(g, 3) == type; ++g) {
      const std::string groupe = groupes(g, 1);
      const long premiere_tache = Premier_Enfant(taches, k, groupe);
      if (premiere_tache == 0) continue;
      bool debut_groupe = true;
      for (k = premiere_tache; k <= taches.DCount() && taches(k, 3) == groupe; ++k) {
        const std::string tache = taches(k, 1);
        std::string ligne = debut_type ? Colonne_Parent(type) : texte::Space(kColonneParent);
        ligne += debut_groupe ? Colonne_Parent(groupe) : texte::Space(kColonneParent);
        ligne += texte::Left(tache, kColonneTache);
        debut_type = debut_groupe = false;

        // The person's value sits at the position of the task's code.
        std::string valeur;
        for (long v = 1;; ++v) {
          const std::string code = Tache_Personne(Tache_Attribut, v);
          if (code.empty()) break;
          if (code == tache) {
            valeur = Tache_Personne(Tache_Attribut + 1, v);
            break;
          }
        }
        lignes.push_back(std::move(ligne));
        valeurs.push_back(std::move(valeur));
        ++Ligne_Tache;
      }
    }
  }
  if (lignes.empty()) return;
  // Values past the last one recorded stay absent, as a task the person does
  // not have leaves nothing at its position.
  while (!valeurs.empty() && valeurs.back().empty()) valeurs.pop_back();
  Liste_Tache = TabDyn(Joint(lignes) + (valeurs.empty() ? "" : marbrel::AM + Joint(valeurs)));
}

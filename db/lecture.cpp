#include "db/lecture.h"

#include <map>

#include "marbrel/erreur.h"
#include "marbrel/marques.h"

namespace db {

namespace {
long jour_du_run = 0;
// The run's selections, by sentence, file and fields.
std::map<std::string, marbrel::Liste_Selection> selections_du_run;
}  // namespace

marbrel::TabDyn& Lit(Fic fichier, const std::string& cle) {
  marbrel::TabDyn& slot = Variable::Enregistrement(fichier);
  if (cle.empty()) {
    slot = {};
    return slot;
  }
  const auto& f = Variable::Fichier(fichier);
  if (!f) {
    throw marbrel::Erreur(
        marbrel::ERR_FICHIER_INCONNU,
        "Le fichier " + std::string(Variable::Nom(fichier)) + " n'est pas ouvert.");
  }
  try {
    slot = f->Lit(cle);
  } catch (const marbrel::Erreur& e) {
    if (e.Numero() != marbrel::ERR_CLE_ABSENTE) throw;
    slot = {};
  }
  return slot;
}

marbrel::TabDyn& Charge_Table(const std::string& code_table) {
  Variable::Tables = Lit(Fic::TABLES, code_table);
  return Variable::Tables;
}

long Position_Code(const marbrel::TabDyn& table, const std::string& code) {
  for (long i = 1;; ++i) {
    std::string valeur = table(2, i);
    if (valeur.empty()) return 0;
    if (valeur == code) return i;
  }
}

long Position_Arret(const marbrel::TabDyn& table, const std::string& code) {
  for (long i = 1;; ++i) {
    std::string valeur = table(2, i);
    if (valeur.empty() || valeur == code) return i;
  }
}

std::string Libelle(const marbrel::TabDyn& table, const std::string& code) {
  long i = Position_Code(table, code);
  return i == 0 ? "" : table(3, i);
}

std::string Libelle_Arret(const marbrel::TabDyn& table, const std::string& code) {
  return table(3, Position_Arret(table, code));
}

std::string Libelle_Table(const std::string& code_table, const std::string& code) {
  return Libelle_Arret(Charge_Table(code_table), code);
}

marbrel::Liste_Selection Selection(const std::string& phrase, const std::string& fichier,
                                   const std::string& champs) {
  marbrel::TabDyn commande;
  commande.Remplace(1, phrase);
  commande.Remplace(2, fichier);
  commande.Remplace(3, champs);
  if (!Variable::Base) {
    throw marbrel::Erreur(marbrel::ERR_BASE, "Aucune base ouverte pour la sélection.");
  }
  return Variable::Base->Selectionne(commande.Extrait(-1, -1, -1), "");
}

const marbrel::Liste_Selection& Selection_Du_Run(const std::string& phrase,
                                                 const std::string& fichier,
                                                 const std::string& champs) {
  const std::string cle = phrase + marbrel::AM + fichier + marbrel::AM + champs;
  if (auto trouvee = selections_du_run.find(cle); trouvee != selections_du_run.end()) {
    return trouvee->second;
  }
  // A selection that fails is not kept: the next dossier tries again.
  return selections_du_run.emplace(cle, Selection(phrase, fichier, champs)).first->second;
}

void Oublie_Selections_Du_Run() { selections_du_run.clear(); }

long Aujourdhui() { return jour_du_run; }
void FixeAujourdhui(long jour) { jour_du_run = jour; }

}  // namespace db

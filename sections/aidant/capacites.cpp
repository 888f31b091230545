// A carer's capacities and behaviour marks, a care recipient's tasks to do
// and behaviour: each a framed list printed by ImprimeDonnées, a carer's
// followed by its total.
#include "control/compteur32.h"
#include "control/ctr_vesko.h"
#include "db/code_personne.h"
#include "db/lecture.h"
#include "db/variable.h"
#include "layout/lignes.h"
#include "layout/liste_donnees.h"
#include "marbrel/texte.h"

namespace {

const std::string kEnteteCapacites = "                Libellé                        Temps";
const std::string kEnteteTaches =
    "                         Libellé                                         Valeur";
const std::string kEnteteComportement = "                Libellé                        Note";

// The total under the value column: "Total :  " ends where the values begin.
std::string Ligne_Total(long long centiemes, bool en_heures) {
  return texte::Space(38) + "Total :  " +
         texte::PadLeft(mise_en_page::Texte_Nombre(centiemes, en_heures),
                        mise_en_page::kLargeurValeur - 1);
}

}  // namespace

void Ctr_Vesko::Capacite_Tache(std::string& W_Code) {
  Code_Dossier = W_Code;
  Liste_Largeur = 55;
  Liste_Source = TabDyn();
  Liste_Catalogue = false;
  Liste_Centiemes = false;
  // The keys of these lists are the code followed by more characters.
  db::Exige_Code_Isolable(W_Code);
  const bool aidant = Type_Dossier == "AIDANT";
  if (!mise_en_page::Place_Pour_Liste(P())) NewPage(W_Code);

  if (!aidant) {
    Titre("TACHES A ACCOMPLIR");
    const std::string suite = Variable::Enregistrement(Fic::BESOINSAIDE)(1, 1);
    Liste_Source = db::Lit(Fic::AIDEDETAILTACHE, W_Code + suite);
    Liste_Attribut = 1;
    W_PointDepart = Monnaie::De(P().CurrentY());
    Tache_Personne = Liste_Source;
    Tache_Attribut = 1;
    // The whole catalogue is listed, the person's values beside the tasks
    // they have: Remplir_Liste_Tache sets the row count to its size.
    Remplir_Liste_Tache();
    Liste_Catalogue = true;
    Liste_Type = 1;
  } else {
    Titre("CAPACITES");
    Liste_Source = db::Lit(Fic::CAPIMPAIDANT, W_Code + "C" + Variable::Principal(49));
    Liste_Attribut = 2;
    W_PointDepart = Monnaie::De(P().CurrentY());
    Liste_Nb_Ligne = compteur::Entier32(Liste_Source.DCount(), "Le nombre de capacités");
    Liste_Type = 2;
    // Capacities are times, stored in hundredths of an hour.
    Liste_Centiemes = true;
  }
  Liste_Entete = aidant ? kEnteteCapacites : kEnteteTaches;
  P().Print(Liste_Entete);
  db::Charge_Table("DEFTECH");
  Liste_Taille_Col =
      mise_en_page::Largeurs(aidant ? std::initializer_list<const char*>{"8.5", "2.5"}
                                    : std::initializer_list<const char*>{"14.3", "2.5"});
  Liste_Ligne_Par_Page = static_cast<std::int32_t>(mise_en_page::Lignes_Par_Page(P()));
  ImprimeDonnées(W_Code);

  mise_en_page::Ligne_Vide(P());
  mise_en_page::Ligne_Vide(P());
  if (aidant) P().Print(Ligne_Total(Liste_Total, true));
  mise_en_page::Blanc(P());
}

void Ctr_Vesko::Comportement() {
  // Called without the key: it is the one Capacite_Tache printed for, just
  // before, and for a care recipient that section also left the source record.
  std::string W_Code = Code_Dossier;
  db::Exige_Code_Isolable(W_Code);
  Liste_Largeur = 55;
  Liste_Catalogue = false;
  Liste_Centiemes = false;
  const bool aidant = Type_Dossier == "AIDANT";
  if (!mise_en_page::Place_Pour_Liste(P())) NewPage(W_Code);
  Titre("COMPORTEMENT");

  if (aidant) {
    Liste_Source = db::Lit(Fic::CAPIMPAIDANT, W_Code + "I" + Variable::Principal(50));
    Liste_Attribut = 2;
    Liste_Nb_Ligne = compteur::Entier32(Liste_Source.DCount(), "Le nombre de notes");
    Liste_Type = 2;
  } else {
    Liste_Attribut = 14;
    Liste_Nb_Ligne = compteur::Entier32(Liste_Source.DCount(14), "Le nombre de notes");
    Liste_Type = 1;
  }
  W_PointDepart = Monnaie::De(P().CurrentY());
  Liste_Entete = kEnteteComportement;
  P().Print(Liste_Entete);
  db::Charge_Table("IMPGENE");
  Liste_Taille_Col = mise_en_page::Largeurs({"8.5", "2.5"});
  Liste_Ligne_Par_Page = static_cast<std::int32_t>(mise_en_page::Lignes_Par_Page(P()));
  ImprimeDonnées(W_Code);

  mise_en_page::Ligne_Vide(P());
  mise_en_page::Ligne_Vide(P());
  if (aidant) P().Print(Ligne_Total(Liste_Total, false));
  mise_en_page::Blanc(P());
}

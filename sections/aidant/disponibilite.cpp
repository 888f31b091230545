// When a person can or cannot be given work: a carer's weekly availability,
// and the current and coming unavailabilities of a carer or a care recipient.
#include "control/ctr_vesko.h"
#include "db/code_personne.h"
#include "db/lecture.h"
#include "db/variable.h"
#include "layout/lignes.h"
#include "marbrel/outils.h"
#include "marbrel/texte.h"
#include "sections/aidant/heures.h"
#include "sections/aidant/indisponibilite.h"

namespace {

// The unavailability table always has 15 rows below its header.
constexpr long kLignesIndispo = 15;
// The care recipient's observations run to the frame's edge; a carer's leave
// room for the "Empl." column.
constexpr const char* kEnteteAide =
    "         Jour      Date debut Date fin    De    A    Freq  Observations        ";
constexpr const char* kEnteteAidant =
    "         Jour      Date debut Date fin    De    A    Freq  Observations         Empl.";

// A day of the week-end: the answer then room up to the next day's label.
std::string Jour_Dispo(const std::string& code) {
  std::string reponse = mise_en_page::OuiNon(code);
  return reponse.empty() ? texte::Space(13) : reponse + texte::Space(10);
}

}  // namespace

void Ctr_Vesko::Dispo(std::string& W_Code) {
  const auto& outils = marbrel::Outils::Instance();
  Titre("DISPONIBILITES");
  const TabDyn& dispo = db::Lit(Fic::TPSAIDANTDISPO, W_Code);

  const std::string stocke = dispo(1);
  std::string heures;
  if (!stocke.empty()) {
    std::optional<std::string> lues = aidant::Heures(stocke, 4);
    if (!lues) {
      incidents_.push_back(
          {"Dispo", W_Code, aidant::Heures_Illisibles(stocke, "TPSAIDANTDISPO", W_Code, 1, 0)});
    }
    heures = lues.value_or(stocke);
  }
  P().Print(" Nombre d'heures : " + heures);

  P().Print(" Samedi          : ", false);
  P().Print(Jour_Dispo(dispo(7)), false);
  P().Print("Dimanche  : ", false);
  P().Print(Jour_Dispo(dispo(8)), false);
  P().Print("Nuit : ", false);
  P().Print(mise_en_page::OuiNon(dispo(6)));

  // The period comes from the training record that Formation loaded.
  const TabDyn& formexp = Variable::Enregistrement(Fic::FORMEXPAIDANT);
  const std::string debut = outils.Date_Externe(formexp(12));
  const std::string fin = outils.Date_Externe(formexp(13));
  P().Print(" Début dispo     : " + debut + texte::Space(13 - texte::Len(debut)) +
            "Fin dispo : " + fin);
}

// Unlike every other section, a failure here is not skipped: a selection
// that fails or a row whose key does not hold its times ends the section, and
// the print run reports it with the row's key.
void Ctr_Vesko::Indispo(std::string& W_Code) {
  const bool est_aidant = Type_Dossier == "AIDANT";
  const std::string fichier = est_aidant ? "TPSAIDANTINDISPO" : "TPSAIDEINDISPO";
  Resultat_Selection = TabDyn();
  // The rows are found by the code as the beginning of their keys.
  db::Exige_Code_Isolable(W_Code);
  if (est_aidant) {
    P().Print(" Indisponibilités personnelles");
    mise_en_page::Blanc(P());
  } else {
    Titre("INDISPONIBILITES");
  }

  // An empty key still runs the selection; its rows are not printed.
  const std::string phrase = aidant::Phrase_Indispo(fichier, W_Code, db::Aujourdhui());
  Resultat_Selection =
      TabDyn(db::Selection(phrase, fichier, est_aidant ? "0 1 2 3 4 5" : "0 1 2 3 4").Texte());
  if (const long ecartees = aidant::Garde_Lignes_Du_Code(Resultat_Selection, W_Code)) {
    incidents_.push_back({"Indispo", W_Code,
                          std::to_string(ecartees) + " ligne(s) de " + fichier +
                              " écartée(s) : leur clé commence par ce code mais dépasse " +
                              std::to_string(aidant::kLongueurCleIndispo) +
                              " caractères (elle appartient à un code plus long)."});
  }

  W_PointDepart = Monnaie::De(P().CurrentY());
  P().Print(est_aidant ? kEnteteAidant : kEnteteAide);
  for (long r = 1; r <= kLignesIndispo; ++r) {
    if (W_Code.empty() || Resultat_Selection(r).empty()) {
      mise_en_page::Blanc(P());
    } else {
      P().Print(aidant::Ligne_Indispo(Resultat_Selection, r, est_aidant));
    }
  }
  Taille_Col =
      est_aidant ? mise_en_page::Largeurs({"2.3", "2.5", "2.6", "1.4", "1.4", "1.1", "5.1", "1.4"})
                 : mise_en_page::Largeurs({"2.3", "2.5", "2.6", "1.4", "1.4", "1.1", "6.5"});
  Cadre(W_PointDepart, kLignesIndispo + 1, Taille_Col);
  mise_en_page::Blanc(P());
}

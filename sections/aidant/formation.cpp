// A carer's training, experience and possible activities. All three print
// from the carer's FORMEXPAIDANT record, which Formation reads into its slot;
// Experience, Activite and later Dispo print from that slot, so Formation
// comes first in a carer's dossier.
#include "control/ctr_vesko.h"
#include "db/lecture.h"
#include "db/variable.h"
#include "layout/lignes.h"
#include "marbrel/outils.h"
#include "marbrel/texte.h"
#include "sections/aidant/heures.h"

namespace {

using texte::Len;
using texte::Space;

// The training table: a header and always ten rows, whatever the record holds.
constexpr long kFormations = 10;
constexpr long kExperiences = 7;
constexpr long kActivites = 6;

std::string Diplome_Ou_Niveau(const std::string& code) {
  const std::string etiquette = mise_en_page::Etiquette("Diplôme / Niveau");
  if (code == "D") return etiquette + "Diplôme";
  if (code == "N") return etiquette + "Niveau";
  // Nothing stated: the label stops at its colon.
  return texte::Left(etiquette, Len(etiquette) - 1);
}

}  // namespace

void Ctr_Vesko::Formation(std::string& W_Code) {
  TabDyn& formexp = db::Lit(Fic::FORMEXPAIDANT, W_Code);
  const auto& outils = marbrel::Outils::Instance();
  Titre("FORMATION");

  TabDyn& diplomes = db::Charge_Table("DIPLOMES");
  std::string etudes = db::Libelle_Arret(diplomes, formexp(2));
  P().Print(mise_en_page::Etiquette("Etudes") + etudes + Space(30 - Len(etudes)) +
            " Année         : " + formexp(3));
  P().Print(Diplome_Ou_Niveau(formexp(1)));
  mise_en_page::Ligne(P(), "Spécialité", formexp(4));
  mise_en_page::Blanc(P());

  W_PointDepart = Monnaie::De(P().CurrentY());
  P().Print("            Date           Formation             Heures       Observations");
  // Eight characters and two spaces, or ten spaces when no hours are stored.
  // Unreadable hours are printed as stored, in the same width, and reported.
  auto colonne_heures = [&](long j) {
    const std::string stocke = formexp(7, j);
    if (stocke.empty()) return Space(10);
    std::optional<std::string> heures = aidant::Heures(stocke, 5);
    if (!heures) {
      incidents_.push_back(
          {"Formation", W_Code, aidant::Heures_Illisibles(stocke, "FORMEXPAIDANT", W_Code, 7, j)});
      heures = texte::PadLeft(stocke, 8);
    }
    return *heures + Space(2);
  };
  TabDyn& formpro = db::Charge_Table("FORMPRO");
  for (long j = 1; j <= kFormations; ++j) {
    const std::string code = formexp(6, j);
    if (code.empty()) {
      mise_en_page::Blanc(P());
      continue;
    }
    const std::string date = formexp(5, j);
    P().Print(date.empty() ? Space(21) : Space(9) + outils.Date_Externe(date) + Space(2), false);
    // Long labels are cut in the table held in memory, so the carer's later
    // trainings of the same kind find the short text.
    std::string libelle = mise_en_page::Coupe(formpro, 3, db::Position_Arret(formpro, code), 26);
    P().Print(libelle + Space(28 - Len(libelle)), false);
    P().Print(colonne_heures(j), false);
    P().Print(mise_en_page::Coupe(formexp, 8, j, 17));
  }
  Taille_Col = mise_en_page::Largeurs({"2.9", "6.4", "2.5", "4.2"});
  Cadre(W_PointDepart, kFormations + 1, Taille_Col);
  mise_en_page::Blanc(P());
}

void Ctr_Vesko::Experience() {
  const TabDyn& formexp = Variable::Enregistrement(Fic::FORMEXPAIDANT);
  Titre("EXPERIENCES");
  for (long i = 1; i <= kExperiences; ++i) P().Print(" " + formexp(9, i));
}

void Ctr_Vesko::Activite() {
  const TabDyn& formexp = Variable::Enregistrement(Fic::FORMEXPAIDANT);
  Titre("ACTIVITES POSSIBLES");
  for (long j = 1; j < kActivites; j += 2) {
    const std::string gauche = formexp(10, j);
    const std::string droite = formexp(10, j + 1);
    // An empty left column prints nothing at all: the right activity then
    // starts the line.
    if (!gauche.empty()) {
      std::string libelle = db::Lit(Fic::ACTIVITES, gauche)(1);
      P().Print(" " + libelle + Space(40 - Len(libelle)), false);
    }
    P().Print(droite.empty() ? " " : db::Lit(Fic::ACTIVITES, droite)(1));
  }
}

// The carers declared incompatible with a care recipient, in name order: a
// framed table that always has ten rows, so the page keeps its shape.
#include "control/ctr_vesko.h"
#include "db/code_personne.h"
#include "db/lecture.h"
#include "db/variable.h"
#include "layout/lignes.h"
#include "layout/liste_donnees.h"
#include "marbrel/query/litteral.h"
#include "marbrel/texte.h"

namespace {

constexpr std::int32_t kRangees = 10;
constexpr long kLongueurCodeAidant = 5;  // a carer's code opens the record's key

}  // namespace

void Ctr_Vesko::Aidant_Incompatible(std::string& W_Code) {
  db::Exige_Code_Isolable(W_Code);
  // The title stays with its table: a long mission text above may have left
  // too little of the page.
  if (mise_en_page::Lignes_Restantes_Page(P()) < mise_en_page::Lignes_Titre() + 1 + kRangees) {
    NewPage(W_Code);
  }
  Titre("AIDANTS INCOMPATIBLES");
  W_PointDepart = Monnaie::De(P().CurrentY());
  P().Print("           Code               Nom Prénom");

  // An empty code selects nobody: the ten rows stay blank.
  const marbrel::Liste_Selection incompatibles =
      W_Code.empty()
          ? marbrel::Liste_Selection()
          : db::Selection("SSELECT TPSINCOMPATIBILITES AVEC CodeAide = " +
                              marbrel::requete::Litteral(W_Code) + " PAR NomPrenomAidantIncomp",
                          "TPSINCOMPATIBILITES", "0");
  // Only the first ten in name order; rows past the last carer hold spaces.
  for (long i = 1; i <= kRangees; ++i) {
    const std::string code = texte::Left(incompatibles(i, 1), kLongueurCodeAidant);
    const TabDyn& aidant = db::Lit(Fic::CIVILAIDANT, code);
    P().Print(texte::Space(10) + code + "   " + aidant(2) + " " + aidant(3));
  }
  Taille_Col = mise_en_page::Largeurs({"2", "9"});
  Cadre(W_PointDepart, kRangees + 1, Taille_Col);
}

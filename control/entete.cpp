// The page header: the first page's with the dossier title, and the running
// header of every following page.
#include "control/compteur32.h"
#include "control/ctr_vesko.h"
#include "db/lecture.h"
#include "db/variable.h"
#include "marbrel/outils.h"
#include "marbrel/texte.h"

namespace {

std::string LigneDate(std::int32_t page) {
  return "Date : " + marbrel::Outils::Instance().Date_Externe(db::Aujourdhui()) + texte::Space(55) +
         "Page " + std::to_string(page);
}

std::string LignePersonne(const std::string& code) {
  return code + " " + Variable::Principal(2) + " " + Variable::Principal(3);
}

}  // namespace

void Ctr_Vesko::Entete_Page(std::string& W_Code) {
  for (int i = 0; i < 4; ++i) P().Print(" ");
  Num_Page = 1;
  P().Print(LigneDate(Num_Page));
  P().Print(" ");
  P().Print(" ");
  P().SetFontSize(18);
  P().SetFontBold(true);
  P().Print(texte::Space(17) + (Type_Dossier == "AIDANT" ? "DOSSIER AIDANT" : "DOSSIER AIDE"));
  P().SetFontBold(false);
  P().SetFontSize(11);
  P().Print(" ");
  P().Print(" ");
  P().Print(LignePersonne(W_Code));
  P().Print(" ");
  P().Print(" ");
}

void Ctr_Vesko::NewPage(std::string& W_Code) {
  // A page number that cannot grow is an error of the run, found before the
  // page is ejected: never a page numbered back from the smallest integer.
  const std::int32_t suivante = compteur::Suivant(Num_Page, "Le numéro de page");
  P().NewPage();
  P().Print(" ");
  P().Print(" ");
  Num_Page = suivante;
  P().Print(LigneDate(Num_Page));
  P().Print(" ");
  P().Print(" ");
  P().Print(LignePersonne(W_Code));
  P().Print(" ");
  P().Print(" ");
}

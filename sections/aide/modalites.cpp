// How the service intervenes at a care recipient's home: the text for the
// carers' mission orders and the planning information. The needs record read
// here stays in its slot: the tasks section builds its key from it later.
#include "control/ctr_vesko.h"
#include "db/lecture.h"
#include "db/variable.h"
#include "layout/lignes.h"
#include "layout/page_pleine.h"
#include "layout/texte_libre.h"
#include "marbrel/texte.h"

namespace {

// Free text starts one space in, like the notes: a full 76-character piece
// then makes a 77-character line.
const std::string kRetraitTexte = texte::Space(1);

// Several planning values share the one line, in their stored order.
std::string Planning(const TabDyn& besoins) {
  std::string ligne;
  for (long v = 1; v <= besoins.DCount(17); ++v) {
    const std::string valeur = besoins(17, v);
    if (valeur.empty()) continue;
    if (!ligne.empty()) ligne += ", ";
    ligne += valeur;
  }
  return ligne;
}

}  // namespace

void Ctr_Vesko::Modalite_Interv(std::string& W_Code) {
  const TabDyn& besoins = db::Lit(Fic::BESOINSAIDE, W_Code);
  Titre("MODALITES D'INTERVENTION");

  auto intertitre = [this](const std::string& libelle) {
    P().SetFontUnderline(true);
    P().Print(libelle);
    P().SetFontUnderline(false);
    mise_en_page::Blanc(P());
  };

  intertitre("Informations pour ordre de mission :");
  // The whole mission text is printed, however long: a full page goes on
  // under the running header rather than losing the end of an order.
  const auto coupure = [this](const std::string& t) { return Position_Coupure(t); };
  for (const std::string& ligne : mise_en_page::Decoupe_Texte(besoins(5), 76, coupure)) {
    if (mise_en_page::Page_Pleine(P())) NewPage(W_Code);
    P().Print(kRetraitTexte + ligne);
  }
  mise_en_page::Blanc(P());
  mise_en_page::Blanc(P());

  intertitre("Informations pour planning :");
  P().Print(kRetraitTexte + Planning(besoins));
}

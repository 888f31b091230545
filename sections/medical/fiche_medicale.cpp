// The care recipient's medical sheet: history, diagnosis and treatment, each
// printed from the latest dated entry of its attribute, and the treatment
// table. The layout of the record is described in docs/donnees-sections.md.
#include "control/ctr_vesko.h"
#include "db/lecture.h"
#include "db/variable.h"
#include "layout/lignes.h"
#include "layout/page_pleine.h"
#include "layout/texte_libre.h"
#include "marbrel/outils.h"
#include "marbrel/texte.h"
#include "sections/medical/traitement.h"

namespace {

// An entry value: its date, then its text.
constexpr long kDateEntree = 1;
constexpr long kTexteEntree = 2;
// A sheet is a summary: the start of a long entry is kept, the rest dropped.
constexpr std::int32_t kLignesEntree = 15;
constexpr long kLargeur = 76;

// The key of the sheet in the slot, kept beside it for the running header of
// a page that the later medical sections fill (they take no key).
std::string cle_fiche;

}  // namespace

void Ctr_Vesko::Antecedent(std::string& W_Code) {
  Titre("ANTECEDENTS MEDICAUX");
  db::Lit(Fic::FICHEMEDAIDE, W_Code);
  cle_fiche = W_Code;
  std::int32_t groupe = 2;
  Fiche_Med(groupe);
}

void Ctr_Vesko::Diagnostic() {
  Titre("DIAGNOSTIC");
  std::int32_t groupe = 4;
  Fiche_Med(groupe);
}

void Ctr_Vesko::Trait_Med() {
  Titre("TRAITEMENT MEDICAL");
  std::int32_t groupe = 6;
  Fiche_Med(groupe);
}

void Ctr_Vesko::Fiche_Med(std::int32_t& W_Att) {
  TabDyn& fiche = Variable::Enregistrement(Fic::FICHEMEDAIDE);
  auto imprime = [this](const std::string& ligne) {
    if (mise_en_page::Page_Pleine(P())) NewPage(cle_fiche);
    P().Print(ligne);
  };

  // Only the latest entry is current; the earlier ones are its history.
  const long derniere = fiche.DCount(W_Att);
  if (!fiche(W_Att, derniere).empty()) {
    const std::string date =
        marbrel::Outils::Instance().Date_Externe(fiche(W_Att, derniere, kDateEntree));
    if (mise_en_page::Page_Pleine(P())) NewPage(cle_fiche);
    P().Print(" ", false);
    P().SetFontBold(true);
    P().Print("Date :", false);
    P().SetFontBold(false);
    P().Print(" " + date);

    const auto coupure = [this](const std::string& t) { return Position_Coupure(t); };
    const auto lignes =
        mise_en_page::Decoupe_Texte(fiche(W_Att, derniere, kTexteEntree), kLargeur, coupure);
    for (std::int32_t n = 0; n < kLignesEntree && n < static_cast<std::int32_t>(lignes.size());
         ++n) {
      imprime(" " + lignes[n]);
    }
  }
  if (W_Att != 6) return;

  imprime(" ");
  imprime(traitement::Entete());
  for (long i = 1; i <= kLignesEntree && !fiche(10, i).empty(); ++i) {
    imprime(traitement::Ligne(fiche, i));
  }
}

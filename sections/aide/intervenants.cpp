// The outside professionals of a care recipient (doctor, nurse,
// physiotherapist, social worker...): a framed table of at least eight rows,
// then the observations written about them, each under its professional's name.
//
// INTERVENANTEXT, keyed by the care recipient's code, holds one professional
// per value position across its attributes: 1 the type (code of the "TABLES"
// record "AUTRINTERVENANT"), 2 the name, 3 the telephone, 4 the address or
// town, 5 the observation (free text, stored lines separated by CR LF).
#include "control/ctr_vesko.h"
#include "db/lecture.h"
#include "db/variable.h"
#include "layout/lignes.h"
#include "layout/liste_donnees.h"
#include "layout/page_pleine.h"
#include "layout/texte_libre.h"
#include "marbrel/texte.h"

namespace {

// The columns, in characters, and the frame drawn around them from the left
// margin: each separator falls between the two spaces that part two columns.
constexpr long kType = 16, kNom = 22, kTelephone = 14, kAdresse = 18;
const std::string kEcart = "  ";
constexpr std::int32_t kRangeesMinimum = 8;  // the table keeps its shape when short
// Observations go on under the name, in what is left of a 78-character line.
constexpr long kRetraitObservation = 2 + kNom + 3;
constexpr long kLargeurObservation = 78 - kRetraitObservation;

std::string Rangee(const std::string& type, const std::string& nom, const std::string& telephone,
                   const std::string& adresse) {
  return kEcart + texte::Pad(type, kType) + kEcart + texte::Pad(nom, kNom) + kEcart +
         texte::Pad(telephone, kTelephone) + kEcart + adresse;
}

}  // namespace

void Ctr_Vesko::Intervenants_Exterieurs() {
  // Called without the key: the person is the one whose dossier is printing.
  std::string W_Code = Code_Dossier;
  TabDyn& intervenants = db::Lit(Fic::INTERVENANTEXT, W_Code);
  const TabDyn types = db::Charge_Table("AUTRINTERVENANT");
  const long nombre = intervenants.DCount();
  const std::int32_t rangees =
      std::max<std::int32_t>(kRangeesMinimum, static_cast<std::int32_t>(nombre));

  if (mise_en_page::Lignes_Restantes_Page(P()) < mise_en_page::Lignes_Titre() + 1 + rangees) {
    NewPage(W_Code);
  }
  Titre("INTERVENANTS EXTERIEURS");
  W_PointDepart = Monnaie::De(P().CurrentY());
  P().Print(Rangee("Type", "Nom", "Téléphone", "Adresse ou ville"));
  for (long i = 1; i <= rangees; ++i) {
    if (i > nombre) {
      mise_en_page::Ligne_Vide(P());
      continue;
    }
    const std::string type = texte::Left(db::Libelle(types, intervenants(1, i)), kType);
    P().Print(Rangee(type, mise_en_page::Coupe(intervenants, 2, i, kNom),
                     mise_en_page::Coupe(intervenants, 3, i, kTelephone),
                     mise_en_page::Coupe(intervenants, 4, i, kAdresse)));
  }
  Cadre_Gauche = true;
  Taille_Col = mise_en_page::Largeurs({"2.4", "5.6", "3.7", "4.7"});
  Cadre(W_PointDepart, rangees + 1, Taille_Col);

  bool premiere = true;
  const auto coupure = [this](const std::string& t) { return Position_Coupure(t); };
  for (long i = 1; i <= nombre; ++i) {
    const auto lignes =
        mise_en_page::Decoupe_Texte(intervenants(5, i), kLargeurObservation, coupure);
    if (lignes.empty()) continue;
    if (premiere) {
      mise_en_page::Blanc(P());
      P().SetFontUnderline(true);
      P().Print(" Observations :");
      P().SetFontUnderline(false);
      mise_en_page::Blanc(P());
      premiere = false;
    }
    // A professional without a name is known by its type.
    std::string qui = intervenants(2, i);
    if (qui.empty()) qui = texte::Left(db::Libelle(types, intervenants(1, i)), kNom);
    std::string debut = kEcart + texte::Pad(qui, kNom) + " : ";
    for (const std::string& ligne : lignes) {
      if (mise_en_page::Page_Pleine(P())) NewPage(W_Code);
      P().Print(debut + ligne);
      debut = texte::Space(kRetraitObservation);
    }
  }
}

// How a care recipient's file came to the service: first contact, its origin,
// the contact's name and the needs expressed, the free texts laid out under
// their labels.
#include "control/ctr_vesko.h"
#include "db/lecture.h"
#include "db/variable.h"
#include "layout/lignes.h"
#include "layout/page_pleine.h"
#include "layout/texte_libre.h"
#include "marbrel/outils.h"
#include "marbrel/texte.h"

using mise_en_page::Ligne;

namespace {

// The width of a piece of free text in the value column.
constexpr long kLargeurValeur = 60;

// The key of the record being printed, kept beside its slot for the running
// header of a page that a long text fills.
std::string cle_origine;

}  // namespace

void Ctr_Vesko::Origine_Dossier(std::string& W_Code) {
  Titre("ORIGINE DOSSIER");
  const TabDyn& origine = db::Lit(Fic::ORIGINEAIDE, W_Code);
  cle_origine = W_Code;

  Ligne(P(), "Date 1er contact", marbrel::Outils::Instance().Date_Externe(origine(1)));
  Ligne(P(), "Type du contact", origine(2));
  Ligne(P(), "Origine contact", db::Libelle_Table("ORIGINECONTACT", origine(3)));

  std::int32_t attribut = 4;
  std::string libelle = mise_en_page::Etiquette("Nom du contact");
  Origine_Contact(attribut, libelle);
  attribut = 5;
  libelle = mise_en_page::Etiquette("Besoins formulés");
  Origine_Contact(attribut, libelle);
}

void Ctr_Vesko::Origine_Contact(std::int32_t& W_Att, std::string& W_Lib) {
  const TabDyn& origine = Variable::Enregistrement(Fic::ORIGINEAIDE);
  const auto coupure = [this](const std::string& t) { return Position_Coupure(t); };
  auto lignes = mise_en_page::Decoupe_Texte(origine(W_Att), kLargeurValeur, coupure);
  // An empty text still shows its label, like every other empty value.
  if (lignes.empty()) lignes.emplace_back();

  std::string debut = W_Lib;
  for (const std::string& ligne : lignes) {
    if (mise_en_page::Page_Pleine(P())) NewPage(cle_origine);
    P().Print(debut + ligne);
    debut = texte::Space(mise_en_page::kRetrait);
  }
}

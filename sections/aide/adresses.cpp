// Where the invoices go and where the money comes from: the care recipient's
// invoicing address, and the bank details of both kinds of dossier.
#include "control/ctr_vesko.h"
#include "db/lecture.h"
#include "layout/lignes.h"
#include "marbrel/texte.h"

using mise_en_page::Blanc;
using mise_en_page::Ligne;

namespace {

// The invoicing record keeps its bank details from attribute 18 on, the
// carer's bank record from attribute 3 on; the four fields follow each other
// in the same order in both.
constexpr long kBanqueAide = 18;
constexpr long kBanqueAidant = 3;

std::string Periodicite(const std::string& code) {
  if (code == "M") return "Mensuelle";
  if (code == "T") return "Trimestrielle";
  return "";
}

// The street pieces joined by single spaces, empty pieces skipped. A street
// without a fourth piece keeps the space after the third.
std::string Rue(const TabDyn& r) {
  std::string rue;
  for (long a = 3; a <= 5; ++a) {
    if (!r(a).empty()) rue += r(a) + " ";
  }
  if (!r(6).empty()) rue += r(6);
  return rue;
}

std::string Ville(const TabDyn& r) {
  std::string ville = r(8) + " " + r(9);
  if (r(10) == "1") ville += " Cedex " + r(11);
  return ville;
}

// A value, then spaces up to 30 characters, before a second label that is
// shorter than the usual 24 characters.
std::string Deux_Colonnes(const std::string& gauche, const std::string& libelle_droite,
                          const std::string& droite) {
  return gauche + texte::Space(30 - texte::Len(gauche)) + libelle_droite + droite;
}

}  // namespace

void Ctr_Vesko::Adresse_Facturation(std::string& W_Code) {
  const TabDyn& f = db::Lit(Fic::ELTSFACTAIDE, W_Code);
  Titre("ADRESSE FACTURATION");
  Ligne(P(), "Périodicité", Periodicite(f(1)));
  Ligne(P(), "Nom", f(2));

  // The block always takes three lines, so what follows stays in place
  // whichever parts of the address are known.
  const std::string rue = Rue(f);
  const std::string complement = f(7);
  const std::string ville = Ville(f);
  const std::string retrait = texte::Space(mise_en_page::kRetrait);
  if (!rue.empty()) {
    Ligne(P(), "Adresse", rue);
    if (!complement.empty()) {
      P().Print(retrait + complement);
      P().Print(retrait + ville);
    } else {
      P().Print(retrait + ville);
      Blanc(P());
    }
  } else if (!complement.empty()) {
    Ligne(P(), "Adresse", complement);
    P().Print(retrait + ville);
    Blanc(P());
  } else {
    Ligne(P(), "Adresse", ville);
    Blanc(P());
    Blanc(P());
  }

  Ligne(P(), "Relation", f(15));
  Blanc(P());
}

void Ctr_Vesko::Adresse_Bancaire(std::string& W_Code) {
  // A care recipient's bank details are part of the invoicing record that
  // Adresse_Facturation has just read; any other dossier has its own record.
  const bool aide = Type_Dossier == "AIDE";
  const TabDyn& r =
      aide ? Variable::Enregistrement(Fic::ELTSFACTAIDE) : db::Lit(Fic::RIBAIDANT, W_Code);
  const long b = aide ? kBanqueAide : kBanqueAidant;
  Titre("ADRESSE BANCAIRE");

  const TabDyn& banque = db::Lit(Fic::BIC, r(b));
  Ligne(P(), "Nom banque", banque(2, 1));
  P().Print(mise_en_page::Etiquette("Code banque") +
            Deux_Colonnes(r(b), " Code guichet  : ", r(b + 1)));
  P().Print(mise_en_page::Etiquette("Numéro de compte") +
            Deux_Colonnes(r(b + 2), " Clé           : ", r(b + 3)));

  if (!aide) return;
  // Only an explicit refusal ("1") stops the direct debit.
  if (r(25) == "1") {
    Ligne(P(), "Prélèvement", "NON");
  } else if (!W_Code.empty()) {
    Ligne(P(), "Prélèvement", "OUI");
  } else {
    Ligne(P(), "Prélèvement", "");
  }
}

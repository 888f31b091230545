// ETAT CIVIL: the first section of every dossier, for a care recipient and
// for a carer alike. The two civil records share the name and the address and
// number everything else differently, so the numbers are chosen once by type.
#include <algorithm>

#include "control/ctr_vesko.h"
#include "db/lecture.h"
#include "db/variable.h"
#include "layout/age.h"
#include "layout/lignes.h"
#include "marbrel/outils.h"
#include "marbrel/texte.h"

using mise_en_page::Blanc;
using mise_en_page::Etiquette;
using mise_en_page::Ligne;

namespace {

// Where the two civil records keep what Etat_Civil prints differently.
struct Attributs {
  long nir, naissance, lieu, pays, situation;
};
constexpr Attributs kAide{18, 20, 21, 24, 25};
constexpr Attributs kAidant{17, 26, 27, 30, 21};

// The observation sits under the telephone number: its label is indented by
// eight spaces and is still 24 characters wide.
const std::string kObservations = "        Observations  : ";

std::string Situation_Familiale(const std::string& code) {
  if (code == "1") return "Marié";
  if (code == "2") return "Célibataire";
  if (code == "3") return "Veuf";
  if (code == "4") return "Divorcé";
  if (code == "5") return "Vie maritale";
  if (code == "6") return "Séparé";
  if (code == "7") return "Pacs";
  return "";
}

std::string Lien_Personne_A_Charge(const std::string& code) {
  if (code == "1") return "Enfant";
  if (code == "2") return "Grand-Parent";
  if (code == "3") return "Parent";
  if (code == "4") return "Petit Enfant";
  if (code == "5") return "Conjoint";
  return "";
}

// The street pieces 5 to 8 joined by single spaces, empty pieces skipped. The
// first three each bring their own trailing space, so a street without piece 8
// keeps one at its end.
std::string Rue(const TabDyn& fiche) {
  std::string rue;
  for (long a = 5; a <= 7; ++a) {
    if (!fiche(a).empty()) rue += fiche(a) + " ";
  }
  rue += fiche(8);
  return rue;
}

}  // namespace

void Ctr_Vesko::Etat_Civil() {
  const bool aidant = Type_Dossier == "AIDANT";
  const Attributs att = aidant ? kAidant : kAide;
  TabDyn& fiche = Variable::Principal;
  printing::Printer& p = P();
  const auto& outils = marbrel::Outils::Instance();

  Titre("ETAT CIVIL");
  Ligne(p, "Nom patronymique", fiche(4));
  Blanc(p);

  // The address block always keeps three lines and a blank one, so that what
  // follows stays at the same height on every dossier.
  const std::string rue = Rue(fiche);
  const std::string complement = fiche(9);
  std::string ville = fiche(10) + " " + fiche(11);
  // A carer's attributes 12 and 13 hold the first telephone, never a Cedex.
  if (!aidant && fiche(12) == "1") ville += " Cedex " + fiche(13);
  const std::string retrait = texte::Space(mise_en_page::kRetrait);
  if (!rue.empty() && !complement.empty()) {
    Ligne(p, "Adresse", rue);
    p.Print(retrait + complement);
    p.Print(retrait + ville);
  } else if (!rue.empty()) {
    Ligne(p, "Adresse", rue);
    p.Print(retrait + ville);
    Blanc(p);
  } else if (!complement.empty()) {
    Ligne(p, "Adresse", complement);
    p.Print(retrait + ville);
    Blanc(p);
  } else {
    Ligne(p, "Adresse", ville);
    Blanc(p);
    Blanc(p);
  }
  Blanc(p);

  if (aidant) {
    Ligne(p, "Téléphone 1", fiche(12));
    p.Print(kObservations + fiche(13));
    Blanc(p);
    Ligne(p, "Téléphone 2", fiche(14));
    p.Print(kObservations + fiche(15));
  } else {
    Ligne(p, "Téléphone", fiche(14));
    p.Print(kObservations + fiche(15));
  }
  Blanc(p);

  Ligne(p, "N.I.R.", fiche(att.nir) + " " + fiche(att.nir + 1));
  Blanc(p);
  // Only a carer has a nationality; the blank line stays for both.
  if (aidant) Ligne(p, "Nation", fiche(19));
  Blanc(p);

  const std::string naissance = fiche(att.naissance);
  const std::string date = outils.Date_Externe(naissance);
  const auto age = mise_en_page::Age(date, mise_en_page::Aujourdhui_Affiche());
  if (!naissance.empty() && age) {
    p.Print(Etiquette("Date de naissance") + date + texte::Space(10) +
            "Age        : " + std::to_string(*age) + " ans");
  } else {
    p.Print(Etiquette("Date de naissance") + texte::Space(20) + "Age        : ");
  }
  Ligne(p, "Lieu de naissance", fiche(att.lieu));
  Ligne(p, "Pays de naissance", fiche(att.pays));
  Blanc(p);
  Ligne(p, "Situation familiale", Situation_Familiale(fiche(att.situation)));
  Blanc(p);

  if (!aidant) {
    // An unknown or empty code prints the label where the scan stops, which
    // is normally empty.
    const TabDyn& table = db::Charge_Table("SITSOCIOPROF");
    Ligne(p, "Situation socio-prof", db::Libelle_Arret(table, fiche(42)));
    Conjoint_Aide();
    Autres_Personnes_Foyer();
    return;
  }

  Blanc(p);
  p.Print(" Personnes à charge");
  Blanc(p);
  Blanc(p);
  Blanc(p);
  W_PointDepart = Monnaie::De(p.CurrentY());
  p.Print("               Nom             Prénom        Date de nais.        Lien");
  const long n = std::min<long>(fiche.DCount(22), 10);
  for (long i = 1; i <= n; ++i) {
    // Names are cut to their column in the record held in memory, so every
    // later reader in the run sees the same short text.
    const std::string nom = mise_en_page::Coupe(fiche, 22, i, 16);
    const std::string prenom = mise_en_page::Coupe(fiche, 23, i, 16);
    p.Print(texte::Space(9) + texte::Pad(nom, 17) + texte::Pad(prenom, 20) +
            outils.Date_Externe(fiche(24, i)) + texte::Space(4) +
            Lien_Personne_A_Charge(fiche(25, i)));
  }
  Variable::Enregistrement(Fic::CIVILAIDANT) = fiche;
  // The frame always holds the header and ten rows, whatever the number of
  // dependants: the rows under the last one stay empty inside it.
  Taille_Col = mise_en_page::Largeurs({"4", "4", "4", "4"});
  Cadre(W_PointDepart, 11, Taille_Col);
}

// The people around a care recipient: the spouse (CONJOINT) and the other
// members of the household (AUTRES PERSONNES AU FOYER), printed from the main
// record right after the civil status, and the relatives living elsewhere
// (ENTOURAGE), printed from the environment record that Habitat has just read.
#include <algorithm>

#include "control/ctr_vesko.h"
#include "db/variable.h"
#include "layout/age.h"
#include "layout/lignes.h"
#include "marbrel/outils.h"
#include "marbrel/texte.h"

using mise_en_page::Etiquette;
using mise_en_page::Ligne;
using texte::Pad;
using texte::Space;

namespace {

std::string Situation_Conjoint(const std::string& code) {
  if (code == "1") return "Retraité";
  if (code == "2") return "Actif";
  if (code == "3") return "En établissement";
  if (code == "4") return "Décédé";
  return "";
}

}  // namespace

void Ctr_Vesko::Conjoint_Aide() {
  const TabDyn& fiche = Variable::Principal;
  printing::Printer& p = P();
  const auto& outils = marbrel::Outils::Instance();

  Titre("CONJOINT");
  Ligne(p, "Nom patronymique", fiche(26));
  Ligne(p, "Prénom", fiche(27));
  Ligne(p, "N.I.R.", fiche(29) + " " + fiche(30));

  // A deceased spouse keeps the age reached at death, not the age the spouse
  // would have today.
  const std::string deces = outils.Date_Externe(fiche(32));
  const std::string reference = fiche(32).empty() ? mise_en_page::Aujourdhui_Affiche() : deces;
  const std::string naissance = outils.Date_Externe(fiche(28));
  if (!fiche(28).empty()) {
    const auto age = mise_en_page::Age(naissance, reference);
    p.Print(Etiquette("Date de naissance") + Pad(naissance, 20) +
            "Age        : " + (age ? std::to_string(*age) + " ans" : ""));
  } else {
    p.Print(Etiquette("Date de naissance") + Space(20) + "Age        : ");
  }
  // The date of death keeps its label whatever the situation says.
  p.Print(Etiquette("Situation") + Pad(Situation_Conjoint(fiche(31)), 20) +
          "Date décès : " + deces);
  Ligne(p, "N° affiliation", fiche(33));
  Ligne(p, "Code dossier aidé", fiche(45));
}

void Ctr_Vesko::Autres_Personnes_Foyer() {
  constexpr long kRangees = 14;
  TabDyn& fiche = Variable::Principal;
  printing::Printer& p = P();
  const auto& outils = marbrel::Outils::Instance();

  Titre("AUTRES PERSONNES AU FOYER");
  mise_en_page::Blanc(p);
  W_PointDepart = Monnaie::De(p.CurrentY());
  p.Print("              Nom              Prénom       Date de nais.      Lien      Fiscal");
  const long n = std::min(fiche.DCount(34), kRangees);
  for (long i = 1; i <= n; ++i) {
    // Names are cut to their column in the record held in memory, so every
    // later reader in the run sees the same short text.
    const std::string nom = mise_en_page::Coupe(fiche, 34, i, 16);
    const std::string prenom = mise_en_page::Coupe(fiche, 35, i, 16);
    p.Print(Space(9) + Pad(nom, 17) + Pad(prenom, 19) + Pad(outils.Date_Externe(fiche(36, i)), 14) +
            Pad(fiche(37, i), 16) + fiche(38, i));
  }
  Variable::Enregistrement(Fic::CIVILAIDE) = fiche;
  // The table keeps its fourteen rows whatever the size of the household.
  for (long i = n; i < kRangees; ++i) mise_en_page::Ligne_Vide(p);
  Taille_Col = mise_en_page::Largeurs({"4", "4", "3.5", "3.4", "2"});
  Cadre(W_PointDepart, kRangees + 1, Taille_Col);
}

void Ctr_Vesko::Enfant_Hors_Foyer() {
  constexpr long kRangees = 10;
  // Habitat has just read the environment record into its slot.
  TabDyn& environnement = Variable::Enregistrement(Fic::ENVIRONAIDE);
  printing::Printer& p = P();

  Titre("ENTOURAGE");
  W_PointDepart = Monnaie::De(p.CurrentY());
  p.Print("            Nom prénom       Lieu de résidence     Téléphone      Portable");
  // Always ten rows, each as wide as the page (78 characters when empty).
  for (long i = 1; i <= kRangees; ++i) {
    const std::string nom = mise_en_page::Coupe(environnement, 5, i, 19);
    const std::string lieu = mise_en_page::Coupe(environnement, 7, i, 19);
    p.Print(Space(9) + Pad(nom, 20) + Pad(lieu, 20) + Pad(environnement(8, i), 14) + " " +
            Pad(environnement(6, i), 14));
  }
  Taille_Col = mise_en_page::Largeurs({"4.7", "4.7", "3.6", "3.6"});
  Cadre(W_PointDepart, kRangees + 1, Taille_Col);
  mise_en_page::Blanc(p);
}

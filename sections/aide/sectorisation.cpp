// Where the person belongs in the service's geography: sector, sub-sector and
// quarter; the care recipient's responsible person; the carer's medical
// centre, antenna and means of transport.
#include "control/ctr_vesko.h"
#include "db/lecture.h"
#include "db/variable.h"
#include "layout/lignes.h"
#include "marbrel/texte.h"

namespace {

// The label, the code, a gap, then the name the reference file gives the
// code (empty for an empty or unknown code; the line is printed anyway).
std::string Code_Et_Nom(Fic fichier, const std::string& libelle, const std::string& code,
                        long ecart) {
  const std::string nom = db::Lit(fichier, code)(1);
  return mise_en_page::Etiquette(libelle) + code + texte::Space(ecart) + nom;
}

}  // namespace

void Ctr_Vesko::Sectorisation() {
  const TabDyn& fiche = Variable::Principal;
  Titre("SECTORISATION");

  std::string secteur, sous_secteur, quartier;
  if (Type_Dossier == "AIDE") {
    P().Print(Code_Et_Nom(Fic::RESPONSABLE, "Responsable", fiche(39), 5));
    // A care recipient's quarter code carries its sector and sub-sector as
    // prefixes, so one code places the person at all three levels.
    quartier = fiche(40);
    secteur = texte::Left(quartier, 3);
    sous_secteur = texte::Left(quartier, 5);
  } else {
    secteur = fiche(31);
    sous_secteur = fiche(32);
    quartier = fiche(33);
  }
  // The gaps shrink as the codes grow, so that with a care recipient's codes
  // of 3, 5 and 7 characters the three names line up.
  P().Print(Code_Et_Nom(Fic::SECTEUR, "Secteur", secteur, 5));
  P().Print(Code_Et_Nom(Fic::SOUSSECTEUR, "Sous-Secteur", sous_secteur, 3));
  P().Print(Code_Et_Nom(Fic::QUARTIER, "Quartier", quartier, 1));

  if (Type_Dossier != "AIDANT") return;
  const std::string antenne = fiche(35);
  P().Print(Code_Et_Nom(Fic::CENTREMEDICAL, "Centre médical", texte::Left(antenne, 3), 5));
  P().Print(Code_Et_Nom(Fic::ANTENNEMEDICALE, "Antenne médicale", antenne, 2));
  mise_en_page::Ligne(P(), "Moyen locomotion", db::Libelle_Table("MOYENSLOC", fiche(34)));
}

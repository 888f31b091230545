// Where a care recipient lives and whom to call: HABITAT reads the environment
// record that ENTOURAGE, PERSONNE A PREVENIR and CONTACTS print from after it;
// a carer's person to notify comes from the carer's information record.
#include "control/ctr_vesko.h"
#include "db/lecture.h"
#include "db/variable.h"
#include "layout/lignes.h"
#include "marbrel/texte.h"

using mise_en_page::Etiquette;
using mise_en_page::Ligne;

void Ctr_Vesko::Habitat(std::string& W_Code) {
  printing::Printer& p = P();
  Titre("HABITAT");
  const TabDyn& environnement = db::Lit(Fic::ENVIRONAIDE, W_Code);

  Ligne(p, "Qualité occupant", db::Libelle_Table("QUALITEOCCUPANT", environnement(1)));
  Ligne(p, "Nombre pièces", environnement(2));
  Ligne(p, "Type habitat", db::Libelle_Table("DESCRIPLOGEMENT", environnement(3)));

  // Always four conditions, two to a line in 31-character columns, the second
  // line under the first: the block keeps its two lines even when empty.
  TabDyn& etats = db::Charge_Table("ETATLOGEMENT");
  p.Print(Etiquette("Etat du logement"), false);
  for (long j = 1; j <= 4; ++j) {
    const long position = db::Position_Arret(etats, environnement(4, j));
    // The cut label is written back into the code table held in memory.
    const std::string libelle = mise_en_page::Coupe(etats, 3, position, 30);
    if (j == 1) p.Print(texte::Pad(libelle, 31), false);
    if (j == 2) p.Print(libelle);
    if (j == 3) p.Print(texte::Space(mise_en_page::kRetrait) + texte::Pad(libelle, 31), false);
    if (j == 4) p.Print(libelle);
  }
}

void Ctr_Vesko::Personne_A_Prevenir(std::string& W_Code) {
  Titre("PERSONNE A PREVENIR");
  // The three attributes follow one another in both records; only where they
  // start differs. A care recipient's come from the environment record that
  // Habitat read, even when a carer-style record exists for the same key.
  const bool aidant = Type_Dossier == "AIDANT";
  const TabDyn& fiche =
      aidant ? db::Lit(Fic::INFOSAIDANT, W_Code) : Variable::Enregistrement(Fic::ENVIRONAIDE);
  const long b = aidant ? 1 : 9;
  Ligne(P(), "Nom", fiche(b));
  Ligne(P(), "Téléphone", fiche(b + 1));
  Ligne(P(), "Observations", fiche(b + 2));
}

void Ctr_Vesko::Contact() {
  const TabDyn& environnement = Variable::Enregistrement(Fic::ENVIRONAIDE);
  Titre("CONTACTS");
  // Each note prints as stored, on one line, never wrapped.
  Ligne(P(), "Familiaux", environnement(12));
  Ligne(P(), "Voisinage", environnement(13));
  Ligne(P(), "Commerces", environnement(14));
}

// Published entry points with no work of their own: they print nothing,
// change nothing, and the print run never calls them.
void Ctr_Vesko::Medecin_Traitant() {}

void Ctr_Vesko::Intervenant() {}

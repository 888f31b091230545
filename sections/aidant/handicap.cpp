// A carer's disability status and, for a foreign national, the residence
// permit: two short lists of labelled values.
#include "control/ctr_vesko.h"
#include "db/lecture.h"
#include "db/variable.h"
#include "layout/lignes.h"
#include "marbrel/outils.h"

using mise_en_page::Ligne;

void Ctr_Vesko::Handicap() {
  // The carer's information record is the one the person-to-notify section
  // has read earlier in the dossier; it is not read again here.
  const TabDyn& infos = Variable::Enregistrement(Fic::INFOSAIDANT);
  Titre("HANDICAP");
  Ligne(P(), "Catég. bénéficiaire", db::Libelle_Table("CATHANDICAP", infos(10)));
  Ligne(P(), "Catég. handicap", infos(5));
  Ligne(P(), "Placement antérieur", db::Libelle_Table("PLACANT", infos(7)));
  Ligne(P(), "Situation antérieure", db::Libelle_Table("SITSAL", infos(8)));
}

void Ctr_Vesko::Detail_Etranger(std::string& W_Code) {
  Titre("DETAIL ETRANGER");
  const TabDyn& titre = db::Lit(Fic::ETRANGER, W_Code);
  // Only the exact word "FRANCE" marks a French national; any other spelling
  // is shown as a country.
  const std::string pays = Variable::Principal(19);
  Ligne(P(), "Pays", pays != "FRANCE" ? pays : "");
  Ligne(P(), "Type carte", db::Libelle_Table("TITRESSEJOUR", titre(1)));
  Ligne(P(), "Préfecture", titre(2));
  Ligne(P(), "N° autorisation", titre(3));
  Ligne(P(), "Fin validité", marbrel::Outils::Instance().Date_Externe(titre(4)));
}

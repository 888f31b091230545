// Module Variable: the process-wide slots of a print run.
//
// One open file and one current record per database file, the main record of
// the person being printed, the current "TABLES" record, and the objects the
// host handed over. Sections fill a slot when they read a record and later
// sections print from it, so the order of the run matters.
#pragma once

#include <array>
#include <memory>
#include <string>

#include "marbrel/base.h"
#include "marbrel/client.h"
#include "marbrel/fichier.h"
#include "marbrel/schema.h"
#include "marbrel/tabdyn.h"

// The database files, in their opening order (marbrel::kFichiersVesko).
enum class Fic {
  ACTIVITES,
  AIDEDETAILTACHE,
  ANTENNEMEDICALE,
  BESOINSAIDE,
  BIC,
  BLOCNOTAIDANT,
  BLOCNOTAIDE,
  CAPIMPAIDANT,
  CENTREMEDICAL,
  CIVILAIDANT,
  CIVILAIDE,
  ELTSFACTAIDE,
  ENVIRONAIDE,
  ETRANGER,
  FICHEMEDAIDE,
  FORMEXPAIDANT,
  INFOSAIDANT,
  INTERVENANTEXT,
  ORIGINEAIDE,
  QUARTIER,
  RESPONSABLE,
  RIBAIDANT,
  SECTEUR,
  SOUSSECTEUR,
  TABLES,
  TPSAIDANTDISPO,
  TPSAIDANTINDISPO,
  TPSAIDEINDISPO,
  RESSOURCESAIDE,
  TACHE,
  TYPETACHE,
  GROUPETACHE,
  TPSINCOMPATIBILITES,
};
inline constexpr std::size_t kNombreFichiers = marbrel::kFichiersVesko.size();

namespace Variable {

// Objects received through the control's properties.
extern std::shared_ptr<marbrel::Client> Client;
extern std::shared_ptr<marbrel::Base> Base;

// The open files, filled by Ouvre_Fichiers and emptied by Ferme_Fichiers.
extern std::array<std::shared_ptr<marbrel::Fichier>, kNombreFichiers> Fichiers;
// The current record of each file.
extern std::array<marbrel::TabDyn, kNombreFichiers> Enregistrements;
// The main record of the person being printed (CIVILAIDANT or CIVILAIDE).
extern marbrel::TabDyn Principal;
// The current "TABLES" record (a code table: codes in 2, labels in 3).
extern marbrel::TabDyn Tables;

// The slot of a file.
inline std::shared_ptr<marbrel::Fichier>& Fichier(Fic f) {
  return Fichiers[static_cast<std::size_t>(f)];
}
inline marbrel::TabDyn& Enregistrement(Fic f) {
  return Enregistrements[static_cast<std::size_t>(f)];
}
inline std::string_view Nom(Fic f) { return marbrel::kFichiersVesko[static_cast<std::size_t>(f)]; }

}  // namespace Variable

// The database files a print run opens, in their opening order. `vesko init`
// creates them; the control's file registry opens them in this order.
#pragma once

#include <array>
#include <string_view>

namespace marbrel {

inline constexpr std::array<std::string_view, 33> kFichiersVesko = {
    "ACTIVITES",        "AIDEDETAILTACHE", "ANTENNEMEDICALE",  "BESOINSAIDE",
    "BIC",              "BLOCNOTAIDANT",   "BLOCNOTAIDE",      "CAPIMPAIDANT",
    "CENTREMEDICAL",    "CIVILAIDANT",     "CIVILAIDE",        "ELTSFACTAIDE",
    "ENVIRONAIDE",      "ETRANGER",        "FICHEMEDAIDE",     "FORMEXPAIDANT",
    "INFOSAIDANT",      "INTERVENANTEXT",  "ORIGINEAIDE",      "QUARTIER",
    "RESPONSABLE",      "RIBAIDANT",       "SECTEUR",          "SOUSSECTEUR",
    "TABLES",           "TPSAIDANTDISPO",  "TPSAIDANTINDISPO", "TPSAIDEINDISPO",
    "RESSOURCESAIDE",   "TACHE",           "TYPETACHE",        "GROUPETACHE",
    "TPSINCOMPATIBILITES"};

}  // namespace marbrel

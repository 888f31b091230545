// Writes the plugin's metadata from the control's interface description, so
// that what a host reads about the control is what the control publishes.
//
//   vesko_metadonnees FICHIER.json
#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>

#include "control/interface.h"

namespace {

nlohmann::json EnJson(const interface_vesko::Membre& m) {
  nlohmann::json parametres = nlohmann::json::array();
  for (const auto& p : m.parametres) parametres.push_back({{"nom", p.nom}, {"type", p.type}});
  return {{"slot", m.slot},
          {"nom", m.nom},
          {"genre", m.genre == interface_vesko::Genre::Propriete ? "propriété" : "procédure"},
          {"parametres", parametres}};
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage : vesko_metadonnees FICHIER.json\n";
    return 2;
  }
  nlohmann::json interface = nlohmann::json::array();
  for (const auto& m : interface_vesko::Membres()) interface.push_back(EnJson(m));
  nlohmann::json prives = nlohmann::json::array();
  for (const auto& m : interface_vesko::MembresPrives()) prives.push_back(EnJson(m));
  const nlohmann::json metadonnees = {{"classe", "Ctr_Vesko"},
                                      {"version", VESKO_VERSION},
                                      {"legende", "Edition de la fiche"},
                                      {"interface", interface},
                                      {"prives", prives}};
  std::ofstream fichier(argv[1], std::ios::binary);
  fichier << metadonnees.dump(2) << "\n";
  fichier.close();
  if (!fichier) {
    std::cerr << "vesko_metadonnees : impossible d'écrire " << argv[1] << "\n";
    return 1;
  }
  return 0;
}

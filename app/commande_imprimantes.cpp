// `vesko printers`: the print server's queues with their state and reason,
// and the default one — what `lpstat -p -d` tells, in the user's words.
#include <iostream>

#include "app/choix_terminal.h"
#include "app/commandes.h"
#include "printing/cups.h"

namespace vesko_app {

namespace {

void ListeImprimantes() {
  const auto files = printing::cups::Files();
  if (files.empty()) {
    std::cout << "Aucune imprimante sur le serveur d'impression " << printing::cups::Serveur()
              << ".\n";
    return;
  }
  std::string defaut;
  for (const auto& f : files) {
    std::cout << DecritFile(f) << "\n";
    if (f.defaut) defaut = f.nom;
  }
  std::cout << (defaut.empty() ? "Pas d'imprimante par défaut."
                               : "Imprimante par défaut : " + defaut + ".")
            << "\n";
}

}  // namespace

void AjouteCommandeImprimantes(CLI::App& app, int& statut, int&, char**) {
  auto* imprimantes = app.add_subcommand(
      "printers", "Liste les imprimantes du serveur d'impression, leur état et celle par défaut");
  imprimantes->callback([&statut] { Execute(statut, [] { ListeImprimantes(); }); });
}

}  // namespace vesko_app

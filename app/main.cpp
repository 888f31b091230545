// `vesko`: the command line of the dossier printer.
#include <iostream>

#include "app/commandes.h"

namespace vesko_app {

void Execute(int& statut, const std::function<void()>& action) {
  try {
    action();
  } catch (const UsageError& e) {
    std::cerr << "vesko : " << e.what() << "\n";
    statut = kUsage;
  } catch (const std::exception& e) {
    std::cerr << "vesko : " << e.what() << "\n";
    statut = kEchec;
  }
}

}  // namespace vesko_app

int main(int argc, char** argv) {
  using namespace vesko_app;
  CLI::App app{"Vesko — impression des dossiers des aidants et des aidés"};
  app.require_subcommand(1);
  int statut = kSucces;
  AjouteCommandesDonnees(app, statut);
  AjouteCommandeImpression(app, statut, argc, argv);
  AjouteCommandeComposant(app, statut, argc, argv);
  AjouteCommandeJournal(app, statut);
  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp& e) {
    return app.exit(e);
  } catch (const CLI::CallForAllHelp& e) {
    return app.exit(e);
  } catch (const CLI::ParseError& e) {
    std::cerr << "vesko : " << e.what() << " (vesko --help pour l'aide)\n";
    return kUsage;
  }
  return statut;
}

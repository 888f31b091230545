// `vesko`: the command line of the dossier printer.
#include <iostream>

#include "app/commandes.h"
#include "app/usage.h"

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
  PrepareUsageFrancais(app, VESKO_VERSION);
  app.require_subcommand(1);
  int statut = kSucces;
  AjouteCommandesDonnees(app, statut);
  AjouteCommandeImpression(app, statut, argc, argv);
  AjouteCommandeImprimantes(app, statut, argc, argv);
  AjouteCommandeComposant(app, statut, argc, argv);
  AjouteCommandeJournal(app, statut);
  TermineUsageFrancais(app);
  if (const auto inconnue = SousCommandeInconnue(app, argc, argv)) {
    std::cerr << "vesko : " << *inconnue << "\n";
    return kUsage;
  }
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& e) {
    return app.exit(e);  // --help, --version
  } catch (const CLI::ParseError& e) {
    std::cerr << "vesko : " << MessageUsage(app, e) << "\n";
    return kUsage;
  }
  return statut;
}

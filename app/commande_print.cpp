// Temporary: the print command is being written.
#include "app/commandes.h"
namespace vesko_app {
void AjouteCommandeImpression(CLI::App&, int&, int&, char**) {}
}  // namespace vesko_app

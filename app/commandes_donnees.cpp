// Temporary: the data commands are being written.
#include "app/commandes.h"
namespace vesko_app {
void AjouteCommandesDonnees(CLI::App&, int&) {}
}  // namespace vesko_app

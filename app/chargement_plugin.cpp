#include "app/chargement_plugin.h"

#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>

namespace vesko_app {

std::string EssaieChargement(const std::string& plugin) {
  int tube[2];
  if (pipe(tube) != 0) return "impossible de lancer l'essai de chargement";
  const pid_t enfant = fork();
  if (enfant < 0) {
    close(tube[0]);
    close(tube[1]);
    return "impossible de lancer l'essai de chargement";
  }
  if (enfant == 0) {
    close(tube[0]);
    void* module = dlopen(plugin.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (module == nullptr) {
      const char* raison = dlerror();
      const ssize_t ecrit = write(tube[1], raison, std::strlen(raison));
      static_cast<void>(ecrit);
      _exit(1);
    }
    _exit(0);
  }
  close(tube[1]);
  std::string raison;
  char tampon[512];
  for (ssize_t n; (n = read(tube[0], tampon, sizeof tampon)) > 0;)
    raison.append(tampon, static_cast<size_t>(n));
  close(tube[0]);
  int statut = 0;
  waitpid(enfant, &statut, 0);
  if (WIFEXITED(statut) && WEXITSTATUS(statut) == 0) return "";
  if (raison.empty()) raison = "le chargement s'est interrompu";
  return raison;
}

}  // namespace vesko_app

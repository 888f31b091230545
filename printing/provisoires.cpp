#include "printing/provisoires.h"

#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>

namespace printing {

namespace {

constexpr int kPlaces = 32;

// A fixed table of plain characters: a signal handler may read it without
// allocating. A place is written while free, then marked taken.
struct Place {
  char chemin[PATH_MAX];
  std::atomic<bool> prise{false};
};
Place places[kPlaces];

void Interrompu(int signal) {
  EffaceProvisoires();
  struct sigaction defaut {};
  defaut.sa_handler = SIG_DFL;
  sigemptyset(&defaut.sa_mask);
  sigaction(signal, &defaut, nullptr);
  raise(signal);
}

}  // namespace

std::string CreeProvisoire(std::string modele, int suffixe) {
  sigset_t interruptions, avant;
  sigemptyset(&interruptions);
  for (int s : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&interruptions, s);
  sigprocmask(SIG_BLOCK, &interruptions, &avant);
  const int fd = mkstemps(modele.data(), suffixe);
  const int erreur = errno;
  if (fd >= 0) {
    close(fd);
    InscritProvisoire(modele);
  }
  sigprocmask(SIG_SETMASK, &avant, nullptr);
  errno = erreur;
  return fd >= 0 ? modele : std::string();
}

bool InscritProvisoire(const std::string& chemin) {
  if (chemin.size() >= PATH_MAX) return false;
  for (Place& p : places) {
    if (p.prise.load()) continue;
    std::memcpy(p.chemin, chemin.c_str(), chemin.size() + 1);
    p.prise.store(true);
    return true;
  }
  return false;
}

void OublieProvisoire(const std::string& chemin) {
  for (Place& p : places) {
    if (p.prise.load() && chemin == p.chemin) {
      p.prise.store(false);
      return;
    }
  }
}

void EffaceProvisoires() noexcept {
  for (Place& p : places) {
    if (p.prise.load()) unlink(p.chemin);
  }
}

void ProtegeContreInterruptions() {
  struct sigaction action {};
  action.sa_handler = Interrompu;
  sigemptyset(&action.sa_mask);
  for (int s : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&action.sa_mask, s);
  for (int s : {SIGINT, SIGTERM, SIGHUP}) {
    // A signal the caller ignores (nohup) stays ignored.
    struct sigaction avant {};
    if (sigaction(s, nullptr, &avant) == 0 && avant.sa_handler == SIG_IGN) continue;
    sigaction(s, &action, nullptr);
  }
}

}  // namespace printing

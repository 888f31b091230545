#include "app/progression_terminal.h"

#include <unistd.h>

#include <cmath>

namespace vesko_app {

ProgressionTerminal::ProgressionTerminal(std::FILE* flux, bool force)
    : flux_(flux), actif_(force || isatty(fileno(flux)) != 0) {}

std::string ProgressionTerminal::Ligne(const Avancement& a, double secondes) {
  std::string ligne = "Dossier " + std::to_string(a.personne) + " sur " + std::to_string(a.total) +
                      " — " + std::to_string(a.pages) + " page" + (a.pages > 1 ? "s" : "");
  if (secondes >= 0.5) {
    // Persons finished per second, with a French decimal comma.
    const double rythme = static_cast<double>(a.personne > 0 ? a.personne - 1 : 0) / secondes;
    const long dixiemes = std::lround(rythme * 10);
    ligne +=
        " — " + std::to_string(dixiemes / 10) + "," + std::to_string(dixiemes % 10) + " dossiers/s";
  }
  return ligne;
}

void ProgressionTerminal::Montre(const Avancement& a) {
  if (!actif_) return;
  const auto maintenant = std::chrono::steady_clock::now();
  if (maintenant - derniere_ < pas_) return;
  derniere_ = maintenant;
  montree_ = true;
  const double secondes = std::chrono::duration<double>(maintenant - debut_).count();
  // \r and "erase to the end of the line": the line is rewritten in place.
  std::fprintf(flux_, "\r%s\033[K", Ligne(a, secondes).c_str());
  std::fflush(flux_);
}

void ProgressionTerminal::Termine(const Avancement& a) {
  if (!actif_ || !montree_) return;
  const double secondes =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - debut_).count();
  std::fprintf(flux_, "\r%zu dossier(s), %ld page(s) en %.0f s.\033[K\n",
               static_cast<size_t>(a.total), a.pages, secondes);
  std::fflush(flux_);
}

}  // namespace vesko_app

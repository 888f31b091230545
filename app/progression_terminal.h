// The progress of a long `vesko print` on a terminal: one line on standard
// error, rewritten in place — dossiers done of the total, pages, rate — and
// nothing at all when standard error is not a terminal (a script, a log).
#pragma once

#include <chrono>
#include <cstdio>
#include <functional>
#include <string>

namespace vesko_app {

// Where the run is: the person being printed (1-based), the total, the pages.
struct Avancement {
  long personne = 0;
  long total = 0;
  long pages = 0;
};

class ProgressionTerminal {
 public:
  // Shows on flux only when it is a terminal (or when force is true: tests).
  explicit ProgressionTerminal(std::FILE* flux = stderr, bool force = false);
  // Redraws the line, at most every pas; the first line waits for pas too,
  // so that a short run shows nothing.
  void Montre(const Avancement& a);
  // Writes the final line ("… terminé") if any line was shown.
  void Termine(const Avancement& a);

  // "Dossier 12 sur 2000 — 108 pages — 38,5 dossiers/s": a line's text.
  static std::string Ligne(const Avancement& a, double secondes);

 private:
  std::FILE* flux_;
  bool actif_;
  bool montree_ = false;
  std::chrono::steady_clock::time_point debut_ = std::chrono::steady_clock::now();
  std::chrono::steady_clock::time_point derniere_ = debut_;
  std::chrono::milliseconds pas_{250};
};

}  // namespace vesko_app

// Helpers of the print tests: a Qt application for the whole program, a
// temporary folder, external commands (poppler's pdftotext, pdftoppm…) and a
// private CUPS server with capture queues.
#pragma once

#include <set>
#include <string>
#include <vector>

namespace essai {

// A fresh folder under /tmp, removed with everything in it at the end.
class DossierTemporaire {
 public:
  DossierTemporaire();
  ~DossierTemporaire();
  const std::string& Chemin() const { return chemin_; }
  std::string operator/(const std::string& nom) const { return chemin_ + "/" + nom; }

 private:
  std::string chemin_;
};

// Runs a shell command; its standard output, and its exit status in *statut.
std::string Lance(const std::string& commande, int* statut = nullptr);

std::vector<std::string> Lignes(const std::string& texte);

// A CUPS scheduler of its own, listening on a socket in a temporary folder,
// whose queues write each job to a file of that folder through a small
// backend (the job as the application sent it, plus its title and copies).
// Started at most once per process, on first use; the process then talks to
// it alone (CUPS_SERVER). Empty when cupsd cannot be started.
class ServeurCups {
 public:
  static ServeurCups* Instance();
  ~ServeurCups();

  // Adds a queue (the default one when defaut) unless it was added already;
  // false on failure.
  bool AjouteFile(const std::string& nom, bool defaut = false);
  // The job last captured by the queue, waiting for it up to a few seconds:
  // its content ("" when none came) and its "title=…" / "copies=…" lines.
  std::string Capture(const std::string& file) const;
  std::string InfosCapture(const std::string& file) const;

 private:
  ServeurCups() = default;
  bool Demarre();

  DossierTemporaire dossier_;
  int pid_ = -1;
  std::set<std::string> files_;
};

}  // namespace essai

// A print server of the tests' own: cupsd run without privileges, with its
// configuration, spool and logs in a temporary folder, listening on a free
// port of 127.0.0.1 only. Its queues are written before it starts:
//
//   CAPTURE  (the default)  keeps every job: its exact bytes and its options
//   ARRETEE                 stopped, with the reason "Bourrage papier dans le bac 2"
//   REFUS                   refuses jobs, with the reason "Toner à remplacer"
//   PANNE                   accepts jobs, whose backend then fails
//
// The process talks to it alone: CUPS_SERVER is set for this program and
// the commands it runs.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace essai_cups {

// What the capture backend kept of one job.
struct Capture {
  int numero = 0;
  std::string contenu;                       // the bytes the scheduler handed the backend
  std::map<std::string, std::string> infos;  // user, title, copies, options
  // The job's options, parsed from the backend's option string
  // ("media=A4 job-uuid=…").
  std::map<std::string, std::string> options;
};

class ServeurCups {
 public:
  // Started on first use and stopped at the end of the program; nullptr
  // when cupsd cannot be started here, *raison then saying why.
  static ServeurCups* Instance(std::string* raison);
  ~ServeurCups();

  const std::string& Adresse() const { return adresse_; }  // "127.0.0.1:port"
  const std::string& Dossier() const { return dossier_; }

  // Stops the scheduler (its port then answers nobody) and starts it again.
  void Arrete();
  bool Relance();

  // The jobs the queue captured so far, in job order.
  std::vector<Capture> Captures(const std::string& file) const;
  // Waits (up to 20 s) for the queue to capture job numero.
  Capture AttendCapture(const std::string& file, int numero) const;
  // The scheduler's error log, for failure messages.
  std::string Journal() const;

 private:
  ServeurCups() = default;
  bool Prepare(std::string* raison);
  bool Demarre(std::string* raison);

  std::string dossier_;
  std::string adresse_;
  int port_ = 0;
  int pid_ = -1;
};

// Runs a shell command; its standard output, and its exit status in *statut.
std::string Lance(const std::string& commande, int* statut = nullptr);
std::string Lit(const std::string& chemin);

}  // namespace essai_cups

// A print server of the tests' own: cupsd run without privileges, with its
// configuration, spool and logs in a temporary folder, listening on a free
// port of 127.0.0.1 only, with four queues:
//
//   CAPTURE  (the default)  keeps every job: its exact bytes, title, copies, paper
//   ARRETEE                 stopped, with the reason "Bourrage papier dans le bac 2"
//   REFUS                   refuses jobs, with the reason "Toner à remplacer"
//   PANNE                   accepts jobs, whose backend then fails
//
// The process talks to it alone: CUPS_SERVER is set for this program and
// the commands it runs.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tests/app/programmes.h"

namespace essai_cups {

// What the capture backend kept of one job.
struct Capture {
  int numero = 0;
  std::string contenu;  // the bytes the scheduler handed the backend
  std::string titre, copies, papier;
};

class ServeurCups {
 public:
  // Started on first use and stopped at the end of the program; nullptr
  // when cupsd cannot be started, *raison then saying why.
  static ServeurCups* Instance(std::string* raison);
  ~ServeurCups();

  const std::string& Adresse() const { return adresse_; }  // "127.0.0.1:port"
  // Stops the scheduler (its port then answers nobody) and starts it again.
  void Arrete();
  bool Relance() { return Demarre(nullptr); }

  // How many jobs the queue captured so far.
  int Nombre(const std::string& file) const;
  // Waits (up to 20 s) for the queue to capture job numero; numero 0 if not.
  Capture AttendCapture(const std::string& file, int numero) const;
  // The scheduler's error log, for failure messages.
  std::string Journal() const;

 private:
  ServeurCups() = default;
  bool Prepare(std::string* raison);
  bool Demarre(std::string* raison);

  std::string dossier_, adresse_;
  int port_ = 0, pid_ = -1;
};

// The demo store (`vesko init` then `vesko import demo/*.json`) the print
// commands print from, made once per program; "" when it could not be made.
const std::string& BaseDemo();

// The tests that print to the server, with the demo store and the Qt
// application. Skipped where cupsd is not installed at all; failed where it
// is and cannot start.
class AvecServeur : public ::testing::Test {
 protected:
  void SetUp() override;
  ServeurCups* serveur = nullptr;
};

}  // namespace essai_cups

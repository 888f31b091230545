// A print server of the tests' own: cupsd run without privileges, with its
// configuration, spool and logs in a temporary folder, listening on a free
// port of 127.0.0.1 only, with four queues:
//
//   CAPTURE  (the default)  keeps every job: its exact bytes, title, copies, paper
//   ARRETEE                 stopped, with the reason "Bourrage papier dans le bac 2"
//   REFUS                   refuses jobs, with the reason "Toner à remplacer"
//   PANNE                   accepts jobs, whose backend then fails
//
// CUPS_SERVER is set so that this program and the commands it runs talk to it alone.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tests/app/programmes.h"

namespace essai_cups {

struct Capture {
  int numero = 0;
  std::string fichier, titre, copies, papier;  // fichier: the bytes the backend was given
};

class ServeurCups {
 public:
  // Started on first use and stopped at the end of the program; nullptr
  // when cupsd cannot be started, *raison then saying why.
  static ServeurCups* Instance(std::string* raison);
  ~ServeurCups();

  const std::string& Adresse() const { return adresse_; }  // "127.0.0.1:port"
  void Arrete();                                           // its port then answers nobody
  bool Relance() { return Demarre(nullptr); }

  int Nombre(const std::string& file) const;  // the jobs the queue captured so far
  // Waits (up to 20 s) for the queue to capture job numero; numero 0 if not.
  Capture AttendCapture(const std::string& file, int numero) const;
  std::string Journal() const;  // the scheduler's error log, for failure messages

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

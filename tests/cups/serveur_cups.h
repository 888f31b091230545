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
  int numero = 0;                              // 0: the job never reached the queue
  std::string fichier, titre, copies, papier;  // fichier: the bytes the backend was given
};

// The tests that print to the server (started by the first, stopped with the
// program), with the demo store and the Qt application. Skipped where cupsd is
// not installed at all; failed where it is and cannot start.
class AvecServeur : public ::testing::Test {
 public:
  void SetUp() override;
  static std::string Adresse();  // "127.0.0.1:port"
  static void Arrete();          // its port then answers nobody
  static bool Relance();
  static int Nombre(const std::string& file);  // the jobs the queue captured so far
  // Waits (up to 20 s) for the queue to capture job numero.
  static Capture AttendCapture(const std::string& file, int numero);
  static std::string Journal();  // the scheduler's error log, for failure messages
};

// The demo store (`vesko init` then `vesko import demo/*.json`) the print
// commands print from, made once per program; "" when it could not be made.
const std::string& BaseDemo();

}  // namespace essai_cups

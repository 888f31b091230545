// A print server of the tests' own: cupsd run without privileges, its files in
// a temporary folder, listening on a free port of 127.0.0.1 only, with three queues:
//
//   CAPTURE  (the default)  keeps every job: its exact bytes, title, copies, paper
//   ARRETEE                 stopped, with the reason "Bourrage papier dans le bac 2"
//   REFUS                   refuses jobs, with the reason "Toner à remplacer"
//   PANNE                   fails every job and aborts it
//   BOURRAGE                fails every job and keeps it to try again (retry-job)
//
// CUPS_SERVER is set so that this program and the commands it runs talk to it alone.
#pragma once

#include <gtest/gtest.h>

#include "tests/app/programmes.h"

namespace essai_cups {

struct Capture {
  int numero = 0;              // 0: the job never reached the queue
  std::string fichier, infos;  // the bytes the backend was given; "title copies paper"
  std::string options;         // every option of the job, "name=value" a space apart
};

// The tests that print to the server (started by the first, stopped with the
// program). Skipped where cupsd is not installed; failed where it is and cannot start.
class AvecServeur : public ::testing::Test {
 public:
  void SetUp() override;
  static std::string Adresse();  // "127.0.0.1:port"
  // Waits up to attente × 50 ms for the queue to capture job numero.
  static Capture AttendCapture(const std::string& file, int numero, int attente = 400);
  static std::string Journal();       // the scheduler's error log, for failure messages
  static std::string DossierFiles();  // the folder of the queues' captured jobs
  essai::Dossier dossier;             // the test's own files
};

// The demo store (`vesko init`, then `vesko import demo/*.json`), made once; "" if it failed.
const std::string& BaseDemo();

}  // namespace essai_cups

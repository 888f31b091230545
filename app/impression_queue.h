// The print-queue side of `vesko print`: the queue checked before the run,
// the fallback PDF when it cannot print, the job's id reported after the run
// and, when asked, how the job ended.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "printing/cups.h"

namespace vesko_app {

class EnvoiFile {
 public:
  // copies: of every job; pdf_secours: where the document goes when the
  // queue cannot take it ("" = nowhere: the command fails).
  EnvoiFile(int copies, std::string pdf_secours);

  // Options of every job (-o), given after the queue's defaults.
  void Options(printing::cups::OptionsTravail options) { reglages_->options = std::move(options); }

  // One queue, or an instance of it ("QUEUE/instance", which Qt's list
  // leaves out), sending its jobs through this.
  printing::Destination DestinationPour(const std::string& file) const;

  // The system's printer list, whose queues send their jobs through this.
  std::vector<printing::Destination> Destinations() const;

  // Asks the server whether the queue can print now. When it cannot: with a
  // fallback PDF, says why on standard error and returns false (the caller
  // then prints to that PDF); without one, fails with the message naming the
  // queue and the reason.
  bool PeutImprimer(const std::string& file);
  // Whether a queue was chosen (and asked about); otherwise the document went
  // to the built-in "PDF" printer and there is no job to tell about.
  bool FileChoisie() const { return !file_.empty(); }

  // Whether message is the failure of a job that Conclut will report, so
  // that the user reads it once.
  bool Explique(const std::string& message) const;

  // After the run: says on standard output which job the server took (and,
  // with attendre, how it ended; meanwhile each new message of the printer
  // goes to standard error). Fails when the job could not be sent and no
  // fallback PDF kept it, or when the awaited job did not complete — within
  // delai, when it is not 0.
  void Conclut(bool attendre, std::chrono::seconds delai = std::chrono::seconds(0)) const;

 private:
  std::shared_ptr<printing::cups::ReglagesEnvoi> reglages_;
  std::shared_ptr<std::vector<printing::cups::Envoi>> envois_;
  std::string file_;
  bool secours_pris_ = false;
};

}  // namespace vesko_app

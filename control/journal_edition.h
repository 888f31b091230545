// What Edition writes in the access journal for one run, so that every host
// — the command line, vesko-gui, a host linking the control or loading its
// plugin — is covered without doing anything.
//
// Where the journal is: the path a host fixed (Ctr_Vesko::Fixe_Journal, the
// command's --journal), else the VESKO_JOURNAL environment variable, else
// beside an embedded store ("base.vesko" → "base.vesko.journal"), else, for
// a PostgreSQL store, its database's own table (journal_postgres.h). A store
// with neither (a store in memory) has no journal unless one of the first
// two names it, and then nothing prints.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "control/journal.h"
#include "marbrel/base.h"
#include "printing/imprimantes.h"

struct Incident;

namespace journal {

// The journal's place for this store — a file's path, or the PostgreSQL
// address of the store's database — or "" when it has none (see above).
std::string Emplacement(const marbrel::Base* base, const std::string& impose);

// Opens the journal at emplacement (as Emplacement gives it): for writing (a
// print, a purge: created when missing) or for reading (it must exist).
std::unique_ptr<Journal> OuvreJournal(const std::string& emplacement, bool ecriture);

// Opens the journal of this store for writing. Fails with one French
// sentence saying why nothing will print.
std::unique_ptr<Journal> OuvrePour(const marbrel::Base* base, const std::string& impose);

// Who and when, for a new entry: UTC time with the local offset, the
// operating-system account, the machine, the program and its process id;
// utilisateur is the name the host gave.
Entree Contexte(const std::string& utilisateur);

// Where a document goes, in the journal's words: what its surface says
// (a queue and, once sent, its job), else the built-in "PDF" printer's file,
// else the destination's name (the hosts name their recordings: "texte
// /…/lot.txt", "PNG /…/pages", "Aperçu"). surface may be null (not opened).
std::string Lieu(const printing::Destination& destination, const printing::Surface* surface);

// What went wrong along a run, in one line for the journal ("" if nothing).
std::string Resume(const std::vector<Incident>& incidents);

// The journal of one run: its start entry, then its outcome.
class TraceEdition {
 public:
  TraceEdition(std::unique_ptr<Journal> journal, std::string utilisateur);
  // A run begun and never concluded (an error between the two) is recorded
  // as failed; a journal that fails then is ignored, the error already
  // reaches the host.
  ~TraceEdition();
  TraceEdition(const TraceEdition&) = delete;
  TraceEdition& operator=(const TraceEdition&) = delete;

  // Writes the start entry. Fails (nothing may be drawn then) with
  // "impression refusée : …" naming the journal and the reason.
  void Debut(const std::string& type, const std::vector<std::string>& cles,
             const std::string& destination);
  // Writes the outcome of the run begun by Debut: kTerminee, kEchouee
  // (message says why) or kAnnulee; destination may say more than at the
  // start (the queue's job id). Fails with a sentence saying the outcome
  // could not be recorded.
  void Fin(const std::string& issue, std::int64_t pages, const std::string& message,
           const std::string& destination);
  // A run that ended before anything was drawn (the printer choice cancelled,
  // a destination that cannot be opened): its start and outcome at once.
  void Sans_Impression(const std::string& type, const std::vector<std::string>& cles,
                       const std::string& destination, const std::string& issue,
                       const std::string& message);

 private:
  std::unique_ptr<Journal> journal_;
  std::string utilisateur_;
  std::int64_t debut_ = 0;  // the start entry's number, while the run goes on
  std::string destination_;
};

}  // namespace journal

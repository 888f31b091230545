// The access journal: who printed whose dossier, when, where, and how it
// ended. A dossier holds health data; every print leaves a trace here, and
// the trace is written before anything is drawn.
//
// The journal is append-only: a run writes an "impression" entry when it
// starts and an "issue" entry when it ends (the outcome names the start entry
// by its number), so no entry is ever updated. Every entry carries a SHA-256
// chained over the previous entry's hash and its own fields
// (control/journal_chaine.h), so a changed, removed or inserted entry breaks
// the chain at that entry. Retention removes the oldest entries and records
// what it removed in a "purge" entry, whose anchor lets the chain start again
// after the gap.
//
// Another store keeps its journal by implementing this interface over its own
// table (control/journal_edition.cpp chooses it by the store's kind). What it
// must guarantee: appends are serialised (one writer links after the latest
// entry at a time, e.g. a lock on the table for the transaction), the hash
// comes from control/journal_chaine.h, and the printing account may insert
// but neither update nor delete; only Purge deletes, under an account of its
// own.
//
// Errors travel as exceptions (std::runtime_error) with one French sentence
// naming the journal and the reason; a run whose start entry cannot be
// written does not print.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace journal {

// The three kinds of entries.
inline constexpr const char* kImpression = "impression";  // a run begins
inline constexpr const char* kIssue = "issue";            // a run ended
inline constexpr const char* kPurge = "purge";            // old entries removed

// The outcomes of a run.
inline constexpr const char* kTerminee = "terminée";
inline constexpr const char* kEchouee = "échouée";
inline constexpr const char* kAnnulee = "annulée";

struct Entree {
  std::int64_t numero = 0;  // place in the chain, from 1; given by the journal
  std::string genre;        // kImpression, kIssue or kPurge

  // Who and when, for every kind of entry.
  std::string heure_utc;            // "2026-11-23T19:32:53.123Z"
  std::string decalage;             // the local offset at that moment, "+01:00"
  std::string utilisateur_systeme;  // the operating-system account
  std::string hote;                 // the machine's name
  std::string utilisateur;          // the name the host application gave ("" if none)
  std::string programme;            // the program that printed ("vesko", "vesko-gui"…)
  std::int64_t processus = 0;       // its process id

  // kImpression: what was printed and where to.
  std::string type;               // "AIDE" or "AIDANT"
  std::vector<std::string> cles;  // the persons' keys, in print order
  std::string destination;        // "file BUREAU", "PDF /…/lot.pdf", "PNG /…/pages"…

  // kIssue: the run it concludes (numero of its kImpression entry) and how it
  // went. destination may say more than at the start (the queue's job id).
  std::int64_t impression = 0;
  std::string issue;  // kTerminee, kEchouee or kAnnulee
  std::int64_t pages = 0;
  std::string message;  // why it failed or what went wrong along the way

  // kPurge: the entries removed and the anchor the chain restarts from.
  std::string avant;                // the retention limit asked for (UTC)
  std::int64_t retire_premier = 0;  // first and last numbers removed
  std::int64_t retire_dernier = 0;  // (0, 0: none)
  std::string retire_empreinte;     // hash of the last entry removed

  std::string precedent;  // hash of the previous entry (64 hex digits)
  std::string empreinte;  // this entry's hash
};

// Which entries a listing wants; empty fields do not filter.
struct Filtre {
  std::string depuis;       // UTC time: entries at or after
  std::string jusqu_a;      // UTC time: entries strictly before
  std::string cle;          // runs that printed this key (and their outcomes)
  std::string utilisateur;  // the host's user name or the system account
};

// One run, as a listing shows it: its start entry and, once it ended, its
// outcome (issue.numero == 0 while it runs, or when it never ended).
struct Passage {
  Entree impression;
  Entree issue;
};

// What the chain check found.
struct Verdict {
  bool intact = true;
  std::int64_t entrees = 0;  // entries checked
  std::int64_t numero = 0;   // the first entry at fault (0 when intact)
  std::string message;       // one French sentence naming it, or the summary
  std::string derniere;      // hash of the last entry (worth noting elsewhere)
};

class Journal {
 public:
  virtual ~Journal() = default;

  // Where the journal lives, for messages ("/…/base.vesko.journal").
  virtual std::string Nom() const = 0;

  // Appends e as one entry, in its own write transaction, after the latest
  // entry of any process; fills in e.numero, e.precedent and e.empreinte and
  // returns the number. Fails when the entry cannot be written: nothing was
  // appended then.
  virtual std::int64_t Ajoute(Entree& e) = 0;

  // The runs matching f, oldest first (by the start entry's number). Purge
  // entries are not runs and are not listed here.
  virtual std::vector<Passage> Liste(const Filtre& f) = 0;

  // Walks the whole chain and names the first entry changed, removed or
  // inserted. Never fails for a damaged chain (that is the verdict); fails
  // when the journal cannot be read at all.
  virtual Verdict Verifie() = 0;

  // Removes the oldest entries dated before avant (UTC) — the longest run of
  // them from the start of the chain, so the chain stays whole — and appends
  // the purge entry e (who purged) recording what went. Both in one
  // transaction. Returns the number of entries removed.
  virtual std::int64_t Purge(const std::string& avant, Entree& e) = 0;
};

}  // namespace journal

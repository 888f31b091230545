// The journal of an embedded store: an SQLite file of its own beside the
// store ("base.vesko" → "base.vesko.journal"), never the store itself, so a
// print still opens the persons' data read-only.
//
// The file is created with mode 0600 (the journal names who printed whose
// dossier: it is as private as the dossiers). Each entry is written in its
// own BEGIN IMMEDIATE transaction with a busy timeout, so several processes
// printing at once queue up on the file and none loses its entry or breaks
// the chain.
#pragma once

#include <string>

#include "control/journal.h"

struct sqlite3;

namespace journal {

class JournalSqlite : public Journal {
 public:
  enum class Mode {
    Ecriture,  // creates the file and its table when missing (a print, a purge)
    Lecture,   // the file must exist; nothing is written (a listing, a check)
  };
  // Opens the journal at chemin. Fails with a French sentence naming the file
  // and the reason (a folder without write permission, a missing file…).
  JournalSqlite(std::string chemin, Mode mode);
  ~JournalSqlite() override;
  JournalSqlite(const JournalSqlite&) = delete;
  JournalSqlite& operator=(const JournalSqlite&) = delete;

  std::string Nom() const override { return chemin_; }
  std::int64_t Ajoute(Entree& e) override;
  std::vector<Passage> Liste(const Filtre& f) override;
  Verdict Verifie() override;
  std::int64_t Purge(const std::string& avant, Entree& e) override;

  // How long a writer waits for the others before it gives up.
  static constexpr int kAttenteMs = 30000;

 private:
  class Requete;
  void Execute(const char* sql);
  // Runs f between BEGIN IMMEDIATE and COMMIT; rolls back when f throws.
  template <typename F>
  void EnTransaction(F&& f);
  void Insere(const Entree& e);
  [[noreturn]] void Echec(const std::string& quoi) const;

  std::string chemin_;
  sqlite3* db_ = nullptr;
};

}  // namespace journal

// The journal of a PostgreSQL store: a table of its own, vesko_journal, in the
// store's database, beside the persons' data but never mixed with them.
//
// A run's entries go through a connection of their own, each in its own
// committed transaction: the print itself reads a read-only snapshot of the
// data, and an entry must be on the server before anything is drawn. Writers
// queue up on a transaction-level advisory lock (which any role may take,
// unlike a table lock), so several desks printing at once lose no entry and
// never chain after the same one. The printing role needs only SELECT and
// INSERT on the table: nothing the program does on a print updates or deletes
// an entry, and `vesko init` gives no one else those rights (see
// docs/donnees.md for the grants of an office).
#pragma once

#include <string>

#include "control/journal.h"

struct pg_conn;

namespace journal {

class JournalPostgres : public Journal {
 public:
  enum class Mode {
    Ecriture,  // creates the table when missing and the role may (a print, a purge)
    Lecture,   // the table must exist; nothing is written (a listing, a check)
  };
  // Connects to the database at adresse. Fails with a French sentence naming
  // the server, the table and the reason.
  JournalPostgres(const std::string& adresse, Mode mode);
  ~JournalPostgres() override;
  JournalPostgres(const JournalPostgres&) = delete;
  JournalPostgres& operator=(const JournalPostgres&) = delete;

  std::string Nom() const override { return nom_; }
  std::int64_t Ajoute(Entree& e) override;
  std::vector<Passage> Liste(const Filtre& f) override;
  Verdict Verifie() override;
  std::int64_t Purge(const std::string& avant, Entree& e) override;

  // Creates the table when missing (vesko init), with the rights described
  // above.
  static void CreeTable(const std::string& adresse);

 private:
  class Resultat;
  Resultat Execute(const std::string& sql, const char* quoi);
  std::vector<Entree> Entrees();
  void Insere(const Entree& e);
  template <typename F>
  void EnTransaction(F&& f);
  [[noreturn]] void Echec(const std::string& quoi, const std::string& raison) const;

  pg_conn* cx_ = nullptr;
  std::string nom_;
  std::string role_;
};

}  // namespace journal

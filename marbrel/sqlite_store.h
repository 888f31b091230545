// The embedded store: one SQLite file holding every multivalue file and its
// dictionary. Records are keyed (file, key) in a table without rowid, so a read
// by key and a key-prefix scan both go through the primary-key index.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>

#include "marbrel/store.h"

struct sqlite3;
struct sqlite3_stmt;

namespace marbrel {

class SqliteStore : public Store {
 public:
  enum class Mode { LectureSeule, LectureEcriture, Creation };

  // Opens the store at chemin. LectureSeule opens the file read-only at the
  // SQLite level: a print can never write to the database. Creation creates the
  // file and its tables when missing. Fails with ERR_BASE naming the path.
  SqliteStore(const std::string& chemin, Mode mode);
  ~SqliteStore() override;
  SqliteStore(const SqliteStore&) = delete;
  SqliteStore& operator=(const SqliteStore&) = delete;

  bool LectureSeule() const override { return lecture_seule_; }
  // The file the store was opened from, as given.
  const std::string& Chemin() const { return chemin_; }
  bool ExisteFichier(const std::string& fichier) override;
  std::vector<std::string> Fichiers() override;
  std::optional<std::string> Lit(const std::string& fichier, const std::string& cle) override;
  void Parcourt(const std::string& fichier, const Visiteur& visiteur) override;
  void ParcourtPrefixe(const std::string& fichier, const std::string& prefixe,
                       const Visiteur& visiteur) override;
  long long EnregistrementsParcourus() const override { return parcourus_; }

  void CreeFichier(const std::string& fichier) override;
  void Ecrit(const std::string& fichier, const std::string& cle,
             const std::string& enregistrement) override;
  void Supprime(const std::string& fichier, const std::string& cle) override;
  void EcritLot(const std::string& fichier, const Producteur& suivant) override;
  void Transaction(const std::function<void()>& f) override;
  // One read transaction (the snapshot is taken at once, by a first read).
  void DebutInstantane() override;
  void FinInstantane() override;

 private:
  class Requete;
  void Execute(const char* sql);
  void ExigeEcriture() const;
  [[noreturn]] void Echec(const std::string& quoi) const;

  sqlite3* db_ = nullptr;
  // The read by key is the hot path of a print: its statement is prepared
  // once and kept (finalised by the destructor).
  sqlite3_stmt* lecture_ = nullptr;
  // Every other statement is prepared once too, on its first use, and kept
  // for the next; one that is in use (a walk whose visitor walks again) is
  // not shared: the nested use gets a statement of its own.
  struct Preparee {
    sqlite3_stmt* stmt = nullptr;
    bool en_usage = false;
  };
  mutable std::unordered_map<const char*, Preparee> preparees_;
  std::string chemin_;
  bool lecture_seule_ = false;
  long long parcourus_ = 0;
  int profondeur_transaction_ = 0;
  int profondeur_instantane_ = 0;
};

}  // namespace marbrel

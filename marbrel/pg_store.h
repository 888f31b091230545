// The shared store: every multivalue file of an office in one PostgreSQL
// database, reached through libpq. Two tables, the same layout as the
// embedded store:
//
//   fichiers        (nom bytea PRIMARY KEY)
//   enregistrements (fichier bytea, cle bytea, texte bytea,
//                    PRIMARY KEY (fichier, cle)), plus an index on cle
//
// Names, keys and records are bytea: records keep their marks byte for byte
// and keys sort byte-wise, as in the embedded store. A read by key and a
// key-prefix walk are ranges of the primary key; the index on cle alone lets a
// print fetch a person's records of every file in one round trip (see
// DebutInstantane).
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "marbrel/store.h"

struct pg_conn;
struct pg_result;

namespace marbrel {

class PostgresStore : public Store {
 public:
  enum class Mode { LectureSeule, LectureEcriture, Creation };

  // Connects to adresse, a libpq connection string or URI
  // ("postgresql://user@host/base"). LectureSeule makes every transaction of
  // the session read-only on the server. Creation creates the two tables and
  // fails when they are already there. A bad address, a server that does not
  // answer, a refused login or a missing table fail with ERR_BASE and a French
  // message naming the server (never its password) or the table.
  PostgresStore(const std::string& adresse, Mode mode);
  ~PostgresStore() override;
  PostgresStore(const PostgresStore&) = delete;
  PostgresStore& operator=(const PostgresStore&) = delete;

  // "base vesko du serveur PostgreSQL /run/postgresql:5432", for messages.
  const std::string& Nom() const { return nom_; }
  // The address it was opened with (another connection to the same database
  // uses it; it may hold a password: never show it as it is).
  const std::string& Adresse() const { return adresse_; }

  bool LectureSeule() const override { return lecture_seule_; }
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

  // A read-only repeatable-read transaction: every read until FinInstantane
  // sees the database as it was at the first read. Inside it, a read by key
  // fetches that key's records of every file at once and keeps them (nothing
  // can change under a snapshot), so a dossier's records cost one round trip
  // per person key and one per code looked up, not one per section.
  void DebutInstantane() override;
  void FinInstantane() override;

  // Round trips to the server so far (for the benchmark).
  long long Echanges() const { return echanges_; }

 private:
  class Resultat;
  Resultat Execute(const char* sql, const char* quoi);
  Resultat ExecutePrepare(const char* nom, std::initializer_list<const std::string*> valeurs,
                          const char* quoi);
  void Prepare(const char* nom, const char* sql, int parametres);
  void PrepareTout();
  void VerifieTables();
  void ExigeEcriture() const;
  void ExigeFichier(const std::string& fichier);
  void Marche(const std::string& fichier, const std::string& prefixe, const Visiteur& visiteur);
  [[noreturn]] void Echec(pg_result* r, const std::string& quoi) const;

  pg_conn* cx_ = nullptr;
  std::string adresse_;
  std::string nom_;
  std::string role_;
  bool lecture_seule_ = false;
  long long parcourus_ = 0;
  long long echanges_ = 0;
  int profondeur_transaction_ = 0;
  int profondeur_instantane_ = 0;
  // Inside a snapshot only: the records of each key read so far, by file,
  // and the file names.
  std::unordered_map<std::string, std::vector<std::pair<std::string, std::string>>> cache_;
  std::size_t octets_cache_ = 0;
  std::unique_ptr<std::unordered_set<std::string>> fichiers_;
};

}  // namespace marbrel

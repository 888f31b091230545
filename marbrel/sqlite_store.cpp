#include "marbrel/sqlite_store.h"

#include <sqlite3.h>

#include "marbrel/erreur.h"
#include "marbrel/sqlite_ouverture.h"

namespace marbrel {

// A statement of the store's own (its SQL a literal of this file): taken from
// the store's prepared statements, or prepared and kept there on first use,
// and made ready for the next use when done. A statement already in use is
// not taken twice: a nested use prepares one for itself alone.
class SqliteStore::Requete {
 public:
  Requete(const SqliteStore& store, const char* sql) : store_(store) {
    Preparee& p = store.preparees_[sql];
    if (p.stmt != nullptr && !p.en_usage) {
      preparee_ = &p;
    } else if (p.stmt == nullptr) {
      if (sqlite3_prepare_v3(store.db_, sql, -1, SQLITE_PREPARE_PERSISTENT, &p.stmt, nullptr) !=
          SQLITE_OK) {
        p.stmt = nullptr;
        store.Echec("préparation de la requête");
      }
      preparee_ = &p;
    }
    if (preparee_ != nullptr) {
      preparee_->en_usage = true;
      stmt_ = preparee_->stmt;
    } else if (sqlite3_prepare_v2(store.db_, sql, -1, &stmt_, nullptr) != SQLITE_OK) {
      store.Echec("préparation de la requête");
    }
  }
  ~Requete() {
    if (preparee_ == nullptr) {
      sqlite3_finalize(stmt_);
      return;
    }
    // Reset at once: a statement left stepping would hold its read lock.
    sqlite3_reset(stmt_);
    sqlite3_clear_bindings(stmt_);
    preparee_->en_usage = false;
  }
  Requete(const Requete&) = delete;
  Requete& operator=(const Requete&) = delete;

  void Lie(int i, const std::string& s) {
    sqlite3_bind_blob(stmt_, i, s.data(), static_cast<int>(s.size()), SQLITE_TRANSIENT);
  }
  // True while a row is available.
  bool Pas() {
    int rc = sqlite3_step(stmt_);
    if (rc == SQLITE_ROW) return true;
    if (rc == SQLITE_DONE) return false;
    store_.Echec("lecture");
  }
  // Makes the statement ready to run again with new values.
  void Reinitialise() {
    sqlite3_reset(stmt_);
    sqlite3_clear_bindings(stmt_);
  }
  std::string Colonne(int i) {
    const void* p = sqlite3_column_blob(stmt_, i);
    int n = sqlite3_column_bytes(stmt_, i);
    return p ? std::string(static_cast<const char*>(p), static_cast<size_t>(n)) : std::string();
  }

 private:
  const SqliteStore& store_;
  Preparee* preparee_ = nullptr;
  sqlite3_stmt* stmt_ = nullptr;
};

SqliteStore::SqliteStore(const std::string& chemin, Mode mode)
    : chemin_(chemin), lecture_seule_(mode == Mode::LectureSeule) {
  // The opening closes its connection itself when it fails.
  db_ = OuvreFichierSqlite(chemin, mode == Mode::LectureSeule      ? ModeOuverture::LectureSeule
                                   : mode == Mode::LectureEcriture ? ModeOuverture::LectureEcriture
                                                                   : ModeOuverture::Creation);
}

SqliteStore::~SqliteStore() {
  for (auto& [sql, p] : preparees_) sqlite3_finalize(p.stmt);
  sqlite3_finalize(lecture_);
  sqlite3_close(db_);
}

void SqliteStore::Echec(const std::string& quoi) const {
  throw Erreur(ERR_BASE, "Erreur de la base " + chemin_ + " (" + quoi + ") : " +
                             (db_ ? RaisonSqlite(db_, sqlite3_errcode(db_)) : "base fermée") + ".");
}

void SqliteStore::Execute(const char* sql) {
  char* message = nullptr;
  const int rc = sqlite3_exec(db_, sql, nullptr, nullptr, &message);
  if (rc != SQLITE_OK) {
    sqlite3_free(message);
    throw Erreur(ERR_BASE, "Erreur de la base " + chemin_ + " : " + RaisonSqlite(db_, rc) + ".");
  }
}

void SqliteStore::ExigeEcriture() const {
  if (lecture_seule_) {
    throw Erreur(ERR_LECTURE_SEULE, "La base " + chemin_ + " est ouverte en lecture seule.");
  }
}

bool SqliteStore::ExisteFichier(const std::string& fichier) {
  Requete r(*this, "SELECT 1 FROM fichiers WHERE nom = ?1");
  r.Lie(1, fichier);
  return r.Pas();
}

std::vector<std::string> SqliteStore::Fichiers() {
  std::vector<std::string> noms;
  Requete r(*this, "SELECT nom FROM fichiers ORDER BY nom");
  while (r.Pas()) noms.push_back(r.Colonne(0));
  return noms;
}

std::optional<std::string> SqliteStore::Lit(const std::string& fichier, const std::string& cle) {
  if (!lecture_ && sqlite3_prepare_v2(db_,
                                      "SELECT texte FROM enregistrements WHERE fichier = ?1 AND "
                                      "cle = ?2",
                                      -1, &lecture_, nullptr) != SQLITE_OK) {
    Echec("préparation de la lecture");
  }
  sqlite3_bind_blob(lecture_, 1, fichier.data(), static_cast<int>(fichier.size()), SQLITE_STATIC);
  sqlite3_bind_blob(lecture_, 2, cle.data(), static_cast<int>(cle.size()), SQLITE_STATIC);
  int rc = sqlite3_step(lecture_);
  std::optional<std::string> texte;
  if (rc == SQLITE_ROW) {
    const void* p = sqlite3_column_blob(lecture_, 0);
    int n = sqlite3_column_bytes(lecture_, 0);
    texte = p ? std::string(static_cast<const char*>(p), static_cast<size_t>(n)) : std::string();
  }
  // Reset before any failure is reported, so that the next read starts clean
  // and the statement holds no lock between reads.
  sqlite3_reset(lecture_);
  sqlite3_clear_bindings(lecture_);
  if (rc != SQLITE_ROW && rc != SQLITE_DONE) Echec("lecture");
  return texte;
}

void SqliteStore::Parcourt(const std::string& fichier, const Visiteur& visiteur) {
  Requete r(*this, "SELECT cle, texte FROM enregistrements WHERE fichier = ?1 ORDER BY cle");
  r.Lie(1, fichier);
  while (r.Pas()) {
    ++parcourus_;
    if (!visiteur(r.Colonne(0), r.Colonne(1))) return;
  }
}

void SqliteStore::ParcourtPrefixe(const std::string& fichier, const std::string& prefixe,
                                  const Visiteur& visiteur) {
  // Keys are compared as bytes (BLOB), so [prefix, prefix + 0xFF...) is a range
  // of the primary key; the prefix test in the loop ends the walk at its edge.
  Requete r(*this,
            "SELECT cle, texte FROM enregistrements WHERE fichier = ?1 AND cle >= ?2 "
            "ORDER BY cle");
  r.Lie(1, fichier);
  r.Lie(2, prefixe);
  while (r.Pas()) {
    std::string cle = r.Colonne(0);
    if (cle.compare(0, prefixe.size(), prefixe) != 0) return;
    ++parcourus_;
    if (!visiteur(cle, r.Colonne(1))) return;
  }
}

void SqliteStore::CreeFichier(const std::string& fichier) {
  ExigeEcriture();
  Requete r(*this, "INSERT OR IGNORE INTO fichiers (nom) VALUES (?1)");
  r.Lie(1, fichier);
  r.Pas();
}

void SqliteStore::Ecrit(const std::string& fichier, const std::string& cle,
                        const std::string& enregistrement) {
  ExigeEcriture();
  if (!ExisteFichier(fichier)) {
    throw Erreur(ERR_FICHIER_INCONNU, "Le fichier " + fichier + " n'existe pas dans la base.");
  }
  Requete r(*this,
            "INSERT OR REPLACE INTO enregistrements (fichier, cle, texte) VALUES (?1, ?2, ?3)");
  r.Lie(1, fichier);
  r.Lie(2, cle);
  r.Lie(3, enregistrement);
  r.Pas();
}

void SqliteStore::EcritLot(const std::string& fichier, const Producteur& suivant) {
  ExigeEcriture();
  if (!ExisteFichier(fichier)) {
    throw Erreur(ERR_FICHIER_INCONNU, "Le fichier " + fichier + " n'existe pas dans la base.");
  }
  Transaction([&] {
    Requete r(*this,
              "INSERT OR REPLACE INTO enregistrements (fichier, cle, texte) VALUES (?1, ?2, ?3)");
    std::string cle, enregistrement;
    while (suivant(cle, enregistrement)) {
      r.Lie(1, fichier);
      r.Lie(2, cle);
      r.Lie(3, enregistrement);
      r.Pas();
      r.Reinitialise();
    }
  });
}

void SqliteStore::Supprime(const std::string& fichier, const std::string& cle) {
  ExigeEcriture();
  Requete r(*this, "DELETE FROM enregistrements WHERE fichier = ?1 AND cle = ?2");
  r.Lie(1, fichier);
  r.Lie(2, cle);
  r.Pas();
}

void SqliteStore::Transaction(const std::function<void()>& f) {
  ExigeEcriture();
  if (profondeur_transaction_ > 0) {
    f();
    return;
  }
  Execute("BEGIN IMMEDIATE");
  ++profondeur_transaction_;
  try {
    f();
  } catch (...) {
    --profondeur_transaction_;
    sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
    throw;
  }
  --profondeur_transaction_;
  Execute("COMMIT");
}

void SqliteStore::DebutInstantane() {
  if (profondeur_instantane_++ > 0 || profondeur_transaction_ > 0) return;
  try {
    Execute("BEGIN");
    Requete(*this, "SELECT count(*) FROM fichiers").Pas();
  } catch (...) {
    --profondeur_instantane_;
    sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
    throw;
  }
}

void SqliteStore::FinInstantane() {
  if (profondeur_instantane_ == 0 || --profondeur_instantane_ > 0) return;
  if (profondeur_transaction_ == 0) sqlite3_exec(db_, "COMMIT", nullptr, nullptr, nullptr);
}

}  // namespace marbrel

#include "marbrel/sqlite_ouverture.h"

#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include "marbrel/erreur.h"

namespace marbrel {

std::string RaisonSqlite(sqlite3* db, int rc) {
  const int etendu = db ? sqlite3_extended_errcode(db) : rc;
  if (etendu == SQLITE_READONLY_ROLLBACK || etendu == SQLITE_READONLY_RECOVERY) {
    return "un import interrompu a laissé la base à moitié écrite ; elle sera remise en état à "
           "sa prochaine ouverture en écriture (un « vesko import » par quelqu'un qui peut "
           "écrire dans la base et son dossier)";
  }
  switch (rc & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return "la base est occupée par une autre écriture (un import ?) depuis plus de " +
             std::to_string(kAttenteBaseOccupeeMs / 1000) + " secondes ; réessayez plus tard";
    case SQLITE_FULL:
      return "le disque est plein";
    case SQLITE_IOERR:
      return "erreur d'entrée-sortie du disque";
    case SQLITE_CORRUPT:
      return "la base est endommagée";
    case SQLITE_NOTADB:
      return "ce fichier n'est pas une base Vesko";
    case SQLITE_READONLY:
      return "la base ne peut pas être modifiée (lecture seule)";
    case SQLITE_CANTOPEN:
      return "le fichier ne peut pas être ouvert";
    case SQLITE_PERM:
    case SQLITE_AUTH:
      return "permission refusée";
    case SQLITE_NOMEM:
      return "mémoire insuffisante";
    case SQLITE_ERROR:
      // A file of SQLite that is not one of our stores lacks our tables.
      return "ce fichier n'est pas une base Vesko (" + std::string(db ? sqlite3_errmsg(db) : "") +
             ")";
    default:
      return "erreur SQLite " + std::to_string(rc);
  }
}

namespace {

[[noreturn]] void Refuse(const std::string& chemin, const std::string& raison) {
  throw Erreur(ERR_BASE, "Impossible d'ouvrir la base " + chemin + " : " + raison + ".");
}

// Runs sql on db; the result code.
int Execute(sqlite3* db, const char* sql) {
  return sqlite3_exec(db, sql, nullptr, nullptr, nullptr);
}

// Checks that the store answers, which reads the file's header and tables: a
// file that is not a store fails here. The result code.
int Verifie(sqlite3* db) {
  sqlite3_stmt* stmt = nullptr;
  int rc = sqlite3_prepare_v2(db, "SELECT count(*) FROM fichiers", -1, &stmt, nullptr);
  if (rc == SQLITE_OK) {
    rc = sqlite3_step(stmt);
    if (rc == SQLITE_ROW) rc = SQLITE_OK;
  }
  sqlite3_finalize(stmt);
  return rc;
}

sqlite3* Ouvre(const std::string& chemin, int flags, int& rc) {
  sqlite3* db = nullptr;
  rc = sqlite3_open_v2(chemin.c_str(), &db, flags, nullptr);
  if (db) sqlite3_busy_timeout(db, kAttenteBaseOccupeeMs);
  return db;
}

}  // namespace

sqlite3* OuvreFichierSqlite(const std::string& chemin, ModeOuverture mode) {
  struct stat etat {};
  if (stat(chemin.c_str(), &etat) != 0) {
    if (mode != ModeOuverture::Creation) Refuse(chemin, "le fichier n'existe pas");
  } else if (!S_ISREG(etat.st_mode)) {
    Refuse(chemin, S_ISDIR(etat.st_mode)
                       ? "c'est un dossier"
                       : "ce n'est pas un fichier ordinaire (tube ou périphérique)");
  }

  const bool lecture_seule = mode == ModeOuverture::LectureSeule;
  int flags = lecture_seule ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
  if (mode == ModeOuverture::Creation) flags |= SQLITE_OPEN_CREATE;
  int rc = SQLITE_OK;
  sqlite3* db = Ouvre(chemin, flags, rc);
  auto echec = [&](int code) {
    const std::string raison = RaisonSqlite(db, code);
    sqlite3_close(db);
    Refuse(chemin, raison);
  };
  if (rc != SQLITE_OK) echec(rc);

  if (mode == ModeOuverture::Creation) {
    rc = Execute(db,
                 "CREATE TABLE IF NOT EXISTS fichiers (nom BLOB PRIMARY KEY) WITHOUT ROWID;"
                 "CREATE TABLE IF NOT EXISTS enregistrements ("
                 " fichier BLOB NOT NULL, cle BLOB NOT NULL, texte BLOB NOT NULL,"
                 " PRIMARY KEY (fichier, cle)) WITHOUT ROWID;");
    if (rc != SQLITE_OK) echec(rc);
  }
  rc = Verifie(db);
  if (lecture_seule &&
      (sqlite3_extended_errcode(db) == SQLITE_READONLY_ROLLBACK ||
       sqlite3_extended_errcode(db) == SQLITE_READONLY_RECOVERY) &&
      access(chemin.c_str(), W_OK) == 0) {
    // A store made before WAL mode, left by a killed import: one read-write
    // opening undoes the unfinished write, then the reader opens again.
    sqlite3_close(db);
    int rc_reprise = SQLITE_OK;
    db = Ouvre(chemin, SQLITE_OPEN_READWRITE, rc_reprise);
    rc_reprise = rc_reprise == SQLITE_OK ? Verifie(db) : rc_reprise;
    sqlite3_close(db);
    db = Ouvre(chemin, flags, rc);
    if (rc != SQLITE_OK) echec(rc);
    rc = Verifie(db);
  }
  if (rc != SQLITE_OK) echec(rc);
  if (!lecture_seule) {
    // A store written in WAL mode stays readable while, and after, an import
    // runs or dies (see the header). The mode is kept in the file.
    sqlite3_stmt* stmt = nullptr;
    rc = sqlite3_prepare_v2(db, "PRAGMA journal_mode=WAL", -1, &stmt, nullptr);
    if (rc == SQLITE_OK) rc = sqlite3_step(stmt) == SQLITE_ROW ? SQLITE_OK : sqlite3_errcode(db);
    sqlite3_finalize(stmt);
    if (rc != SQLITE_OK) echec(rc);
    // The log and its index stay beside the file when the writer closes: a
    // reader who may not write in the folder can then still open the store
    // (SQLite reads a WAL store read-only only when both files exist).
    int garde = 1;
    sqlite3_file_control(db, "main", SQLITE_FCNTL_PERSIST_WAL, &garde);
  }
  return db;
}

}  // namespace marbrel

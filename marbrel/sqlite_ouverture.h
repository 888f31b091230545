// How the embedded store's file is opened, and what its failures are called
// in French. Kept apart from the store's reads and writes.
//
// The store runs in WAL mode (write-ahead log): an import appends its pages to
// "FILE-wal" and readers keep reading the last committed state beside it. An
// import that is killed leaves only uncommitted pages in the log, which every
// later opening ignores, so a reader (a print, which opens the file read-only)
// never meets the "hot journal" that the rollback journal would leave and that
// only a writer may undo. A store made before WAL mode, killed in an import,
// still has such a journal: a read-only opening then undoes it through one
// short read-write opening when the file allows it, and otherwise says what
// happened and how to recover. The log and its index ("FILE-wal",
// "FILE-shm") are kept when a writer closes, so that a user who may read the
// store but not write in its folder can still print from it.
#pragma once

#include <string>

struct sqlite3;

namespace marbrel {

// How long an opening or a statement waits for a writer that holds the store
// before it reports the store busy.
inline constexpr int kAttenteBaseOccupeeMs = 5000;

enum class ModeOuverture { LectureSeule, LectureEcriture, Creation };

// Opens chemin. Refuses, before SQLite sees it, a path that is not a regular
// file (a folder, a pipe or a device would block or fail strangely) and a
// missing one unless mode is Creation. The connection waits for a busy store
// up to kAttenteBaseOccupeeMs. Every failure closes what was opened and throws
// Erreur(ERR_BASE) naming chemin.
sqlite3* OuvreFichierSqlite(const std::string& chemin, ModeOuverture mode);

// The French reason of SQLite's result code rc on db ("la base est occupée
// ...", "le disque est plein", ...).
std::string RaisonSqlite(sqlite3* db, int rc);

}  // namespace marbrel

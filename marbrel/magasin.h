// Opening a store by its name: "postgresql://…" or "postgres://…" is the
// shared PostgreSQL store (any libpq connection URI), anything else the path
// of an embedded SQLite store. Every command and host that names a store goes
// through here.
#pragma once

#include <memory>
#include <string>

#include "marbrel/store.h"

namespace marbrel {

enum class Acces {
  LectureSeule,     // a print, an export, a selection: the store refuses writes
  LectureEcriture,  // an import
  Creation,         // init: makes the store's tables
};

// True for a name of the shared store ("postgresql://…", "postgres://…").
bool EstAdressePostgres(const std::string& nom);

std::shared_ptr<Store> OuvreMagasin(const std::string& nom, Acces acces);

// The store's name as messages show it: a SQLite path as it is, a PostgreSQL
// address without its password.
std::string NomAffiche(const std::string& nom);

}  // namespace marbrel

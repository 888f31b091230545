// A connection to a PostgreSQL server, as every part of the program makes
// it: the address checked first, ten seconds to answer, the program's name
// given to the server, the server's notices kept from people, and a failure
// told in French naming the server and the database (never a password).
#pragma once

#include <string>

struct pg_conn;

namespace marbrel {

// Connects to adresse (a libpq connection string or URI). Sets nom to
// "base « B » du serveur PostgreSQL HOST:PORT" and role to the login role.
// Fails with ERR_BASE: an address that is not one, a server that does not
// answer, a refused login, a missing database.
pg_conn* ConnectePostgres(const std::string& adresse, std::string& nom, std::string& role);

}  // namespace marbrel

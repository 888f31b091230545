// A PostgreSQL server of the tests' own: initdb into a fresh folder under
// /tmp, listening on a Unix socket in that folder only (no TCP port), run as
// an unprivileged account (the server refuses root: as root the folder is
// given to the "postgres" account of the Debian package and the server runs
// through runuser). Started by the first test that asks, stopped when the test
// program ends. A server that cannot start fails the test: nothing is skipped.
#pragma once

#include <gtest/gtest.h>
#include <libpq-fe.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

namespace essai_pg {

class Serveur {
 public:
  // The running server; throws (failing the test) when it cannot start.
  static Serveur& Instance() {
    static std::unique_ptr<Serveur> serveur(new Serveur);
    if (!serveur->erreur_.empty()) throw std::runtime_error(serveur->erreur_);
    return *serveur;
  }

  ~Serveur() {
    if (demarre_) Lance(Binaire("pg_ctl") + " -D '" + dossier_ + "/donnees' -m immediate -w stop");
    std::error_code ignore;
    std::filesystem::remove_all(dossier_, ignore);
  }

  const std::string& Dossier() const { return dossier_; }

  // The address of a database of this server, for a role.
  std::string Adresse(const std::string& base, const std::string& role = "vesko") const {
    return "postgresql://" + role + "@/" + base + "?host=" + dossier_;
  }

  // A new, empty database: its address.
  std::string NouvelleBase() {
    const std::string nom = "essai" + std::to_string(++bases_);
    Sql("postgres", "CREATE DATABASE " + nom);
    return Adresse(nom);
  }

  // Runs sql as the superuser on a database; returns the first value of the
  // first row ("" if none). Fails the test on an error.
  std::string Sql(const std::string& base, const std::string& sql) const {
    PGconn* cx = PQconnectdb(Adresse(base).c_str());
    std::string valeur, erreur;
    if (PQstatus(cx) != CONNECTION_OK) {
      erreur = PQerrorMessage(cx);
    } else {
      PGresult* r = PQexec(cx, sql.c_str());
      if (PQresultStatus(r) == PGRES_TUPLES_OK && PQntuples(r) > 0) {
        valeur = PQgetvalue(r, 0, 0);
      } else if (PQresultStatus(r) != PGRES_COMMAND_OK && PQresultStatus(r) != PGRES_TUPLES_OK) {
        erreur = PQresultErrorMessage(r);
      }
      PQclear(r);
    }
    PQfinish(cx);
    if (!erreur.empty()) ADD_FAILURE() << sql << " : " << erreur;
    return valeur;
  }

 private:
  Serveur() {
    char modele[] = "/tmp/vesko-pg-XXXXXX";
    if (mkdtemp(modele) == nullptr) {
      erreur_ = "dossier temporaire impossible";
      return;
    }
    dossier_ = modele;
    const bool root = geteuid() == 0;
    if (root && std::system(("chown postgres: '" + dossier_ + "'").c_str()) != 0) {
      erreur_ = "le compte postgres manque (scripts/installe-paquets installe postgresql)";
      return;
    }
    comme_ = root ? "runuser -u postgres -- " : "";
    const std::string journal = dossier_ + "/journal";
    if (Lance(Binaire("initdb") + " -D '" + dossier_ +
              "/donnees' -U vesko --auth=trust -E UTF8 --locale=C.UTF-8 --no-sync") != 0) {
      erreur_ = "initdb a échoué : " + LitJournal(dossier_ + "/sortie");
      return;
    }
    if (Lance(Binaire("pg_ctl") + " -D '" + dossier_ + "/donnees' -l '" + journal +
              "' -w -t 60 -o \"-c listen_addresses='' -c unix_socket_directories='" + dossier_ +
              "' -c fsync=off -c autovacuum=off -c max_connections=60\" start") != 0) {
      erreur_ = "le serveur PostgreSQL ne démarre pas : " + LitJournal(journal);
      return;
    }
    demarre_ = true;
  }

  static std::string LitJournal(const std::string& chemin) {
    std::ifstream f(chemin);
    return std::string(std::istreambuf_iterator<char>(f), {});
  }

  // The server's programs: Debian keeps them out of PATH.
  static std::string Binaire(const std::string& nom) {
    for (const char* version : {"17", "16", "15", "14", "13"}) {
      std::string chemin = std::string("/usr/lib/postgresql/") + version + "/bin/" + nom;
      if (std::filesystem::exists(chemin)) return chemin;
    }
    return nom;
  }

  int Lance(const std::string& commande) const {
    return std::system((comme_ + commande + " >'" + dossier_ + "/sortie' 2>&1").c_str());
  }

  std::string dossier_;
  std::string comme_;
  std::string erreur_;
  bool demarre_ = false;
  int bases_ = 0;
};

}  // namespace essai_pg

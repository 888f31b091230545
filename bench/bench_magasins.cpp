// Prints 1,000 demo dossiers (500 care recipients, 500 carers, the demo's
// persons over and over) on the recording surface, once from the embedded
// SQLite store and once from a PostgreSQL store, and reports the time of each
// and their ratio. The PostgreSQL server is the one named on the command line
// (scripts/postgres-local starts one on a Unix socket); the benchmark makes
// its own database there, "vesko_bench", and drops it at the end.
// Figures only; nothing here asserts a target.
//
//   bench_magasins postgresql://vesko@/postgres?host=DOSSIER [DOSSIER_DEMO]
#include <libpq-fe.h>

#include <QApplication>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <iostream>

#include "control/ctr_vesko.h"
#include "marbrel/base.h"
#include "marbrel/creation_base.h"
#include "marbrel/dump.h"
#include "marbrel/outils.h"
#include "marbrel/pg_store.h"
#include "marbrel/sqlite_store.h"
#include "printing/imprimantes.h"
#include "printing/recording.h"

namespace {

constexpr int kDossiersParType = 500;

double Processeur() {
  timespec t{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
  return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) / 1e9;
}

// The connection string of the same server with another database.
std::string AvecBase(const std::string& adresse, const std::string& base) {
  char* erreur = nullptr;
  PQconninfoOption* options = PQconninfoParse(adresse.c_str(), &erreur);
  if (options == nullptr) {
    PQfreemem(erreur);
    throw std::runtime_error("adresse PostgreSQL invalide : " + adresse);
  }
  std::string conninfo;
  for (PQconninfoOption* o = options; o->keyword != nullptr; ++o) {
    if (o->val == nullptr || std::string(o->keyword) == "dbname") continue;
    conninfo += std::string(o->keyword) + "='" + o->val + "' ";
  }
  PQconninfoFree(options);
  return conninfo + "dbname='" + base + "'";
}

void Sql(const std::string& conninfo, const std::string& sql) {
  PGconn* cx = PQconnectdb(conninfo.c_str());
  PGresult* r = PQexec(cx, sql.c_str());
  const bool ok = PQresultStatus(r) == PGRES_COMMAND_OK;
  const std::string message = PQerrorMessage(cx);
  PQclear(r);
  PQfinish(cx);
  if (!ok) throw std::runtime_error(sql + " : " + message);
}

void Remplit(marbrel::Store& store, const std::string& demo) {
  marbrel::CreeFichiersVesko(store);
  std::vector<std::filesystem::path> fichiers;
  for (const auto& f : std::filesystem::directory_iterator(demo)) {
    if (f.path().extension() == ".json") fichiers.push_back(f.path());
  }
  std::sort(fichiers.begin(), fichiers.end());
  std::vector<marbrel::Dump> dumps;
  for (const auto& f : fichiers) dumps.push_back(marbrel::LitDumpFichier(f.string()));
  marbrel::Importe(store, dumps);
}

struct Mesure {
  double secondes = 0, processeur = 0;
  std::size_t pages = 0;
};

// One Edition per type of kDossiersParType dossiers, from a store opened as a
// print opens it.
Mesure Imprime(const std::function<std::shared_ptr<marbrel::Store>()>& ouvre) {
  printing::Enregistrement enregistrement;
  printing::ListeImprimantes::Courante().Installe(
      {{"Enregistrement", [&](const printing::Travail&) {
          return std::make_unique<printing::RecordingSurface>(&enregistrement);
        }}});
  marbrel::Outils::Instance().Installe_Choix([](const std::string&) { return "0"; },
                                             [] { return std::int16_t{9}; });
  Ctr_Vesko controle;
  controle.Fixe_Aujourdhui(marbrel::Outils::Date_Interne(2024, 3, 15));
  Mesure m;
  const auto debut = std::chrono::steady_clock::now();
  const double cpu = Processeur();
  for (const char* type : {"AIDE", "AIDANT"}) {
    auto store = ouvre();
    std::vector<std::string> personnes;
    store->Parcourt(std::string(type) == "AIDE" ? "CIVILAIDE" : "CIVILAIDANT",
                    [&](const std::string& cle, const std::string&) {
                      personnes.push_back(cle);
                      return true;
                    });
    marbrel::TabDyn cles;
    for (int i = 0; i < kDossiersParType; ++i) {
      cles.Remplace(i + 1, personnes[static_cast<std::size_t>(i) % personnes.size()]);
    }
    std::string t = type;
    enregistrement = {};
    controle.TheDatabase(std::make_shared<marbrel::Base>(store));
    controle.Edition(cles, t);
    m.pages += enregistrement.pages.size();
  }
  m.secondes = std::chrono::duration<double>(std::chrono::steady_clock::now() - debut).count();
  m.processeur = Processeur() - cpu;
  return m;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::cerr << "usage : bench_magasins postgresql://… [DOSSIER_DEMO]\n"
                 "(scripts/postgres-local démarre un serveur et donne son adresse)\n";
    return 2;
  }
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  const std::string adresse = argv[1];
  const std::string demo = argc > 2 ? argv[2] : VESKO_DEMO_DIR;
  QApplication application(argc, argv);

  const std::string dossier = std::filesystem::temp_directory_path() / "vesko-bench-magasins";
  std::filesystem::create_directories(dossier);
  const std::string sqlite = dossier + "/demo.vesko";
  std::filesystem::remove(sqlite);
  const std::string postgres = AvecBase(adresse, "vesko_bench");
  try {
    {
      marbrel::SqliteStore store(sqlite, marbrel::SqliteStore::Mode::Creation);
      Remplit(store, demo);
    }
    Sql(adresse, "DROP DATABASE IF EXISTS vesko_bench");
    Sql(adresse, "CREATE DATABASE vesko_bench");
    {
      marbrel::PostgresStore store(postgres, marbrel::PostgresStore::Mode::Creation);
      Remplit(store, demo);
    }
    std::shared_ptr<marbrel::PostgresStore> dernier;
    // A first pass of each warms the caches of the system and the server.
    Imprime([&] {
      return std::make_shared<marbrel::SqliteStore>(sqlite,
                                                    marbrel::SqliteStore::Mode::LectureSeule);
    });
    const Mesure s = Imprime([&] {
      return std::make_shared<marbrel::SqliteStore>(sqlite,
                                                    marbrel::SqliteStore::Mode::LectureSeule);
    });
    Imprime([&] {
      return std::make_shared<marbrel::PostgresStore>(postgres,
                                                      marbrel::PostgresStore::Mode::LectureSeule);
    });
    long long echanges = 0;
    const Mesure p = Imprime([&] {
      if (dernier) echanges += dernier->Echanges();
      dernier = std::make_shared<marbrel::PostgresStore>(
          postgres, marbrel::PostgresStore::Mode::LectureSeule);
      return dernier;
    });
    echanges += dernier->Echanges();
    dernier.reset();
    const int n = 2 * kDossiersParType;
    std::printf(
        "SQLite     : %d dossiers, %zu pages en %.3f s (processeur %.3f s) : %.1f "
        "dossiers/s\n",
        n, s.pages, s.secondes, s.processeur, n / s.secondes);
    std::printf(
        "PostgreSQL : %d dossiers, %zu pages en %.3f s (processeur %.3f s) : %.1f "
        "dossiers/s, %lld échanges avec le serveur (%.1f par dossier)\n",
        n, p.pages, p.secondes, p.processeur, n / p.secondes, echanges,
        static_cast<double>(echanges) / n);
    std::printf("rapport PostgreSQL / SQLite : %.2f (temps écoulé)\n", p.secondes / s.secondes);
  } catch (const std::exception& e) {
    std::cerr << "bench_magasins : " << e.what() << "\n";
    return 1;
  }
  Sql(adresse, "DROP DATABASE IF EXISTS vesko_bench");
  std::filesystem::remove_all(dossier);
  return 0;
}

// The access journal of a PostgreSQL store: its own table in the store's
// database, written by desks printing at once under a role that may only add
// entries, and checked for tampering by its owner.
#include <gtest/gtest.h>
#include <libpq-fe.h>

#include <chrono>
#include <ctime>
#include <future>
#include <nlohmann/json.hpp>
#include <thread>

#include "tests/app/programmes.h"
#include "tests/postgres/serveur_postgres.h"

namespace {

using essai::Resultat;

TEST(JournalPostgres, DesksPrintingAtOnceLeaveEveryRunUnderARoleThatMayOnlyAddEntries) {
  essai_pg::Serveur& serveur = essai_pg::Serveur::Instance();
  const essai::Dossier dossier;
  const std::string proprietaire = serveur.NouvelleBase();
  const std::string base = proprietaire.substr(
      proprietaire.find("@/") + 2, proprietaire.find('?') - proprietaire.find("@/") - 2);
  std::ofstream(dossier / "p.json") << R"({"CIVILAIDE": {"A0001": ["", "MARTIN", "Jeanne"],
      "A0002": ["", "LEFEBVRE", "Marcel"]}})";
  ASSERT_EQ(essai::Vesko("init --db '" + proprietaire + "'").statut, 0);
  ASSERT_EQ(
      essai::Vesko("import --db '" + proprietaire + "' '" + (dossier / "p.json") + "'").statut, 0);
  // The grants an office gives its desks.
  serveur.Sql(base,
              "CREATE ROLE imprimeur LOGIN; GRANT SELECT ON fichiers, enregistrements TO "
              "imprimeur; GRANT SELECT, INSERT ON vesko_journal TO imprimeur");
  const std::string bureau = serveur.Adresse(base, "imprimeur");

  std::vector<std::future<Resultat>> impressions;
  for (int i = 0; i < 4; ++i) {
    impressions.push_back(std::async(std::launch::async, [&, i] {
      return essai::Vesko("print --db '" + bureau + "' --type AIDE --text '" +
                          (dossier / ("d" + std::to_string(i) + ".txt")) + "' A0001 A0002");
    }));
  }
  for (auto& f : impressions) {
    const Resultat r = f.get();
    EXPECT_EQ(r.statut, 0) << r.erreurs;
  }
  const Resultat liste = essai::Vesko("journal --db '" + bureau + "' --cle A0002 --format json");
  ASSERT_EQ(liste.statut, 0) << liste.erreurs;
  const nlohmann::json passages = nlohmann::json::parse(liste.sortie);
  ASSERT_EQ(passages.size(), 4u);
  for (const auto& p : passages) EXPECT_EQ(p["issue"]["issue"], "terminée") << p.dump();
  EXPECT_EQ(essai::Vesko("journal verifie --db '" + bureau + "'").statut, 0);

  // The desks' role may neither change nor remove an entry: the server says no.
  PGconn* cx = PQconnectdb(bureau.c_str());
  ASSERT_EQ(PQstatus(cx), CONNECTION_OK);
  for (const char* sql :
       {"UPDATE vesko_journal SET destination = 'ailleurs'", "DELETE FROM vesko_journal"}) {
    PGresult* r = PQexec(cx, sql);
    EXPECT_STREQ(PQresultErrorField(r, PG_DIAG_SQLSTATE), "42501") << sql;
    PQclear(r);
  }
  PQfinish(cx);
  // Nor purge: removing the entries up to now is refused, and nothing goes.
  char maintenant[32];
  const std::time_t t = std::time(nullptr) + 1;
  std::strftime(maintenant, sizeof maintenant, "%Y-%m-%dT%H:%M:%S", std::localtime(&t));
  std::this_thread::sleep_for(std::chrono::milliseconds(1100));
  const Resultat purge =
      essai::Vesko(std::string("journal purge --avant ") + maintenant + " --db '" + bureau + "'");
  EXPECT_EQ(purge.statut, 1) << purge.sortie << maintenant;
  EXPECT_NE(purge.erreurs.find("le rôle « imprimeur » n'en a pas le droit"), std::string::npos)
      << purge.erreurs;

  // An entry changed by the owner is found and named.
  serveur.Sql(base, "UPDATE vesko_journal SET destination = 'ailleurs' WHERE numero = 3");
  const Resultat verdict = essai::Vesko("journal verifie --db '" + proprietaire + "'");
  EXPECT_EQ(verdict.statut, 1);
  EXPECT_NE(verdict.erreurs.find("n° 3"), std::string::npos) << verdict.erreurs;
}

}  // namespace

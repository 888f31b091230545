// What only the shared store has: a server to reach, tables to find, a
// planner that must walk the key index.
#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "marbrel/base.h"
#include "marbrel/erreur.h"
#include "marbrel/pg_store.h"
#include "tests/postgres/serveur_postgres.h"

namespace {

using marbrel::PostgresStore;

std::string MessageDe(const std::string& adresse, PostgresStore::Mode mode) {
  try {
    PostgresStore store(adresse, mode);
  } catch (const marbrel::Erreur& e) {
    EXPECT_EQ(e.Numero(), marbrel::ERR_BASE);
    return e.what();
  }
  return "(ouverte)";
}

// Each failure to open says, in French, which server or which table, and
// never shows a password.
TEST(PostgresStore, OuvertureRateeNommeLeServeurOuLaTable) {
  auto& serveur = essai_pg::Serveur::Instance();
  const std::string d = serveur.Dossier();
  using M = PostgresStore::Mode;
  EXPECT_EQ(MessageDe("postgresql://vesko:secret@/x?nimporte=1", M::LectureSeule),
            "L'adresse « postgresql://vesko:***@/x?nimporte=1 » n'est pas une adresse PostgreSQL "
            "valide (forme attendue : postgresql://utilisateur@hôte:port/base).");
  EXPECT_EQ(MessageDe("postgresql://vesko@/essai?host=" + d + "/arrete", M::LectureSeule),
            "Impossible de joindre le serveur PostgreSQL " + d +
                "/arrete:5432 (base « essai ») : le serveur ne répond pas (il est arrêté ou "
                "l'adresse est fausse).");
  EXPECT_EQ(MessageDe(serveur.Adresse("absente"), M::LectureSeule),
            "Impossible de joindre le serveur PostgreSQL " + d +
                ":5432 (base « absente ») : la base « absente » n'existe pas sur ce serveur.");
  EXPECT_EQ(MessageDe(serveur.Adresse("postgres", "personne"), M::LectureSeule),
            "Impossible de joindre le serveur PostgreSQL " + d +
                ":5432 (base « postgres ») : le rôle « personne » n'existe pas sur ce serveur.");

  const std::string vide = serveur.NouvelleBase();
  const std::string nom = vide.substr(vide.find("@/") + 2, vide.find('?') - vide.find("@/") - 2);
  EXPECT_EQ(MessageDe(vide, M::LectureEcriture),
            "La table fichiers est absente de la base « " + nom + " » du serveur PostgreSQL " + d +
                ":5432 : ce n'est pas une base Vesko (vesko init la crée).");
  serveur.Sql(nom, "CREATE TABLE fichiers (nom bytea PRIMARY KEY)");
  EXPECT_EQ(MessageDe(vide, M::LectureSeule),
            "La table enregistrements est absente de la base « " + nom +
                " » du serveur PostgreSQL " + d +
                ":5432 : ce n'est pas une base Vesko (vesko init la crée).");
  EXPECT_EQ(MessageDe(vide, M::Creation),
            "La base « " + nom + " » du serveur PostgreSQL " + d +
                ":5432 contient déjà les tables de Vesko : vesko init ne remplace jamais une "
                "base.");
}

long long Statistique(essai_pg::Serveur& serveur, const std::string& base,
                      const std::string& colonne) {
  return std::stoll(serveur.Sql(base, "SELECT coalesce(" + colonne + ", 0)" +
                                          " FROM pg_stat_user_tables WHERE relname = "
                                          "'enregistrements'"));
}

// The server walks a key prefix through the primary-key index: the table's
// statistics count no sequential scan and only the rows of the range.
TEST(PostgresStore, UnPrefixeDeCleEstUnParcoursDIndexSurLeServeur) {
  auto& serveur = essai_pg::Serveur::Instance();
  const std::string adresse = serveur.NouvelleBase();
  const std::string base =
      adresse.substr(adresse.find("@/") + 2, adresse.find('?') - adresse.find("@/") - 2);
  {
    PostgresStore store(adresse, PostgresStore::Mode::Creation);
    store.CreeFichier("TPSAIDEINDISPO");
    long n = 0;
    store.EcritLot("TPSAIDEINDISPO", [&](std::string& cle, std::string& texte) {
      if (n == 20000) return false;
      cle = std::to_string(10000 + n / 15) + std::to_string(100 + n % 15);
      texte = "x";
      ++n;
      return true;
    });
  }
  // A backend hands its figures over when it ends, a moment later.
  auto attend = [&](const std::string& colonne, long long au_moins) {
    long long v = 0;
    for (int i = 0; i < 100 && (v = Statistique(serveur, base, colonne)) < au_moins; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return v;
  };
  ASSERT_EQ(attend("n_tup_ins", 20000), 20000);
  const long long seq = Statistique(serveur, base, "seq_scan");
  const long long index = Statistique(serveur, base, "idx_scan");
  const long long lus = Statistique(serveur, base, "idx_tup_fetch");
  {
    auto store = std::make_shared<PostgresStore>(adresse, PostgresStore::Mode::LectureSeule);
    marbrel::Base b(store);
    marbrel::TabDyn commande;
    commande.Remplace(1, "SSELECT TPSAIDEINDISPO AVEC 0 = \"11042]\"");
    EXPECT_EQ(b.Selectionne(commande.Texte()).DCount(), 15);
  }
  EXPECT_GT(attend("idx_scan", index + 1), index);
  EXPECT_EQ(Statistique(serveur, base, "seq_scan"), seq);
  EXPECT_LE(Statistique(serveur, base, "idx_tup_fetch") - lus, 16);
}

}  // namespace

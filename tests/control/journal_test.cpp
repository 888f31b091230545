// The access journal: its chain and what breaks it, retention, and the entry
// every Edition leaves before it draws.
#include <sqlite3.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include "control/interface.h"
#include "control/journal_chaine.h"
#include "control/journal_edition.h"
#include "control/journal_sqlite.h"
#include "db/variable.h"
#include "tests/support/releve.h"

namespace {

std::string LitFichier(const std::string& chemin) {
  std::ifstream flux(chemin, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(flux), {});
}

using journal::Entree;
using journal::JournalSqlite;

// A journal file in a fresh folder, and a way to change it behind its back.
struct JournalEssai {
  ~JournalEssai() { std::filesystem::remove_all(dossier); }
  std::unique_ptr<JournalSqlite> Ouvre() {
    return std::make_unique<JournalSqlite>(chemin, JournalSqlite::Mode::Ecriture);
  }
  // An entry of a run that started at heure (UTC) with these keys.
  std::int64_t Ajoute(const std::string& heure, std::vector<std::string> cles = {"A0001"}) {
    Entree e = journal::Contexte("marie");
    e.genre = journal::kImpression;
    e.heure_utc = heure;
    e.type = "AIDE";
    e.cles = std::move(cles);
    e.destination = "PDF /tmp/lot.pdf";
    return Ouvre()->Ajoute(e);
  }
  void Sql(const std::string& sql) {
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(chemin.c_str(), &db), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sql;
    sqlite3_close(db);
  }
  char modele[26] = "/tmp/vesko-journal-XXXXXX";
  std::string dossier = mkdtemp(modele);
  std::string chemin = dossier + "/base.vesko.journal";
};

}  // namespace

// Each way of tampering with an old entry is named at that entry; an
// untouched journal verifies.
TEST(JournalChaine, AChangedRemovedOrInsertedEntryIsNamedAtThatEntry) {
  struct Cas {
    std::string sql;
    std::int64_t numero;
    std::string constat;
  } const cas[] = {
      {"", 0, "journal intact : 5 entrée(s), du n° 1 au n° 5"},
      {"UPDATE entrees SET cles = '[\"A0009\"]' WHERE numero = 2", 2, "a été modifiée"},
      {"UPDATE entrees SET heure_utc = '2020-01-01T00:00:00.000Z' WHERE numero = 4", 4,
       "a été modifiée"},
      {"DELETE FROM entrees WHERE numero = 3", 3, "l'entrée n° 3 a été supprimée"},
      {"DELETE FROM entrees WHERE numero IN (1, 2)", 1,
       "les entrées n° 1 à n° 2 ont été supprimées"},
      // A whole entry copied from elsewhere, consistent in itself, in place of one.
      {"UPDATE entrees SET (heure_utc, precedent, empreinte) = (SELECT heure_utc, precedent, "
       "empreinte FROM entrees WHERE numero = 1) WHERE numero = 3",
       3, "a été modifiée"},
  };
  for (const Cas& c : cas) {
    JournalEssai j;
    for (int i = 1; i <= 5; ++i) j.Ajoute("2026-0" + std::to_string(i) + "-01T10:00:00.000Z");
    j.Sql(c.sql.empty() ? "SELECT 1" : c.sql);
    const journal::Verdict v = j.Ouvre()->Verifie();
    EXPECT_EQ(v.intact, c.numero == 0) << c.sql;
    EXPECT_EQ(v.numero, c.numero) << c.sql;
    EXPECT_NE(v.message.find(c.constat), std::string::npos) << c.sql << "\n" << v.message;
  }

  // An entry taken from another journal is consistent in itself but follows
  // nothing here: it was inserted.
  JournalEssai j, autre;
  j.Ajoute("2026-01-01T10:00:00.000Z");
  autre.Ajoute("2026-01-01T10:00:00.000Z", {"A0005"});
  autre.Ajoute("2026-01-02T10:00:00.000Z", {"A0007"});
  j.Sql("ATTACH '" + autre.chemin +
        "' AS autre; INSERT INTO entrees SELECT * FROM autre.entrees WHERE numero = 2");
  const journal::Verdict v = j.Ouvre()->Verifie();
  EXPECT_FALSE(v.intact);
  EXPECT_EQ(v.numero, 2);
  EXPECT_EQ(v.message, "l'entrée n° 2 a été insérée : elle ne suit pas l'entrée n° 1.");
}

// Retention removes the oldest entries, writes what it removed, and the chain
// still verifies from there; removing the purge entry itself is seen.
TEST(JournalPurge, RemovesTheOldestEntriesAndTheChainSurvivesIt) {
  JournalEssai j;
  j.Ajoute("2025-01-10T08:00:00.000Z", {"A0001"});
  j.Ajoute("2025-03-10T08:00:00.000Z", {"A0002"});
  j.Ajoute("2026-06-10T08:00:00.000Z", {"A0003"});
  auto journal = j.Ouvre();
  // Purges are dated too: fixed here so the test does not depend on today.
  Entree purge = journal::Contexte("");
  purge.heure_utc = "2026-06-20T00:00:00.000Z";
  EXPECT_EQ(journal->Purge("2026-01-01T00:00:00.000Z", purge), 2);
  EXPECT_EQ(purge.numero, 4);
  EXPECT_EQ(purge.message,
            "2 entrée(s) antérieure(s) à 2026-01-01T00:00:00.000Z supprimée(s) (n° 1 à 2).");
  EXPECT_TRUE(journal->Verifie().intact) << journal->Verifie().message;
  const auto restent = journal->Liste({});
  ASSERT_EQ(restent.size(), 1u);
  EXPECT_EQ(restent[0].impression.cles, std::vector<std::string>{"A0003"});

  // A purge that removes nothing keeps the chain's starting point.
  Entree rien = journal::Contexte("");
  rien.heure_utc = "2026-06-21T00:00:00.000Z";
  EXPECT_EQ(journal->Purge("2026-01-01T00:00:00.000Z", rien), 0);
  j.Ajoute("2026-07-01T08:00:00.000Z");
  EXPECT_TRUE(journal->Verifie().intact) << journal->Verifie().message;

  // Everything removed: the chain goes on from the purge entry.
  Entree tout = journal::Contexte("");
  tout.heure_utc = "2027-01-05T00:00:00.000Z";
  EXPECT_EQ(journal->Purge("2027-01-01T00:00:00.000Z", tout), 4);
  j.Ajoute("2027-02-01T08:00:00.000Z");
  EXPECT_TRUE(journal->Verifie().intact) << journal->Verifie().message;

  j.Sql("DELETE FROM entrees WHERE genre = 'purge'");
  const journal::Verdict v = journal->Verifie();
  EXPECT_FALSE(v.intact);
  EXPECT_NE(v.message.find("les entrées n° 1 à n° 7 ont été supprimées"), std::string::npos)
      << v.message;
}

// Edition writes the run's entry before drawing and its outcome after, in a
// journal beside the store that only its owner may read; the host's user
// name, the keys and the pages are in it.
TEST(JournalEdition, EveryRunLeavesItsEntryAndOutcomeBesideTheStore) {
  Banc b;
  b.Met("CIVILAIDE", "A0001", Fiche("1=MARTIN"));
  std::string utilisateur = "marie.dupont";
  std::vector<interface_vesko::Argument> arguments = {utilisateur};
  interface_vesko::Appelle(b.Controle(), "Utilisateur", arguments);
  b.Imprime("AIDE", {"A0001", "A0002"});

  const std::string chemin = b.Chemin() + ".journal";
  struct stat s {};
  ASSERT_EQ(stat(chemin.c_str(), &s), 0);
  EXPECT_EQ(s.st_mode & 0777, 0600u);
  JournalSqlite journal(chemin, JournalSqlite::Mode::Lecture);
  auto passages = journal.Liste({});
  ASSERT_EQ(passages.size(), 1u);
  const Entree& debut = passages[0].impression;
  EXPECT_EQ(debut.cles, (std::vector<std::string>{"A0001", "A0002"}));
  EXPECT_EQ(debut.type, "AIDE");
  EXPECT_EQ(debut.utilisateur, "marie.dupont");
  EXPECT_EQ(debut.destination, "Enregistrement");
  EXPECT_FALSE(debut.utilisateur_systeme.empty());
  EXPECT_FALSE(debut.hote.empty());
  EXPECT_EQ(debut.heure_utc.back(), 'Z');
  EXPECT_EQ(passages[0].issue.issue, journal::kTerminee);
  EXPECT_EQ(passages[0].issue.pages, static_cast<std::int64_t>(b.Enregistrement().pages.size()));

  // A cancelled choice is a run too; a failing section makes it failed, by name.
  marbrel::Outils::Instance().Installe_Choix([](const std::string&) { return "-1"; },
                                             [] { return std::int16_t{9}; });
  marbrel::TabDyn liste = Rec({"A0001"});
  std::string type = "AIDE";
  b.Controle().TheDatabase(marbrel::Base::OuvreSqlite(b.Chemin(), true));
  b.Controle().Edition(liste, type);
  b.FaitEchouer("RESSOURCESAIDE");
  b.Imprime("AIDE", {"A0001"});
  passages = journal.Liste({});
  ASSERT_EQ(passages.size(), 3u);
  EXPECT_EQ(passages[1].issue.issue, journal::kAnnulee);
  EXPECT_EQ(passages[1].impression.destination, "aucune imprimante");
  EXPECT_EQ(passages[2].issue.issue, journal::kEchouee);
  EXPECT_NE(passages[2].issue.message.find("Ressource_Aide, fiche « A0001 » : Erreur de lecture"),
            std::string::npos)
      << passages[2].issue.message;
  EXPECT_TRUE(journal.Verifie().intact);
}

// A journal that cannot be written stops the run before anything is drawn,
// with one sentence naming it; the files are closed all the same.
TEST(JournalEdition, AJournalThatCannotBeWrittenPrintsNothing) {
  Banc b;
  b.Controle().Fixe_Journal(b.Chemin() + ".absent/journal");
  try {
    b.Imprime("AIDE", {"A0001"});
    ADD_FAILURE() << "l'impression aurait dû être refusée";
  } catch (const std::runtime_error& e) {
    EXPECT_EQ(std::string(e.what()), "impression refusée : le journal des impressions « " +
                                         b.Chemin() +
                                         ".absent/journal » ne peut pas être créé : le dossier "
                                         "n'existe pas.");
  }
  EXPECT_TRUE(b.Enregistrement().pages.empty());
  EXPECT_EQ(Variable::Base, nullptr);

  // The persons' store named as the journal by mistake is left as it was.
  const std::string avant = LitFichier(b.Chemin());
  b.Controle().Fixe_Journal(b.Chemin());
  EXPECT_THROW(b.Imprime("AIDE", {"A0001"}), std::runtime_error);
  EXPECT_EQ(LitFichier(b.Chemin()), avant);
  EXPECT_TRUE(b.Enregistrement().pages.empty());
}

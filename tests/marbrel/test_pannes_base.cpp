// The store under faults: an import that fails at any write or sync of the
// disk, or whose process is killed, leaves the store as it was and readable;
// a file that is not a store costs no connection and no file descriptor.
#include <signal.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "marbrel/dump.h"
#include "marbrel/erreur.h"
#include "tests/marbrel/base_temporaire.h"
#include "tests/marbrel/vfs_defaillant.h"

namespace {

using marbrel::SqliteStore;

class PannesBase : public BaseTemporaire {
 protected:
  void SetUp() override {
    BaseTemporaire::SetUp();
    Ecrit("CIVILAIDE", "A0001", Rec({"", "AVANT"}));
    Ecrit("TABLES", "T", Rec({"", "a]b"}));
    store_.reset();
    base_.reset();
  }
  // The whole store as a dump, read through a read-only opening.
  std::string Contenu() {
    SqliteStore lecture(chemin_, SqliteStore::Mode::LectureSeule);
    std::ostringstream sortie;
    marbrel::Exporte(lecture, {}, sortie);
    return sortie.str();
  }
  // A dump touching several files, big enough to spill pages before commit.
  static marbrel::Dump Gros() {
    std::string json = R"({"CIVILAIDE": {"A0001": ["", "APRES"])";
    for (int i = 0; i < 400; ++i) {
      json += ", \"B" + std::to_string(1000 + i) + "\": [\"\", \"" + std::string(300, 'x') + "\"]";
    }
    json += R"(}, "TABLES": {"T": [], "U": ["neuf"]}})";
    return marbrel::LitDump(json, "gros.json");
  }
};

TEST_F(PannesBase, AnImportFailingAtAnyWriteOrSyncIsAllOrNothingAndReadable) {
  const std::string avant = Contenu();
  const marbrel::Dump dump = Gros();
  essai::VfsDefaillant vfs;
  std::string apres;
  long n = 1;
  for (; n < 2000; ++n) {
    vfs.EchoueAu(n);
    bool reussi = false;
    try {
      SqliteStore ecriture(chemin_, SqliteStore::Mode::LectureEcriture);
      marbrel::Importe(ecriture, {dump});
      reussi = !vfs.AEchoue();
    } catch (const marbrel::Erreur& e) {
      EXPECT_EQ(e.Numero(), marbrel::ERR_BASE);
      EXPECT_EQ(std::string(e.what()).find("disk"), std::string::npos) << e.what();
    }
    vfs.EchoueAu(0);
    const std::string lu = Contenu();
    if (reussi) {
      apres = lu;
      break;
    }
    // A failure after the commit reached the disk may keep the import whole.
    if (lu != avant) {
      EXPECT_NE(lu.find("APRES"), std::string::npos) << "au point " << n;
      EXPECT_NE(lu.find("B1399"), std::string::npos) << "au point " << n;
      EXPECT_NE(lu.find("neuf"), std::string::npos) << "au point " << n;
      // Undo it for the next point.
      SqliteStore ecriture(chemin_, SqliteStore::Mode::LectureEcriture);
      ecriture.Transaction([&] {
        for (int i = 0; i < 400; ++i)
          ecriture.Supprime("CIVILAIDE", "B" + std::to_string(1000 + i));
        ecriture.Ecrit("CIVILAIDE", "A0001", Rec({"", "AVANT"}));
        ecriture.Ecrit("TABLES", "T", Rec({"", "a]b"}));
        ecriture.Supprime("TABLES", "U");
      });
      ASSERT_EQ(Contenu(), avant);
    }
  }
  EXPECT_GT(n, 10) << "the import wrote almost nothing";
  EXPECT_NE(apres.find("APRES"), std::string::npos);
}

// A child imports and is killed inside its transaction, after pages reached
// the files; the parent then reads.
void ImporteEtMeurs(const std::string& chemin, bool journal_ancien) {
  const pid_t pid = fork();
  if (pid == 0) {
    sqlite3* db = nullptr;
    sqlite3_open(chemin.c_str(), &db);
    if (journal_ancien) {
      sqlite3_exec(db, "PRAGMA journal_mode=DELETE", nullptr, nullptr, nullptr);
    } else {
      sqlite3_exec(db, "PRAGMA journal_mode=WAL", nullptr, nullptr, nullptr);
    }
    // A tiny cache pushes changed pages into the files before the commit.
    sqlite3_exec(db, "PRAGMA cache_size=1; BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
    for (int i = 0; i < 2000; ++i) {
      const std::string sql = "INSERT OR REPLACE INTO enregistrements VALUES (X'5441424C4553', '" +
                              std::to_string(i) + "', randomblob(200))";
      sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr);
    }
    sqlite3_exec(db, "UPDATE enregistrements SET texte = X'00'", nullptr, nullptr, nullptr);
    raise(SIGKILL);
  }
  int statut = 0;
  waitpid(pid, &statut, 0);
  ASSERT_TRUE(WIFSIGNALED(statut));
}

TEST_F(PannesBase, ReadersRecoverAfterAKilledImportInEitherJournalMode) {
  const std::string avant = Contenu();
  for (bool journal_ancien : {false, true}) {
    SCOPED_TRACE(journal_ancien ? "journal" : "wal");
    ImporteEtMeurs(chemin_, journal_ancien);
    const bool traces =
        std::filesystem::exists(chemin_ + "-wal") || std::filesystem::exists(chemin_ + "-journal");
    EXPECT_TRUE(traces) << "the killed import left nothing to recover";
    EXPECT_EQ(Contenu(), avant);
  }
}

TEST_F(PannesBase, AFileThatIsNotAStoreCostsNoConnectionAndNoDescriptor) {
  const std::string texte = dossier_ + "/texte.txt";
  std::ofstream(texte) << std::string(5000, 'x');
  auto descripteurs = [] {
    long n = 0;
    for ([[maybe_unused]] const auto& e : std::filesystem::directory_iterator("/proc/self/fd")) ++n;
    return n;
  };
  const long avant = descripteurs();
  for (int i = 0; i < 200; ++i) {
    try {
      SqliteStore s(texte, SqliteStore::Mode::LectureSeule);
      ADD_FAILURE() << "a text file was opened as a store";
    } catch (const marbrel::Erreur& e) {
      EXPECT_CONTIENT(e.what(), "n'est pas une base Vesko");
    }
  }
  EXPECT_EQ(descripteurs(), avant);
}

}  // namespace

// What the command line guarantees when things go wrong, run as a user runs
// it: no output half written or left behind, every incident a failure, codes
// that cannot be isolated told at import, bad input named in French.
#include <gtest/gtest.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "tests/app/programmes.h"

namespace {

namespace fs = std::filesystem;
using essai::Resultat;

class Securite : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(Vesko("init").statut, 0);
    ASSERT_EQ(Vesko("import", VESKO_SOURCE_DIR "/demo/*.json").statut, 0);
  }
  std::string Ecrit(const std::string& nom, const std::string& texte) {
    std::ofstream(dossier / nom, std::ios::binary) << texte;
    return "'" + (dossier / nom) + "'";
  }
  Resultat Vesko(const std::string& commande, const std::string& suite = "") {
    return essai::Vesko(commande + " --db '" + base + "' " + suite);
  }
  // The files of the folder other than the store and its log.
  std::vector<std::string> Fichiers(const std::string& ou) const {
    std::vector<std::string> noms;
    for (const auto& e : fs::directory_iterator(ou)) {
      const std::string nom = e.path().filename().string();
      if (nom.rfind("base.vesko", 0) != 0 && nom.find(".json") == std::string::npos)
        noms.push_back(nom);
    }
    std::sort(noms.begin(), noms.end());
    return noms;
  }

  essai::Dossier dossier;
  const std::string base = dossier / "base.vesko";
};

TEST_F(Securite, ImportWarnsAboutCodesThatCannotBeIsolatedAndStrictRefusesThem) {
  const std::string dump =
      Ecrit("codes.json", R"({"CIVILAIDE": {"A0009": ["", "BON"], "A00010": ["", "LONG"],
                              "A\"001": ["", "GUILLEMET"]}})");
  const std::string avant = essai::Lit(base);
  Resultat r = Vesko("import --strict", dump);
  EXPECT_EQ(r.statut, 1);
  EXPECT_NE(r.erreurs.find("« A00010 » ne compte pas exactement 5 caractères"), std::string::npos)
      << r.erreurs;
  EXPECT_NE(r.erreurs.find("« A\"001 » contient un guillemet"), std::string::npos);
  EXPECT_NE(r.erreurs.find("Import refusé (--strict) : 2 code(s)"), std::string::npos);
  EXPECT_EQ(essai::Lit(base), avant);

  r = Vesko("import", dump);
  EXPECT_EQ(r.statut, 0) << r.erreurs;
  EXPECT_NE(r.erreurs.find("attention : " + (dossier / "codes.json") +
                           ", CIVILAIDE : le code « "
                           "A00010 »"),
            std::string::npos)
      << r.erreurs;
}

TEST_F(Securite, AnyIncidentEndsThePrintWithStatusOneTheDossiersStillWritten) {
  ASSERT_EQ(
      Vesko("import", Ecrit("long.json", R"({"CIVILAIDE": {"A00010": ["", "LONG"]}})")).statut, 0);
  Resultat r = Vesko(
      "print", "--type AIDE --date 2024-03-15 --text '" + (dossier / "d.txt") + "' A0001 A00010");
  EXPECT_EQ(r.statut, 1);
  EXPECT_NE(r.erreurs.find("échec dans Aidant_Incompatible pour la fiche « A00010 »"),
            std::string::npos)
      << r.erreurs;
  EXPECT_NE(r.erreurs.find("4 incident(s) pendant l'impression"), std::string::npos) << r.erreurs;
  EXPECT_NE(essai::Lit(dossier / "d.txt").find("LONG"), std::string::npos);

  r = Vesko("print", "--type AIDE --date 2024-03-15 --text '" + (dossier / "d.txt") + "' A0001");
  EXPECT_EQ(r.statut, 0) << r.erreurs;
}

TEST_F(Securite, OutputsAreCreatedPrivateAndReplaceTheTargetWhole) {
  const std::string cible = dossier / "d.txt";
  Ecrit("d.txt", "ancien");
  chmod(cible.c_str(), 0644);
  Resultat r = essai::Lance("umask 022; " VESKO_BINARY_DIR "/vesko print --db '" + base +
                            "' --type AIDE --date 2024-03-15 --text '" + cible + "' A0001");
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  struct stat etat {};
  ASSERT_EQ(stat(cible.c_str(), &etat), 0);
  EXPECT_EQ(etat.st_mode & 0777, 0600u);
  EXPECT_NE(essai::Lit(cible).find("DOSSIER AIDE"), std::string::npos);
  EXPECT_EQ(Fichiers(dossier.chemin), (std::vector<std::string>{"d.txt"}));

  // A stricter umask is kept.
  fs::remove(cible);
  r = essai::Lance("umask 0277; " VESKO_BINARY_DIR "/vesko print --db '" + base +
                   "' --type AIDE --date 2024-03-15 --text '" + cible + "' A0001");
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  ASSERT_EQ(stat(cible.c_str(), &etat), 0);
  EXPECT_EQ(etat.st_mode & 0777, 0400u);
}

// The PDF on a disk that fills up while it is written: status 1, the
// previous file intact, no temporary file. The small disk is a tmpfs in a
// private mount namespace.
TEST_F(Securite, APdfOnAFullDiskFailsAndLeavesThePreviousFileIntact) {
  if (essai::Lance("unshare -rm true").statut != 0) {
    GTEST_SKIP() << "pas d'espace de noms de montage privé (unshare -rm) sur cette machine";
  }
  const std::string disque = dossier / "disque";
  fs::create_directory(disque);
  const std::string script = Ecrit(
      "plein.sh", "mount -t tmpfs -o size=256k tmpfs '" + disque + "' || exit 9\n" +
                      "printf '%%PDF-ancien' > '" + disque + "/d.pdf'\n" + "dd if=/dev/zero of='" +
                      disque + "/plein' bs=4k count=52 2>/dev/null\n" +
                      VESKO_BINARY_DIR "/vesko print --db '" + base +
                      "' --type AIDE --date 2024-03-15 --pdf '" + disque +
                      "/d.pdf' A0001 A0002 A0003 A0004 A0001 A0002 A0003 A0004\n"
                      "echo \"statut=$?\"; cat '" +
                      disque + "/d.pdf'; echo; ls -a '" + disque + "'\n");
  const Resultat r = essai::Lance("unshare -rm sh " + script);
  EXPECT_NE(r.sortie.find("statut=1\n%PDF-ancien\n.\n..\nd.pdf\nplein\n"), std::string::npos)
      << r.sortie << r.erreurs;
  EXPECT_NE(r.erreurs.find("le disque est plein"), std::string::npos) << r.erreurs;
  EXPECT_EQ(r.erreurs.find("Dossiers imprimés"), std::string::npos) << r.erreurs;

  // A device is not a file to replace.
  const Resultat p = Vesko("print", "--type AIDE --pdf /dev/full A0001");
  EXPECT_EQ(p.statut, 1);
  EXPECT_NE(p.erreurs.find("« /dev/full » n'est pas un fichier ordinaire"), std::string::npos)
      << p.erreurs;
}

// Ctrl-C, TERM or a closed terminal during a long print: the temporary PDF
// is removed, the previous file stays, the process ends by the signal.
TEST_F(Securite, AnInterruptedPrintRemovesItsTemporaryFileAndKeepsTheTarget) {
  for (int signal : {SIGINT, SIGTERM, SIGHUP}) {
    SCOPED_TRACE(signal);
    const std::string ou = dossier / ("s" + std::to_string(signal));
    fs::create_directory(ou);
    std::ofstream(ou + "/d.pdf") << "%PDF-ancien";
    const pid_t pid = fork();
    if (pid == 0) {
      std::vector<std::string> args = {VESKO_BINARY_DIR "/vesko",
                                       "print",
                                       "--db",
                                       base,
                                       "--type",
                                       "AIDE",
                                       "--pdf",
                                       ou + "/d.pdf"};
      for (int i = 0; i < 400; ++i) args.push_back("A000" + std::to_string(1 + i % 4));
      std::vector<char*> argv;
      for (auto& a : args) argv.push_back(a.data());
      argv.push_back(nullptr);
      execv(argv[0], argv.data());
      _exit(127);
    }
    // Wait for the temporary file, then interrupt.
    bool vu = false;
    for (int essai = 0; essai < 20000 && !vu; ++essai) {
      for (const auto& e : fs::directory_iterator(ou)) vu = vu || e.path().filename() != "d.pdf";
      if (!vu) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    EXPECT_TRUE(vu) << "aucun fichier temporaire vu";
    kill(pid, signal);
    int statut = 0;
    waitpid(pid, &statut, 0);
    EXPECT_TRUE(WIFSIGNALED(statut) && WTERMSIG(statut) == signal) << statut;
    EXPECT_EQ(Fichiers(ou), (std::vector<std::string>{"d.pdf"}));
    EXPECT_EQ(essai::Lit(ou + "/d.pdf"), "%PDF-ancien");
  }
}

// An import holding the store: a print reads the last committed state
// beside it, without waiting and without the unfinished write; another
// import waits, then reports the store busy.
TEST_F(Securite, APrintDuringAnImportReadsTheLastCommittedState) {
  sqlite3* ecrivain = nullptr;
  ASSERT_EQ(sqlite3_open(base.c_str(), &ecrivain), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(ecrivain,
                         "BEGIN IMMEDIATE; UPDATE enregistrements SET texte = X'00' "
                         "WHERE fichier = X'434956494C41494445';",
                         nullptr, nullptr, nullptr),
            SQLITE_OK);
  const Resultat r =
      Vesko("print", "--type AIDE --date 2024-03-15 --text '" + (dossier / "d.txt") + "' A0001");
  // A second writer waits for the first, then says why it gives up.
  const Resultat import = Vesko("import", Ecrit("un.json", R"({"TABLES": {"X": ["x"]}})"));
  sqlite3_exec(ecrivain, "ROLLBACK", nullptr, nullptr, nullptr);
  sqlite3_close(ecrivain);
  EXPECT_EQ(r.statut, 0) << r.erreurs;
  EXPECT_EQ(r.erreurs.find("absente"), std::string::npos) << r.erreurs;
  EXPECT_EQ(import.statut, 1);
  EXPECT_NE(import.erreurs.find("la base est occupée par une autre écriture (un import ?) depuis "
                                "plus de 5 secondes"),
            std::string::npos)
      << import.erreurs;
}

// A store shared read-only: a user who may read it but not write in its
// folder still prints (the log and its index stay beside the file).
TEST_F(Securite, AReaderWhoMayNotWriteInTheFolderStillReadsTheStore) {
  if (getuid() != 0 || essai::Lance("su nobody -s /bin/sh -c true").statut != 0) {
    GTEST_SKIP() << "il faut être root pour lancer vesko sous l'utilisateur nobody";
  }
  chmod(dossier.chemin.c_str(), 0755);
  for (const auto& e : fs::directory_iterator(dossier.chemin)) chmod(e.path().c_str(), 0644);
  const Resultat r =
      essai::Lance("su nobody -s /bin/sh -c \"" VESKO_BINARY_DIR "/vesko select --db '" + base +
                   "' 'SELECT CIVILAIDE AVEC 0 = \\\"A0001\\\"'\"");
  EXPECT_EQ(r.statut, 0) << r.erreurs;
  EXPECT_EQ(r.sortie, "A0001\n");
}

TEST_F(Securite, BadInputIsNamedInFrenchWithoutHangingOrEchoingControlCharacters) {
  const std::string fifo = dossier / "tube";
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  Resultat r = essai::Vesko("export --db '" + fifo + "'");
  EXPECT_EQ(r.statut, 1);
  EXPECT_EQ(r.erreurs, "vesko : Impossible d'ouvrir la base " + fifo +
                           " : ce n'est pas un fichier ordinaire (tube ou périphérique).\n");

  r = Vesko("import", Ecrit("grand.json", R"({"TABLES": {"X": [1e999]}})"));
  EXPECT_EQ(r.erreurs, "vesko : " + (dossier / "grand.json") +
                           " : un nombre est trop grand pour être lu (les valeurs d'un dump sont "
                           "des textes entre guillemets).\n");
  static const char kNul[] = "{\"TABLES\": {}}\0{\"X\": 1}";
  r = Vesko("import", Ecrit("nul.json", std::string(kNul, sizeof kNul - 1)));
  EXPECT_EQ(r.erreurs, "vesko : " + (dossier / "nul.json") +
                           " : octet nul à la ligne 1, colonne 15 : un dump est un texte UTF-8.\n");

  r = Vesko("print",
            "--type AIDE --date 2024-03-15T10:00 --text '" + (dossier / "d.txt") + "' A0001");
  EXPECT_EQ(r.statut, 2);

  r = Vesko("print",
            "--type AIDE --text '" + (dossier / "d.txt") + "' \"$(printf 'A\\033[2J01')\"");
  EXPECT_EQ(r.erreurs.find('\033'), std::string::npos);
  EXPECT_NE(r.erreurs.find("« A\\x1B[2J01 »"), std::string::npos) << r.erreurs;
}

}  // namespace

// `vesko print` and `vesko journal` as a user runs them: the entry every
// output leaves, the print a journal cannot record refused, tampering found
// by `verifie`, concurrent prints, and the listing's filters and formats.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <set>

#include "tests/app/programmes.h"

namespace {

using essai::Resultat;

class JournalCommande : public ::testing::Test {
 protected:
  void SetUp() override {
    std::ofstream(dossier / "p.json") << R"({"CIVILAIDE": {"A0001": ["", "MARTIN", "Jeanne"],
        "A0002": ["", "LEFEBVRE", "Marcel"]}})";
    ASSERT_EQ(essai::Vesko("init --db '" + base + "'").statut, 0);
    ASSERT_EQ(essai::Vesko("import --db '" + base + "' '" + (dossier / "p.json") + "'").statut, 0);
  }
  Resultat Imprime(const std::string& sortie, const std::string& cles = "A0001") {
    return essai::Vesko("print --db '" + base + "' --type AIDE --date 2024-03-15 " + sortie + " " +
                        cles);
  }
  Resultat Journal(const std::string& arguments = "") {
    return essai::Vesko("journal --db '" + base + "' " + arguments);
  }
  nlohmann::json Passages(const std::string& filtres = "") {
    const Resultat r = Journal("--format json " + filtres);
    EXPECT_EQ(r.statut, 0) << r.erreurs;
    return nlohmann::json::parse(r.sortie);
  }

  essai::Dossier dossier;
  const std::string base = dossier / "base.vesko";
  struct stat etat_ {};
};

// PDF, PNG, text and JSON each leave one run with its keys, its destination
// and its outcome; the key filter answers "who printed my dossier".
TEST_F(JournalCommande, EveryOutputLeavesItsRunWithKeysDestinationAndOutcome) {
  std::filesystem::create_directory(dossier / "pages");
  const struct {
    std::string option, destination, cles;
  } sorties[] = {
      {"--pdf '" + (dossier / "lot.pdf") + "'", "PDF " + (dossier / "lot.pdf"), "A0001 A0002"},
      {"--png '" + (dossier / "pages") + "'", "PNG " + (dossier / "pages"), "A0002"},
      {"--text '" + (dossier / "lot.txt") + "'", "texte " + (dossier / "lot.txt"), "A0001"},
      {"--json '" + (dossier / "lot.json") + "'", "JSON " + (dossier / "lot.json"), "A0002 A0001"},
  };
  for (const auto& s : sorties) ASSERT_EQ(Imprime(s.option, s.cles).statut, 0) << s.option;

  const nlohmann::json passages = Passages();
  ASSERT_EQ(passages.size(), 4u);
  for (size_t i = 0; i < 4; ++i) {
    const nlohmann::json& p = passages[i];
    std::string cles;
    for (const auto& c : p["cles"]) cles += (cles.empty() ? "" : " ") + c.get<std::string>();
    EXPECT_EQ(cles, sorties[i].cles);
    EXPECT_EQ(p["destination"], sorties[i].destination);
    EXPECT_EQ(p["type"], "AIDE");
    EXPECT_EQ(p["programme"], "vesko");
    EXPECT_EQ(p["issue"]["issue"], "terminée") << p.dump();
    EXPECT_GT(p["issue"]["pages"].get<int>(), 0);
  }
  EXPECT_EQ(::stat((base + ".journal").c_str(), &etat_), 0);
  EXPECT_EQ(etat_.st_mode & 0777, 0600u);

  // A0002's dossier was printed three times, newest last; the text says where.
  const nlohmann::json a0002 = Passages("--cle A0002");
  ASSERT_EQ(a0002.size(), 3u);
  EXPECT_LT(a0002[0]["numero"].get<int>(), a0002[2]["numero"].get<int>());
  const Resultat texte = Journal("--cle A0001 --utilisateur root");
  EXPECT_NE(
      texte.sortie.find(" · vesko · AIDE A0001 · texte " + (dossier / "lot.txt") + " · terminée, "),
      std::string::npos)
      << texte.sortie;
  const Resultat csv = Journal("--format csv --cle A0001");
  EXPECT_EQ(csv.sortie.substr(0, csv.sortie.find('\n')),
            "numero,heure_utc,decalage,utilisateur_systeme,hote,utilisateur,programme,processus,"
            "type,cles,destination,issue,pages,message,fin_utc");
  EXPECT_EQ(std::count(csv.sortie.begin(), csv.sortie.end(), '\n'), 4);
  EXPECT_EQ(Passages("--depuis 2999-01-01").size(), 0u);
  EXPECT_EQ(Passages("--utilisateur personne").size(), 0u);
  EXPECT_EQ(Journal("--format xml").statut, 2);
}

// A folder where the journal cannot be created: the print fails with one
// line naming the journal, and no output is written. (As root, the print
// runs as nobody: root may write anywhere.)
TEST_F(JournalCommande, AJournalFolderWithoutWritePermissionPrintsNothing) {
  const std::string lecture_seule = dossier / "ro", sorties = dossier / "out";
  std::filesystem::create_directory(lecture_seule);
  std::filesystem::create_directory(sorties);
  // The store as it stands, with the log files a reader needs where it may
  // not create them.
  for (const char* suffixe : {"", "-wal", "-shm"}) {
    if (std::filesystem::exists(base + suffixe)) {
      std::filesystem::copy_file(base + suffixe, lecture_seule + "/base.vesko" + suffixe);
      chmod((lecture_seule + "/base.vesko" + suffixe).c_str(), 0644);
    }
  }
  chmod(dossier.chemin.c_str(), 0755);
  chmod(lecture_seule.c_str(), 0555);
  chmod(sorties.c_str(), 0777);
  const std::string qui = geteuid() == 0
                              ? "env -u XDG_RUNTIME_DIR setpriv --reuid=nobody --regid=nogroup "
                                "--clear-groups "
                              : "";
  const Resultat r = essai::Lance(qui + VESKO_BINARY_DIR "/vesko print --db '" + lecture_seule +
                                  "/base.vesko' --type AIDE --pdf '" + sorties + "/lot.pdf' A0001");
  EXPECT_EQ(r.statut, 1);
  EXPECT_EQ(r.erreurs, "vesko : impression refusée : le journal des impressions « " +
                           lecture_seule +
                           "/base.vesko.journal » ne peut pas être créé : le dossier n'accorde "
                           "pas le droit d'écriture.\n");
  EXPECT_TRUE(std::filesystem::is_empty(sorties));
}

// Editing a field of an old entry or deleting one with sqlite3 is found and
// named by `verifie` (status 1); the untouched journal verifies (status 0).
TEST_F(JournalCommande, VerifieNamesTheEntryEditedOrDeletedWithSqlite3) {
  for (const char* cle : {"A0001", "A0002", "A0001"})
    ASSERT_EQ(Imprime("--text '" + (dossier / "t.txt") + "'", cle).statut, 0);
  const std::string journal = base + ".journal", copie = dossier / "copie";
  std::filesystem::copy_file(journal, copie);
  Resultat r = Journal("verifie");
  EXPECT_EQ(r.statut, 0) << r.erreurs;
  EXPECT_EQ(r.sortie.substr(0, 50), "Journal intact : 6 entrée(s), du n° 1 au n° 6 ;");

  const struct {
    std::string sql, erreur;
  } cas[] = {
      {"UPDATE entrees SET cles = '[\"A0002\"]' WHERE numero = 1",
       "l'entrée n° 1 a été modifiée : son empreinte ne correspond plus à son contenu."},
      {"UPDATE entrees SET pages = 0 WHERE numero = 4",
       "l'entrée n° 4 a été modifiée : son empreinte ne correspond plus à son contenu."},
      {"DELETE FROM entrees WHERE numero = 3",
       "l'entrée n° 3 a été supprimée (la chaîne passe au n° 4)."},
  };
  for (const auto& c : cas) {
    std::filesystem::copy_file(copie, journal, std::filesystem::copy_options::overwrite_existing);
    ASSERT_EQ(essai::Lance("sqlite3 '" + journal + "' \"" + c.sql + "\"").statut, 0);
    r = Journal("verifie");
    EXPECT_EQ(r.statut, 1) << c.sql;
    EXPECT_EQ(r.erreurs, "vesko : journal « " + journal + " » : " + c.erreur + "\n");
  }
}

// Ten prints at once from one store: ten runs, each with its outcome, and a
// chain that verifies.
TEST_F(JournalCommande, TenConcurrentPrintsLeaveTenCompleteRunsAndAValidChain) {
  std::string lot;
  for (int i = 0; i < 10; ++i) {
    lot += VESKO_BINARY_DIR "/vesko print --db '" + base + "' --type AIDE --text '" +
           (dossier / ("t" + std::to_string(i) + ".txt")) + "' A000" + std::to_string(i % 2 + 1) +
           " & ";
  }
  const Resultat r = essai::Lance("sh -c \"" + lot + " wait\"");
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  const nlohmann::json passages = Passages();
  ASSERT_EQ(passages.size(), 10u);
  std::set<int> processus;
  for (const auto& p : passages) {
    EXPECT_EQ(p["issue"]["issue"], "terminée") << p.dump();
    processus.insert(p["processus"].get<int>());
  }
  EXPECT_EQ(processus.size(), 10u);
  EXPECT_EQ(Journal("verifie").statut, 0);
}

// Retention: a purge keeps the chain valid and says what it removed; a date
// in the future is refused.
TEST_F(JournalCommande, PurgeRemovesOldRunsAndKeepsTheChainValid) {
  ASSERT_EQ(Imprime("--text '" + (dossier / "t.txt") + "'").statut, 0);
  Resultat r = Journal("purge --avant 2000-01-01");
  EXPECT_EQ(r.statut, 0) << r.erreurs;
  EXPECT_EQ(r.sortie, "0 entrée(s) antérieure(s) au 2000-01-01 supprimée(s) du journal « " + base +
                          ".journal » ; la purge y est inscrite (n° 3).\n");
  EXPECT_EQ(Journal("purge --avant 2999-01-01").statut, 2);
  EXPECT_EQ(Journal("verifie").statut, 0);
  EXPECT_EQ(Passages().size(), 1u);

  // VESKO_JOURNAL names another journal, for the print and for the listing.
  const std::string ailleurs = dossier / "ailleurs.journal";
  ASSERT_EQ(
      essai::Lance("VESKO_JOURNAL='" + ailleurs + "' " VESKO_BINARY_DIR "/vesko print --db '" +
                   base + "' --type AIDE --text '" + (dossier / "t.txt") + "' A0002")
          .statut,
      0);
  EXPECT_EQ(Passages().size(), 1u);
  r = essai::Lance("VESKO_JOURNAL='" + ailleurs + "' " VESKO_BINARY_DIR "/vesko journal");
  EXPECT_NE(r.sortie.find(" · AIDE A0002 · texte "), std::string::npos) << r.sortie;
}

}  // namespace

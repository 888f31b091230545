// A print to a queue is journaled with the job the server gave it; a journal
// that cannot be written sends nothing to the queue.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <regex>

#include "tests/cups/serveur_cups.h"

namespace {

using JournalCups = essai_cups::AvecServeur;

TEST_F(JournalCups, AQueuePrintIsJournaledWithItsJobAndARefusedOneSendsNothing) {
  namespace fs = std::filesystem;
  // The test's own copy of the demo store, readable by the account that
  // prints below, in a folder where nobody may write.
  const std::string ro = dossier / "ro", base = ro + "/demo.vesko";
  fs::create_directory(ro);
  fs::copy_file(essai_cups::BaseDemo(), base);
  chmod(dossier.chemin.c_str(), 0755);
  chmod(base.c_str(), 0644);
  const std::string journal = dossier / "journal";
  auto imprime = [&](const std::string& avant, const std::string& apres) {
    return essai::Lance(avant + VESKO_BINARY_DIR "/vesko print --db '" + base +
                        "' --type AIDE --date 2024-03-15 --printer CAPTURE " + apres + " A0001");
  };

  essai::Resultat r = imprime("", "--journal '" + journal + "'");
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  std::smatch m;
  ASSERT_TRUE(std::regex_search(r.sortie, m, std::regex("^Travail CAPTURE-([0-9]+) "))) << r.sortie;
  const int premier = std::stoi(m[1].str());
  const essai::Resultat liste =
      essai::Vesko("journal --journal '" + journal + "' --format json --cle A0001");
  ASSERT_EQ(liste.statut, 0) << liste.erreurs;
  const nlohmann::json passages = nlohmann::json::parse(liste.sortie);
  ASSERT_EQ(passages.size(), 1u);
  EXPECT_EQ(passages[0]["destination"], "file CAPTURE, travail CAPTURE-" + m[1].str());
  EXPECT_EQ(passages[0]["issue"]["issue"], "terminée");

  // The journal beside the store cannot be created (root prints as nobody).
  chmod(ro.c_str(), 0555);
  const std::string qui = geteuid() == 0 ? "env -u XDG_RUNTIME_DIR setpriv --reuid=nobody "
                                           "--regid=nogroup --clear-groups "
                                         : "";
  r = imprime(qui, "");
  EXPECT_EQ(r.statut, 1);
  EXPECT_NE(r.erreurs.find("vesko : impression refusée : le journal des impressions « " + base +
                           ".journal » ne peut pas être créé"),
            std::string::npos)
      << r.erreurs;
  EXPECT_EQ(r.sortie, "");
  // The next job is the very next number: the refused print sent none.
  r = imprime("", "--journal '" + journal + "'");
  ASSERT_TRUE(std::regex_search(r.sortie, m, std::regex("^Travail CAPTURE-([0-9]+) "))) << r.sortie;
  EXPECT_EQ(std::stoi(m[1].str()), premier + 1);
}

}  // namespace

// An output made as the run ends (images written, a text file put in place)
// that fails is a failure of the run itself: status 1, nothing claimed as
// written, and the access journal records the run as failed, not complete.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "tests/app/programmes.h"

namespace {

TEST(SortieFin, ImagesAreWrittenWholeOrFailTheRunAndItsJournalEntry) {
  const essai::Dossier dossier;
  const std::string base = dossier / "base.vesko";
  std::ofstream(dossier / "p.json") << R"({"CIVILAIDE": {"A0001": ["", "MARTIN", "Jeanne"]}})";
  ASSERT_EQ(essai::Vesko("init --db '" + base + "'").statut, 0);
  ASSERT_EQ(essai::Vesko("import --db '" + base + "' '" + (dossier / "p.json") + "'").statut, 0);
  // The images' folder is taken by a file: it cannot be made.
  std::ofstream(dossier / "pages") << "un fichier";

  const essai::Resultat r = essai::Vesko("print --db '" + base + "' --type AIDE --png '" +
                                         (dossier / "pages") + "' A0001");
  EXPECT_EQ(r.statut, 1);
  EXPECT_NE(r.erreurs.find("le dossier « " + (dossier / "pages") + " » ne peut pas être créé"),
            std::string::npos)
      << r.erreurs;
  EXPECT_EQ(r.erreurs.find("écrite(s)"), std::string::npos) << r.erreurs;

  const essai::Resultat j = essai::Vesko("journal --db '" + base + "' --format json");
  ASSERT_EQ(j.statut, 0) << j.erreurs;
  const nlohmann::json passages = nlohmann::json::parse(j.sortie);
  ASSERT_EQ(passages.size(), 1u);
  EXPECT_EQ(passages[0]["issue"]["issue"], "échouée") << passages.dump();

  // Into a folder left by a longer run: its pages are gone (they would pass
  // for this person's), the user's own files stay, no temporary file is
  // left, and the images are readable by their owner only.
  std::filesystem::remove(dossier / "pages");
  std::filesystem::create_directory(dossier / "pages");
  std::ofstream(dossier / "pages/page-099.png") << "une page d'un autre dossier";
  std::ofstream(dossier / "pages/notes.txt") << "à garder";
  ASSERT_EQ(essai::Vesko("print --db '" + base + "' --type AIDE --png '" + (dossier / "pages") +
                         "' A0001")
                .statut,
            0);
  EXPECT_FALSE(std::filesystem::exists(dossier / "pages/page-099.png"));
  EXPECT_TRUE(std::filesystem::exists(dossier / "pages/notes.txt"));
  struct stat etat {};
  ASSERT_EQ(stat((dossier / "pages/page-001.png").c_str(), &etat), 0);
  EXPECT_EQ(etat.st_mode & 0777, 0600u);
  for (const auto& f : std::filesystem::directory_iterator(dossier / "pages")) {
    EXPECT_EQ(f.path().filename().string().find(".vesko-"), std::string::npos) << f.path();
  }
}

}  // namespace

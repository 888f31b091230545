// The data commands of `vesko`, run as a user runs them: the built binary on a
// real store in a temporary directory.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>

#include "marbrel/schema.h"

namespace {

namespace fs = std::filesystem;

struct Resultat {
  int statut = -1;
  std::string sortie;
  std::string erreurs;
};

class CommandesDonnees : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string modele = (fs::temp_directory_path() / "vesko-cli-XXXXXX").string();
    dossier_ = mkdtemp(modele.data());
    base_ = dossier_ + "/base.vesko";
  }
  void TearDown() override { fs::remove_all(dossier_); }

  static std::string Lit(const std::string& chemin) {
    std::ifstream in(chemin, std::ios::binary);
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
  }

  std::string Ecrit(const std::string& nom, const std::string& texte) {
    std::string chemin = dossier_ + "/" + nom;
    std::ofstream(chemin, std::ios::binary) << texte;
    return chemin;
  }

  // Runs `vesko <arguments>` (arguments already quoted for the shell).
  Resultat Vesko(const std::string& arguments) {
    std::string commande = std::string(VESKO_BINARY_DIR) + "/vesko " + arguments + " >" + dossier_ +
                           "/out 2>" + dossier_ + "/err";
    int brut = std::system(commande.c_str());
    Resultat r;
    r.statut = WIFEXITED(brut) ? WEXITSTATUS(brut) : -1;
    r.sortie = Lit(dossier_ + "/out");
    r.erreurs = Lit(dossier_ + "/err");
    return r;
  }

  std::string Db() const { return "--db '" + base_ + "'"; }

  std::string dossier_;
  std::string base_;
};

TEST_F(CommandesDonnees, InitCreeLesFichiersDesDossiersEtLeursDictionnaires) {
  Resultat r = Vesko("init " + Db());
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  r = Vesko("export " + Db());
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  nlohmann::json dump = nlohmann::json::parse(r.sortie);
  for (std::string_view nom : marbrel::kFichiersVesko) {
    ASSERT_TRUE(dump.contains(std::string(nom))) << nom;
    EXPECT_TRUE(dump[std::string(nom)].empty()) << nom;
  }
  EXPECT_EQ(dump.size(), marbrel::kFichiersVesko.size() + 3);
  EXPECT_EQ(dump["DICT TPSAIDEINDISPO"]["DateDebIndispo"][1], "@ID[6,5]");
  EXPECT_EQ(dump["DICT TPSAIDANTINDISPO"]["DateDebIndispo"][4], "5R");
  EXPECT_EQ(dump["DICT TPSINCOMPATIBILITES"]["CodeAide"][1], "1");
  EXPECT_EQ(dump["DICT TPSINCOMPATIBILITES"]["NomPrenomAidantIncomp"][1], "2");

  // A second init never replaces a store.
  r = Vesko("init " + Db());
  EXPECT_EQ(r.statut, 1);
  EXPECT_NE(r.erreurs.find("existe déjà"), std::string::npos) << r.erreurs;
}

TEST_F(CommandesDonnees, ImportPuisSelectEcritUneLigneParEnregistrement) {
  ASSERT_EQ(Vesko("init " + Db()).statut, 0);
  std::string a = Ecrit("a.json", R"({"CIVILAIDANT": {
      "S0002": ["", "PEREIRA", "Ana"],
      "S0001": ["", "BERNARD", "Sophie", "", "", "", "", "", "", "", "", "", "", "", "", "", "",
                "", "", "", "", ["BERNARD", "BERNARD"], ["Lucas", "Emma"]]}})");
  std::string b = Ecrit("b.json", R"({"CIVILAIDANT": {"S0002": ["", "PEREIRA", "Ana Maria"]}})");
  Resultat r = Vesko("import " + Db() + " '" + a + "' '" + b + "'");
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  r = Vesko("select " + Db() + " 'SSELECT CIVILAIDANT PAR 2' --fields '0 3 23'");
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  EXPECT_EQ(r.sortie, "S0001\tSophie\tLucas]Emma\nS0002\tAna Maria\t\n");
  r = Vesko("select " + Db() + " 'SELECT CIVILAIDANT AVEC 0 = \"S0002\"'");
  EXPECT_EQ(r.sortie, "S0002\n");
}

TEST_F(CommandesDonnees, UnDumpFautifLaisseLaBaseIntacteEtLeDitEnUneLigne) {
  ASSERT_EQ(Vesko("init " + Db()).statut, 0);
  std::string bon =
      Ecrit("bon.json", R"({"TABLES": {"SITSOCIOPROF": ["", ["RET"], ["Retraité"]]}})");
  std::string mauvais = Ecrit("mauvais.json", R"({"NOUVEAU": {}, "TABLES": {"X": [true]}})");
  const std::string avant = Lit(base_);
  Resultat r = Vesko("import " + Db() + " '" + bon + "' '" + mauvais + "'");
  EXPECT_EQ(r.statut, 1);
  EXPECT_EQ(std::count(r.erreurs.begin(), r.erreurs.end(), '\n'), 1) << r.erreurs;
  EXPECT_NE(r.erreurs.find("mauvais.json : fichier TABLES, clé « X » : l'attribut 1"),
            std::string::npos)
      << r.erreurs;
  EXPECT_EQ(Lit(base_), avant);
}

TEST_F(CommandesDonnees, StatutsDeSortieUsageEtEchec) {
  EXPECT_EQ(Vesko("").statut, 2);
  EXPECT_EQ(Vesko("init").statut, 2);
  EXPECT_EQ(Vesko("select " + Db()).statut, 2);
  EXPECT_EQ(Vesko("select " + Db() + " '  '").statut, 2);
  EXPECT_EQ(Vesko("import " + Db()).statut, 2);
  EXPECT_EQ(Vesko("export --help").statut, 0);
  Resultat r = Vesko("select " + Db() + " 'SSELECT TABLES'");
  EXPECT_EQ(r.statut, 1);
  EXPECT_NE(r.erreurs.find("n'existe pas"), std::string::npos) << r.erreurs;
  ASSERT_EQ(Vesko("init " + Db()).statut, 0);
  r = Vesko("select " + Db() + " 'SSELECT TABLES AVEC Nom = \"X\"'");
  EXPECT_EQ(r.statut, 1);
  EXPECT_NE(r.erreurs.find("Champ inconnu « Nom »"), std::string::npos) << r.erreurs;
  EXPECT_NE(r.erreurs.find("à la position 21"), std::string::npos) << r.erreurs;
  EXPECT_EQ(Vesko("export " + Db() + " ABSENT").statut, 1);
}

TEST_F(CommandesDonnees, LesDumpsDeDemonstrationSeChargentDansLOrdreDeLeursNoms) {
  ASSERT_EQ(Vesko("init " + Db()).statut, 0);
  std::vector<std::string> dumps;
  for (const auto& e : fs::directory_iterator(std::string(VESKO_SOURCE_DIR) + "/demo")) {
    if (e.path().extension() == ".json") dumps.push_back(e.path().string());
  }
  std::sort(dumps.begin(), dumps.end());
  ASSERT_FALSE(dumps.empty());
  std::string arguments;
  for (const std::string& d : dumps) arguments += " '" + d + "'";
  Resultat r = Vesko("import " + Db() + arguments);
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  r = Vesko("select " + Db() + " 'SSELECT CIVILAIDE AVEC 0 = \"A0001\"' --fields '2 3'");
  EXPECT_EQ(r.sortie, "MARTIN\tJeanne\n");
  r = Vesko("select " + Db() + " 'SSELECT CIVILAIDANT AVEC 0 = \"S]\"'");
  EXPECT_GE(std::count(r.sortie.begin(), r.sortie.end(), '\n'), 3);
}

}  // namespace

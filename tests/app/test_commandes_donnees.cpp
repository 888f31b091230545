// The data commands of `vesko`, run as a user runs them: the built binary on a
// real store in a temporary folder.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "marbrel/schema.h"
#include "tests/app/programmes.h"

namespace {

using essai::Resultat;

class CommandesDonnees : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(Vesko("init").statut, 0); }
  std::string Ecrit(const std::string& nom, const std::string& texte) {
    std::ofstream(dossier / nom, std::ios::binary) << texte;
    return "'" + (dossier / nom) + "'";
  }
  Resultat Vesko(const std::string& commande, const std::string& suite = "") {
    return essai::Vesko(commande + " --db '" + base + "' " + suite);
  }

  essai::Dossier dossier;
  const std::string base = dossier / "base.vesko";
};

// Init's dictionaries come from the code the section tests' stores are made with,
// whose selections read them. A later file wins; a faulty one leaves the store as it was.
TEST_F(CommandesDonnees, InitCreeLesFichiersVidesImportDansLOrdreEtToutOuRien) {
  const nlohmann::json vide = nlohmann::json::parse(Vesko("export").sortie);
  for (std::string_view nom : marbrel::kFichiersVesko)
    EXPECT_TRUE(vide.contains(std::string(nom)) && vide[std::string(nom)].empty()) << nom;

  const std::string a = Ecrit("a.json", R"({"CIVILAIDANT": {
      "S0002": ["", "PEREIRA", "Ana"],
      "S0001": ["", "BERNARD", "Sophie", "", "", "", "", "", "", "", "", "", "", "", "", "", "",
                "", "", "", "", ["BERNARD", "BERNARD"], ["Lucas", "Emma"]]}})");
  const std::string b =
      Ecrit("b.json", R"({"CIVILAIDANT": {"S0002": ["", "PEREIRA", "Ana Maria"]}})");
  ASSERT_EQ(Vesko("import", a + " " + b).statut, 0);
  const std::string avant = essai::Lit(base);
  const std::string mauvais = Ecrit("mauvais.json", R"({"NOUVEAU": {}, "TABLES": {"X": [true]}})");
  Resultat r = Vesko("import", a + " " + mauvais);
  EXPECT_EQ(r.statut, 1);
  EXPECT_EQ(r.erreurs, "vesko : " + (dossier / "mauvais.json") +
                           " : fichier TABLES, clé « X » : l'attribut 1 doit être un texte ou une "
                           "liste de valeurs, pas un booléen.\n");
  EXPECT_EQ(essai::Lit(base), avant);

  r = Vesko("select", "'SSELECT CIVILAIDANT PAR 2' --fields '0 3 23'");
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  EXPECT_EQ(r.sortie, "S0001\tSophie\tLucas]Emma\nS0002\tAna Maria\t\n");
}

TEST_F(CommandesDonnees, UsageFautifSortAvec2EchecAvec1) {
  const std::string db = "--db '" + base + "'";
  struct Cas {
    std::string arguments;
    int statut;
    std::string erreur;  // part of the message
  } const cas[] = {
      {"", 2, ""},
      {"select --db '" + (dossier / "absente.vesko") + "' 'SSELECT TABLES'", 1, "n'existe pas"},
      {"init " + db, 1, "existe déjà"},
      {"select " + db + " 'SSELECT TABLES AVEC Nom = \"X\"'", 1,
       "Champ inconnu « Nom » : le fichier TABLES n'a pas de dictionnaire (DICT TABLES) à la "
       "position 21 de la phrase"},
      {"print " + db + " --type AIDE --pdf a.pdf --png d A0001", 2,
       "une seule sortie à la fois : --pdf, --printer, --text, --json, --png ou --preview."},
      {"print " + db + " --type AIDE --text a.txt --fallback-pdf b.pdf A0001", 2,
       "--fallback-pdf ne vaut qu'avec une imprimante (--printer FILE)."},
      {"print " + db + " --type AIDE --printer Q --copies 0 A0001", 2,
       "nombre d'exemplaires invalide « 0 » (--copies) : un entier de 1 à 999."},
      {"print " + db + " --type AIDE --printer Q --paper B5 A0001", 2,
       "format de papier inconnu « B5 » (--paper) : A4, A3 ou Letter."},
      // Tests run on the offscreen platform, which has no screen for a preview.
      {"print " + db + " --type AIDE --preview A0001", 1,
       "l'aperçu (--preview) a besoin d'un écran"},
  };
  for (const Cas& c : cas) {
    SCOPED_TRACE(c.arguments);
    const Resultat r = essai::Vesko(c.arguments);
    EXPECT_EQ(r.statut, c.statut);
    EXPECT_NE(r.erreurs.find(c.erreur), std::string::npos) << r.erreurs;
  }
}

}  // namespace

// An office's data as the commands see them: a PostgreSQL store of a private
// server, directory files, selections as data, and desks printing while an
// import commits.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/app/programmes.h"
#include "tests/postgres/serveur_postgres.h"

namespace {

using essai::Resultat;

const std::string kDemo = VESKO_SOURCE_DIR "/demo/";
const std::string kDumpsDemo = kDemo + "base.json " + kDemo + "civil.json " + kDemo +
                               "finances.json " + kDemo + "formation.json " + kDemo +
                               "taches.json " + kDemo + "textes.json";

class BasePartagee : public ::testing::Test {
 protected:
  void SetUp() override { base = serveur.NouvelleBase(); }
  std::string Ecrit(const std::string& nom, const std::string& texte) {
    std::filesystem::create_directories(std::filesystem::path(dossier / nom).parent_path());
    std::ofstream(dossier / nom, std::ios::binary) << texte;
    return "'" + (dossier / nom) + "'";
  }
  static Resultat Vesko(const std::string& commande, const std::string& db,
                        const std::string& suite = "") {
    return essai::Vesko(commande + " --db '" + db + "' " + suite);
  }
  std::string NomBase() const {
    return base.substr(base.find("@/") + 2, base.find('?') - base.find("@/") - 2);
  }

  essai_pg::Serveur& serveur = essai_pg::Serveur::Instance();
  essai::Dossier dossier;
  std::string base;
};

// The demo store written as directory files and read back into a PostgreSQL
// store exports byte for byte the same dump; the folder holds the layout the
// legacy system writes.
TEST_F(BasePartagee, DossierDeLaDemoReluDansPostgresDonneLeMemeExport) {
  const std::string demo = dossier / "demo.vesko";
  ASSERT_EQ(Vesko("init", demo).statut, 0);
  ASSERT_EQ(Vesko("import", demo, kDumpsDemo).statut, 0);
  const Resultat attendu = Vesko("export", demo);
  ASSERT_EQ(attendu.statut, 0);
  Resultat r = Vesko("export", demo, "--dir '" + (dossier / "fichiers") + "'");
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  EXPECT_TRUE(std::filesystem::is_directory(dossier / "fichiers/D_TPSINCOMPATIBILITES"));
  EXPECT_EQ(essai::Lit(dossier / "fichiers/BIC/30004"), "BNPAFRPP\nBNP PARIBAS");
  // A note typed on several lines is kept in the marks form.
  const std::string note = essai::Lit(dossier / "fichiers/BLOCNOTAIDE/A0001");
  EXPECT_EQ(note.back(), '\xFE');

  ASSERT_EQ(Vesko("init", base).statut, 0);
  r = Vesko("import", base, "--dir '" + (dossier / "fichiers") + "'");
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  const Resultat obtenu = Vesko("export", base);
  ASSERT_EQ(obtenu.statut, 0) << obtenu.erreurs;
  EXPECT_TRUE(obtenu.sortie == attendu.sortie) << "les deux exports diffèrent";
  EXPECT_EQ(Vesko("init", base).statut, 1) << "init ne remplace jamais une base";
}

// Latin-1 folders: þ ý ü are the marks, the text comes in as UTF-8 and goes
// out as the same bytes; a Latin-1 folder read as UTF-8 is refused whole.
TEST_F(BasePartagee, DossierLatin1MarquesEtRefusToutOuRien) {
  ASSERT_EQ(Vesko("init", base).statut, 0);
  const std::string contenu =
      "Libell\xE9 \xE0 revoir\nA\xFD"
      "B\xFC"
      "C";
  Ecrit("latin1/TABLES/CL\xC9?\\1", contenu);
  Ecrit("latin1/D_TABLES/Libelle", "D\n1");
  Resultat r = Vesko("import", base, "--dir '" + (dossier / "latin1") + "'");
  EXPECT_EQ(r.statut, 1);
  EXPECT_EQ(r.erreurs, "vesko : " + (dossier / "latin1/TABLES/CL\xC9?\\1") +
                           " : le nom n'est pas de l'UTF-8 (--encodage latin1 pour un export en "
                           "ISO-8859-1).\n");
  EXPECT_EQ(Vesko("select", base, "'SSELECT DICT TABLES'").sortie, "");

  r = Vesko("import", base, "--dir '" + (dossier / "latin1") + "' --encodage latin1");
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  r = Vesko("select", base, "'SSELECT TABLES AVEC 0 = \"CLÉ/1\"' --fields '0 1 2'");
  EXPECT_EQ(r.sortie, "CLÉ/1\tLibellé à revoir\tA]B]C\n");
  r = Vesko("export", base, "TABLES --dir '" + (dossier / "retour") + "' --encodage latin1");
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  EXPECT_EQ(essai::Lit(dossier / "retour/TABLES/CL\xC9?\\1"), contenu);
  // "œ" has no Latin-1 byte: nothing is written, not even a partial folder.
  Ecrit("utf8/TABLES/X", "Barœul");
  ASSERT_EQ(Vesko("import", base, "--dir '" + (dossier / "utf8") + "'").statut, 0);
  r = Vesko("export", base, "--dir '" + (dossier / "rate") + "' --encodage latin1");
  EXPECT_EQ(r.statut, 1);
  EXPECT_EQ(r.erreurs,
            "vesko : fichier TABLES, clé « X » : le caractère « œ » n'existe pas en "
            "Latin-1 (--encodage utf8 le garde).\n");
  EXPECT_FALSE(std::filesystem::exists(dossier / "rate"));
  for (const auto& e : std::filesystem::directory_iterator(dossier.chemin)) {
    EXPECT_EQ(e.path().filename().string().find(".tmp-"), std::string::npos) << e.path();
  }
}

// tsv stays the default; csv follows RFC 4180; json gives arrays for
// multivalues. VESKO_DB names the store when --db is absent.
TEST_F(BasePartagee, SelectionEnTsvCsvJsonEtVeskoDb) {
  ASSERT_EQ(Vesko("init", base).statut, 0);
  const std::string dump = Ecrit("a.json", R"({"CIVILAIDANT": {
      "S0001": ["", "BERNARD, dite \"Sophie\"", ["Lucas", "Emma"]],
      "S0002": ["", "PEREIRA", "Ana"]}})");
  ASSERT_EQ(Vesko("import", base, dump).statut, 0);
  const std::string phrase = "'SSELECT CIVILAIDANT PAR 2' --fields '0 2 3'";
  EXPECT_EQ(Vesko("select", base, phrase).sortie,
            "S0001\tBERNARD, dite \"Sophie\"\tLucas]Emma\nS0002\tPEREIRA\tAna\n");
  EXPECT_EQ(Vesko("select", base, phrase + " --format csv").sortie,
            "S0001,\"BERNARD, dite \"\"Sophie\"\"\",Lucas]Emma\r\nS0002,PEREIRA,Ana\r\n");
  const Resultat json = Vesko("select", base, phrase + " --format json");
  EXPECT_EQ(nlohmann::json::parse(json.sortie),
            nlohmann::json::parse(R"([{"0": "S0001", "2": "BERNARD, dite \"Sophie\"",
                                       "3": ["Lucas", "Emma"]},
                                      {"0": "S0002", "2": "PEREIRA", "3": "Ana"}])"));
  EXPECT_EQ(Vesko("select", base, phrase + " --format xml").statut, 2);
  const Resultat env = essai::Lance("VESKO_DB='" + base +
                                    "' " VESKO_BINARY_DIR "/vesko select 'SSELECT CIVILAIDANT'");
  EXPECT_EQ(env.sortie, "S0001\nS0002\n") << env.erreurs;
  EXPECT_EQ(essai::Lance("env -u VESKO_DB " VESKO_BINARY_DIR "/vesko select 'SSELECT X'").statut,
            2);
}

// Every failure to reach the data is one French line naming the server or
// the table, status 1, and nothing written: no output file, no record.
TEST_F(BasePartagee, ServeurArreteTableAbsenteRoleEnLectureSeule) {
  const std::string d = serveur.Dossier();
  const std::string sortie = dossier / "dossier.txt";
  Resultat r = Vesko("print", "postgresql://vesko@/essai?host=" + d + "/arrete",
                     "--type AIDE --text '" + sortie + "' A0001");
  EXPECT_EQ(r.statut, 1);
  EXPECT_EQ(r.erreurs, "vesko : Impossible de joindre le serveur PostgreSQL " + d +
                           "/arrete:5432 (base « essai ») : le serveur ne répond pas (il est "
                           "arrêté ou l'adresse est fausse).\n");
  EXPECT_FALSE(std::filesystem::exists(sortie));

  r = Vesko("select", base, "'SSELECT TABLES'");
  EXPECT_EQ(r.statut, 1);
  EXPECT_EQ(r.erreurs, "vesko : La table fichiers est absente de la base « " + NomBase() +
                           " » du serveur PostgreSQL " + d +
                           ":5432 : ce n'est pas une base Vesko (vesko init la crée).\n");

  r = Vesko("export", "postgresql://vesko:motdepasse@/x?option_inconnue=1");
  EXPECT_EQ(r.statut, 1);
  EXPECT_EQ(r.erreurs,
            "vesko : L'adresse « postgresql://vesko:***@/x?option_inconnue=1 » n'est "
            "pas une adresse PostgreSQL valide (forme attendue : "
            "postgresql://utilisateur@hôte:port/base).\n");

  ASSERT_EQ(Vesko("init", base).statut, 0);
  serveur.Sql(NomBase(),
              "CREATE ROLE lecteur LOGIN; GRANT SELECT ON fichiers, enregistrements "
              "TO lecteur");
  const std::string avant = Vesko("export", base).sortie;
  const std::string lecteur = serveur.Adresse(NomBase(), "lecteur");
  r = Vesko("import", lecteur, Ecrit("a.json", R"({"TABLES": {"X": ["x"]}})"));
  EXPECT_EQ(r.statut, 1);
  EXPECT_EQ(r.erreurs,
            "vesko : Le rôle « lecteur » n'a pas le droit de modifier la table fichiers "
            "de la base « " +
                NomBase() + " » du serveur PostgreSQL " + d + ":5432 : rien n'a été écrit.\n");
  EXPECT_EQ(r.sortie, "");
  EXPECT_EQ(Vesko("export", lecteur).sortie, avant);

  // A role that may name files but not write records fails in the middle of
  // the batched writes: the files it named are gone with the rest.
  serveur.Sql(NomBase(),
              "CREATE ROLE saisie LOGIN; GRANT SELECT, INSERT ON fichiers TO saisie; "
              "GRANT SELECT ON enregistrements TO saisie");
  r = Vesko("import", serveur.Adresse(NomBase(), "saisie"),
            Ecrit("b.json", R"({"NOUVEAU": {}, "TABLES": {"X": ["x"], "Y": ["y"]}})"));
  EXPECT_EQ(r.statut, 1);
  EXPECT_EQ(r.erreurs,
            "vesko : Le rôle « saisie » n'a pas le droit de modifier la table "
            "enregistrements de la base « " +
                NomBase() + " » du serveur PostgreSQL " + d + ":5432 : rien n'a été écrit.\n");
  EXPECT_EQ(Vesko("export", lecteur).sortie, avant);
}

// Four desks print the same person while the office imports, twenty times:
// every print succeeds and every document is wholly the person before the
// import or wholly the person after it.
TEST_F(BasePartagee, QuatreImpressionsPendantUnImport) {
  ASSERT_EQ(Vesko("init", base).statut, 0);
  ASSERT_EQ(Vesko("import", base, kDumpsDemo).statut, 0);
  // "after" gives A0001 the records of A0002, in every file that has both.
  const nlohmann::json demo = nlohmann::json::parse(Vesko("export", base).sortie);
  nlohmann::json avant = nlohmann::json::object(), apres = nlohmann::json::object();
  for (const auto& [fichier, enregistrements] : demo.items()) {
    if (enregistrements.contains("A0001") && enregistrements.contains("A0002")) {
      avant[fichier]["A0001"] = enregistrements["A0001"];
      apres[fichier]["A0001"] = enregistrements["A0002"];
    }
  }
  ASSERT_GE(avant.size(), 5u);
  const std::string dumps[] = {Ecrit("avant.json", avant.dump()),
                               Ecrit("apres.json", apres.dump())};
  const std::string print =
      VESKO_BINARY_DIR "/vesko print --db '" + base + "' --type AIDE --date 2024-03-15 --text ";
  auto imprime = [&](const std::string& nom) {
    const Resultat r = essai::Lance(print + "'" + (dossier / nom) + "' A0001 A0001 A0001");
    EXPECT_EQ(r.statut, 0) << r.erreurs;
    return essai::Lit(dossier / nom);
  };
  const std::string texte_avant = imprime("avant.txt");
  ASSERT_EQ(Vesko("import", base, dumps[1]).statut, 0);
  const std::string texte_apres = imprime("apres.txt");
  ASSERT_NE(texte_avant, texte_apres);

  int vus_avant = 0, vus_apres = 0;
  for (int tour = 0; tour < 20; ++tour) {
    std::string script;
    for (int p = 0; p < 4; ++p) {
      const std::string n = std::to_string(p);
      script += "(" + print + "'" + (dossier / ("p" + n + ".txt")) +
                "' A0001 A0001 A0001; echo $? >'" + (dossier / ("s" + n)) + "') & ";
    }
    script += VESKO_BINARY_DIR "/vesko import --db '" + base + "' " + dumps[tour % 2] +
              " >/dev/null; echo $? >'" + (dossier / "si") + "'; wait";
    essai::Lance("sh " + Ecrit("tour.sh", script));
    ASSERT_EQ(essai::Lit(dossier / "si"), "0\n") << "tour " << tour;
    for (int p = 0; p < 4; ++p) {
      const std::string n = std::to_string(p);
      ASSERT_EQ(essai::Lit(dossier / ("s" + n)), "0\n") << "tour " << tour << ", poste " << p;
      const std::string texte = essai::Lit(dossier / ("p" + n + ".txt"));
      ASSERT_TRUE(texte == texte_avant || texte == texte_apres)
          << "tour " << tour << ", poste " << p << " : un dossier mêle deux états";
      (texte == texte_avant ? vus_avant : vus_apres)++;
    }
  }
  std::cout << vus_avant << " impressions de l'état d'avant, " << vus_apres
            << " de l'état d'après\n";
}

}  // namespace

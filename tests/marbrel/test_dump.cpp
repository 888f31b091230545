#include <sstream>

#include "marbrel/dump.h"
#include "marbrel/erreur.h"
#include "tests/marbrel/base_temporaire.h"

namespace {

class Dumps : public BaseTemporaire {
 protected:
  std::string Exporte(const std::vector<std::string>& noms = {}) {
    std::ostringstream out;
    marbrel::Exporte(*store_, noms, out);
    return out.str();
  }
  void Importe(std::initializer_list<std::string> textes) {
    std::vector<marbrel::Dump> dumps;
    int i = 0;
    for (const std::string& t : textes) {
      dumps.push_back(marbrel::LitDump(t, "dump" + std::to_string(++i) + ".json"));
    }
    marbrel::Importe(*store_, dumps);
  }
  // The message of the import of these dumps, which must fail.
  std::string Refus(std::initializer_list<std::string> textes) {
    try {
      Importe(textes);
    } catch (const marbrel::Erreur& e) {
      EXPECT_EQ(e.Numero(), marbrel::ERR_IMPORT) << e.what();
      return e.what();
    }
    ADD_FAILURE() << "le dump devait être refusé";
    return "";
  }
};

TEST_F(Dumps, LesTroisNiveauxSeLisentEtSExportentSousLaFormeLaPlusCourte) {
  Importe({R"({"CIVILAIDE": {"A0001": ["", "MARTIN", ["Léa", "Zoé"], [["a", "b"], "c"], [], ["x"]]},
              "VIDE": {}, "DICT CIVILAIDE": {"Nom": ["D", "2"]}})"});
  auto f = base_->Ouvre_Fichier("CIVILAIDE");
  marbrel::TabDyn r = f->Lit("A0001");
  EXPECT_EQ(r.Texte(), Rec({"", "MARTIN", "Léa]Zoé", "a\\b]c", "", "x"}));
  EXPECT_TRUE(store_->ExisteFichier("VIDE"));
  EXPECT_EQ(Exporte({"CIVILAIDE", "VIDE"}),
            "{\n  \"CIVILAIDE\": {\n    \"A0001\": [\"\",\"MARTIN\",[\"Léa\",\"Zoé\"],"
            "[[\"a\",\"b\"],\"c\"],\"\",\"x\"]\n  },\n  \"VIDE\": {}\n}\n");
  // What export writes, import reads back to the same store.
  std::string tout = Exporte();
  marbrel::Dump relu = marbrel::LitDump(tout, "export");
  ASSERT_EQ(relu.fichiers.size(), 3u);
  EXPECT_EQ(relu.fichiers[0].first, "CIVILAIDE");
  EXPECT_EQ(relu.fichiers[0].second[0].second, r.Texte());
  EXPECT_EQ(relu.fichiers[1].first, "DICT CIVILAIDE");
}

TEST_F(Dumps, UnImportRemplaceLesMemesClesEtLesDumpsSuivantsGagnent) {
  Ecrit("T", "K1", "ancien");
  Ecrit("T", "K2", "garde");
  Importe({R"({"T": {"K1": ["premier"]}})", R"({"T": {"K1": ["second"], "K3": []}})"});
  auto t = base_->Ouvre_Fichier("T");
  EXPECT_EQ(t->Lit("K1").Texte(), "second");
  EXPECT_EQ(t->Lit("K2").Texte(), "garde");
  EXPECT_EQ(t->Lit("K3").Texte(), "");
}

TEST_F(Dumps, UnDumpFautifNeChangeRienEtLeMessageNommeFichierCleEtFaute) {
  Ecrit("CIVILAIDE", "A0001", "avant");
  store_.reset();  // the bytes on disk are the reference
  base_.reset();
  const std::string avant = Octets();
  store_ =
      std::make_shared<marbrel::SqliteStore>(chemin_, marbrel::SqliteStore::Mode::LectureEcriture);

  // The fault is in the second dump, after good records that would be written first.
  std::string m = Refus({R"({"NOUVEAU": {"N1": ["x"]}, "CIVILAIDE": {"A0001": ["après"]}})",
                         R"({"CIVILAIDE": {"A0002": ["ok"], "A0003": ["DUPONT", 12]}})"});
  EXPECT_NE(m.find("dump2.json"), std::string::npos) << m;
  EXPECT_NE(m.find("fichier CIVILAIDE, clé « A0003 »"), std::string::npos) << m;
  EXPECT_NE(m.find("l'attribut 2 doit être un texte ou une liste de valeurs, pas un nombre (12)"),
            std::string::npos)
      << m;
  store_.reset();
  EXPECT_EQ(Octets(), avant);
}

TEST_F(Dumps, ChaqueFauteADesMotsPrecis) {
  auto contient = [](const std::string& m, const std::string& x) {
    EXPECT_NE(m.find(x), std::string::npos) << m << "\n  sans : " << x;
  };
  contient(Refus({"{\"T\": {\"K\": [\"a\"]\n,}"}), "dump1.json : JSON invalide à la ligne 2");
  contient(Refus({"[1, 2]"}), "un dump est un objet");
  contient(Refus({R"({"T": ["a"]})"}), "fichier T : le contenu doit être un objet");
  contient(Refus({R"({"T": {"K": "a"}})"}), "clé « K » : l'enregistrement doit être une liste");
  contient(Refus({R"({"T": {"K": [["a", ["b", null]]]}})"}),
           "l'attribut 1, valeur 2, sous-valeur 2 doit être un texte, pas null");
  contient(Refus({R"({"T": {"K": [[{"x": "y"}]]}})"}),
           "l'attribut 1, valeur 1 doit être un texte ou une liste de sous-valeurs, pas un objet");
  contient(Refus({R"({"T": {"": []}})"}), "fichier T : une clé est vide");
  contient(Refus({R"({"": {}})"}), "un nom de fichier est vide");
  contient(Refus({R"({"T": {"K": [], "K": ["b"]}})"}),
           "fichier T, clé « K » : la clé apparaît deux fois");
  contient(Refus({R"({"T": {}, "T": {}})"}), "le fichier T est nommé deux fois");
  contient(Refus({R"({"T": {"a\nb": []}})"}), "une clé contient un caractère de contrôle");
}

TEST_F(Dumps, UnExportDUnFichierAbsentEchoueAvantDEcrire) {
  Ecrit("T", "K", "v");
  std::ostringstream out;
  EXPECT_THROW(marbrel::Exporte(*store_, {"T", "ABSENT"}, out), marbrel::Erreur);
  EXPECT_EQ(out.str(), "");
}

}  // namespace

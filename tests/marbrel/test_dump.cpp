#include <sstream>

#include "marbrel/dump.h"
#include "marbrel/erreur.h"
#include "tests/marbrel/base_temporaire.h"

// An import that fails leaves the store as it was: the command-line tests check
// it on the file's bytes.
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
    for (const std::string& t : textes) {
      dumps.push_back(marbrel::LitDump(t, "dump" + std::to_string(dumps.size() + 1) + ".json"));
    }
    marbrel::Importe(*store_, dumps);
  }
  // The message of the import of this dump, which must fail.
  std::string Refus(const std::string& texte) {
    try {
      Importe({texte});
    } catch (const marbrel::Erreur& e) {
      EXPECT_EQ(e.Numero(), marbrel::ERR_IMPORT) << e.what();
      return e.what();
    }
    ADD_FAILURE() << "le dump devait être refusé";
    return "";
  }
};

TEST_F(Dumps, LesTroisNiveauxSeLisentLesDumpsSuivantsGagnentEtLExportEstLePlusCourt) {
  Ecrit("CIVILAIDE", "A0002", "garde");
  Importe({R"({"CIVILAIDE": {"A0001": ["premier"]}})",
           R"({"CIVILAIDE": {"A0001": ["", "MARTIN", ["Léa", "Zoé"], [["a", "b"], "c"], [], ["x"]]},
              "VIDE": {}, "DICT CIVILAIDE": {"Nom": ["D", "2"]}})"});
  auto f = base_->Ouvre_Fichier("CIVILAIDE");
  marbrel::TabDyn r = f->Lit("A0001");
  EXPECT_EQ(r.Texte(), Rec({"", "MARTIN", "Léa]Zoé", "a\\b]c", "", "x"}));
  EXPECT_EQ(f->Lit("A0002").Texte(), "garde");  // keys the dumps do not name stay
  EXPECT_EQ(Exporte({"CIVILAIDE", "VIDE"}),
            "{\n  \"CIVILAIDE\": {\n    \"A0001\": [\"\",\"MARTIN\",[\"Léa\",\"Zoé\"],"
            "[[\"a\",\"b\"],\"c\"],\"\",\"x\"],\n    \"A0002\": [\"garde\"]\n  },\n"
            "  \"VIDE\": {}\n}\n");
  // What export writes, import reads back to the same store.
  marbrel::Dump relu = marbrel::LitDump(Exporte(), "export");
  ASSERT_EQ(relu.fichiers.size(), 3u);
  EXPECT_EQ(relu.fichiers[0].second[0].second, r.Texte());
  EXPECT_EQ(relu.fichiers[1].first, "DICT CIVILAIDE");
  // An absent file fails the export before anything is written.
  std::ostringstream out;
  EXPECT_THROW(marbrel::Exporte(*store_, {"CIVILAIDE", "ABSENT"}, out), marbrel::Erreur);
  EXPECT_EQ(out.str(), "");
}

TEST_F(Dumps, ChaqueFauteADesMotsPrecis) {
  EXPECT_CONTIENT(Refus("{\"T\": {\"K\": [\"a\"]\n,}"), "dump1.json : JSON invalide à la ligne 2");
  EXPECT_CONTIENT(Refus("[1, 2]"), "un dump est un objet");
  EXPECT_CONTIENT(Refus(R"({"T": {"K": "a"}})"),
                  "clé « K » : l'enregistrement doit être une liste");
  EXPECT_CONTIENT(Refus(R"({"T": {"K": [["a", ["b", null]]]}})"),
                  "l'attribut 1, valeur 2, sous-valeur 2 doit être un texte, pas null");
  EXPECT_CONTIENT(Refus(R"({"T": {"": []}})"), "fichier T : une clé est vide");
  EXPECT_CONTIENT(Refus(R"({"T": {"K": [], "K": ["b"]}})"),
                  "fichier T, clé « K » : la clé apparaît deux fois");
  EXPECT_CONTIENT(Refus(R"({"T": {"a\nb": []}})"), "une clé contient un caractère de contrôle");
}

}  // namespace

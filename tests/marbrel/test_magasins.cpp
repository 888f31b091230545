// The behaviour every store owes the library, run on both: the embedded SQLite
// file and a PostgreSQL database of a private server.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <sstream>

#include "marbrel/base.h"
#include "marbrel/dump.h"
#include "marbrel/erreur.h"
#include "marbrel/magasin.h"
#include "marbrel/marques.h"
#include "marbrel/repertoire.h"
#include "tests/postgres/serveur_postgres.h"

namespace {

using marbrel::AM;
using marbrel::SM;
using marbrel::VM;

class Magasins : public ::testing::TestWithParam<std::string> {
 protected:
  void SetUp() override {
    char modele[] = "/tmp/vesko-magasins-XXXXXX";
    dossier_ = mkdtemp(modele);
    if (GetParam() == "sqlite") {
      nom_ = dossier_ + "/base.vesko";
      // Readers and a writer at once need the write-ahead log; a file keeps
      // its journal mode once set.
      sqlite3* db = nullptr;
      sqlite3_open(nom_.c_str(), &db);
      sqlite3_exec(db, "PRAGMA journal_mode=WAL", nullptr, nullptr, nullptr);
      sqlite3_close(db);
    } else {
      nom_ = essai_pg::Serveur::Instance().NouvelleBase();
    }
    store_ = marbrel::OuvreMagasin(nom_, marbrel::Acces::Creation);
  }
  void TearDown() override {
    store_.reset();
    std::filesystem::remove_all(dossier_);
  }
  // A second connection to the same store, as another desk has.
  std::shared_ptr<marbrel::Store> Autre(marbrel::Acces acces = marbrel::Acces::LectureEcriture) {
    return marbrel::OuvreMagasin(nom_, acces);
  }
  void Ecrit(const std::string& fichier, const std::string& cle, const std::string& texte) {
    store_->CreeFichier(fichier);
    store_->Ecrit(fichier, cle, texte);
  }
  std::vector<std::string> Cles(marbrel::Store& s, const std::string& fichier,
                                const std::string& prefixe = "") {
    std::vector<std::string> cles;
    auto visite = [&](const std::string& cle, const std::string&) {
      cles.push_back(cle);
      return true;
    };
    if (prefixe.empty()) {
      s.Parcourt(fichier, visite);
    } else {
      s.ParcourtPrefixe(fichier, prefixe, visite);
    }
    return cles;
  }

  std::string dossier_;
  std::string nom_;
  std::shared_ptr<marbrel::Store> store_;
};

// Marks, Latin-1 bytes and NUL come back as written; keys sort as bytes
// ("A10" before "A9", capitals before small letters before "é"); an absent key
// is nothing for the store and the absent-key error for a Fichier.
TEST_P(Magasins, LitLesOctetsEtLesClesDansLOrdreDesOctets) {
  const std::string texte = std::string("DUPONT") + AM + "06" + VM + "07" + SM + "x" + AM +
                            "\xE9t\xE9" + std::string(1, '\0') + "fin";
  for (const char* cle : {"a", "A9", "A10", "\xC3\xA9", "B", "A"}) Ecrit("CIVILAIDE", cle, texte);
  EXPECT_EQ(store_->Lit("CIVILAIDE", "A10"), texte);
  EXPECT_EQ(store_->Lit("CIVILAIDE", "A1"), std::nullopt);
  EXPECT_EQ(store_->Lit("CIVILAIDE", "a10"), std::nullopt);
  EXPECT_EQ(Cles(*store_, "CIVILAIDE"),
            (std::vector<std::string>{"A", "A10", "A9", "B", "a", "\xC3\xA9"}));

  marbrel::Base base(store_);
  try {
    base.Ouvre_Fichier("CIVILAIDE")->Lit("Z0001");
    ADD_FAILURE() << "une clé absente doit échouer";
  } catch (const marbrel::Erreur& e) {
    EXPECT_EQ(e.Numero(), marbrel::ERR_CLE_ABSENTE);
    EXPECT_STREQ(e.what(), "L'enregistrement \"Z0001\" est absent du fichier CIVILAIDE.");
  }
  EXPECT_THROW(base.Ouvre_Fichier("INCONNU"), marbrel::Erreur);
  EXPECT_THROW(store_->Ecrit("INCONNU", "K", "x"), marbrel::Erreur);
  EXPECT_FALSE(store_->ExisteFichier("INCONNU"));
}

// A selection sorts by its PAR fields, equal rows by key; a selection on a key
// prefix reads only the keys of that prefix, across the walk's pages too.
TEST_P(Magasins, SelectionTrieeEtPrefixeDeCleParLIndex) {
  store_->CreeFichier("TPSAIDEINDISPO");
  long n = 0;
  store_->EcritLot("TPSAIDEINDISPO", [&](std::string& cle, std::string& texte) {
    if (n == 3000) return false;
    char c[48];
    std::snprintf(c, sizeof c, "%05ld%04ld", n / 1200, n % 1200);
    cle = c;
    texte = std::string(n % 2 ? "B" : "A") + AM + std::to_string(n);
    ++n;
    return true;
  });
  std::vector<std::string> prefixe = Cles(*store_, "TPSAIDEINDISPO", "00001");
  ASSERT_EQ(prefixe.size(), 1200u);
  EXPECT_EQ(prefixe.front(), "000010000");
  EXPECT_EQ(prefixe.back(), "000011199");
  EXPECT_EQ(Cles(*store_, "TPSAIDEINDISPO").size(), 3000u);

  marbrel::Base base(store_);
  const long avant = store_->EnregistrementsParcourus();
  marbrel::TabDyn commande;
  commande.Remplace(1, "SSELECT TPSAIDEINDISPO AVEC 0 = \"00002000]\" PAR 1");
  commande.Remplace(3, "0 1");
  marbrel::Liste_Selection liste = base.Selectionne(commande.Texte());
  EXPECT_EQ(store_->EnregistrementsParcourus() - avant, 10);
  ASSERT_EQ(liste.DCount(), 10);
  std::vector<std::string> lignes;
  for (long r = 1; r <= liste.DCount(); ++r) lignes.push_back(liste(r, 1) + " " + liste(r, 2));
  EXPECT_EQ(lignes,
            (std::vector<std::string>{"000020000 A", "000020002 A", "000020004 A", "000020006 A",
                                      "000020008 A", "000020001 B", "000020003 B", "000020005 B",
                                      "000020007 B", "000020009 B"}));
}

// A walk whose visitor walks the same file again, and reads by key, sees
// every record in both: the store's statements, prepared once and kept, are
// never shared by two walks at once.
TEST_P(Magasins, UneLectureDansUnParcoursNeDerangePasLeParcours) {
  for (const char* cle : {"A", "B", "C"}) Ecrit("TABLES", cle, cle);
  std::string vu;
  for (int fois = 0; fois < 2; ++fois) {
    store_->Parcourt("TABLES", [&](const std::string& cle, const std::string&) {
      vu += cle + ":";
      for (const std::string& dedans : Cles(*store_, "TABLES")) vu += dedans;
      vu += store_->ExisteFichier("TABLES") ? *store_->Lit("TABLES", cle) : "?";
      vu += " ";
      return true;
    });
  }
  EXPECT_EQ(vu, "A:ABCA B:ABCB C:ABCC A:ABCA B:ABCB C:ABCC ");
}

// An import is one transaction: a failure half-way leaves nothing, for this
// connection and for another; a read-only opening refuses to write.
TEST_P(Magasins, ImportToutOuRienEtLectureSeule) {
  Ecrit("TABLES", "X", "ancien");
  marbrel::Dump bon = marbrel::LitDump(R"({"TABLES": {"X": ["nouveau"], "Y": ["y"]}})", "bon");
  EXPECT_THROW(store_->Transaction([&] {
    marbrel::Importe(*store_, {bon});
    store_->Ecrit("INCONNU", "K", "x");
  }),
               marbrel::Erreur);
  EXPECT_EQ(store_->Lit("TABLES", "X"), "ancien");
  EXPECT_EQ(store_->Lit("TABLES", "Y"), std::nullopt);
  EXPECT_EQ(Autre()->Lit("TABLES", "Y"), std::nullopt);

  auto lecteur = Autre(marbrel::Acces::LectureSeule);
  try {
    marbrel::Importe(*lecteur, {bon});
    ADD_FAILURE() << "une base ouverte en lecture seule doit refuser l'import";
  } catch (const marbrel::Erreur& e) {
    EXPECT_EQ(e.Numero(), marbrel::ERR_LECTURE_SEULE) << e.what();
  }
  marbrel::Importe(*store_, {bon});
  EXPECT_EQ(lecteur->Lit("TABLES", "X"), "nouveau");
}

// A snapshot reads one state: what another connection commits meanwhile shows
// neither in records read before nor in records first read after; once the
// snapshot ends, the new state shows.
TEST_P(Magasins, UnInstantaneNeVoitPasLesEcrituresDesAutres) {
  Ecrit("CIVILAIDE", "A0001", "MARTIN");
  Ecrit("ENVIRONAIDE", "A0001", "Lille");
  auto lecteur = Autre(marbrel::Acces::LectureSeule);
  lecteur->DebutInstantane();
  EXPECT_EQ(lecteur->Lit("CIVILAIDE", "A0001"), "MARTIN");
  marbrel::Importe(*Autre(), {marbrel::LitDump(
                                 R"({"CIVILAIDE": {"A0001": ["DURAND"], "A0002": ["NEUF"]},
                                     "ENVIRONAIDE": {"A0001": ["Roubaix"]}})",
                                 "import")});
  EXPECT_EQ(lecteur->Lit("CIVILAIDE", "A0001"), "MARTIN");
  EXPECT_EQ(lecteur->Lit("ENVIRONAIDE", "A0001"), "Lille");
  EXPECT_EQ(lecteur->Lit("CIVILAIDE", "A0002"), std::nullopt);
  EXPECT_EQ(Cles(*lecteur, "CIVILAIDE"), std::vector<std::string>{"A0001"});
  lecteur->FinInstantane();
  EXPECT_EQ(lecteur->Lit("ENVIRONAIDE", "A0001"), "Roubaix");
  EXPECT_EQ(Cles(*lecteur, "CIVILAIDE"), (std::vector<std::string>{"A0001", "A0002"}));
}

// The JSON dump and the directory files of a store are the same text on both
// stores, and a directory export read back gives the same records.
TEST_P(Magasins, ExportJsonEtDossierAllerRetour) {
  Ecrit("CIVILAIDE", "A/1", std::string("MARTIN") + AM + "Jeanne" + VM + "Marie");
  Ecrit("BLOCNOTAIDE", ".cache", "ligne 1\r\nligne 2");
  store_->CreeFichier("DICT CIVILAIDE");
  store_->CreeFichier("VIDE");
  std::ostringstream json;
  marbrel::Exporte(*store_, {"BLOCNOTAIDE", "CIVILAIDE", "DICT CIVILAIDE", "VIDE"}, json);
  EXPECT_EQ(json.str(),
            "{\n  \"BLOCNOTAIDE\": {\n    \".cache\": [\"ligne 1\\r\\nligne 2\"]\n  },\n"
            "  \"CIVILAIDE\": {\n    \"A/1\": [\"MARTIN\",[\"Jeanne\",\"Marie\"]]\n  },\n"
            "  \"DICT CIVILAIDE\": {},\n  \"VIDE\": {}\n}\n");

  const std::string dossier = dossier_ + "/export";
  marbrel::ExporteRepertoire(*store_, {}, dossier, marbrel::Encodage::Utf8);
  EXPECT_TRUE(std::filesystem::is_directory(dossier + "/D_CIVILAIDE"));
  EXPECT_TRUE(std::filesystem::exists(dossier + "/CIVILAIDE/A?\\1"));
  EXPECT_TRUE(std::filesystem::exists(dossier + "/BLOCNOTAIDE/?.cache"));
  marbrel::Dump relu = marbrel::LitRepertoire(dossier, marbrel::Encodage::Utf8);
  std::vector<std::string> fichiers;
  for (const auto& [nom, enregistrements] : relu.fichiers) {
    fichiers.push_back(nom);
    for (const auto& [cle, texte] : enregistrements) EXPECT_EQ(store_->Lit(nom, cle), texte);
  }
  EXPECT_EQ(fichiers, store_->Fichiers());
}

INSTANTIATE_TEST_SUITE_P(SqliteEtPostgres, Magasins, ::testing::Values("sqlite", "postgresql"),
                         [](const auto& info) { return info.param; });

}  // namespace

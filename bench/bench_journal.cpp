// What the access journal costs a print: a 1,000-dossier run (one Edition, on
// the recording surface, the journal beside the store) against the journal's
// own two writes for such a run (its start entry with the 1,000 keys and its
// outcome), measured in the same process. Figures only; nothing here asserts
// a target.
//
//   bench_journal [DOSSIER_DEMO] [REPETITIONS]
#include <QApplication>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "control/ctr_vesko.h"
#include "control/journal_edition.h"
#include "control/journal_sqlite.h"
#include "marbrel/base.h"
#include "marbrel/creation_base.h"
#include "marbrel/dump.h"
#include "marbrel/outils.h"
#include "marbrel/sqlite_store.h"
#include "printing/imprimantes.h"
#include "printing/recording.h"

namespace {

using Horloge = std::chrono::steady_clock;

double Secondes(Horloge::time_point debut) {
  return std::chrono::duration<double>(Horloge::now() - debut).count();
}

double Mediane(std::vector<double> v) {
  std::sort(v.begin(), v.end());
  return v[v.size() / 2];
}

}  // namespace

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  const std::string demo = argc > 1 ? argv[1] : VESKO_DEMO_DIR;
  const int repetitions = argc > 2 ? std::max(1, std::atoi(argv[2])) : 5;
  QApplication application(argc, argv);

  const std::string dossier = std::filesystem::temp_directory_path() / "vesko-bench-journal";
  std::filesystem::remove_all(dossier);
  std::filesystem::create_directories(dossier);
  const std::string base = dossier + "/demo.vesko";
  std::vector<std::string> cles_demo;
  {
    marbrel::SqliteStore store(base, marbrel::SqliteStore::Mode::Creation);
    marbrel::CreeFichiersVesko(store);
    std::vector<marbrel::Dump> dumps;
    std::vector<std::filesystem::path> fichiers;
    for (const auto& f : std::filesystem::directory_iterator(demo)) {
      if (f.path().extension() == ".json") fichiers.push_back(f.path());
    }
    std::sort(fichiers.begin(), fichiers.end());
    for (const auto& f : fichiers) dumps.push_back(marbrel::LitDumpFichier(f.string()));
    marbrel::Importe(store, dumps);
    store.Parcourt("CIVILAIDE", [&](const std::string& cle, const std::string&) {
      cles_demo.push_back(cle);
      return true;
    });
  }
  // 1,000 dossiers: the demo's care recipients over and over.
  std::vector<std::string> cles;
  for (size_t i = 0; cles.size() < 1000; ++i) cles.push_back(cles_demo[i % cles_demo.size()]);
  marbrel::TabDyn liste;
  for (size_t i = 0; i < cles.size(); ++i) liste.Remplace(static_cast<long>(i + 1), cles[i]);

  printing::Enregistrement enregistrement;
  printing::ListeImprimantes::Courante().Installe(
      {{"Enregistrement", [&](const printing::Travail&) {
          return std::make_unique<printing::RecordingSurface>(&enregistrement);
        }}});
  marbrel::Outils::Instance().Installe_Choix([](const std::string&) { return "0"; },
                                             [] { return std::int16_t{9}; });

  Ctr_Vesko controle;
  controle.Fixe_Aujourdhui(marbrel::Outils::Date_Interne(2024, 3, 15));
  std::vector<double> runs, journal;
  size_t pages = 0;
  for (int r = 0; r < repetitions; ++r) {
    enregistrement = {};
    std::string type = "AIDE";
    controle.TheDatabase(marbrel::Base::OuvreSqlite(base, true));
    const auto debut = Horloge::now();
    controle.Edition(liste, type);
    runs.push_back(Secondes(debut));
    pages = enregistrement.pages.size();

    // The journal's part of such a run, alone: opening it, the start entry
    // with every key, the outcome.
    const auto debut_journal = Horloge::now();
    journal::TraceEdition trace(journal::OuvrePour(nullptr, base + ".journal"), "");
    trace.Debut("AIDE", cles, "Enregistrement");
    trace.Fin(journal::kTerminee, static_cast<std::int64_t>(pages), "", "Enregistrement");
    journal.push_back(Secondes(debut_journal));
  }
  const double run = Mediane(runs), part = Mediane(journal);
  journal::JournalSqlite lecture(base + ".journal", journal::JournalSqlite::Mode::Lecture);
  const auto debut_verif = Horloge::now();
  const journal::Verdict v = lecture.Verifie();
  const double verif = Secondes(debut_verif);

  std::printf("run de %zu dossiers (%zu pages), journal compris : %.3f s (médiane de %d)\n",
              cles.size(), pages, run, repetitions);
  std::printf("journal seul (ouverture, entrée de début avec %zu clés, issue) : %.4f s\n",
              cles.size(), part);
  std::printf("part du journal dans le run : %.2f %%\n", 100.0 * part / run);
  std::printf("vérification de la chaîne (%lld entrées) : %.4f s — %s\n",
              static_cast<long long>(v.entrees), verif, v.intact ? "intacte" : "ABÎMÉE");
  std::filesystem::remove_all(dossier);
  return 0;
}

// Prints batches of demo dossiers and reports dossiers per second, pages per
// second and the peak memory of the process: once on the recording surface
// (the run and the sections alone), once to a PDF file (with the drawing).
// Figures only; nothing here asserts a target.
//
//   bench_impression [DOSSIER_DEMO] [REPETITIONS]
#include <sys/resource.h>

#include <QApplication>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "control/ctr_vesko.h"
#include "marbrel/base.h"
#include "marbrel/creation_base.h"
#include "marbrel/dump.h"
#include "marbrel/outils.h"
#include "marbrel/sqlite_store.h"
#include "printing/imprimantes.h"
#include "printing/recording.h"

namespace {

long PicMemoireKo() {
  rusage u{};
  getrusage(RUSAGE_SELF, &u);
  return u.ru_maxrss;
}

std::vector<std::string> Cles(const std::string& chemin, const std::string& fichier) {
  std::vector<std::string> cles;
  marbrel::SqliteStore store(chemin, marbrel::SqliteStore::Mode::LectureSeule);
  store.Parcourt(fichier, [&](const std::string& cle, const std::string&) {
    cles.push_back(cle);
    return true;
  });
  return cles;
}

struct Mesure {
  int dossiers = 0;
  int pages = 0;
  double secondes = 0;
};

// One Edition per type with every key of that type, `repetitions` times over.
Mesure Lot(const std::string& base, bool pdf, int repetitions, const std::string& dossier) {
  Mesure m;
  printing::Enregistrement enregistrement;
  if (pdf) {
    printing::ListeImprimantes::FixeFichierPdf(dossier + "/bench.pdf");
    printing::ListeImprimantes::Courante().Installe(printing::ListeImprimantes::Systeme());
  } else {
    printing::ListeImprimantes::Courante().Installe(
        {{"Enregistrement", [&](const printing::Travail&) {
            return std::make_unique<printing::RecordingSurface>(&enregistrement);
          }}});
  }
  long choix = static_cast<long>(printing::ListeImprimantes::Courante().Destinations().size()) - 1;
  marbrel::Outils::Instance().Installe_Choix(
      [choix](const std::string&) { return std::to_string(choix); },
      [] { return std::int16_t{9}; });
  Ctr_Vesko controle;
  controle.Fixe_Aujourdhui(marbrel::Outils::Date_Interne(2024, 3, 15));
  auto debut = std::chrono::steady_clock::now();
  for (int r = 0; r < repetitions; ++r) {
    for (const char* type : {"AIDE", "AIDANT"}) {
      auto cles = Cles(base, std::string(type) == "AIDE" ? "CIVILAIDE" : "CIVILAIDANT");
      marbrel::TabDyn liste;
      for (size_t i = 0; i < cles.size(); ++i) liste.Remplace(static_cast<long>(i + 1), cles[i]);
      std::string t = type;
      enregistrement = {};
      controle.TheDatabase(marbrel::Base::OuvreSqlite(base, true));
      controle.Edition(liste, t);
      m.dossiers += static_cast<int>(cles.size());
      m.pages += pdf ? 0 : static_cast<int>(enregistrement.pages.size());
    }
  }
  m.secondes = std::chrono::duration<double>(std::chrono::steady_clock::now() - debut).count();
  return m;
}

}  // namespace

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  std::string demo = argc > 1 ? argv[1] : VESKO_DEMO_DIR;
  int repetitions = argc > 2 ? std::atoi(argv[2]) : 20;
  QApplication application(argc, argv);

  std::string dossier = std::filesystem::temp_directory_path() / "vesko-bench-impression";
  std::filesystem::create_directories(dossier);
  std::string base = dossier + "/demo.vesko";
  std::filesystem::remove(base);
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
  }

  Mesure rec = Lot(base, false, repetitions, dossier);
  long memoire_rec = PicMemoireKo();
  std::printf("enregistrement : %d dossiers, %d pages en %.3f s : %.1f dossiers/s, %.1f pages/s, "
              "pic mémoire %ld Ko\n",
              rec.dossiers, rec.pages, rec.secondes, rec.dossiers / rec.secondes,
              rec.pages / rec.secondes, memoire_rec);
  Mesure pdf = Lot(base, true, repetitions, dossier);
  // The PDF run prints the same dossiers, so it has the same pages.
  pdf.pages = rec.pages;
  std::printf("PDF            : %d dossiers, %d pages en %.3f s : %.1f dossiers/s, %.1f pages/s, "
              "pic mémoire %ld Ko\n",
              pdf.dossiers, pdf.pages, pdf.secondes, pdf.dossiers / pdf.secondes,
              pdf.pages / pdf.secondes, PicMemoireKo());
  std::filesystem::remove_all(dossier);
  return 0;
}

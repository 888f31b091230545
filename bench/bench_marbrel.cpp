// Figures of the embedded store: reads by key per second, and the time of a
// key-prefix selection of one person's 15 rows in files of 10k, 100k and 1M
// records, beside a selection that has to read the whole file. The files are
// built here, in a temporary SQLite store. Figures only: nothing is asserted.
#include <chrono>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <random>
#include <string>

#include "marbrel/base.h"
#include "marbrel/marques.h"
#include "marbrel/sqlite_store.h"
#include "marbrel/tabdyn.h"

namespace {

using Horloge = std::chrono::steady_clock;

double Secondes(Horloge::time_point depuis) {
  return std::chrono::duration<double>(Horloge::now() - depuis).count();
}

// Processor time of this process: on a machine shared with builds the wall
// clock mostly measures the others, so both are printed.
double Processeur() {
  timespec t{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
  return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) / 1e9;
}

constexpr long kLignesParPersonne = 15;

// Unavailability-like keys: person code (5 digits), start day (5), weekday
// (1), start time (4) — 15 rows per person.
std::string Cle(long n) {
  char cle[32];
  std::snprintf(cle, sizeof cle, "%05ld%05ld%ld%04ld", n / kLignesParPersonne,
                19000 + (n % kLignesParPersonne) * 7, n % 7, 800 + (n % 4) * 100);
  return cle;
}

std::string Personne(long p) {
  char code[16];
  std::snprintf(code, sizeof code, "%05ld", p);
  return code;
}

void Construit(marbrel::Store& store, const std::string& fichier, long taille) {
  store.CreeFichier(fichier);
  long n = 0;
  std::string fin = std::string("20100") + marbrel::AM + "1230" + marbrel::AM + "1" + marbrel::AM +
                    "Rendez-vous médical" + marbrel::AM + "O";
  store.EcritLot(fichier, [&](std::string& cle, std::string& texte) {
    if (n == taille) return false;
    cle = Cle(n++);
    texte = fin;
    return true;
  });
}

// Wall-clock milliseconds of the selection; its processor milliseconds in *cpu_ms.
double SelectionMs(const marbrel::Base& base, const std::string& phrase, const std::string& fichier,
                   long* lignes, double* cpu_ms) {
  marbrel::TabDyn commande;
  commande.Remplace(1, phrase);
  commande.Remplace(2, fichier);
  commande.Remplace(3, "0 1 2 3 4");
  auto t = Horloge::now();
  double c = Processeur();
  marbrel::Liste_Selection liste = base.Selectionne(commande.Texte(), "");
  double ms = Secondes(t) * 1000;
  *cpu_ms = (Processeur() - c) * 1000;
  *lignes = liste.DCount();
  return ms;
}

}  // namespace

int main() {
  namespace fs = std::filesystem;
  std::string modele = (fs::temp_directory_path() / "vesko-bench-XXXXXX").string();
  const std::string dossier = mkdtemp(modele.data());
  const std::string chemin = dossier + "/bench.vesko";
  auto store = std::make_shared<marbrel::SqliteStore>(chemin, marbrel::SqliteStore::Mode::Creation);
  marbrel::Base base(store);
  std::mt19937 hasard(42);

  std::printf("wall clock, then processor time in brackets\n");
  std::printf("%-9s %9s %20s %22s %5s %24s\n", "records", "build (s)", "Lit/s",
              "prefix select (ms)", "rows", "full-scan select (ms)");
  for (long taille : {10'000L, 100'000L, 1'000'000L}) {
    const std::string fichier = "INDISPO" + std::to_string(taille);
    auto t = Horloge::now();
    Construit(*store, fichier, taille);
    double construction = Secondes(t);

    auto f = base.Ouvre_Fichier(fichier);
    std::uniform_int_distribution<long> tirage(0, taille - 1);
    const long lectures = 100'000;
    t = Horloge::now();
    double c = Processeur();
    std::size_t octets = 0;
    for (long i = 0; i < lectures; ++i) octets += f->Lit(Cle(tirage(hasard))).Texte().size();
    double lit_par_seconde = lectures / Secondes(t);
    double lit_par_seconde_cpu = lectures / (Processeur() - c);

    // The mean of 50 prefix selections of persons drawn at random.
    std::uniform_int_distribution<long> personne(0, taille / kLignesParPersonne - 1);
    double total_ms = 0, total_cpu_ms = 0, cpu_ms = 0;
    long lignes = 0;
    const int essais = 50;
    for (int i = 0; i < essais; ++i) {
      std::string code = Personne(personne(hasard));
      total_ms += SelectionMs(base, "SSELECT " + fichier + " AVEC 0 = \"" + code + "]\"", fichier,
                              &lignes, &cpu_ms);
      total_cpu_ms += cpu_ms;
    }
    // The same person found through a non-key field: the whole file is read.
    long lignes_scan = 0;
    double scan_ms =
        SelectionMs(base, "SSELECT " + fichier + " AVEC 0 = \"[" + Cle(taille / 2).substr(5) + "\"",
                    fichier, &lignes_scan, &cpu_ms);

    std::printf("%-9ld %9.2f %9.0f (%8.0f) %9.3f (%9.3f) %5ld %11.1f (%9.1f)\n", taille,
                construction, lit_par_seconde, lit_par_seconde_cpu, total_ms / essais,
                total_cpu_ms / essais, lignes, scan_ms, cpu_ms);
    if (octets == 0) std::printf("(aucune lecture)\n");
  }
  store.reset();
  fs::remove_all(dossier);
  return 0;
}

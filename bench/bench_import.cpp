// The memory of an import, against the size of its dump: a dump of N records
// of varied lengths (multivalues and sub-values included) is written, then
// imported by the built `vesko` into a new store. The figure is the import's
// peak memory above that of `vesko init` (the program's own, run in the same
// way), over the dump's size; the target is under 2.
//
//   bench_import [RECORDS]        240000 by default (about 70 MB of dump)
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <random>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

struct Execution {
  long pic_ko = 0;
  double secondes = 0;
  int statut = -1;
};

// Runs the program, outputs dropped; its peak memory and wall time. This
// process stays small (the dump is written as it is made), so the child's
// peak is its own.
Execution Lance(std::vector<std::string> arguments) {
  timeval debut{}, fin{};
  gettimeofday(&debut, nullptr);
  const pid_t pid = fork();
  if (pid == 0) {
    std::freopen("/dev/null", "w", stdout);
    std::freopen("/dev/null", "w", stderr);
    std::vector<char*> argv;
    for (std::string& a : arguments) argv.push_back(a.data());
    argv.push_back(nullptr);
    execv(argv[0], argv.data());
    _exit(127);
  }
  int statut = 0;
  rusage usage{};
  wait4(pid, &statut, 0, &usage);
  gettimeofday(&fin, nullptr);
  Execution e;
  e.pic_ko = usage.ru_maxrss;
  e.secondes = static_cast<double>(fin.tv_sec - debut.tv_sec) +
               static_cast<double>(fin.tv_usec - debut.tv_usec) / 1e6;
  e.statut = WIFEXITED(statut) ? WEXITSTATUS(statut) : -1;
  return e;
}

// Writes a dump of n records over six files, a record at a time.
void EcritDump(const std::string& chemin, long n) {
  std::ofstream f(chemin);
  std::mt19937 hasard(1);
  f << "{";
  const long par_fichier = (n + 5) / 6;
  for (long i = 0; i < n; ++i) {
    if (i % par_fichier == 0) f << (i > 0 ? "}, " : "") << "\"F" << i / par_fichier << "\": {";
    if (i % par_fichier > 0) f << ", ";
    f << "\"K" << i << "\": [\"NOM" << i << "\", [\"06 " << i << "\", \"01 " << i * 7 << "\"], \""
      << std::string(50 + hasard() % 350, 'x') << "\", [[\"a\", \"b\"], \"c\"]]";
  }
  f << "}}";
}

}  // namespace

int main(int argc, char** argv) {
  const long n = argc > 1 ? std::atol(argv[1]) : 240000;
  const std::string vesko = VESKO_BINARY_DIR "/vesko";
  char modele[] = "/tmp/vesko-bench-import-XXXXXX";
  const std::string dossier = mkdtemp(modele);
  const std::string dump = dossier + "/dump.json", base = dossier + "/base.vesko";
  EcritDump(dump, n);
  const double taille_mo = static_cast<double>(fs::file_size(dump)) / 1e6;

  const Execution init = Lance({vesko, "init", "--db", base});
  const Execution import = Lance({vesko, "import", "--db", base, dump});
  fs::remove_all(dossier);
  if (init.statut != 0 || import.statut != 0) {
    std::cerr << "bench_import : vesko a échoué (statuts " << init.statut << ", " << import.statut
              << ")\n";
    return 1;
  }
  const double propre_mo = static_cast<double>(init.pic_ko) / 1024.0;
  const double pic_mo = static_cast<double>(import.pic_ko) / 1024.0;
  std::printf("dump : %ld enregistrements, %.1f Mo\n", n, taille_mo);
  std::printf("vesko init (le programme seul) : pic %.1f Mo\n", propre_mo);
  std::printf("vesko import : pic %.1f Mo, %.2f s\n", pic_mo, import.secondes);
  std::printf("mémoire de l'import / taille du dump : %.2f (objectif < 2)\n",
              (pic_mo - propre_mo) / taille_mo);
  return 0;
}

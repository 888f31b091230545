// How fast `vesko print` goes, as a user runs it: on a realistic store
// (magasin_realiste.h) of N care recipients and N carers, the N care
// recipients' dossiers printed in one run to --pdf, --text and --json, each in
// its own process (its peak memory is its own), then the same text through
// enscript and ps2pdf as the reference of the same run. Then, on the pages of
// the first batch recorded once, the PDF writers alone: ours and Qt's.
// Figures only; nothing here asserts a target.
//
//   bench_impression [--json-max M] [N...]     (default: 1000 10000)
//
// --json-max leaves --json out of batches above M dossiers: while the
// recording is kept whole, its peak memory is about 0.8 MB per dossier.
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <thread>

#include "bench/magasin_realiste.h"
#include "control/ctr_vesko.h"
#include "marbrel/base.h"
#include "marbrel/outils.h"
#include "printing/imprimantes.h"
#include "printing/pdf_surface.h"
#include "printing/qt_surface.h"
#include "printing/recording.h"
#include "printing/rendu.h"

namespace {

namespace fs = std::filesystem;
using Horloge = std::chrono::steady_clock;

struct Execution {
  double secondes = 0;
  double cpu = 0;  // user and system time: what the program costs on one core
  long pic_ko = 0;
  int statut = -1;
};

// Runs the program with its arguments, standard input from entree ("" =
// none), outputs dropped; times it and reads its peak memory.
Execution Lance(const std::vector<std::string>& arguments, const std::string& entree = "") {
  const auto debut = Horloge::now();
  const pid_t pid = fork();
  if (pid == 0) {
    const int in = open(entree.empty() ? "/dev/null" : entree.c_str(), O_RDONLY);
    const int out = open("/dev/null", O_WRONLY);
    dup2(in, 0);
    dup2(out, 1);
    dup2(out, 2);
    std::vector<char*> argv;
    for (const std::string& a : arguments) argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    execvp(argv[0], argv.data());
    _exit(127);
  }
  int statut = 0;
  rusage usage{};
  wait4(pid, &statut, 0, &usage);
  Execution e;
  e.secondes = std::chrono::duration<double>(Horloge::now() - debut).count();
  e.pic_ko = usage.ru_maxrss;
  e.cpu = static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
          static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
  e.statut = WIFEXITED(statut) ? WEXITSTATUS(statut) : -1;
  return e;
}

// The commands are run by a small process started before anything big is
// loaded here: a child's peak memory counts that of the process it was
// forked from, and this one holds the generated stores.
class Lanceur {
 public:
  Lanceur() {
    if (pipe(demandes_) != 0 || pipe(reponses_) != 0) std::abort();
    pid_ = fork();
    if (pid_ == 0) {
      close(demandes_[1]);
      close(reponses_[0]);
      for (;;) {
        std::uint32_t longueur = 0;
        if (read(demandes_[0], &longueur, sizeof longueur) != sizeof longueur) _exit(0);
        std::string demande(longueur, '\0');
        size_t lus = 0;
        while (lus < longueur) {
          const ssize_t n = read(demandes_[0], demande.data() + lus, longueur - lus);
          if (n <= 0) _exit(0);
          lus += static_cast<size_t>(n);
        }
        // Fields separated by NUL: the standard input, then the arguments.
        std::vector<std::string> champs;
        for (size_t debut = 0; debut <= demande.size();) {
          size_t fin = demande.find('\0', debut);
          if (fin == std::string::npos) fin = demande.size();
          champs.push_back(demande.substr(debut, fin - debut));
          debut = fin + 1;
        }
        const std::string entree = champs.front();
        champs.erase(champs.begin());
        const Execution e = Lance(champs, entree);
        if (write(reponses_[1], &e, sizeof e) != sizeof e) _exit(1);
      }
    }
    close(demandes_[0]);
    close(reponses_[1]);
  }
  ~Lanceur() {
    close(demandes_[1]);
    close(reponses_[0]);
    waitpid(pid_, nullptr, 0);
  }

  Execution Execute(const std::vector<std::string>& arguments, const std::string& entree = "") {
    std::string demande = entree;
    for (const std::string& a : arguments) demande += '\0' + a;
    const auto longueur = static_cast<std::uint32_t>(demande.size());
    Execution e;
    if (write(demandes_[1], &longueur, sizeof longueur) != sizeof longueur ||
        write(demandes_[1], demande.data(), demande.size()) !=
            static_cast<ssize_t>(demande.size()) ||
        read(reponses_[0], &e, sizeof e) != sizeof e) {
      e.statut = -1;
    }
    return e;
  }

 private:
  int demandes_[2], reponses_[2];
  pid_t pid_;
};

long Pages(const std::string& texte) {
  std::ifstream f(texte, std::ios::binary);
  long pages = 1;
  for (std::string ligne; std::getline(f, ligne);) pages += ligne == "\f";
  return pages;
}

long PagesPdf(const std::string& pdf) {
  const std::string sortie = pdf + ".info";
  std::system(("pdfinfo '" + pdf + "' > '" + sortie + "' 2>/dev/null").c_str());
  std::ifstream f(sortie);
  for (std::string ligne; std::getline(f, ligne);) {
    if (ligne.rfind("Pages:", 0) == 0) return std::atol(ligne.substr(6).c_str());
  }
  return 0;
}

std::string Machine() {
  std::ifstream cpu("/proc/cpuinfo");
  std::string modele = "?";
  for (std::string l; std::getline(cpu, l);) {
    if (l.rfind("model name", 0) == 0) {
      modele = l.substr(l.find(':') + 2);
      break;
    }
  }
  std::ifstream mem("/proc/meminfo");
  std::string l;
  std::getline(mem, l);
  return modele + ", " + std::to_string(std::thread::hardware_concurrency()) + " cœurs, " +
         std::to_string(std::atol(l.substr(l.find(':') + 1).c_str()) / 1024 / 1024) +
         " Go de mémoire";
}

void Ligne(const char* sortie, const Execution& e, long dossiers, long pages, long octets) {
  std::printf("  %-16s %7.2f s (%7.2f s CPU)  %6.0f pages/s  %6.1f dossiers/s  pic %4ld Mo", sortie,
              e.secondes, e.cpu, pages / e.cpu, dossiers / e.cpu, e.pic_ko / 1024);
  if (octets > 0) std::printf("  %6.0f octets/page", static_cast<double>(octets) / pages);
  std::printf("%s\n", e.statut == 0 ? "" : "  (ÉCHEC)");
}

// The pages of the dossiers, recorded once in this process; then each PDF
// writer alone draws them again.
void EcrivainsSeuls(const std::string& base, const std::vector<std::string>& cles,
                    const std::string& dossier) {
  printing::Enregistrement rec;
  printing::ListeImprimantes::Courante().Installe(
      {{"Enregistrement", [&](const printing::Travail&) {
          return std::make_unique<printing::RecordingSurface>(&rec);
        }}});
  marbrel::Outils::Instance().Installe_Choix([](const std::string&) { return std::string("0"); },
                                             [] { return std::int16_t{9}; });
  Ctr_Vesko controle;
  controle.Fixe_Aujourdhui(marbrel::Outils::Date_Interne(2024, 3, 15));
  marbrel::TabDyn liste;
  for (size_t i = 0; i < cles.size(); ++i) liste.Remplace(static_cast<long>(i + 1), cles[i]);
  std::string type = "AIDE";
  controle.TheDatabase(marbrel::Base::OuvreSqlite(base, true));
  controle.Edition(liste, type);
  const double pages = static_cast<double>(rec.pages.size());

  auto mesure = [&](const char* nom, std::unique_ptr<printing::Surface> surface,
                    const std::string& chemin) {
    // Time of this process's CPU: the machine may be shared.
    const std::clock_t debut = std::clock();
    printing::Rejoue(rec, *surface);
    surface.reset();
    const double s = static_cast<double>(std::clock() - debut) / CLOCKS_PER_SEC;
    const double taille = static_cast<double>(fs::file_size(chemin));
    std::printf("  %-16s %7.2f s CPU  %6.0f pages/s  %6.0f octets/page\n", nom, s, pages / s,
                taille / pages);
    return pages / s;
  };
  std::printf("\nÉcrivains PDF seuls, sur les %.0f pages enregistrées de %zu dossiers :\n", pages,
              cles.size());
  const std::string notre = dossier + "/seul.pdf", qt = dossier + "/seul-qt.pdf";
  printing::Travail travail{"BANC", 1};
  const double v1 = mesure("le nôtre", printing::SurfacePdf(notre, travail), notre);
  const double v2 = mesure("Qt", printing::SurfacePdfQt(qt, travail), qt);
  std::printf("  rapport : %.1f×\n", v1 / v2);
}

}  // namespace

int main(int argc, char** argv) {
  Lanceur lanceur;
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  const std::string runtime = "/tmp/runtime-" + std::to_string(getuid());
  mkdir(runtime.c_str(), 0700);
  setenv("XDG_RUNTIME_DIR", runtime.c_str(), 0);
  std::vector<int> tailles;
  long json_max = -1;
  for (int i = 1; i < argc; ++i) {
    if (std::string(argv[i]) == "--json-max" && i + 1 < argc) {
      json_max = std::atol(argv[++i]);
    } else {
      tailles.push_back(std::atoi(argv[i]));
    }
  }
  if (tailles.empty()) tailles = {1000, 10000};
  QApplication application(argc, argv);

  const std::string dossier = (fs::temp_directory_path() / "vesko-bench-impression").string();
  fs::remove_all(dossier);
  fs::create_directories(dossier);
  const std::string vesko = VESKO_BINARY_DIR "/vesko";
  std::printf(
      "Machine : %s\nUn processus par sortie (un cœur), de bout en bout, base → fichier ; les "
      "débits se rapportent au temps CPU du processus (la machine peut être partagée).\n",
      Machine().c_str());

  std::vector<std::string> premiers;  // the keys of the first batch
  for (int n : tailles) {
    const std::string base = dossier + "/base-" + std::to_string(n) + ".vesko";
    auto debut = Horloge::now();
    const banc_essai::MagasinRealiste magasin = banc_essai::GenereMagasin(VESKO_DEMO_DIR, n, base);
    const double generation = std::chrono::duration<double>(Horloge::now() - debut).count();
    std::printf(
        "\n%d aidés et %d aidants (%.0f Mo de données, base de %.0f Mo, générée en %.1f s) "
        ": les %d dossiers AIDE en un lot\n",
        n, n, magasin.octets_donnees / 1e6, fs::file_size(base) / 1e6, generation, n);
    if (premiers.empty()) premiers = magasin.aides;
    const std::string cles = dossier + "/cles.txt";
    {
      std::ofstream f(cles);
      for (const std::string& c : magasin.aides) f << c << "\n";
    }
    auto commande = [&](const std::string& option, const std::string& sortie) {
      return std::vector<std::string>{vesko,    "print",      "--db", base,   "--type", "AIDE",
                                      "--date", "2024-03-15", option, sortie, "-"};
    };
    const std::string pdf = dossier + "/lot.pdf", txt = dossier + "/lot.txt",
                      json = dossier + "/lot.json";
    const Execution e_pdf = lanceur.Execute(commande("--pdf", pdf), cles);
    const Execution e_txt = lanceur.Execute(commande("--text", txt), cles);
    const long pages = Pages(txt);
    const bool avec_json = json_max < 0 || n <= json_max;
    const Execution e_json =
        avec_json ? lanceur.Execute(commande("--json", json), cles) : Execution{};
    fs::remove(json);
    Ligne("--pdf", e_pdf, n, pages, static_cast<long>(fs::file_size(pdf)));
    Ligne("--text", e_txt, n, pages, 0);
    if (avec_json) {
      Ligne("--json", e_json, n, pages, 0);
    } else {
      std::printf("  %-16s laissé de côté (--json-max %ld)\n", "--json", json_max);
    }

    // The reference: the same text as plain pages through enscript then
    // ghostscript, with the same font and margins.
    const std::string ps = dossier + "/ref.ps", ref = dossier + "/ref.pdf";
    const Execution e1 = lanceur.Execute(
        {"enscript", "-q", "-B", "-f", "Courier11", "--margins=14:14:14:14", "-p", ps, txt});
    const Execution e2 = lanceur.Execute({"ps2pdf", ps, ref});
    Execution e_ref{e1.secondes + e2.secondes, e1.cpu + e2.cpu, std::max(e1.pic_ko, e2.pic_ko),
                    e1.statut != 0 ? e1.statut : e2.statut};
    const long pages_ref = PagesPdf(ref);
    Ligne("enscript+ps2pdf", e_ref, n, pages_ref, static_cast<long>(fs::file_size(ref)));
    std::printf("  --pdf / enscript+ps2pdf : %.2f× (pages par seconde de CPU)\n",
                (pages / e_pdf.cpu) / (pages_ref / e_ref.cpu));
    fs::remove(ps);
    fs::remove(ref);
  }

  EcrivainsSeuls(dossier + "/base-" + std::to_string(tailles.front()) + ".vesko", premiers,
                 dossier);
  fs::remove_all(dossier);
  return 0;
}

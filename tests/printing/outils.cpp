#include "tests/printing/outils.h"

#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <thread>

namespace essai {

namespace fs = std::filesystem;

DossierTemporaire::DossierTemporaire() {
  char modele[] = "/tmp/vesko-essai.XXXXXX";
  chemin_ = mkdtemp(modele);
}

DossierTemporaire::~DossierTemporaire() {
  std::error_code ignore;
  fs::remove_all(chemin_, ignore);
}

std::string Lance(const std::string& commande, int* statut) {
  std::string sortie;
  FILE* flux = popen(commande.c_str(), "r");
  if (flux == nullptr) {
    if (statut) *statut = -1;
    return sortie;
  }
  char tampon[4096];
  size_t lus;
  while ((lus = fread(tampon, 1, sizeof tampon, flux)) > 0) sortie.append(tampon, lus);
  const int fin = pclose(flux);
  if (statut) *statut = WIFEXITED(fin) ? WEXITSTATUS(fin) : -1;
  return sortie;
}

std::vector<std::string> Lignes(const std::string& texte) {
  std::vector<std::string> lignes;
  std::istringstream flux(texte);
  for (std::string ligne; std::getline(flux, ligne);) lignes.push_back(ligne);
  return lignes;
}

namespace {

void Ecrit(const std::string& chemin, const std::string& contenu) {
  std::ofstream(chemin) << contenu;
}

std::string Lit(const std::string& chemin) {
  std::ifstream flux(chemin, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(flux), {});
}

// The capture backend: run by the scheduler with the job's id, user, title,
// copies, options and file; it writes the job where its device URI says and
// then renames it, so that a file that exists is complete.
constexpr const char* kBackendCapture = R"(#!/bin/sh
if [ $# -eq 0 ]; then echo 'direct capture "Unknown" "Capture"'; exit 0; fi
f="${DEVICE_URI#capture:}"
if [ -n "$6" ]; then cat "$6" > "$f.part"; else cat > "$f.part"; fi
printf 'title=%s\ncopies=%s\n' "$3" "$4" > "$f.info"
mv "$f.part" "$f"
)";

}  // namespace

ServeurCups* ServeurCups::Instance() {
  // Destroyed at the end of the program, which stops the scheduler.
  static std::unique_ptr<ServeurCups> serveur = [] {
    std::unique_ptr<ServeurCups> s(new ServeurCups);
    if (!s->Demarre()) s.reset();
    return s;
  }();
  return serveur.get();
}

bool ServeurCups::Demarre() {
  const std::string& d = dossier_.Chemin();
  const char* cupsd = fs::exists("/usr/sbin/cupsd") ? "/usr/sbin/cupsd" : nullptr;
  if (cupsd == nullptr || !fs::exists("/usr/lib/cups/backend")) return false;
  // The scheduler drops to another user for its backends: they must reach
  // the folder and write the captures.
  fs::permissions(d, fs::perms::owner_all | fs::perms::group_read | fs::perms::group_exec |
                         fs::perms::others_read | fs::perms::others_exec);
  for (const char* sous : {"spool", "tmp", "cache", "state", "ppd", "bin/backend", "captures"}) {
    fs::create_directories(d + "/" + sous);
  }
  fs::permissions(d + "/captures", fs::perms::all | fs::perms::sticky_bit);
  // The system's filters and helpers, with our backend added to theirs.
  for (const auto& e : fs::directory_iterator("/usr/lib/cups")) {
    if (e.path().filename() != "backend")
      fs::create_symlink(e.path(), fs::path(d) / "bin" / e.path().filename());
  }
  Ecrit(d + "/bin/backend/capture", kBackendCapture);
  fs::permissions(d + "/bin/backend/capture", fs::perms::owner_all | fs::perms::group_read |
                                                  fs::perms::group_exec | fs::perms::others_read |
                                                  fs::perms::others_exec);
  Ecrit(d + "/cups-files.conf", "ServerRoot " + d + "\nServerBin " + d + "/bin\nRequestRoot " + d +
                                    "/spool\nTempDir " + d + "/tmp\nCacheDir " + d +
                                    "/cache\nStateDir " + d + "/state\nErrorLog " + d +
                                    "/error_log\nAccessLog " + d + "/access_log\nPageLog " + d +
                                    "/page_log\nSystemGroup root\n");
  Ecrit(d + "/cupsd.conf", "Listen " + d +
                               "/cups.sock\nLogLevel warn\nWebInterface No\nBrowsing No\n"
                               "DefaultAuthType None\n<Location />\n  Order allow,deny\n  Allow "
                               "all\n</Location>\n<Policy default>\n  <Limit All>\n    Order "
                               "deny,allow\n  </Limit>\n</Policy>\n");
  setenv("CUPS_SERVER", (d + "/cups.sock").c_str(), 1);
  unsetenv("PRINTER");
  unsetenv("LPDEST");
  pid_ = fork();
  if (pid_ == 0) {
    // The scheduler must not outlive a test program that crashes.
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    execl(cupsd, cupsd, "-f", "-c", (d + "/cupsd.conf").c_str(), "-s",
          (d + "/cups-files.conf").c_str(), static_cast<char*>(nullptr));
    _exit(127);
  }
  if (pid_ < 0) return false;
  for (int essai = 0; essai < 100; ++essai) {
    int statut = 1;
    Lance("lpstat -r >/dev/null 2>&1", &statut);
    if (statut == 0) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
  return false;
}

ServeurCups::~ServeurCups() {
  if (pid_ > 0) {
    kill(pid_, SIGTERM);
    waitpid(pid_, nullptr, 0);
  }
}

bool ServeurCups::AjouteFile(const std::string& nom, bool defaut) {
  // A queue is made once per scheduler: changing it again while it still
  // prints the previous test's job could be refused.
  if (!files_.insert(nom).second) return true;
  int statut = 1;
  Lance("lpadmin -p " + nom + " -E -v capture:" + dossier_ / "captures" + "/" + nom + " 2>&1",
        &statut);
  if (statut == 0 && defaut) Lance("lpadmin -d " + nom + " 2>&1", &statut);
  if (statut != 0) files_.erase(nom);
  return statut == 0;
}

std::string ServeurCups::Capture(const std::string& file) const {
  const std::string chemin = dossier_ / "captures" + "/" + file;
  for (int essai = 0; essai < 200 && !fs::exists(chemin); ++essai) {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
  return Lit(chemin);
}

std::string ServeurCups::InfosCapture(const std::string& file) const {
  return Lit(dossier_ / "captures" + "/" + file + ".info");
}

}  // namespace essai

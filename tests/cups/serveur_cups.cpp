#include "tests/cups/serveur_cups.h"

#include <arpa/inet.h>
#include <grp.h>
#include <pwd.h>
#include <signal.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <chrono>
#include <thread>

namespace essai_cups {

namespace fs = std::filesystem;

namespace {

// The backend of every queue (with no argument it describes itself): $1 id,
// $3 title, $4 copies, $5 options, $6 the file (or standard input).
// "capture:FOLDER" keeps there the bytes, the title, copies and paper, and all
// the job's options, renaming the job last so that a job file that exists is
// complete. The queues PANNE and BOURRAGE fail every job, as a jammed printer does.
constexpr const char* kBackend = R"sh(#!/bin/sh
[ $# -eq 0 ] && { echo "direct ${0##*/} \"Unknown\" \"Essai\""; exit 0; }
d="${DEVICE_URI#*:}"
cat ${6:+"$6"} > "$d/$1.part"
case "$d" in */PANNE|*/BOURRAGE) echo "ERROR: Plus de papier dans le bac 1" >&2; exit 1;; esac
echo "$3 $4 $(echo "$5" | tr ' ' '\n' | sed -n 's/^media=//p')" > "$d/$1.info"
echo "$5" > "$d/$1.options"
mv "$d/$1.part" "$d/$1.job"
)sh";

// Binds (port 0: any free port, which is returned) or connects to a port of
// 127.0.0.1; 0 on failure.
int Prise(int port, bool connecte) {
  const int s = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in adresse{};
  adresse.sin_family = AF_INET;
  adresse.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  adresse.sin_port = htons(static_cast<uint16_t>(port));
  auto* a = reinterpret_cast<sockaddr*>(&adresse);
  socklen_t taille = sizeof adresse;
  const bool ok = connecte ? connect(s, a, taille) == 0
                           : bind(s, a, taille) == 0 && getsockname(s, a, &taille) == 0;
  close(s);
  return ok ? ntohs(adresse.sin_port) : 0;
}

struct Serveur {
  essai::Dossier racine;  // removed once the scheduler is stopped
  const std::string dossier = racine / "cups";
  std::string adresse, raison;  // raison: why it could not start
  int port = 0, pid = -1;
  ~Serveur() {
    if (pid > 0 && kill(pid, SIGTERM) == 0) waitpid(pid, nullptr, 0);
  }
} serveur;

bool Prepare() {
  essai::MaisonPrivee();  // the developer's lpoptions and client.conf stay unread
  const std::string& d = serveur.dossier;
  serveur.port = Prise(0, false);
  serveur.adresse = "127.0.0.1:" + std::to_string(serveur.port);
  for (const char* sous : {"spool/tmp", "cache", "state", "log", "bin/backend", "files/CAPTURE",
                           "files/ARRETEE", "files/REFUS", "files/PANNE", "files/BOURRAGE"})
    fs::create_directories(d + "/" + sous);
  // The system's filters and helpers, with our backend in place of theirs.
  for (const auto& e : fs::directory_iterator("/usr/lib/cups"))
    if (e.path().filename() != "backend")
      fs::create_symlink(e.path(), d + "/bin/" + e.path().filename().string());
  std::ofstream(d + "/bin/backend/capture") << kBackend;
  fs::permissions(d + "/bin/backend/capture", fs::perms(0755));

  std::ofstream(d + "/cups-files.conf")
      << "ServerRoot " + d + "\nServerBin " + d + "/bin\nRequestRoot " + d + "/spool\nTempDir " +
             d + "/spool/tmp\nCacheDir " + d + "/cache\nStateDir " + d + "/state\nDataDir " +
             "/usr/share/cups\nErrorLog " + d + "/log/error_log\nAccessLog " + d +
             "/log/access_log\nPageLog " + d + "/log/page_log\nPrintcap\nFileDevice No\n";
  std::ofstream(d + "/cupsd.conf")
      << "Listen " + serveur.adresse +
             "\nLogLevel info\nWebInterface No\nBrowsing No\nDefaultAuthType None\n"
             "PreserveJobHistory Yes\n<Location />\n  Order allow,deny\n  Allow all\n</Location>\n"
             "<Policy default>\n  <Limit All>\n    Order deny,allow\n  </Limit>\n</Policy>\n";
  // A job that fails is dropped: the queue stays ready for the next test.
  std::ofstream files(d + "/printers.conf");
  for (const auto& [nom, etat] : std::initializer_list<std::pair<std::string, std::string>>{
           {"CAPTURE", "Idle\nAccepting Yes"},
           {"ARRETEE",
            "Stopped\nStateMessage Bourrage papier dans le bac 2\nReason paused\nAccepting Yes"},
           {"REFUS", "Idle\nStateMessage Toner à remplacer\nAccepting No"},
           {"PANNE", "Idle\nAccepting Yes"},
           {"BOURRAGE", "Idle\nAccepting Yes"}}) {
    const std::string balise = nom == "CAPTURE" ? "DefaultPrinter" : "Printer";
    // BOURRAGE keeps its jobs and tries again later, Debian's default policy.
    const std::string politique = nom == "BOURRAGE" ? "retry-job" : "abort-job";
    files << "<" + balise + " " + nom + ">\nState " + etat + "\nErrorPolicy " + politique +
                 "\nDeviceURI capture:" + d + "/files/" + nom + "\n</" + balise + ">\n";
  }
  files.close();

  // -h: the links to the system's programs leave their targets alone.
  if (geteuid() == 0 &&
      essai::Lance("chown -hR nobody: '" + (serveur.racine / "") + "'").statut != 0) {
    serveur.raison = "impossible de donner " + d + " à nobody";
    return false;
  }
  setenv("CUPS_SERVER", serveur.adresse.c_str(), 1);
  return true;
}

bool Demarre() {
  const passwd* sans_droits = geteuid() == 0 ? getpwnam("nobody") : nullptr;
  const std::string conf = serveur.dossier + "/cupsd.conf",
                    fichiers = serveur.dossier + "/cups-files.conf";
  int& pid = serveur.pid = fork();
  if (pid == 0) {
    // The scheduler must not outlive a test program that crashes. As root, it
    // runs as nobody: no privilege the tests do not need.
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (sans_droits != nullptr && (setgroups(0, nullptr) != 0 || setgid(sans_droits->pw_gid) != 0 ||
                                   setuid(sans_droits->pw_uid) != 0))
      _exit(126);
    execl("/usr/sbin/cupsd", "cupsd", "-f", "-c", conf.c_str(), "-s", fichiers.c_str(),
          static_cast<char*>(nullptr));
    _exit(127);
  }
  for (int essai = 0; pid > 0 && essai < 200; ++essai) {
    if (Prise(serveur.port, true) != 0) return true;
    if (waitpid(pid, nullptr, WNOHANG) == pid) pid = -1;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  serveur.raison = "cupsd ne répond pas sur " + serveur.adresse + " : " + AvecServeur::Journal();
  return false;
}

}  // namespace

void AvecServeur::SetUp() {
  if (!fs::exists("/usr/sbin/cupsd"))
    GTEST_SKIP() << "cupsd est absent (paquet cups-daemon non installé) : pas de serveur "
                    "d'impression privé";
  static const bool pret = Prepare() && Demarre();
  ASSERT_TRUE(pret) << "cupsd est installé mais ne démarre pas : " << serveur.raison;
  ASSERT_FALSE(BaseDemo().empty()) << "la base de démonstration n'a pas pu être créée";
  essai::Application();
}

std::string AvecServeur::Adresse() { return serveur.adresse; }
std::string AvecServeur::DossierFiles() { return serveur.dossier + "/files"; }

Capture AvecServeur::AttendCapture(const std::string& file, int numero, int attente) {
  const fs::path job = serveur.dossier + "/files/" + file + "/" + std::to_string(numero) + ".job";
  for (int essai = 0; essai < attente && !fs::exists(job); ++essai)
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  if (!fs::exists(job)) return {};
  const std::string infos = essai::Lit(fs::path(job).replace_extension(".info"));
  const std::string options = essai::Lit(fs::path(job).replace_extension(".options"));
  return {numero, job.string(), infos.substr(0, infos.find('\n')),
          options.substr(0, options.find('\n'))};
}

const std::string& BaseDemo() {
  static const essai::Dossier dossier;
  static const std::string chemin = dossier / "demo.vesko", vide;
  static const bool fait =
      essai::Vesko("init --db '" + chemin + "' && " VESKO_BINARY_DIR "/vesko import --db '" +
                   chemin + "' " VESKO_SOURCE_DIR "/demo/*.json")
          .statut == 0;
  return fait ? chemin : vide;
}

std::string AvecServeur::Journal() { return essai::Lit(serveur.dossier + "/log/error_log"); }

}  // namespace essai_cups

#include "tests/bureau/ecran.h"

#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "tests/app/programmes.h"

namespace essai_bureau {

namespace {

struct Processus {
  pid_t pid = -1;
  ~Processus() {
    if (pid > 0 && kill(pid, SIGTERM) == 0) waitpid(pid, nullptr, 0);
  }
};

pid_t Lance(const char* programme, char* const arguments[], int sortie = -1) {
  const pid_t pid = fork();
  if (pid == 0) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (sortie >= 0) dup2(sortie, STDOUT_FILENO);
    execvp(programme, arguments);
    _exit(127);
  }
  return pid;
}

std::string Demarre() {
  static essai::Dossier maison;
  static Processus xvfb, gestionnaire;
  if (!std::filesystem::exists("/usr/bin/Xvfb") || !std::filesystem::exists("/usr/bin/openbox")) {
    return "Xvfb ou openbox absents (paquets xvfb, openbox)";
  }
  // -displayfd: Xvfb takes a free display number and writes it on the pipe.
  int tube[2];
  if (pipe(tube) != 0) return "pipe";
  const std::string fd = std::to_string(tube[1]);
  char* xvfb_args[] = {const_cast<char*>("Xvfb"),
                       const_cast<char*>("-displayfd"),
                       const_cast<char*>(fd.c_str()),
                       const_cast<char*>("-screen"),
                       const_cast<char*>("0"),
                       const_cast<char*>("1280x1024x24"),
                       const_cast<char*>("-nolisten"),
                       const_cast<char*>("tcp"),
                       nullptr};
  xvfb.pid = Lance("Xvfb", xvfb_args);
  close(tube[1]);
  std::string numero;
  char c;
  while (read(tube[0], &c, 1) == 1 && c != '\n') numero += c;
  close(tube[0]);
  if (numero.empty()) return "Xvfb n'a pas donné de numéro d'écran";
  const std::string display = ":" + numero;
  setenv("DISPLAY", display.c_str(), 1);
  setenv("QT_QPA_PLATFORM", "xcb", 1);
  setenv("LANG", "fr_FR.UTF-8", 1);
  setenv("LANGUAGE", "fr", 1);
  setenv("HOME", maison.chemin.c_str(), 1);
  setenv("XDG_CONFIG_HOME", (maison / "config").c_str(), 1);
  setenv("XDG_RUNTIME_DIR", maison.chemin.c_str(), 1);
  char* wm_args[] = {const_cast<char*>("openbox"), nullptr};
  gestionnaire.pid = Lance("openbox", wm_args);
  // The window manager is up once it owns the screen's selection (up to 15 s:
  // a machine busy with a sanitizer build starts it slowly).
  for (int essai = 0; essai < 300; ++essai) {
    if (essai::Lance("xprop -root _NET_SUPPORTING_WM_CHECK").sortie.find("window id") !=
        std::string::npos)
      return "";
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  return "openbox ne démarre pas sur " + display;
}

}  // namespace

const std::string& Ecran() {
  static const std::string raison = Demarre();
  return raison;
}

}  // namespace essai_bureau

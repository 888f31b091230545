// What the tests of the built programs share (app, cups, hote, composant, printing):
// a program run as a user runs it, a temporary folder, the Qt application.
#pragma once

#include <sys/wait.h>

#include <QApplication>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace essai {

// A fresh folder under /tmp, removed with everything in it at the end.
struct Dossier {
  Dossier() = default;
  Dossier(const Dossier&) = delete;
  ~Dossier() { std::filesystem::remove_all(chemin, ignore); }
  std::string operator/(const std::string& nom) const { return chemin + "/" + nom; }

  char modele[24] = "/tmp/vesko-essai-XXXXXX";
  std::string chemin = mkdtemp(modele);
  std::error_code ignore;
};

// The developer's own settings never reach a test: this program's HOME, XDG
// folders and print-client configuration (~/.cups/lpoptions with its default
// printer, client.conf, /etc/cups) are empty folders of its own, no store or
// journal is named by the environment, and no print server answers until a
// test starts its private one (serveur_cups.h). Done
// once, before main, for the program and every command it runs.
inline void MaisonPrivee() {
  static const Dossier maison;
  static const bool faite = [] {
    std::filesystem::create_directories(maison / "cups");
    setenv("HOME", maison.chemin.c_str(), 1);
    setenv("XDG_CONFIG_HOME", (maison / "config").c_str(), 1);
    setenv("XDG_DATA_HOME", (maison / "data").c_str(), 1);
    setenv("XDG_CACHE_HOME", (maison / "cache").c_str(), 1);
    setenv("CUPS_SERVERROOT", (maison / "cups").c_str(), 1);
    setenv("CUPS_SERVER", (maison / "aucun-serveur.sock").c_str(), 1);
    unsetenv("PRINTER");
    unsetenv("LPDEST");
    unsetenv("VESKO_DB");
    unsetenv("VESKO_JOURNAL");
    return true;
  }();
  (void)faite;
}
inline const bool maison_privee = (MaisonPrivee(), true);

inline std::string Lit(const std::string& chemin) {
  std::ifstream flux(chemin, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(flux), {});
}

struct Resultat {
  int statut = -1;
  std::string sortie, erreurs;
};

// Runs a shell command with nothing on its standard input.
inline Resultat Lance(const std::string& commande) {
  const Dossier d;
  const int brut = std::system(
      (commande + " >'" + (d / "out") + "' 2>'" + (d / "err") + "' </dev/null").c_str());
  return {WIFEXITED(brut) ? WEXITSTATUS(brut) : -1, Lit(d / "out"), Lit(d / "err")};
}

// `vesko <arguments>`, the arguments already quoted for the shell.
inline Resultat Vesko(const std::string& arguments) {
  return Lance(VESKO_BINARY_DIR "/vesko " + arguments);
}

// Widgets, the print dialog and QPdfWriter need one, made once per program.
inline QApplication& Application() {
  MaisonPrivee();
  static int argc = 1;
  static char nom[] = "essai", *argv[] = {nom, nullptr};
  static auto* application = new QApplication(argc, argv);
  return *application;
}

}  // namespace essai

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
  static int argc = 1;
  static char nom[] = "essai", *argv[] = {nom, nullptr};
  static auto* application = new QApplication(argc, argv);
  return *application;
}

}  // namespace essai

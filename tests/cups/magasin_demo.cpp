#include "tests/cups/magasin_demo.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <regex>
#include <sstream>

#include "tests/cups/serveur_cups.h"

namespace essai_demo {

namespace fs = std::filesystem;

Dossier::Dossier() {
  char modele[] = "/tmp/vesko-essai-XXXXXX";
  chemin_ = mkdtemp(modele);
}

Dossier::~Dossier() {
  std::error_code ignore;
  fs::remove_all(chemin_, ignore);
}

Resultat Vesko(const std::string& arguments) {
  // Qt warns on standard error when the session has no runtime folder (a
  // root shell, CI): the commands get one of their own.
  static Dossier execution;
  if (std::getenv("XDG_RUNTIME_DIR") == nullptr) {
    setenv("XDG_RUNTIME_DIR", (execution / "").c_str(), 1);
  }
  Dossier sorties;
  const std::string commande = std::string(VESKO_BINARY_DIR) + "/vesko " + arguments + " >" +
                               (sorties / "out") + " 2>" + (sorties / "err") + " </dev/null";
  const int brut = std::system(commande.c_str());
  Resultat r;
  r.statut = WIFEXITED(brut) ? WEXITSTATUS(brut) : -1;
  r.sortie = essai_cups::Lit(sorties / "out");
  r.erreurs = essai_cups::Lit(sorties / "err");
  return r;
}

const std::string& Base() {
  static Dossier dossier;
  static const std::string base = [] {
    const std::string chemin = dossier / "demo.vesko";
    if (Vesko("init --db '" + chemin + "'").statut != 0) return std::string();
    const std::string sources = std::string(VESKO_SOURCE_DIR) + "/demo/*.json";
    if (Vesko("import --db '" + chemin + "' " + sources).statut != 0) return std::string();
    return chemin;
  }();
  return base;
}

std::vector<std::string> LignesDeMots(const std::string& texte) {
  std::vector<std::string> lignes;
  std::istringstream flux(std::regex_replace(texte, std::regex("\f"), "\n\f\n"));
  for (std::string l; std::getline(flux, l);) {
    if (l == "\f") {
      lignes.push_back(l);
      continue;
    }
    std::istringstream mots(l);
    std::string ligne;
    for (std::string mot; mots >> mot;) ligne += (ligne.empty() ? "" : " ") + mot;
    if (!ligne.empty()) lignes.push_back(ligne);
  }
  if (!lignes.empty() && lignes.back() == "\f") lignes.pop_back();
  return lignes;
}

}  // namespace essai_demo

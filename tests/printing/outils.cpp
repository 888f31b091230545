#include "tests/printing/outils.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QGuiApplication>
#include <filesystem>
#include <memory>

namespace essai {

namespace fs = std::filesystem;

namespace {

// One QGuiApplication for the whole program: fonts, QPdfWriter, QPrinter and
// QImage text need it. Made before the first test, destroyed after the last.
class ApplicationQt : public ::testing::Environment {
  void SetUp() override {
    if (QGuiApplication::instance() == nullptr)
      application_ = std::make_unique<QGuiApplication>(argc_, argv_);
  }
  void TearDown() override { application_.reset(); }

  int argc_ = 1;
  char nom_[16] = "test_printing";
  char* argv_[2] = {nom_, nullptr};
  std::unique_ptr<QGuiApplication> application_;
};

[[maybe_unused]] ::testing::Environment* const environnement =
    ::testing::AddGlobalTestEnvironment(new ApplicationQt);

}  // namespace

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
  char tampon[4096];
  for (size_t lus; flux && (lus = fread(tampon, 1, sizeof tampon, flux)) > 0;)
    sortie.append(tampon, lus);
  const int fin = flux ? pclose(flux) : -1;
  if (statut) *statut = fin != -1 && WIFEXITED(fin) ? WEXITSTATUS(fin) : -1;
  return sortie;
}

}  // namespace essai

// Outputs written whole or not at all: the check of a PDF's ends, and the
// temporary file that is renamed into place or removed.
#include "printing/sortie_sure.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tests/app/programmes.h"

namespace {

namespace fs = std::filesystem;

std::string Erreur(const std::function<void()>& f) {
  try {
    f();
  } catch (const std::runtime_error& e) {
    return e.what();
  }
  return "";
}

TEST(SortieSure, APdfIsWholeOnlyWithItsHeaderAndItsTrailer) {
  const essai::Dossier d;
  const struct {
    std::string contenu, raison;
  } cas[] = {
      {"%PDF-1.4\n...\n%%EOF\n", ""},
      {"%PDF-1.4\n...\n%%EOF", ""},
      {"", "fichier vide"},
      {"<html>%%EOF", "ce n'est pas un PDF"},
      {"%PDF-1.4\n...\nstartxref\n1234", "sa fin « %%EOF » manque"},
      {"%PDF-1.4\n%%EOF\n1 0 obj", "sa fin « %%EOF » manque"},
  };
  for (const auto& c : cas) {
    std::ofstream(d / "t.pdf", std::ios::binary) << c.contenu;
    const std::string e = Erreur([&] { printing::VerifiePdf(d / "t.pdf", "cible.pdf"); });
    if (c.raison.empty()) {
      EXPECT_EQ(e, "") << c.contenu;
    } else {
      EXPECT_EQ(e, "le document destiné à « cible.pdf » est incomplet (" + c.raison +
                       ") ; il n'a pas été utilisé.")
          << c.contenu;
    }
  }
}

TEST(SortieSure, TheTemporaryFileReplacesTheTargetOrVanishes) {
  const essai::Dossier d;
  std::ofstream(d / "c.txt") << "ancien";
  {
    printing::FichierProvisoire f(d / "c.txt", "fichier texte");
    EXPECT_EQ(fs::path(f.Chemin()).parent_path(), fs::path(d.chemin));
    f.Ecrit("abandonné");
  }
  EXPECT_EQ(essai::Lit(d / "c.txt"), "ancien");
  EXPECT_EQ(std::distance(fs::directory_iterator(d.chemin), {}), 1);

  printing::EcritFichierSur(d / "c.txt", "nouveau");
  EXPECT_EQ(essai::Lit(d / "c.txt"), "nouveau");
  EXPECT_EQ(std::distance(fs::directory_iterator(d.chemin), {}), 1);

  EXPECT_EQ(Erreur([&] { printing::EcritFichierSur(d / "absent/c.txt", "x", "fichier texte"); }),
            "le dossier du fichier texte « " + (d / "absent/c.txt") + " » n'existe pas.");
  EXPECT_EQ(Erreur([&] { printing::EcritFichierSur(d.chemin, "x", "fichier texte"); }),
            "le fichier texte « " + d.chemin + " » est un dossier.");
}

}  // namespace

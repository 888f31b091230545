// `vesko print` of a batch larger than any 16-bit counter: every dossier is
// printed, none is lost to a count that wraps.
#include <gtest/gtest.h>

#include <fstream>

#include "tests/app/programmes.h"

namespace {

// The i-th key of the batch: five characters, as a person's code has.
std::string Cle(long i) {
  static const char kChiffres[] = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
  std::string cle(5, '0');
  for (int position = 4; position >= 0; --position, i /= 36) cle[position] = kChiffres[i % 36];
  return cle;
}

TEST(ImpressionLot, SeventyThousandKeysPrintSeventyThousandDossiers) {
#if defined(__SANITIZE_ADDRESS__)
  // Some 700 MB of text and a few GB of recording: a volume test for the
  // normal build; the sanitizers check the same driver on the small batches.
  GTEST_SKIP() << "lot de 70 000 dossiers : vérifié dans la construction normale";
#endif
  const essai::Dossier dossier;
  const std::string base = dossier / "base.vesko";
  ASSERT_EQ(essai::Vesko("init --db '" + base + "'").statut, 0);
  // 70,000 keys: past 32,767 and past 65,536, where a 16-bit count turns
  // negative or back to a handful. None of them is in the store.
  constexpr long kCles = 70000;
  {
    std::ofstream cles(dossier / "cles.txt");
    for (long i = 1; i <= kCles; ++i) cles << Cle(i) << "\n";
  }
  // The keys on standard input, as a batch job pipes them.
  const essai::Resultat r =
      essai::Lance("{ " VESKO_BINARY_DIR "/vesko print --db '" + base +
                   "' --type AIDANT --date 2024-03-15 --text '" + (dossier / "lot.txt") + "' - <'" +
                   (dossier / "cles.txt") + "'; }");
  ASSERT_EQ(r.statut, 0) << r.erreurs.substr(0, 500);

  // Every dossier starts with its title; the last key is the last person.
  std::ifstream texte(dossier / "lot.txt");  // some 700 MB: read a line at a time
  long dossiers = 0;
  std::string derniere_personne;
  for (std::string ligne; std::getline(texte, ligne);) {
    if (ligne == std::string(17, ' ') + "DOSSIER AIDANT") ++dossiers;
    if (ligne.rfind(Cle(kCles - 1).substr(0, 3), 0) == 0) derniere_personne = ligne;
  }
  EXPECT_EQ(dossiers, kCles);
  EXPECT_EQ(derniere_personne, Cle(kCles) + "  ");
}

}  // namespace

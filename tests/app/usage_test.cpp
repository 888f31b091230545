// The command line speaks French to the user: its help, every wrong usage
// named (status 2), the version, and the print command's own refusals.
#include <gtest/gtest.h>

#include "tests/app/programmes.h"

namespace {

using essai::Resultat;

TEST(Usage, WrongUsagesAreNamedInFrenchWithStatus2) {
  struct Cas {
    std::string arguments, message;
  } const cas[] = {
      {"",
       "vesko : une sous-commande est attendue : init, import, export, select, print, "
       "printers, component, journal. (vesko --help pour l'aide)\n"},
      {"imprime --db b A0001",
       "vesko : sous-commande inconnue « imprime » : init, import, export, select, print, "
       "printers, component, journal. (vesko --help pour l'aide)\n"},
      {"print --type AIDE --pdf a.pdf A0001",
       "vesko : aucune base : --db BASE (un fichier ou postgresql://…) ou la variable "
       "VESKO_DB.\n"},
      {"print --db b --type AIDE --bavard A0001",
       "vesko : option inconnue « --bavard ». (vesko print --help pour l'aide)\n"},
      {"print --db b --type",
       "vesko : l'option --type attend une valeur. (vesko print --help pour l'aide)\n"},
      {"select --db b 'SSELECT TABLES' de trop",
       "vesko : argument inattendu « de trop ». (vesko select --help pour l'aide)\n"},
      {"component",
       "vesko : une sous-commande est attendue : register, unregister, info. "
       "(vesko component --help pour l'aide)\n"},
      {"print --db b --type aide --pdf a.pdf A0001",
       "vesko : type de dossier inconnu « aide » (--type) : AIDE ou AIDANT.\n"},
      {"print --db b --type AIDE --pdf a.pdf --wait A0001",
       "vesko : --wait ne vaut qu'avec une imprimante (--printer FILE).\n"},
      {"print --db b --type AIDE --printer Q --timeout 5 A0001",
       "vesko : --timeout ne vaut qu'avec --wait.\n"},
      {"print --db b --type AIDE --printer Q --wait --timeout cinq A0001",
       "vesko : délai invalide « cinq » (--timeout) : un nombre entier de secondes, au moins "
       "1.\n"},
  };
  for (const Cas& c : cas) {
    SCOPED_TRACE(c.arguments);
    const Resultat r = essai::Vesko(c.arguments);
    EXPECT_EQ(r.statut, 2);
    EXPECT_EQ(r.erreurs, c.message);
  }
}

TEST(Usage, HelpAndVersionAreFrenchAndWrittenOnStandardOutput) {
  const Resultat aide = essai::Vesko("print --help");
  EXPECT_EQ(aide.statut, 0);
  EXPECT_EQ(aide.sortie.rfind("Imprime les dossiers des personnes données\nUtilisation : ", 0), 0u)
      << aide.sortie;
  for (const char* anglais : {"Usage", "REQUIRED", "Positionals", "Print this help"})
    EXPECT_EQ(aide.sortie.find(anglais), std::string::npos) << anglais << "\n" << aide.sortie;
  EXPECT_NE(aide.sortie.find("Affiche cette aide et quitte"), std::string::npos);
  const Resultat general = essai::Vesko("--help");
  EXPECT_NE(general.sortie.find("Sous-commandes:"), std::string::npos) << general.sortie;
  EXPECT_NE(general.sortie.find("printers"), std::string::npos);

  const Resultat version = essai::Vesko("--version");
  EXPECT_EQ(version.statut, 0);
  EXPECT_TRUE(version.sortie.rfind("vesko ", 0) == 0 && version.sortie.back() == '\n')
      << version.sortie;
}

// No key is a mistake, as lp without a file is; "--pdf -" gives the PDF on
// standard output and nothing else there.
TEST(Usage, NoKeyIsRefusedAndPdfDashWritesTheDocumentToStandardOutput) {
  const essai::Dossier dossier;
  const std::string base = dossier / "base.vesko";
  ASSERT_EQ(essai::Vesko("init --db '" + base + "'").statut, 0);
  const std::string print = "print --db '" + base + "' --type AIDE --pdf - ";
  Resultat r = essai::Lance("printf '\\n\\n' | " VESKO_BINARY_DIR "/vesko " + print + "-");
  EXPECT_EQ(r.statut, 2);
  EXPECT_EQ(r.erreurs,
            "vesko : aucune clé : donnez les clés des personnes, ou - pour les lire "
            "sur l'entrée standard.\n");

  // Its temporary copy goes to the test's folder, and must not stay there.
  r = essai::Lance("TMPDIR='" + dossier.chemin + "' " VESKO_BINARY_DIR "/vesko " + print + "A0001");
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  EXPECT_EQ(r.erreurs,
            "vesko : la fiche « A0001 » est absente du fichier CIVILAIDE : son dossier "
            "est imprimé vide.\n");
  EXPECT_EQ(r.sortie.rfind("%PDF-", 0), 0u);
  std::ofstream(dossier / "sortie.pdf", std::ios::binary) << r.sortie;
  EXPECT_NE(
      essai::Lance("pdftotext -l 1 '" + (dossier / "sortie.pdf") + "' -").sortie.find("ETAT CIVIL"),
      std::string::npos);
  EXPECT_EQ(essai::Lance("ls '" + dossier.chemin + "' | grep -c vesko-sortie-").sortie, "0\n")
      << "le PDF temporaire est resté";
  // The journal says where the dossier went, not the temporary file's name.
  const Resultat journal = essai::Vesko("journal --db '" + base + "'");
  EXPECT_NE(journal.sortie.find(" · PDF sur la sortie standard · "), std::string::npos)
      << journal.sortie;
}

}  // namespace

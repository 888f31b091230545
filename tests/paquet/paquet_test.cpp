// The Debian package as a user gets it: `cpack -G DEB` in the build folder,
// the package's contents and dependencies, then the package unpacked into a
// scratch root (dpkg-deb -x) whose programs run and print from there.
#include <gtest/gtest.h>

#include <regex>

#include "tests/app/programmes.h"

namespace {

using essai::Lance;

TEST(Paquet, TheDebianPackageHoldsEverythingAndItsUnpackedProgramsPrint) {
  const essai::Dossier dossier;
  const essai::Resultat cpack =
      Lance("cd " VESKO_BINARY_DIR " && cpack -G DEB -B '" + (dossier / "paquets") + "'");
  ASSERT_EQ(cpack.statut, 0) << cpack.sortie << cpack.erreurs;
  const std::string liste = Lance("ls '" + (dossier / "paquets") + "'/*.deb").sortie;
  ASSERT_FALSE(liste.empty()) << cpack.sortie;
  const std::string deb = liste.substr(0, liste.find('\n'));

  const std::string infos = Lance("dpkg-deb -f '" + deb + "' Package Depends").sortie;
  EXPECT_NE(infos.find("Package: vesko\n"), std::string::npos) << infos;
  for (const char* dependance :
       {"fonts-liberation", "libqt6printsupport6", "libcups2", "libsqlite3"})
    EXPECT_NE(infos.find(dependance), std::string::npos) << dependance << "\n" << infos;

  const std::string contenu = Lance("dpkg-deb -c '" + deb + "'").sortie;
  for (const char* fichier :
       {"./usr/bin/vesko\n", "./usr/bin/vesko-gui\n", "./usr/lib/libvesko.so.0.1\n",
        "./usr/lib/vesko/plugins/libvesko_controle.so\n",
        "./usr/include/vesko/control/ctr_vesko.h\n", "./usr/lib/cmake/Vesko/VeskoConfig.cmake\n",
        "./usr/lib/pkgconfig/vesko.pc\n", "./usr/share/applications/vesko-gui.desktop\n",
        "./usr/share/man/man1/vesko.1.gz\n", "./usr/share/man/man1/vesko-gui.1.gz\n",
        "./usr/share/bash-completion/completions/vesko\n"})
    EXPECT_TRUE(std::regex_search(contenu, std::regex(std::string(" ") + fichier)))
        << fichier << "\n"
        << contenu;

  const std::string racine = dossier / "racine";
  ASSERT_EQ(Lance("dpkg-deb -x '" + deb + "' '" + racine + "'").statut, 0);
  const std::string vesko = racine + "/usr/bin/vesko";
  const essai::Resultat version = Lance("'" + vesko + "' --version");
  EXPECT_EQ(version.statut, 0);
  EXPECT_EQ(version.sortie.rfind("vesko ", 0), 0u) << version.sortie;

  const std::string base = dossier / "demo.vesko", pdf = dossier / "demo.pdf";
  ASSERT_EQ(Lance("'" + vesko + "' init --db '" + base + "' && '" + vesko + "' import --db '" +
                  base + "' " VESKO_SOURCE_DIR "/demo/*.json")
                .statut,
            0);
  const essai::Resultat print = Lance("QT_QPA_PLATFORM=offscreen '" + vesko + "' print --db '" +
                                      base + "' --type AIDE --pdf '" + pdf + "' A0001");
  ASSERT_EQ(print.statut, 0) << print.erreurs;
  EXPECT_NE(Lance("pdftotext -l 1 '" + pdf + "' -").sortie.find("A0001 MARTIN Jeanne"),
            std::string::npos);
  // The unpacked plugin finds the unpacked libvesko.
  const essai::Resultat info = Lance("'" + vesko + "' component info");
  EXPECT_EQ(info.statut, 0) << info.erreurs;
  EXPECT_NE(info.sortie.find("Plugin      : " + racine + "/usr/lib/vesko/plugins/"),
            std::string::npos)
      << info.sortie;
  EXPECT_EQ(
      Lance("pkg-config --define-prefix --modversion '" + racine + "/usr/lib/pkgconfig/vesko.pc'")
          .statut,
      0);
}

// Registered from an installed tree, the plugin's copy loads (its libvesko
// beside it); registered again elsewhere, the first copy goes.
TEST(Paquet, RegisterFromAnInstallChecksTheCopyLoadsAndReplacesTheFormerOne) {
  const essai::Dossier dossier;
  const std::string prefixe = dossier / "prefixe";
  ASSERT_EQ(Lance("cmake --install " VESKO_BINARY_DIR " --prefix '" + prefixe + "'").statut, 0);
  auto vesko = [&](const std::string& arguments) {
    return Lance("XDG_CONFIG_HOME='" + (dossier / "config") + "' XDG_DATA_HOME='" +
                 (dossier / "data") + "' '" + prefixe + "/bin/vesko' component " + arguments);
  };
  essai::Resultat r = vesko("register --dir '" + (dossier / "un") + "'");
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  EXPECT_EQ(Lance("cd '" + (dossier / "un") + "' && ls").sortie,
            "libvesko.so.0\nlibvesko_controle.so\n");
  r = vesko("register --dir '" + (dossier / "deux") + "'");
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  EXPECT_NE(r.sortie.find("Ancienne copie retirée : " + (dossier / "un") + "/libvesko_controle.so"),
            std::string::npos)
      << r.sortie;
  EXPECT_EQ(Lance("ls '" + (dossier / "un") + "'").sortie, "");
  // A copy that cannot load is refused and removed: nothing is registered.
  const std::string seul = dossier / "seul.so";
  std::filesystem::copy_file(prefixe + "/lib/vesko/plugins/libvesko_controle.so", seul);
  r = vesko("register --plugin '" + seul + "' --dir '" + (dossier / "trois") + "'");
  EXPECT_EQ(r.statut, 1);
  EXPECT_NE(r.erreurs.find("ne se charge pas : rien n'a été enregistré"), std::string::npos)
      << r.erreurs;
  EXPECT_FALSE(std::filesystem::exists(dossier / "trois/libvesko_controle.so"));
  EXPECT_NE(vesko("info").sortie.find("Enregistré  : oui, " + (dossier / "deux")),
            std::string::npos);
}

}  // namespace

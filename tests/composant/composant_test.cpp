// The control as a host that links nothing but Qt meets it: the plugin
// loaded at run time, its class object, and `vesko component`.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <QApplication>
#include <QLabel>
#include <QPluginLoader>
#include <QPointer>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "component/fabrique.h"

namespace {

namespace fs = std::filesystem;

const char* const kPlugin = VESKO_BINARY_DIR "/plugins/libvesko_controle.so";

struct Resultat {
  int statut = -1;
  std::string sortie;
};

Resultat Lance(const std::string& commande) {
  Resultat r;
  FILE* flux = popen((commande + " 2>&1").c_str(), "r");
  char tampon[4096];
  for (size_t lus; (lus = fread(tampon, 1, sizeof tampon, flux)) > 0;) r.sortie.append(tampon, lus);
  const int fin = pclose(flux);
  r.statut = WIFEXITED(fin) ? WEXITSTATUS(fin) : -1;
  return r;
}

TEST(Composant, ThePluginsClassObjectMakesControlsShowingTheirCaption) {
  int argc = 1;
  char nom[] = "test_composant";
  char* argv[] = {nom, nullptr};
  QApplication application(argc, argv);

  QPluginLoader chargeur(QString::fromUtf8(kPlugin));
  auto* fabrique = qobject_cast<FabriqueControle*>(chargeur.instance());
  ASSERT_NE(fabrique, nullptr) << chargeur.errorString().toStdString();
  EXPECT_TRUE(fabrique->PeutDecharger());

  QWidget formulaire;
  QPointer<QWidget> controle = fabrique->Cree(&formulaire);
  ASSERT_NE(controle, nullptr);
  EXPECT_EQ(controle->parent(), &formulaire);
  EXPECT_STREQ(controle->metaObject()->className(), "Ctr_Vesko");
  auto* legende = controle->findChild<QLabel*>("Etq_Edition");
  ASSERT_NE(legende, nullptr);
  EXPECT_EQ(legende->text(), "Edition de la fiche");
  EXPECT_FALSE(fabrique->PeutDecharger());

  std::unique_ptr<QWidget> seul(fabrique->Cree(nullptr));
  delete controle;
  EXPECT_FALSE(fabrique->PeutDecharger());
  seul.reset();
  EXPECT_TRUE(fabrique->PeutDecharger());
  EXPECT_TRUE(chargeur.unload());
}

TEST(Composant, RegisterInstallsThePluginInfoDescribesItUnregisterRemovesIt) {
  char modele[] = "/tmp/vesko-composant-XXXXXX";
  const std::string dossier = mkdtemp(modele);
  // The user's folders of this test only: the register and the plugins.
  const std::string vesko = "XDG_CONFIG_HOME='" + dossier + "/config' XDG_DATA_HOME='" + dossier +
                            "/data' XDG_RUNTIME_DIR='" + dossier + "' " VESKO_BINARY_DIR "/vesko";
  const std::string installe = dossier + "/data/vesko/plugins/libvesko_controle.so";

  Resultat r = Lance(vesko + " component info");
  ASSERT_EQ(r.statut, 0) << r.sortie;
  EXPECT_NE(r.sortie.find("Composant   : Ctr_Vesko (Edition de la fiche)\n"), std::string::npos)
      << r.sortie;
  EXPECT_NE(r.sortie.find("Enregistré  : non\n"), std::string::npos);
  EXPECT_NE(r.sortie.find("Membres publiés (45, dans l'ordre des slots) :\n"
                          "  1. TheClient (propriété) : Client As Client\n"
                          "  2. TheDatabase (propriété) : Base As Base\n"
                          "  3. Edition (procédure) : W_TabDyn As TabDyn, W_Type As Texte\n"),
            std::string::npos)
      << r.sortie;
  EXPECT_NE(r.sortie.find("  43. Cadre (procédure) : W_PointDepart As Monnaie, W_Nbligne As "
                          "Entier32, W_TailleCol As TabDyn\n  44. ImprimeDonnées (procédure) : "
                          "W_Code As Texte\n  45. Remplir_Liste_Tache (procédure)\n"),
            std::string::npos)
      << r.sortie;

  r = Lance(vesko + " component register");
  ASSERT_EQ(r.statut, 0) << r.sortie;
  EXPECT_EQ(r.sortie, "Composant Ctr_Vesko enregistré : " + installe + "\n");
  EXPECT_TRUE(fs::exists(installe));
  r = Lance(vesko + " component info");
  EXPECT_NE(r.sortie.find("Plugin      : " + installe + "\nEnregistré  : oui, " + installe),
            std::string::npos)
      << r.sortie;

  r = Lance(vesko + " component unregister");
  EXPECT_EQ(r.statut, 0);
  EXPECT_EQ(r.sortie, "Composant Ctr_Vesko retiré : " + installe + "\n");
  EXPECT_FALSE(fs::exists(installe));
  r = Lance(vesko + " component unregister");
  EXPECT_EQ(r.sortie, "Le composant Ctr_Vesko n'était pas enregistré.\n");

  // A file that is not the component is refused, by name.
  r = Lance(vesko + " component register --plugin /bin/sh");
  EXPECT_EQ(r.statut, 1);
  EXPECT_EQ(r.sortie,
            "vesko : « /bin/sh » n'est pas le composant Vesko (interface "
            "fr.vesko.FabriqueControle/1.0 attendue).\n");
  fs::remove_all(dossier);
}

}  // namespace

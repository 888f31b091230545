// The control as a host that links nothing but Qt meets it: the plugin
// loaded at run time, its class object, and `vesko component`.
#include <gtest/gtest.h>

#include <QPluginLoader>
#include <QWidget>

#include "component/fabrique.h"
#include "tests/app/programmes.h"

namespace {

TEST(Composant, ThePluginsClassObjectMakesControlsAndIsUnloadedOnlyOnceTheyAreGone) {
  essai::Application();
  QPluginLoader chargeur(QStringLiteral(VESKO_BINARY_DIR "/plugins/libvesko_controle.so"));
  auto* fabrique = qobject_cast<FabriqueControle*>(chargeur.instance());
  ASSERT_NE(fabrique, nullptr) << chargeur.errorString().toStdString();

  QWidget formulaire;
  QWidget* controle = fabrique->Cree(&formulaire);
  ASSERT_NE(controle, nullptr);
  EXPECT_EQ(controle->parent(), &formulaire);
  EXPECT_STREQ(controle->metaObject()->className(), "Ctr_Vesko");
  EXPECT_FALSE(fabrique->PeutDecharger());
  delete controle;
  EXPECT_TRUE(fabrique->PeutDecharger());
  EXPECT_TRUE(chargeur.unload());
}

TEST(Composant, RegisterInstallsThePluginInfoDescribesItUnregisterRemovesIt) {
  const essai::Dossier dossier;
  // The user's folders of this test only: the register and the plugins.
  auto vesko = [&](const std::string& arguments) {
    return essai::Lance("XDG_CONFIG_HOME='" + (dossier / "config") + "' XDG_DATA_HOME='" +
                        (dossier / "data") + "' " VESKO_BINARY_DIR "/vesko component " + arguments);
  };
  const std::string installe = dossier / "data/vesko/plugins/libvesko_controle.so";

  essai::Resultat r = vesko("info");
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  for (const char* attendu : {"Composant   : Ctr_Vesko (Edition de la fiche)\n",
                              "Enregistré  : non\nMembres publiés (46, dans l'ordre des slots) :\n"
                              "  1. TheClient (propriété) : Client As Client\n",
                              "  43. Cadre (procédure) : W_PointDepart As Monnaie, W_Nbligne As "
                              "Entier32, W_TailleCol As TabDyn\n"})
    EXPECT_NE(r.sortie.find(attendu), std::string::npos) << attendu << "\ndans\n" << r.sortie;

  r = vesko("register");
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  EXPECT_EQ(r.sortie, "Composant Ctr_Vesko enregistré : " + installe + "\n");
  EXPECT_TRUE(std::filesystem::exists(installe));
  EXPECT_NE(
      vesko("info").sortie.find("Plugin      : " + installe + "\nEnregistré  : oui, " + installe),
      std::string::npos);

  r = vesko("unregister");
  EXPECT_EQ(r.statut, 0);
  EXPECT_EQ(r.sortie, "Composant Ctr_Vesko retiré : " + installe + "\n");
  EXPECT_FALSE(std::filesystem::exists(installe));

  // A file that is not the component is refused, by name.
  r = vesko("register --plugin /bin/sh");
  EXPECT_EQ(r.statut, 1);
  EXPECT_EQ(r.erreurs,
            "vesko : « /bin/sh » n'est pas le composant Vesko (interface "
            "fr.vesko.FabriqueControle/1.0 attendue).\n");
}

}  // namespace

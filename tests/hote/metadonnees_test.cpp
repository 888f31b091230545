// What a host reads about the control from its plugin, without loading its
// code. `vesko component info` prints the members' kinds and parameters from
// the same metadata (tests/composant); here, that every published member is
// there, in slot order, and that reading it loads nothing.
#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QPluginLoader>

#include "component/fabrique.h"
#include "control/interface.h"

TEST(MetadonneesDuPlugin, NameTheControlAndListItsMembersInSlotOrderWithoutLoadingIt) {
  QPluginLoader chargeur(QStringLiteral(VESKO_BINARY_DIR "/plugins/libvesko_controle.so"));
  const QJsonObject tout = chargeur.metaData();
  ASSERT_FALSE(tout.isEmpty()) << chargeur.errorString().toStdString();
  EXPECT_FALSE(chargeur.isLoaded());
  EXPECT_EQ(tout.value("IID").toString(), FabriqueControle_iid);
  const QJsonObject meta = tout.value("MetaData").toObject();
  EXPECT_EQ(meta.value("classe").toString(), "Ctr_Vesko");
  EXPECT_EQ(meta.value("legende").toString(), "Edition de la fiche");
  const QJsonArray publies = meta.value("interface").toArray();
  const auto& membres = interface_vesko::Membres();
  ASSERT_EQ(publies.size(), static_cast<qsizetype>(membres.size()));
  for (qsizetype i = 0; i < publies.size(); ++i) {
    const QJsonObject m = publies[i].toObject();
    EXPECT_EQ(m.value("slot").toInt(), i + 1);
    EXPECT_EQ(m.value("nom").toString().toStdString(), membres[static_cast<size_t>(i)].nom);
  }
  EXPECT_EQ(meta.value("prives").toArray().size(),
            static_cast<qsizetype>(interface_vesko::MembresPrives().size()));
}

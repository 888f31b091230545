// What a host reads about the control from its plugin, without loading its
// code, is the control's published interface.
#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QPluginLoader>

#include "component/fabrique.h"
#include "control/interface.h"

namespace {

// The members as published, in slot order, with their parameters.
void Verifie(const QJsonArray& publies, const std::vector<interface_vesko::Membre>& membres) {
  ASSERT_EQ(publies.size(), static_cast<qsizetype>(membres.size()));
  for (size_t i = 0; i < membres.size(); ++i) {
    const QJsonObject m = publies[static_cast<qsizetype>(i)].toObject();
    const interface_vesko::Membre& attendu = membres[i];
    SCOPED_TRACE(attendu.nom);
    EXPECT_EQ(m.value("slot").toInt(), attendu.slot);
    EXPECT_EQ(m.value("nom").toString().toStdString(), attendu.nom);
    EXPECT_EQ(m.value("genre").toString(),
              attendu.genre == interface_vesko::Genre::Propriete ? "propriété" : "procédure");
    const QJsonArray parametres = m.value("parametres").toArray();
    ASSERT_EQ(parametres.size(), static_cast<qsizetype>(attendu.parametres.size()));
    for (size_t p = 0; p < attendu.parametres.size(); ++p) {
      const QJsonObject param = parametres[static_cast<qsizetype>(p)].toObject();
      EXPECT_EQ(param.value("nom").toString().toStdString(), attendu.parametres[p].nom);
      EXPECT_EQ(param.value("type").toString().toStdString(), attendu.parametres[p].type);
    }
  }
}

TEST(MetadonneesDuPlugin, ListTheInterfaceInSlotOrderWithItsParameters) {
  QPluginLoader chargeur(QStringLiteral(VESKO_BINARY_DIR "/plugins/libvesko_controle.so"));
  const QJsonObject tout = chargeur.metaData();
  ASSERT_FALSE(tout.isEmpty()) << chargeur.errorString().toStdString();
  EXPECT_FALSE(chargeur.isLoaded());
  EXPECT_EQ(tout.value("IID").toString(), FabriqueControle_iid);
  const QJsonObject meta = tout.value("MetaData").toObject();
  EXPECT_EQ(meta.value("classe").toString(), "Ctr_Vesko");
  EXPECT_EQ(meta.value("legende").toString(), "Edition de la fiche");
  Verifie(meta.value("interface").toArray(), interface_vesko::Membres());
  Verifie(meta.value("prives").toArray(), interface_vesko::MembresPrives());
  // The one name moc could not take, kept exactly.
  EXPECT_EQ(meta.value("interface").toArray()[43].toObject().value("nom").toString(),
            QString::fromUtf8("ImprimeDonnées"));
}

}  // namespace

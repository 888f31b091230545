// Where the Vesko component is registered on this machine, for the hosts that
// load it at run time: `vesko component register` copies the plugin into a
// folder of plugins and writes its path here; `unregister` removes both.
//
// The register is the user's settings file Vesko/composants (on Linux
// $XDG_CONFIG_HOME/Vesko/composants.ini), one group per class:
//
//   [Ctr_Vesko]
//   chemin=/home/…/.local/share/vesko/plugins/libvesko_controle.so
//   iid=fr.vesko.FabriqueControle/1.0
//   version=0.1
//
// Header only: hosts read it without linking anything but Qt.
#pragma once

#include <QSettings>
#include <QString>
#include <optional>

namespace vesko_composant {

inline const QString kClasse = QStringLiteral("Ctr_Vesko");

struct Inscription {
  QString chemin;   // the plugin file
  QString iid;      // the interface it implements
  QString version;  // the control's version
};

inline QSettings Registre() {
  return QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Vesko"),
                   QStringLiteral("composants"));
}

// The registered plugin of the control, if any.
inline std::optional<Inscription> Inscrit() {
  QSettings registre = Registre();
  registre.beginGroup(kClasse);
  if (!registre.contains(QStringLiteral("chemin"))) return std::nullopt;
  return Inscription{registre.value(QStringLiteral("chemin")).toString(),
                     registre.value(QStringLiteral("iid")).toString(),
                     registre.value(QStringLiteral("version")).toString()};
}

inline void Inscris(const Inscription& inscription) {
  QSettings registre = Registre();
  registre.beginGroup(kClasse);
  registre.setValue(QStringLiteral("chemin"), inscription.chemin);
  registre.setValue(QStringLiteral("iid"), inscription.iid);
  registre.setValue(QStringLiteral("version"), inscription.version);
  registre.endGroup();
  registre.sync();
}

inline void Desinscris() {
  QSettings registre = Registre();
  registre.remove(kClasse);
  registre.sync();
}

}  // namespace vesko_composant

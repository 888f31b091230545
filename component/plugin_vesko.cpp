#include "component/plugin_vesko.h"

#include "control/ctr_vesko.h"

QWidget* PluginVesko::Cree(QWidget* parent) {
  auto* controle = new Ctr_Vesko(parent);
  ++vivants_;
  connect(controle, &QObject::destroyed, this, [this] { --vivants_; });
  return controle;
}

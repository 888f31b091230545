// The Vesko plugin: the class object of Ctr_Vesko for hosts that load the
// control at run time.
#pragma once

#include <QObject>

#include "component/fabrique.h"

class PluginVesko : public QObject, public FabriqueControle {
  Q_OBJECT
  Q_PLUGIN_METADATA(IID FabriqueControle_iid FILE "vesko_controle.json")
  Q_INTERFACES(FabriqueControle)

 public:
  QWidget* Cree(QWidget* parent) override;
  bool PeutDecharger() const override { return vivants_ == 0; }

 private:
  int vivants_ = 0;
};

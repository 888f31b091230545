// The control's class object: what the Vesko plugin gives a host that loads
// it at run time (QPluginLoader). The plugin's metadata (QPluginLoader::
// metaData()["MetaData"]) describes the control: its class, its version and
// its published interface in slot order, generated from the control's own
// interface description, so a host can read it without loading the code.
#pragma once

#include <QtPlugin>

class QWidget;

class FabriqueControle {
 public:
  virtual ~FabriqueControle() = default;

  // A new control (a Ctr_Vesko, which hosts linking libvesko use as such),
  // owned by parent, or by the caller when parent is null.
  virtual QWidget* Cree(QWidget* parent) = 0;
  // Whether no control made by this factory is alive any more, so that the
  // plugin may be unloaded.
  virtual bool PeutDecharger() const = 0;
};

#define FabriqueControle_iid "fr.vesko.FabriqueControle/1.0"
Q_DECLARE_INTERFACE(FabriqueControle, FabriqueControle_iid)

// One open multivalue file.
#pragma once

#include <memory>
#include <string>

#include "marbrel/store.h"
#include "marbrel/tabdyn.h"

namespace marbrel {

class Fichier {
 public:
  // Use Base::Ouvre_Fichier; the store must outlive the file (Base shares it).
  Fichier(std::shared_ptr<Store> store, std::string nom)
      : store_(std::move(store)), nom_(std::move(nom)) {}

  const std::string& Nom() const { return nom_; }

  // The record of the key. An absent key fails with Erreur ERR_CLE_ABSENTE,
  // whose message names the file and the key.
  TabDyn Lit(const std::string& cle) const;
  // Writes (creates or replaces) the record; fails on a read-only store.
  void Ecrit(const std::string& cle, const TabDyn& enregistrement) const;

 private:
  std::shared_ptr<Store> store_;
  std::string nom_;
};

}  // namespace marbrel

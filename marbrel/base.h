// Base: the database object. It opens files by name and runs selections.
#pragma once

#include <memory>
#include <string>

#include "marbrel/fichier.h"
#include "marbrel/liste_selection.h"
#include "marbrel/store.h"

namespace marbrel {

class Base {
 public:
  explicit Base(std::shared_ptr<Store> store) : store_(std::move(store)) {}

  // Opens the embedded store in a SQLite file; lecture_seule is what a print uses.
  static std::shared_ptr<Base> OuvreSqlite(const std::string& chemin, bool lecture_seule);
  // Opens the store named nom: a PostgreSQL address ("postgresql://…") or a
  // SQLite path (see marbrel/magasin.h).
  static std::shared_ptr<Base> Ouvre(const std::string& nom, bool lecture_seule);

  // The named file. A file the store lacks fails with ERR_FICHIER_INCONNU,
  // naming the file.
  std::shared_ptr<Fichier> Ouvre_Fichier(const std::string& nom) const;

  // Runs the command record's sentence and returns the rows in order.
  // commande is the whole text of a command record: attribute 1 the sentence,
  // attribute 2 the file name, attribute 3 the field numbers separated by
  // spaces (0 = the key). The second argument is kept for the hosts' calling
  // convention and must be empty. A syntax error, an unknown file or an
  // unknown field fails with ERR_REQUETE, quoting the sentence and the position.
  Liste_Selection Selectionne(const std::string& commande, const std::string& options = "") const;

  Store& Magasin() const { return *store_; }
  const std::shared_ptr<Store>& MagasinPartage() const { return store_; }

 private:
  std::shared_ptr<Store> store_;
};

}  // namespace marbrel

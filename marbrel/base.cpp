#include "marbrel/base.h"

#include "marbrel/erreur.h"
#include "marbrel/magasin.h"
#include "marbrel/sqlite_store.h"

namespace marbrel {

std::shared_ptr<Base> Base::OuvreSqlite(const std::string& chemin, bool lecture_seule) {
  auto mode = lecture_seule ? SqliteStore::Mode::LectureSeule : SqliteStore::Mode::LectureEcriture;
  return std::make_shared<Base>(std::make_shared<SqliteStore>(chemin, mode));
}

std::shared_ptr<Base> Base::Ouvre(const std::string& nom, bool lecture_seule) {
  return std::make_shared<Base>(
      OuvreMagasin(nom, lecture_seule ? Acces::LectureSeule : Acces::LectureEcriture));
}

std::shared_ptr<Fichier> Base::Ouvre_Fichier(const std::string& nom) const {
  if (!store_->ExisteFichier(nom)) {
    throw Erreur(ERR_FICHIER_INCONNU, "Le fichier " + nom + " n'existe pas dans la base.");
  }
  return std::make_shared<Fichier>(store_, nom);
}

}  // namespace marbrel

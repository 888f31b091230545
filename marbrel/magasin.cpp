#include "marbrel/magasin.h"

#include "marbrel/pg_store.h"
#include "marbrel/sqlite_store.h"

namespace marbrel {

bool EstAdressePostgres(const std::string& nom) {
  return nom.rfind("postgresql://", 0) == 0 || nom.rfind("postgres://", 0) == 0;
}

std::shared_ptr<Store> OuvreMagasin(const std::string& nom, Acces acces) {
  if (EstAdressePostgres(nom)) {
    using Mode = PostgresStore::Mode;
    return std::make_shared<PostgresStore>(nom, acces == Acces::LectureSeule ? Mode::LectureSeule
                                                : acces == Acces::Creation   ? Mode::Creation
                                                                           : Mode::LectureEcriture);
  }
  using Mode = SqliteStore::Mode;
  return std::make_shared<SqliteStore>(nom, acces == Acces::LectureSeule ? Mode::LectureSeule
                                            : acces == Acces::Creation   ? Mode::Creation
                                                                         : Mode::LectureEcriture);
}

std::string NomAffiche(const std::string& nom) {
  if (!EstAdressePostgres(nom)) return nom;
  std::size_t debut = nom.find("://") + 3;
  std::size_t arobase = nom.find('@', debut);
  std::size_t barre = nom.find('/', debut);
  if (arobase == std::string::npos || (barre != std::string::npos && barre < arobase)) return nom;
  std::size_t deux_points = nom.find(':', debut);
  if (deux_points == std::string::npos || deux_points > arobase) return nom;
  return nom.substr(0, deux_points) + ":***" + nom.substr(arobase);
}

}  // namespace marbrel

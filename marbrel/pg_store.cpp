#include "marbrel/pg_store.h"

#include <libpq-fe.h>

#include <cstdlib>
#include <cstring>
#include <exception>

#include "marbrel/erreur.h"
#include "marbrel/magasin.h"
#include "marbrel/pg_connexion.h"

namespace marbrel {

namespace {

// Rows fetched per round trip when walking a file.
constexpr int kPage = 1000;
// A snapshot's cache is dropped past this size and filled again as needed.
constexpr std::size_t kCacheMax = 32u << 20;

// The statements, prepared once per connection in one round trip. Every
// parameter is bytea, sent and received in binary: the bytes as they are.
constexpr const char* kPreparations =
    "PREPARE existe (bytea) AS SELECT 1 FROM fichiers WHERE nom = $1;"
    "PREPARE fichiers AS SELECT nom FROM fichiers ORDER BY nom;"
    "PREPARE lit (bytea, bytea) AS"
    " SELECT texte FROM enregistrements WHERE fichier = $1 AND cle = $2;"
    "PREPARE lit_cle (bytea) AS SELECT fichier, texte FROM enregistrements WHERE cle = $1;"
    "PREPARE page (bytea, bytea) AS SELECT cle, texte FROM enregistrements"
    " WHERE fichier = $1 AND cle >= $2 ORDER BY cle LIMIT 1000;"
    "PREPARE page_suite (bytea, bytea) AS SELECT cle, texte FROM enregistrements"
    " WHERE fichier = $1 AND cle > $2 ORDER BY cle LIMIT 1000;"
    "PREPARE plage (bytea, bytea, bytea) AS SELECT cle, texte FROM enregistrements"
    " WHERE fichier = $1 AND cle >= $2 AND cle < $3 ORDER BY cle LIMIT 1000;"
    "PREPARE plage_suite (bytea, bytea, bytea) AS SELECT cle, texte FROM enregistrements"
    " WHERE fichier = $1 AND cle > $2 AND cle < $3 ORDER BY cle LIMIT 1000;"
    "PREPARE cree_fichier (bytea) AS INSERT INTO fichiers (nom) VALUES ($1)"
    " ON CONFLICT DO NOTHING;"
    "PREPARE ecrit (bytea, bytea, bytea) AS INSERT INTO enregistrements (fichier, cle, texte)"
    " VALUES ($1, $2, $3) ON CONFLICT (fichier, cle) DO UPDATE SET texte = EXCLUDED.texte;"
    "PREPARE supprime (bytea, bytea) AS DELETE FROM enregistrements"
    " WHERE fichier = $1 AND cle = $2;";

constexpr const char* kCreation =
    "CREATE TABLE fichiers (nom bytea PRIMARY KEY);"
    "CREATE TABLE enregistrements ("
    " fichier bytea NOT NULL REFERENCES fichiers (nom),"
    " cle bytea NOT NULL, texte bytea NOT NULL, PRIMARY KEY (fichier, cle));"
    "CREATE INDEX enregistrements_cle ON enregistrements (cle);";

// The smallest byte string greater than every string starting with prefixe,
// or "" when there is none (a prefix made of 0xFF bytes only, or empty).
std::string Successeur(std::string prefixe) {
  while (!prefixe.empty() && static_cast<unsigned char>(prefixe.back()) == 0xFF) {
    prefixe.pop_back();
  }
  if (!prefixe.empty()) prefixe.back() = static_cast<char>(prefixe.back() + 1);
  return prefixe;
}

// The quoted name in a server message ("relation \"fichiers\" does not exist").
std::string EntreGuillemets(const char* message) {
  std::string m = message ? message : "";
  std::size_t debut = m.find('"');
  std::size_t fin = debut == std::string::npos ? debut : m.find('"', debut + 1);
  return fin == std::string::npos ? std::string() : m.substr(debut + 1, fin - debut - 1);
}

std::string Valeur(const char* v) { return v ? v : ""; }

}  // namespace

// A query result that clears itself.
class PostgresStore::Resultat {
 public:
  explicit Resultat(PGresult* r) : r_(r) {}
  ~Resultat() { PQclear(r_); }
  Resultat(Resultat&& autre) noexcept : r_(autre.r_) { autre.r_ = nullptr; }
  Resultat(const Resultat&) = delete;
  Resultat& operator=(const Resultat&) = delete;
  Resultat& operator=(Resultat&&) = delete;

  int Lignes() const { return PQntuples(r_); }
  std::string Octets(int ligne, int colonne) const {
    return std::string(PQgetvalue(r_, ligne, colonne),
                       static_cast<std::size_t>(PQgetlength(r_, ligne, colonne)));
  }
  PGresult* Brut() const { return r_; }

 private:
  PGresult* r_;
};

PostgresStore::PostgresStore(const std::string& adresse, Mode mode)
    : adresse_(adresse), lecture_seule_(mode == Mode::LectureSeule) {
  cx_ = ConnectePostgres(adresse, nom_, role_);
  try {
    if (mode == Mode::Creation) {
      Resultat r = Execute(
          "SELECT to_regclass('fichiers') IS NOT NULL OR to_regclass('enregistrements') IS NOT "
          "NULL",
          "vérification des tables");
      if (Valeur(PQgetvalue(r.Brut(), 0, 0)) == "t") {
        throw Erreur(ERR_BASE, "La " + nom_ +
                                   " contient déjà les tables de Vesko : vesko init ne remplace "
                                   "jamais une base.");
      }
      Execute((std::string("BEGIN;") + kCreation + "COMMIT;").c_str(), "création des tables");
    } else {
      VerifieTables();
    }
    if (lecture_seule_) {
      Execute("SET default_transaction_read_only = on", "passage en lecture seule");
    }
    Execute(kPreparations, "préparation des requêtes");
  } catch (...) {
    PQfinish(cx_);
    cx_ = nullptr;
    throw;
  }
}

PostgresStore::~PostgresStore() { PQfinish(cx_); }

void PostgresStore::VerifieTables() {
  Resultat r = Execute(
      "SELECT to_regclass('fichiers') IS NOT NULL, to_regclass('enregistrements') IS NOT NULL",
      "vérification des tables");
  const char* tables[] = {"fichiers", "enregistrements"};
  for (int i = 0; i < 2; ++i) {
    if (Valeur(PQgetvalue(r.Brut(), 0, i)) != "t") {
      throw Erreur(ERR_BASE, std::string("La table ") + tables[i] + " est absente de la " + nom_ +
                                 " : ce n'est pas une base Vesko (vesko init la crée).");
    }
  }
}

void PostgresStore::Echec(PGresult* r, const std::string& quoi) const {
  const std::string etat = r ? Valeur(PQresultErrorField(r, PG_DIAG_SQLSTATE)) : "";
  const char* message = r ? PQresultErrorField(r, PG_DIAG_MESSAGE_PRIMARY) : nullptr;
  if (PQstatus(cx_) != CONNECTION_OK || etat.rfind("08", 0) == 0 || etat.rfind("57P0", 0) == 0) {
    throw Erreur(ERR_BASE, "Le serveur de la " + nom_ + " ne répond plus (" + quoi + ").");
  }
  if (etat == "42P01") {
    throw Erreur(ERR_BASE, "La table " + EntreGuillemets(message) + " est absente de la " + nom_ +
                               " (" + quoi + ").");
  }
  if (etat == "42501") {
    // "permission denied for table enregistrements", "… for schema public".
    const std::string m = Valeur(message);
    const std::size_t espace = m.rfind(' ');
    const std::string objet = espace == std::string::npos ? "" : m.substr(espace + 1);
    const std::string quoi_refuse = m.find("for schema") != std::string::npos
                                        ? "créer des tables dans le schéma " + objet
                                        : "modifier la table " + objet;
    throw Erreur(ERR_LECTURE_SEULE, "Le rôle « " + role_ + " » n'a pas le droit de " + quoi_refuse +
                                        " de la " + nom_ + " : rien n'a été écrit.");
  }
  if (etat == "25006") {
    throw Erreur(ERR_LECTURE_SEULE, "La " + nom_ + " est ouverte en lecture seule.");
  }
  if (etat == "40001" || etat == "40P01") {
    throw Erreur(ERR_BASE, "Conflit avec une autre écriture dans la " + nom_ + " (" + quoi +
                               ") : rien n'a été écrit, recommencez.");
  }
  throw Erreur(ERR_BASE, "Erreur de la " + nom_ + " (" + quoi + ") : code SQLSTATE " +
                             (etat.empty() ? std::string("inconnu") : etat) + ".");
}

PostgresStore::Resultat PostgresStore::Execute(const char* sql, const char* quoi) {
  ++echanges_;
  Resultat r(PQexec(cx_, sql));
  ExecStatusType s = PQresultStatus(r.Brut());
  if (s != PGRES_COMMAND_OK && s != PGRES_TUPLES_OK) Echec(r.Brut(), quoi);
  return r;
}

PostgresStore::Resultat PostgresStore::ExecutePrepare(
    const char* nom, std::initializer_list<const std::string*> valeurs, const char* quoi) {
  const char* pointeurs[3];
  int longueurs[3];
  int formats[3];
  int n = 0;
  for (const std::string* v : valeurs) {
    pointeurs[n] = v->data();
    longueurs[n] = static_cast<int>(v->size());
    formats[n] = 1;
    ++n;
  }
  ++echanges_;
  Resultat r(PQexecPrepared(cx_, nom, n, pointeurs, longueurs, formats, /*binaire=*/1));
  ExecStatusType s = PQresultStatus(r.Brut());
  if (s != PGRES_COMMAND_OK && s != PGRES_TUPLES_OK) Echec(r.Brut(), quoi);
  return r;
}

void PostgresStore::ExigeEcriture() const {
  if (lecture_seule_) {
    throw Erreur(ERR_LECTURE_SEULE, "La " + nom_ + " est ouverte en lecture seule.");
  }
}

void PostgresStore::ExigeFichier(const std::string& fichier) {
  if (!ExisteFichier(fichier)) {
    throw Erreur(ERR_FICHIER_INCONNU, "Le fichier " + fichier + " n'existe pas dans la base.");
  }
}

bool PostgresStore::ExisteFichier(const std::string& fichier) {
  if (profondeur_instantane_ > 0) {
    if (!fichiers_) {
      auto noms = Fichiers();
      fichiers_ = std::make_unique<std::unordered_set<std::string>>(noms.begin(), noms.end());
    }
    return fichiers_->count(fichier) > 0;
  }
  return ExecutePrepare("existe", {&fichier}, "recherche d'un fichier").Lignes() > 0;
}

std::vector<std::string> PostgresStore::Fichiers() {
  Resultat r = ExecutePrepare("fichiers", {}, "liste des fichiers");
  std::vector<std::string> noms;
  for (int i = 0; i < r.Lignes(); ++i) noms.push_back(r.Octets(i, 0));
  return noms;
}

std::optional<std::string> PostgresStore::Lit(const std::string& fichier, const std::string& cle) {
  if (profondeur_instantane_ == 0) {
    Resultat r = ExecutePrepare("lit", {&fichier, &cle}, "lecture");
    if (r.Lignes() == 0) return std::nullopt;
    return r.Octets(0, 0);
  }
  auto trouve = cache_.find(cle);
  if (trouve == cache_.end()) {
    if (octets_cache_ > kCacheMax) {
      cache_.clear();
      octets_cache_ = 0;
    }
    Resultat r = ExecutePrepare("lit_cle", {&cle}, "lecture");
    std::vector<std::pair<std::string, std::string>> enregistrements;
    for (int i = 0; i < r.Lignes(); ++i) {
      enregistrements.emplace_back(r.Octets(i, 0), r.Octets(i, 1));
      octets_cache_ += enregistrements.back().first.size() + enregistrements.back().second.size();
    }
    octets_cache_ += cle.size();
    trouve = cache_.emplace(cle, std::move(enregistrements)).first;
  }
  for (const auto& [nom, texte] : trouve->second) {
    if (nom == fichier) return texte;
  }
  return std::nullopt;
}

void PostgresStore::Marche(const std::string& fichier, const std::string& prefixe,
                           const Visiteur& visiteur) {
  // Pages follow one another by key; one snapshot keeps them consistent.
  DebutInstantane();
  struct Fin {
    PostgresStore* s;
    ~Fin() { s->FinInstantane(); }
  } fin{this};
  const std::string haute = Successeur(prefixe);
  std::string basse = prefixe;
  bool premiere = true;
  while (true) {
    Resultat r = haute.empty()
                     ? ExecutePrepare(premiere ? "page" : "page_suite", {&fichier, &basse},
                                      "parcours d'un fichier")
                     : ExecutePrepare(premiere ? "plage" : "plage_suite",
                                      {&fichier, &basse, &haute}, "parcours d'un fichier");
    for (int i = 0; i < r.Lignes(); ++i) {
      std::string cle = r.Octets(i, 0);
      // Without an upper bound (a prefix of 0xFF bytes), the walk stops here.
      if (cle.compare(0, prefixe.size(), prefixe) != 0) return;
      ++parcourus_;
      if (!visiteur(cle, r.Octets(i, 1))) return;
      if (i + 1 == r.Lignes()) basse = std::move(cle);
    }
    if (r.Lignes() < kPage) return;
    premiere = false;
  }
}

void PostgresStore::Parcourt(const std::string& fichier, const Visiteur& visiteur) {
  Marche(fichier, "", visiteur);
}

void PostgresStore::ParcourtPrefixe(const std::string& fichier, const std::string& prefixe,
                                    const Visiteur& visiteur) {
  Marche(fichier, prefixe, visiteur);
}

void PostgresStore::CreeFichier(const std::string& fichier) {
  ExigeEcriture();
  ExecutePrepare("cree_fichier", {&fichier}, "création d'un fichier");
  if (fichiers_) fichiers_->insert(fichier);
}

void PostgresStore::Ecrit(const std::string& fichier, const std::string& cle,
                          const std::string& enregistrement) {
  ExigeEcriture();
  ExigeFichier(fichier);
  ExecutePrepare("ecrit", {&fichier, &cle, &enregistrement}, "écriture");
  cache_.erase(cle);
}

void PostgresStore::Supprime(const std::string& fichier, const std::string& cle) {
  ExigeEcriture();
  ExecutePrepare("supprime", {&fichier, &cle}, "suppression");
  cache_.erase(cle);
}

void PostgresStore::EcritLot(const std::string& fichier, const Producteur& suivant) {
  ExigeEcriture();
  ExigeFichier(fichier);
  cache_.clear();
  octets_cache_ = 0;
  // The writes go in a pipeline: a batch of statements is sent, then all
  // their answers are read, one round trip per batch instead of per record.
  // Batches stay small enough that the answers never fill the socket while
  // statements are still being sent.
  constexpr int kLot = 500;
  Transaction([&] {
    if (PQenterPipelineMode(cx_) != 1) Echec(nullptr, "écriture groupée");
    PGresult* erreur = nullptr;
    std::exception_ptr exception;
    std::string cle, texte;
    bool encore = true, envoi_rate = false;
    while (encore && erreur == nullptr && exception == nullptr && !envoi_rate) {
      int envoyes = 0;
      try {
        while (envoyes < kLot && (encore = suivant(cle, texte))) {
          const char* v[3] = {fichier.data(), cle.data(), texte.data()};
          const int l[3] = {static_cast<int>(fichier.size()), static_cast<int>(cle.size()),
                            static_cast<int>(texte.size())};
          const int f[3] = {1, 1, 1};
          if (PQsendQueryPrepared(cx_, "ecrit", 3, v, l, f, 1) != 1) {
            envoi_rate = true;
            break;
          }
          ++envoyes;
        }
      } catch (...) {
        exception = std::current_exception();
      }
      PQpipelineSync(cx_);
      ++echanges_;
      // Every answer up to the synchronisation point, the first error kept.
      int vides = 0;
      while (true) {
        PGresult* r = PQgetResult(cx_);
        if (r == nullptr) {
          if (++vides > 2 && PQstatus(cx_) != CONNECTION_OK) break;
          continue;
        }
        vides = 0;
        ExecStatusType s = PQresultStatus(r);
        if (s == PGRES_PIPELINE_SYNC) {
          PQclear(r);
          break;
        }
        if (s == PGRES_FATAL_ERROR && erreur == nullptr) {
          erreur = r;
        } else {
          PQclear(r);
        }
      }
      if (PQstatus(cx_) != CONNECTION_OK) break;
    }
    PQexitPipelineMode(cx_);
    if (exception) {
      PQclear(erreur);
      std::rethrow_exception(exception);
    }
    if (erreur != nullptr || envoi_rate || PQstatus(cx_) != CONNECTION_OK) {
      Resultat garde(erreur);
      Echec(erreur, "écriture");
    }
  });
}

void PostgresStore::Transaction(const std::function<void()>& f) {
  ExigeEcriture();
  if (profondeur_instantane_ > 0 && profondeur_transaction_ == 0) {
    throw Erreur(ERR_LECTURE_SEULE,
                 "La " + nom_ + " est en cours de lecture (impression) : écriture impossible.");
  }
  if (profondeur_transaction_ > 0) {
    f();
    return;
  }
  Execute("BEGIN", "début de transaction");
  ++profondeur_transaction_;
  try {
    f();
  } catch (...) {
    --profondeur_transaction_;
    if (PQpipelineStatus(cx_) != PQ_PIPELINE_OFF) PQexitPipelineMode(cx_);
    PQclear(PQexec(cx_, "ROLLBACK"));
    cache_.clear();
    octets_cache_ = 0;
    if (fichiers_) fichiers_.reset();
    throw;
  }
  --profondeur_transaction_;
  Resultat r = Execute("COMMIT", "validation");
  // A transaction the server had to abandon answers COMMIT with ROLLBACK.
  if (std::strcmp(PQcmdStatus(r.Brut()), "COMMIT") != 0) {
    throw Erreur(ERR_BASE, "La " + nom_ + " a annulé la transaction : rien n'a été écrit.");
  }
}

void PostgresStore::DebutInstantane() {
  if (profondeur_instantane_ > 0 || profondeur_transaction_ > 0) {
    ++profondeur_instantane_;
    return;
  }
  Execute("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY", "début de lecture");
  ++profondeur_instantane_;
}

void PostgresStore::FinInstantane() {
  if (profondeur_instantane_ == 0 || --profondeur_instantane_ > 0) return;
  cache_.clear();
  octets_cache_ = 0;
  fichiers_.reset();
  if (profondeur_transaction_ == 0 && PQstatus(cx_) == CONNECTION_OK) {
    PQclear(PQexec(cx_, "COMMIT"));
  }
}

}  // namespace marbrel

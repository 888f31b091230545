#include "control/journal_sqlite.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "control/journal_chaine.h"
#include "control/journal_lecture.h"

namespace journal {

namespace {

// The columns of an entry, in the order Lit reads them.
constexpr const char* kColonnes =
    "numero, genre, heure_utc, decalage, utilisateur_systeme, hote, utilisateur, programme, "
    "processus, type, cles, destination, impression, issue, pages, message, avant, "
    "retire_premier, retire_dernier, retire_empreinte, precedent, empreinte";
constexpr int kNombreColonnes = 22;

constexpr const char* kSchema =
    "CREATE TABLE IF NOT EXISTS entrees ("
    " numero INTEGER PRIMARY KEY, genre TEXT NOT NULL, heure_utc TEXT NOT NULL,"
    " decalage TEXT NOT NULL, utilisateur_systeme TEXT NOT NULL, hote TEXT NOT NULL,"
    " utilisateur TEXT NOT NULL, programme TEXT NOT NULL, processus INTEGER NOT NULL,"
    " type TEXT NOT NULL, cles TEXT NOT NULL, destination TEXT NOT NULL,"
    " impression INTEGER NOT NULL, issue TEXT NOT NULL, pages INTEGER NOT NULL,"
    " message TEXT NOT NULL, avant TEXT NOT NULL, retire_premier INTEGER NOT NULL,"
    " retire_dernier INTEGER NOT NULL, retire_empreinte TEXT NOT NULL,"
    " precedent TEXT NOT NULL, empreinte TEXT NOT NULL);"
    "CREATE INDEX IF NOT EXISTS entrees_impression ON entrees (impression);"
    "CREATE INDEX IF NOT EXISTS entrees_heure ON entrees (heure_utc);";

// Why SQLite failed, in French: its own messages are English.
std::string Raison(int code) {
  switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return "le journal est resté occupé par d'autres impressions plus de " +
             std::to_string(JournalSqlite::kAttenteMs / 1000) + " s";
    case SQLITE_READONLY:
      return "le journal ou son dossier est en lecture seule";
    case SQLITE_CANTOPEN:
      return "le fichier ne peut pas être ouvert (dossier absent ou sans droit d'écriture)";
    case SQLITE_FULL:
      return "le disque est plein";
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
      return "ce fichier n'est pas un journal des impressions ou il est endommagé";
    case SQLITE_PERM:
    case SQLITE_AUTH:
      return "droit d'accès refusé";
    case SQLITE_IOERR:
      return "erreur d'entrée-sortie sur le disque";
    default:
      return "erreur SQLite n° " + std::to_string(code);
  }
}

std::string RaisonSysteme(int erreur) {
  switch (erreur) {
    case EACCES:
    case EPERM:
      return "le dossier n'accorde pas le droit d'écriture";
    case ENOENT:
    case ENOTDIR:
      return "le dossier n'existe pas";
    case EROFS:
      return "le système de fichiers est en lecture seule";
    case ENOSPC:
      return "le disque est plein";
    default:
      return "erreur système n° " + std::to_string(erreur);
  }
}

}  // namespace

// A prepared statement that finalises itself.
class JournalSqlite::Requete {
 public:
  Requete(const JournalSqlite& j, const std::string& sql) : j_(j) {
    if (sqlite3_prepare_v2(j.db_, sql.c_str(), -1, &stmt_, nullptr) != SQLITE_OK) {
      j.Echec("lecture");
    }
  }
  ~Requete() { sqlite3_finalize(stmt_); }
  Requete(const Requete&) = delete;
  Requete& operator=(const Requete&) = delete;

  void Lie(int i, const std::string& s) {
    sqlite3_bind_text(stmt_, i, s.data(), static_cast<int>(s.size()), SQLITE_TRANSIENT);
  }
  void Lie(int i, std::int64_t n) { sqlite3_bind_int64(stmt_, i, n); }
  bool Pas(const char* quoi) {
    const int rc = sqlite3_step(stmt_);
    if (rc == SQLITE_ROW) return true;
    if (rc == SQLITE_DONE) return false;
    j_.Echec(quoi);
  }
  std::string Texte(int i) const {
    const unsigned char* p = sqlite3_column_text(stmt_, i);
    return p ? std::string(reinterpret_cast<const char*>(p),
                           static_cast<size_t>(sqlite3_column_bytes(stmt_, i)))
             : std::string();
  }
  std::int64_t Entier(int i) const { return sqlite3_column_int64(stmt_, i); }
  bool Nul(int i) const { return sqlite3_column_type(stmt_, i) == SQLITE_NULL; }

  // The entry whose columns (kColonnes) start at column debut.
  Entree Lit(int debut) const {
    Entree e;
    int c = debut;
    e.numero = Entier(c++);
    e.genre = Texte(c++);
    e.heure_utc = Texte(c++);
    e.decalage = Texte(c++);
    e.utilisateur_systeme = Texte(c++);
    e.hote = Texte(c++);
    e.utilisateur = Texte(c++);
    e.programme = Texte(c++);
    e.processus = Entier(c++);
    e.type = Texte(c++);
    // Keys that are no longer a JSON list (an edit by hand) are kept as
    // their text: the entry's hash then tells it was changed.
    const std::string cles = Texte(c++);
    const nlohmann::json liste = nlohmann::json::parse(cles, nullptr, false);
    if (liste.is_array() && std::all_of(liste.begin(), liste.end(),
                                        [](const nlohmann::json& k) { return k.is_string(); })) {
      for (const auto& k : liste) e.cles.push_back(k.get<std::string>());
    } else {
      e.cles.push_back(cles);
    }
    e.destination = Texte(c++);
    e.impression = Entier(c++);
    e.issue = Texte(c++);
    e.pages = Entier(c++);
    e.message = Texte(c++);
    e.avant = Texte(c++);
    e.retire_premier = Entier(c++);
    e.retire_dernier = Entier(c++);
    e.retire_empreinte = Texte(c++);
    e.precedent = Texte(c++);
    e.empreinte = Texte(c++);
    return e;
  }

 private:
  const JournalSqlite& j_;
  sqlite3_stmt* stmt_ = nullptr;
};

JournalSqlite::JournalSqlite(std::string chemin, Mode mode) : chemin_(std::move(chemin)) {
  const std::string prefixe = "le journal des impressions « " + chemin_ + " »";
  if (mode == Mode::Ecriture) {
    // Created here rather than by SQLite, to choose its mode: SQLite would
    // make it readable by everyone. Its rollback files take the same mode.
    const int fd = open(chemin_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (fd >= 0) {
      fchmod(fd, 0600);
      close(fd);
    } else if (errno != EEXIST) {
      throw std::runtime_error(prefixe + " ne peut pas être créé : " + RaisonSysteme(errno) + ".");
    }
  } else if (access(chemin_.c_str(), F_OK) != 0) {
    throw std::runtime_error(prefixe + " n'existe pas : aucune impression n'y a été journalisée.");
  }
  const int flags = mode == Mode::Ecriture ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY;
  const int rc = sqlite3_open_v2(chemin_.c_str(), &db_, flags, nullptr);
  if (rc != SQLITE_OK) {
    sqlite3_close(db_);
    db_ = nullptr;
    throw std::runtime_error(prefixe + " ne peut pas être ouvert : " + Raison(rc) + ".");
  }
  sqlite3_busy_timeout(db_, kAttenteMs);
  // The destructor does not run for a constructor that fails: the
  // connection is closed here then.
  try {
    if (mode == Mode::Ecriture) {
      EnTransaction([&] {
        // A file holding anything else — the persons' store named by mistake —
        // is never written to.
        Requete autres(*this,
                       "SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name <> "
                       "'entrees'");
        if (autres.Pas("lecture") && autres.Entier(0) > 0) {
          throw std::runtime_error(prefixe + " ne peut pas être ouvert : " + Raison(SQLITE_NOTADB) +
                                   ".");
        }
        Execute(kSchema);
      });
    } else {
      Requete r(*this, "SELECT count(*) FROM sqlite_master WHERE name = 'entrees'");
      if (!r.Pas("lecture") || r.Entier(0) != 1) {
        throw std::runtime_error(prefixe + " ne peut pas être lu : " + Raison(SQLITE_NOTADB) + ".");
      }
    }
  } catch (...) {
    sqlite3_close(db_);
    db_ = nullptr;
    throw;
  }
}

JournalSqlite::~JournalSqlite() { sqlite3_close(db_); }

void JournalSqlite::Echec(const std::string& quoi) const {
  throw std::runtime_error("le journal des impressions « " + chemin_ + " » : échec de " + quoi +
                           " : " + Raison(sqlite3_extended_errcode(db_)) + ".");
}

void JournalSqlite::Execute(const char* sql) {
  if (sqlite3_exec(db_, sql, nullptr, nullptr, nullptr) != SQLITE_OK) Echec("l'écriture");
}

template <typename F>
void JournalSqlite::EnTransaction(F&& f) {
  // IMMEDIATE takes the write lock at once: two writers never both read the
  // same last entry and chain after it.
  Execute("BEGIN IMMEDIATE");
  try {
    f();
    Execute("COMMIT");
  } catch (...) {
    sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
    throw;
  }
}

void JournalSqlite::Insere(const Entree& e) {
  Requete r(*this, std::string("INSERT INTO entrees (") + kColonnes +
                       ") VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12, ?13, ?14, "
                       "?15, ?16, ?17, ?18, ?19, ?20, ?21, ?22)");
  int c = 1;
  r.Lie(c++, e.numero);
  r.Lie(c++, e.genre);
  r.Lie(c++, e.heure_utc);
  r.Lie(c++, e.decalage);
  r.Lie(c++, e.utilisateur_systeme);
  r.Lie(c++, e.hote);
  r.Lie(c++, e.utilisateur);
  r.Lie(c++, e.programme);
  r.Lie(c++, e.processus);
  r.Lie(c++, e.type);
  r.Lie(c++, nlohmann::json(e.cles).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace));
  r.Lie(c++, e.destination);
  r.Lie(c++, e.impression);
  r.Lie(c++, e.issue);
  r.Lie(c++, e.pages);
  r.Lie(c++, e.message);
  r.Lie(c++, e.avant);
  r.Lie(c++, e.retire_premier);
  r.Lie(c++, e.retire_dernier);
  r.Lie(c++, e.retire_empreinte);
  r.Lie(c++, e.precedent);
  r.Lie(c++, e.empreinte);
  r.Pas("l'écriture d'une entrée");
}

std::int64_t JournalSqlite::Ajoute(Entree& e) {
  EnTransaction([&] {
    Requete derniere(*this, "SELECT numero, empreinte FROM entrees ORDER BY numero DESC LIMIT 1");
    std::string precedent = kOrigine;
    e.numero = 1;
    if (derniere.Pas("lecture")) {
      e.numero = derniere.Entier(0) + 1;
      precedent = derniere.Texte(1);
    }
    Chaine(e, precedent);
    Insere(e);
  });
  return e.numero;
}

std::vector<Passage> JournalSqlite::Liste(const Filtre& f) {
  std::string sql = "SELECT ";
  for (const char* alias : {"i.", "o."}) {
    std::string colonnes = kColonnes;
    std::string prefixees;
    size_t debut = 0;
    while (debut <= colonnes.size()) {
      size_t fin = colonnes.find(", ", debut);
      if (fin == std::string::npos) fin = colonnes.size();
      prefixees += (prefixees.empty() ? "" : ", ") + std::string(alias) +
                   colonnes.substr(debut, fin - debut);
      debut = fin + 2;
    }
    sql += prefixees + (alias[0] == 'i' ? ", " : "");
  }
  sql +=
      " FROM entrees i LEFT JOIN entrees o ON o.genre = 'issue' AND o.impression = i.numero"
      " WHERE i.genre = 'impression'"
      " AND (?1 = '' OR i.heure_utc >= ?1) AND (?2 = '' OR i.heure_utc < ?2)"
      " AND (?3 = '' OR EXISTS (SELECT 1 FROM json_each(i.cles) WHERE value = ?3))"
      " AND (?4 = '' OR i.utilisateur = ?4 OR i.utilisateur_systeme = ?4)"
      " ORDER BY i.numero";
  Requete r(*this, sql);
  r.Lie(1, f.depuis);
  r.Lie(2, f.jusqu_a);
  r.Lie(3, f.cle);
  r.Lie(4, f.utilisateur);
  std::vector<Passage> passages;
  while (r.Pas("lecture")) {
    Passage p;
    p.impression = r.Lit(0);
    if (!r.Nul(kNombreColonnes)) p.issue = r.Lit(kNombreColonnes);
    passages.push_back(std::move(p));
  }
  return passages;
}

Verdict JournalSqlite::Verifie() {
  std::vector<Entree> entrees;
  Requete r(*this, std::string("SELECT ") + kColonnes + " FROM entrees ORDER BY numero");
  while (r.Pas("lecture")) entrees.push_back(r.Lit(0));
  return VerifieChaine(entrees);
}

std::int64_t JournalSqlite::Purge(const std::string& avant, Entree& e) {
  std::int64_t retirees = 0;
  EnTransaction([&] {
    std::vector<Entree> entrees;
    {
      Requete r(*this, std::string("SELECT ") + kColonnes + " FROM entrees ORDER BY numero");
      while (r.Pas("lecture")) entrees.push_back(r.Lit(0));
    }
    const PlanPurge plan = PlanifiePurge(entrees, avant, e);
    retirees = plan.retirees;
    if (retirees > 0) {
      Requete suppression(*this, "DELETE FROM entrees WHERE numero < ?1");
      suppression.Lie(1, plan.limite);
      suppression.Pas("la purge");
    }
    Chaine(e, plan.derniere);
    Insere(e);
  });
  return retirees;
}

}  // namespace journal

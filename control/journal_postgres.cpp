#include "control/journal_postgres.h"

#include <libpq-fe.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "control/journal_chaine.h"
#include "control/journal_lecture.h"
#include "marbrel/pg_connexion.h"

namespace journal {

namespace {

constexpr const char* kColonnes =
    "numero, genre, heure_utc, decalage, utilisateur_systeme, hote, utilisateur, programme, "
    "processus, type, cles, destination, impression, issue, pages, message, avant, "
    "retire_premier, retire_dernier, retire_empreinte, precedent, empreinte";
constexpr int kNombreColonnes = 22;

constexpr const char* kCreation =
    "CREATE TABLE vesko_journal ("
    " numero bigint PRIMARY KEY, genre text NOT NULL, heure_utc text NOT NULL,"
    " decalage text NOT NULL, utilisateur_systeme text NOT NULL, hote text NOT NULL,"
    " utilisateur text NOT NULL, programme text NOT NULL, processus bigint NOT NULL,"
    " type text NOT NULL, cles text NOT NULL, destination text NOT NULL,"
    " impression bigint NOT NULL, issue text NOT NULL, pages bigint NOT NULL,"
    " message text NOT NULL, avant text NOT NULL, retire_premier bigint NOT NULL,"
    " retire_dernier bigint NOT NULL, retire_empreinte text NOT NULL,"
    " precedent text NOT NULL, empreinte text NOT NULL);"
    // Nobody but the owner may change or remove an entry; the office grants
    // the printing role SELECT and INSERT only.
    "REVOKE ALL ON vesko_journal FROM PUBLIC;";

// The key of the advisory lock that queues the journal's writers.
constexpr const char* kVerrou = "SELECT pg_advisory_xact_lock(7365310243575180645)";

// The server stores text as UTF-8 without NUL bytes: a field that is not
// (a file name in another encoding) is made so before it is hashed, so what
// is stored is what the hash covers.
std::string Utf8(const std::string& s) {
  std::string sur =
      nlohmann::json::parse(
          nlohmann::json(s).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace))
          .get<std::string>();
  sur.erase(std::remove(sur.begin(), sur.end(), '\0'), sur.end());
  return sur;
}

void RendStockable(Entree& e) {
  for (std::string* champ :
       {&e.genre, &e.heure_utc, &e.decalage, &e.utilisateur_systeme, &e.hote, &e.utilisateur,
        &e.programme, &e.type, &e.destination, &e.issue, &e.message, &e.avant}) {
    *champ = Utf8(*champ);
  }
  for (std::string& cle : e.cles) cle = Utf8(cle);
}

}  // namespace

// A query result that clears itself.
class JournalPostgres::Resultat {
 public:
  explicit Resultat(PGresult* r) : r_(r) {}
  ~Resultat() { PQclear(r_); }
  Resultat(Resultat&& autre) noexcept : r_(autre.r_) { autre.r_ = nullptr; }
  Resultat(const Resultat&) = delete;
  Resultat& operator=(const Resultat&) = delete;
  Resultat& operator=(Resultat&&) = delete;

  int Lignes() const { return PQntuples(r_); }
  std::string Texte(int ligne, int colonne) const { return PQgetvalue(r_, ligne, colonne); }
  std::int64_t Entier(int ligne, int colonne) const { return std::stoll(Texte(ligne, colonne)); }

  Entree Lit(int ligne) const {
    Entree e;
    int c = 0;
    e.numero = Entier(ligne, c++);
    e.genre = Texte(ligne, c++);
    e.heure_utc = Texte(ligne, c++);
    e.decalage = Texte(ligne, c++);
    e.utilisateur_systeme = Texte(ligne, c++);
    e.hote = Texte(ligne, c++);
    e.utilisateur = Texte(ligne, c++);
    e.programme = Texte(ligne, c++);
    e.processus = Entier(ligne, c++);
    e.type = Texte(ligne, c++);
    // Keys that are no longer a JSON list (an edit by hand) are kept as
    // their text: the entry's hash then tells it was changed.
    const std::string cles = Texte(ligne, c++);
    const nlohmann::json liste = nlohmann::json::parse(cles, nullptr, false);
    if (liste.is_array() && std::all_of(liste.begin(), liste.end(),
                                        [](const nlohmann::json& k) { return k.is_string(); })) {
      for (const auto& k : liste) e.cles.push_back(k.get<std::string>());
    } else {
      e.cles.push_back(cles);
    }
    e.destination = Texte(ligne, c++);
    e.impression = Entier(ligne, c++);
    e.issue = Texte(ligne, c++);
    e.pages = Entier(ligne, c++);
    e.message = Texte(ligne, c++);
    e.avant = Texte(ligne, c++);
    e.retire_premier = Entier(ligne, c++);
    e.retire_dernier = Entier(ligne, c++);
    e.retire_empreinte = Texte(ligne, c++);
    e.precedent = Texte(ligne, c++);
    e.empreinte = Texte(ligne, c++);
    return e;
  }

  PGresult* Brut() const { return r_; }

 private:
  PGresult* r_;
};

JournalPostgres::JournalPostgres(const std::string& adresse, Mode mode) {
  std::string base;
  cx_ = marbrel::ConnectePostgres(adresse, base, role_);
  nom_ = "table vesko_journal de la " + base;
  try {
    Resultat r = Execute("SELECT to_regclass('vesko_journal') IS NOT NULL", "la lecture");
    if (r.Texte(0, 0) == "t") return;
    if (mode == Mode::Lecture) {
      throw std::runtime_error("le journal des impressions (" + nom_ +
                               ") n'existe pas : aucune impression n'y a été journalisée.");
    }
    // A store made before its journal existed: the table is made once, by
    // the first print whose role may create it.
    EnTransaction([&] {
      Resultat existe = Execute("SELECT to_regclass('vesko_journal') IS NOT NULL", "la lecture");
      if (existe.Texte(0, 0) != "t") Execute(kCreation, "la création");
    });
  } catch (...) {
    PQfinish(cx_);
    cx_ = nullptr;
    throw;
  }
}

JournalPostgres::~JournalPostgres() { PQfinish(cx_); }

void JournalPostgres::CreeTable(const std::string& adresse) {
  JournalPostgres journal(adresse, Mode::Ecriture);
}

void JournalPostgres::Echec(const std::string& quoi, const std::string& raison) const {
  throw std::runtime_error("le journal des impressions (" + nom_ + ") : échec de " + quoi + " : " +
                           raison + ".");
}

JournalPostgres::Resultat JournalPostgres::Execute(const std::string& sql, const char* quoi) {
  Resultat r(PQexec(cx_, sql.c_str()));
  const ExecStatusType etat = PQresultStatus(r.Brut());
  if (etat == PGRES_COMMAND_OK || etat == PGRES_TUPLES_OK) return r;
  const char* code = PQresultErrorField(r.Brut(), PG_DIAG_SQLSTATE);
  const std::string sqlstate = code ? code : "";
  if (sqlstate == "42501") {
    Echec(quoi, "le rôle « " + role_ +
                    " » n'en a pas le droit (l'impression demande SELECT et INSERT sur "
                    "vesko_journal ; vesko init crée la table)");
  }
  if (sqlstate.rfind("08", 0) == 0 || PQstatus(cx_) != CONNECTION_OK) {
    Echec(quoi, "la connexion au serveur est perdue");
  }
  Echec(quoi, "erreur du serveur PostgreSQL (code " + sqlstate + ")");
}

template <typename F>
void JournalPostgres::EnTransaction(F&& f) {
  Execute("BEGIN", "l'écriture");
  try {
    // Writers queue here: two never read the same last entry.
    Execute(kVerrou, "l'écriture");
    f();
    Execute("COMMIT", "l'écriture");
  } catch (...) {
    PQclear(PQexec(cx_, "ROLLBACK"));
    throw;
  }
}

std::vector<Entree> JournalPostgres::Entrees() {
  Resultat r = Execute(std::string("SELECT ") + kColonnes + " FROM vesko_journal ORDER BY numero",
                       "la lecture");
  std::vector<Entree> entrees;
  entrees.reserve(static_cast<size_t>(r.Lignes()));
  for (int i = 0; i < r.Lignes(); ++i) entrees.push_back(r.Lit(i));
  return entrees;
}

void JournalPostgres::Insere(const Entree& e) {
  const std::string texte[] = {
      std::to_string(e.numero),
      e.genre,
      e.heure_utc,
      e.decalage,
      e.utilisateur_systeme,
      e.hote,
      e.utilisateur,
      e.programme,
      std::to_string(e.processus),
      e.type,
      nlohmann::json(e.cles).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace),
      e.destination,
      std::to_string(e.impression),
      e.issue,
      std::to_string(e.pages),
      e.message,
      e.avant,
      std::to_string(e.retire_premier),
      std::to_string(e.retire_dernier),
      e.retire_empreinte,
      e.precedent,
      e.empreinte,
  };
  static_assert(std::size(texte) == kNombreColonnes);
  const char* valeurs[kNombreColonnes];
  for (int i = 0; i < kNombreColonnes; ++i) valeurs[i] = texte[i].c_str();
  std::string sql = std::string("INSERT INTO vesko_journal (") + kColonnes + ") VALUES (";
  for (int i = 1; i <= kNombreColonnes; ++i) {
    sql += (i > 1 ? ", $" : "$") + std::to_string(i);
  }
  sql += ")";
  Resultat r(
      PQexecParams(cx_, sql.c_str(), kNombreColonnes, nullptr, valeurs, nullptr, nullptr, 0));
  if (PQresultStatus(r.Brut()) != PGRES_COMMAND_OK) {
    const char* code = PQresultErrorField(r.Brut(), PG_DIAG_SQLSTATE);
    if (code != nullptr && std::string(code) == "42501") {
      Echec("l'écriture d'une entrée",
            "le rôle « " + role_ + " » n'a pas le droit d'écrire dans vesko_journal");
    }
    Echec("l'écriture d'une entrée",
          "erreur du serveur PostgreSQL (code " + std::string(code ? code : "") + ")");
  }
}

std::int64_t JournalPostgres::Ajoute(Entree& e) {
  RendStockable(e);
  EnTransaction([&] {
    Resultat derniere = Execute(
        "SELECT numero, empreinte FROM vesko_journal ORDER BY numero DESC LIMIT 1", "la lecture");
    std::string precedent = kOrigine;
    e.numero = 1;
    if (derniere.Lignes() == 1) {
      e.numero = derniere.Entier(0, 0) + 1;
      precedent = derniere.Texte(0, 1);
    }
    Chaine(e, precedent);
    Insere(e);
  });
  return e.numero;
}

std::vector<Passage> JournalPostgres::Liste(const Filtre& f) { return Passages(Entrees(), f); }

Verdict JournalPostgres::Verifie() { return VerifieChaine(Entrees()); }

std::int64_t JournalPostgres::Purge(const std::string& avant, Entree& e) {
  RendStockable(e);
  std::int64_t retirees = 0;
  EnTransaction([&] {
    const PlanPurge plan = PlanifiePurge(Entrees(), avant, e);
    retirees = plan.retirees;
    if (retirees > 0) {
      Execute("DELETE FROM vesko_journal WHERE numero < " + std::to_string(plan.limite),
              "la purge");
    }
    Chaine(e, plan.derniere);
    Insere(e);
  });
  return retirees;
}

}  // namespace journal

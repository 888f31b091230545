#include "marbrel/pg_connexion.h"

#include <libpq-fe.h>

#include "marbrel/erreur.h"
#include "marbrel/magasin.h"

namespace marbrel {

namespace {

bool Contient(const std::string& texte, const char* morceau) {
  return texte.find(morceau) != std::string::npos;
}

std::string Valeur(const char* v) { return v ? v : ""; }

// libpq says why a connection failed in English: the reasons people meet,
// in French.
std::string RaisonConnexion(const std::string& message, const std::string& base,
                            const std::string& role) {
  if (Contient(message, "database") && Contient(message, "does not exist")) {
    return "la base « " + base + " » n'existe pas sur ce serveur";
  }
  if (Contient(message, "role") && Contient(message, "does not exist")) {
    return "le rôle « " + role + " » n'existe pas sur ce serveur";
  }
  if (Contient(message, "password") || Contient(message, "authentication") ||
      Contient(message, "pg_hba.conf")) {
    return "le serveur refuse la connexion du rôle « " + role + " » (authentification)";
  }
  if (Contient(message, "translate host name")) return "nom d'hôte inconnu";
  if (Contient(message, "timeout expired")) return "pas de réponse dans le délai";
  if (Contient(message, "Permission denied")) return "accès refusé au socket du serveur";
  if (Contient(message, "starting up") || Contient(message, "shutting down")) {
    return "le serveur est en train de démarrer ou de s'arrêter";
  }
  if (Contient(message, "too many")) return "trop de connexions ouvertes sur ce serveur";
  if (Contient(message, "No such file") || Contient(message, "refused") ||
      Contient(message, "running")) {
    return "le serveur ne répond pas (il est arrêté ou l'adresse est fausse)";
  }
  return "connexion impossible";
}

}  // namespace

pg_conn* ConnectePostgres(const std::string& adresse, std::string& nom, std::string& role) {
  char* erreur = nullptr;
  PQconninfoOption* options = PQconninfoParse(adresse.c_str(), &erreur);
  if (options == nullptr) {
    PQfreemem(erreur);
    throw Erreur(ERR_BASE, "L'adresse « " + NomAffiche(adresse) +
                               " » n'est pas une adresse PostgreSQL valide (forme attendue : "
                               "postgresql://utilisateur@hôte:port/base).");
  }
  PQconninfoFree(options);

  // Keywords before the address are defaults the address may override: a
  // server that never answers gives up after ten seconds, not two minutes.
  const char* const cles[] = {"connect_timeout", "application_name", "dbname", nullptr};
  const char* const valeurs[] = {"10", "vesko", adresse.c_str(), nullptr};
  PGconn* cx = PQconnectdbParams(cles, valeurs, /*expand_dbname=*/1);
  if (cx == nullptr) throw Erreur(ERR_BASE, "Mémoire insuffisante pour joindre PostgreSQL.");
  std::string hote = Valeur(PQhost(cx));
  if (hote.empty()) hote = "/var/run/postgresql";
  std::string port = Valeur(PQport(cx));
  if (port.empty()) port = "5432";
  const std::string base = Valeur(PQdb(cx));
  role = Valeur(PQuser(cx));
  nom = "base « " + base + " » du serveur PostgreSQL " + hote + ":" + port;
  if (PQstatus(cx) != CONNECTION_OK) {
    std::string raison = RaisonConnexion(Valeur(PQerrorMessage(cx)), base, role);
    PQfinish(cx);
    cx = nullptr;
    throw Erreur(ERR_BASE, "Impossible de joindre le serveur PostgreSQL " + hote + ":" + port +
                               " (base « " + base + " ») : " + raison + ".");
  }
  // Notices ("there is no transaction in progress", ...) are not for people.
  PQsetNoticeProcessor(
      cx, [](void*, const char*) {}, nullptr);
  return cx;
}

}  // namespace marbrel

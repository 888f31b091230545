#include "control/journal_chaine.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <nlohmann/json.hpp>

namespace journal {

const std::string kOrigine(64, '0');

std::string FormeCanonique(const Entree& e) {
  // nlohmann's objects keep their keys sorted: the text does not depend on
  // the order in which the fields are set here.
  const nlohmann::json champs = {{"numero", e.numero},
                                 {"genre", e.genre},
                                 {"heure_utc", e.heure_utc},
                                 {"decalage", e.decalage},
                                 {"utilisateur_systeme", e.utilisateur_systeme},
                                 {"hote", e.hote},
                                 {"utilisateur", e.utilisateur},
                                 {"programme", e.programme},
                                 {"processus", e.processus},
                                 {"type", e.type},
                                 {"cles", e.cles},
                                 {"destination", e.destination},
                                 {"impression", e.impression},
                                 {"issue", e.issue},
                                 {"pages", e.pages},
                                 {"message", e.message},
                                 {"avant", e.avant},
                                 {"retire_premier", e.retire_premier},
                                 {"retire_dernier", e.retire_dernier},
                                 {"retire_empreinte", e.retire_empreinte},
                                 {"precedent", e.precedent}};
  // A key that is not valid UTF-8 is hashed (and stored) with its bad bytes
  // replaced, rather than making the print fail.
  return champs.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

std::string Empreinte(const Entree& e) {
  const std::string texte = e.precedent + "\n" + FormeCanonique(e);
  const QByteArray h = QCryptographicHash::hash(
      QByteArray::fromRawData(texte.data(), static_cast<qsizetype>(texte.size())),
      QCryptographicHash::Sha256);
  return h.toHex().toStdString();
}

void Chaine(Entree& e, const std::string& precedent) {
  e.precedent = precedent;
  e.empreinte = Empreinte(e);
}

namespace {

std::string N(std::int64_t n) { return "n° " + std::to_string(n); }

Verdict Faute(Verdict v, std::int64_t numero, std::string message) {
  v.intact = false;
  v.numero = numero;
  v.message = std::move(message);
  return v;
}

}  // namespace

Verdict VerifieChaine(const std::vector<Entree>& entrees) {
  Verdict v;
  v.entrees = static_cast<std::int64_t>(entrees.size());

  // The chain starts after the anchor of the latest purge, if any.
  std::int64_t attendu = 1;
  std::string precedent = kOrigine;
  for (auto it = entrees.rbegin(); it != entrees.rend(); ++it) {
    if (it->genre != kPurge) continue;
    if (Empreinte(*it) != it->empreinte) {
      return Faute(v, it->numero,
                   "l'entrée " + N(it->numero) +
                       " (purge) a été modifiée : son empreinte ne correspond plus à son contenu.");
    }
    attendu = it->retire_dernier + 1;
    precedent = it->retire_empreinte;
    break;
  }

  for (const Entree& e : entrees) {
    if (e.numero < attendu) {
      return Faute(v, e.numero,
                   "l'entrée " + N(e.numero) +
                       " a été insérée : la chaîne, après la dernière purge, commence au " +
                       N(attendu) + ".");
    }
    if (e.numero > attendu) {
      return Faute(v, attendu,
                   e.numero == attendu + 1
                       ? "l'entrée " + N(attendu) + " a été supprimée (la chaîne passe au " +
                             N(e.numero) + ")."
                       : "les entrées " + N(attendu) + " à " + N(e.numero - 1) +
                             " ont été supprimées (la chaîne passe au " + N(e.numero) + ").");
    }
    if (Empreinte(e) != e.empreinte) {
      return Faute(v, e.numero,
                   "l'entrée " + N(e.numero) +
                       " a été modifiée : son empreinte ne correspond plus à son contenu.");
    }
    if (e.precedent != precedent) {
      return Faute(
          v, e.numero,
          "l'entrée " + N(e.numero) + " a été insérée : elle ne suit pas " +
              (attendu == 1 ? std::string("le début du journal") : "l'entrée " + N(attendu - 1)) +
              ".");
    }
    precedent = e.empreinte;
    ++attendu;
  }
  v.derniere = precedent;
  if (entrees.empty()) {
    v.message = "journal intact : aucune entrée.";
  } else {
    v.message = "journal intact : " + std::to_string(entrees.size()) + " entrée(s), du " +
                N(entrees.front().numero) + " au " + N(entrees.back().numero) +
                " ; dernière empreinte " + precedent + ".";
  }
  return v;
}

}  // namespace journal

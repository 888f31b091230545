// `vesko journal`: reads the access journal (who printed whose dossier, when,
// where), checks its chain and removes what is older than the retention
// period.
//
//   vesko journal [--depuis D] [--jusqu-a D] [--cle K] [--utilisateur U]
//                 [--format texte|csv|json]            runs, oldest first
//   vesko journal verifie                              0 intact, 1 damaged
//   vesko journal purge --avant D                      retention
//
// The journal is --journal FICHIER, else VESKO_JOURNAL, else --db BASE's own
// ("BASE.journal", or the vesko_journal table of a PostgreSQL store; without
// --db, VESKO_DB names the store). Dates are local calendar days (AAAA-MM-JJ) or local
// times (AAAA-MM-JJTHH:MM:SS).
#include <QDateTime>
#include <QTimeZone>
#include <cstdlib>
#include <iostream>
#include <nlohmann/json.hpp>

#include "app/commandes.h"
#include "control/journal_edition.h"
#include "marbrel/magasin.h"

namespace vesko_app {

namespace {

struct OptionsJournal {
  std::string base;
  std::string journal;
  std::string depuis, jusqu_a, cle, utilisateur;
  std::string format = "texte";
  std::string avant;
};

std::string Chemin(const OptionsJournal& o) {
  if (!o.journal.empty()) return o.journal;
  if (const char* env = std::getenv("VESKO_JOURNAL"); env != nullptr && *env != '\0') return env;
  std::string base = o.base;
  if (const char* env = std::getenv("VESKO_DB"); base.empty() && env != nullptr) base = env;
  if (marbrel::EstAdressePostgres(base)) return base;
  if (!base.empty()) return base + ".journal";
  throw UsageError(
      "quel journal ? précisez --db BASE (son journal est BASE.journal), --journal FICHIER ou la "
      "variable VESKO_JOURNAL.");
}

// The UTC time, in the journal's own format, at which a local day or time
// begins; lendemain makes it an inclusive end (the start of the next day).
std::string Heure(const std::string& texte, const char* option, bool lendemain = false) {
  const QString t = QString::fromStdString(texte);
  QDateTime moment;
  // Qt reads the date of "AAAA-MM-JJTHH:MM:SS" as a day and drops the time:
  // a day is ten characters exactly.
  const QDate jour = t.size() == 10 ? QDate::fromString(t, Qt::ISODate) : QDate();
  if (jour.isValid()) {
    moment = (lendemain ? jour.addDays(1) : jour).startOfDay();
  } else {
    // A time as an end includes that very moment.
    moment = QDateTime::fromString(t, Qt::ISODate);
    if (moment.isValid() && lendemain) moment = moment.addMSecs(1);
  }
  if (!moment.isValid()) {
    throw UsageError("date invalide « " + texte + " » (" + option +
                     ") : attendu AAAA-MM-JJ ou AAAA-MM-JJTHH:MM:SS.");
  }
  return moment.toUTC().toString(Qt::ISODateWithMs).toStdString();
}

// "2026-11-23 19:32:53 UTC (+01:00)"
std::string Moment(const journal::Entree& e) {
  std::string t = e.heure_utc.substr(0, 19);
  if (t.size() > 10) t[10] = ' ';
  return t + " UTC (" + e.decalage + ")";
}

std::string Cles(const std::vector<std::string>& cles) {
  std::string texte;
  for (const std::string& c : cles) texte += (texte.empty() ? "" : " ") + c;
  return texte;
}

std::string Issue(const journal::Passage& p) {
  if (p.issue.numero == 0) return "sans issue (en cours, ou interrompue sans pouvoir le dire)";
  std::string texte = p.issue.issue;
  if (p.issue.issue != journal::kAnnulee)
    texte += ", " + std::to_string(p.issue.pages) + " page(s)";
  if (!p.issue.message.empty()) texte += " : " + p.issue.message;
  return texte;
}

std::string Destination(const journal::Passage& p) {
  return p.issue.numero != 0 && !p.issue.destination.empty() ? p.issue.destination
                                                             : p.impression.destination;
}

std::string Csv(const std::string& champ) {
  if (champ.find_first_of(",\"\n\r") == std::string::npos) return champ;
  std::string texte = "\"";
  for (char c : champ) texte += c == '"' ? std::string("\"\"") : std::string(1, c);
  return texte + "\"";
}

void Affiche(const std::vector<journal::Passage>& passages, const std::string& format) {
  if (format == "json") {
    nlohmann::json liste = nlohmann::json::array();
    for (const journal::Passage& p : passages) {
      const journal::Entree& i = p.impression;
      nlohmann::json run = {{"numero", i.numero},
                            {"heure_utc", i.heure_utc},
                            {"decalage", i.decalage},
                            {"utilisateur_systeme", i.utilisateur_systeme},
                            {"hote", i.hote},
                            {"utilisateur", i.utilisateur},
                            {"programme", i.programme},
                            {"processus", i.processus},
                            {"type", i.type},
                            {"cles", i.cles},
                            {"destination", Destination(p)},
                            {"issue", nullptr}};
      if (p.issue.numero != 0) {
        run["issue"] = {{"numero", p.issue.numero},
                        {"heure_utc", p.issue.heure_utc},
                        {"issue", p.issue.issue},
                        {"pages", p.issue.pages},
                        {"message", p.issue.message}};
      }
      liste.push_back(run);
    }
    std::cout << liste.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) << "\n";
    return;
  }
  if (format == "csv") {
    std::cout << "numero,heure_utc,decalage,utilisateur_systeme,hote,utilisateur,programme,"
                 "processus,type,cles,destination,issue,pages,message,fin_utc\n";
    for (const journal::Passage& p : passages) {
      const journal::Entree& i = p.impression;
      const std::string champs[] = {
          std::to_string(i.numero),
          i.heure_utc,
          i.decalage,
          i.utilisateur_systeme,
          i.hote,
          i.utilisateur,
          i.programme,
          std::to_string(i.processus),
          i.type,
          Cles(i.cles),
          Destination(p),
          p.issue.issue,
          p.issue.numero != 0 ? std::to_string(p.issue.pages) : std::string(),
          p.issue.message,
          p.issue.heure_utc};
      std::string ligne;
      for (const std::string& champ : champs) ligne += (ligne.empty() ? "" : ",") + Csv(champ);
      std::cout << ligne << "\n";
    }
    return;
  }
  if (passages.empty()) {
    std::cout << "Aucune impression journalisée ne correspond.\n";
    return;
  }
  for (const journal::Passage& p : passages) {
    const journal::Entree& i = p.impression;
    std::cout << "n° " << i.numero << " · " << Moment(i) << " · " << i.utilisateur_systeme << "@"
              << i.hote << (i.utilisateur.empty() ? "" : " · utilisateur « " + i.utilisateur + " »")
              << " · " << i.programme << " · " << i.type << " " << Cles(i.cles) << " · "
              << Destination(p) << " · " << Issue(p) << "\n";
  }
}

void Liste(const OptionsJournal& o) {
  if (o.format != "texte" && o.format != "csv" && o.format != "json") {
    throw UsageError("format inconnu « " + o.format + " » (--format) : texte, csv ou json.");
  }
  journal::Filtre f;
  if (!o.depuis.empty()) f.depuis = Heure(o.depuis, "--depuis");
  if (!o.jusqu_a.empty()) f.jusqu_a = Heure(o.jusqu_a, "--jusqu-a", /*lendemain=*/true);
  f.cle = o.cle;
  f.utilisateur = o.utilisateur;
  const auto j = journal::OuvreJournal(Chemin(o), /*ecriture=*/false);
  Affiche(j->Liste(f), o.format);
}

void Verifie(const OptionsJournal& o, int& statut) {
  const auto j = journal::OuvreJournal(Chemin(o), /*ecriture=*/false);
  const journal::Verdict v = j->Verifie();
  if (!v.intact) {
    std::cerr << "vesko : journal « " << j->Nom() << " » : " << v.message << "\n";
    statut = kEchec;
    return;
  }
  std::string phrase = v.message;
  phrase[0] = 'J';
  std::cout << phrase << "\n";
}

void Purge(const OptionsJournal& o) {
  const std::string avant = Heure(o.avant, "--avant");
  if (avant > QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs).toStdString()) {
    throw UsageError("la date de purge « " + o.avant +
                     " » (--avant) est dans le futur : elle effacerait tout le journal.");
  }
  const auto j = journal::OuvreJournal(Chemin(o), /*ecriture=*/true);
  journal::Entree e = journal::Contexte("");
  const std::int64_t retirees = j->Purge(avant, e);
  std::cout << retirees << " entrée(s) antérieure(s) au " << o.avant
            << " supprimée(s) du journal « " << j->Nom() << " » ; la purge y est inscrite (n° "
            << e.numero << ").\n";
}

}  // namespace

void AjouteCommandeJournal(CLI::App& app, int& statut) {
  auto o = std::make_shared<OptionsJournal>();
  auto* journal =
      app.add_subcommand("journal", "Liste les impressions journalisées (qui, quand, quoi, où)");
  journal->fallthrough();
  journal->add_option("--db", o->base, "Base dont on lit le journal (BASE.journal)");
  journal->add_option("--journal", o->journal, "Fichier du journal (défaut : VESKO_JOURNAL)");
  journal->add_option("--depuis", o->depuis, "Impressions de ce jour ou après (AAAA-MM-JJ)");
  journal->add_option("--jusqu-a", o->jusqu_a, "Impressions jusqu'à ce jour inclus (AAAA-MM-JJ)");
  journal->add_option("--cle", o->cle, "Impressions du dossier de cette clé");
  journal->add_option("--utilisateur", o->utilisateur,
                      "Impressions de cet utilisateur (de l'application ou du système)");
  journal->add_option("--format", o->format, "texte (défaut), csv ou json");

  auto* verifie = journal->add_subcommand(
      "verifie",
      "Vérifie la chaîne d'empreintes : nomme la première entrée modifiée, supprimée "
      "ou insérée");
  auto* purge =
      journal->add_subcommand("purge", "Supprime les entrées antérieures à une date (rétention)");
  purge->add_option("--avant", o->avant, "Date limite (AAAA-MM-JJ) : ce qui précède est supprimé")
      ->required();

  verifie->callback([o, &statut] { Execute(statut, [&] { Verifie(*o, statut); }); });
  purge->callback([o, &statut] { Execute(statut, [&] { Purge(*o); }); });
  journal->callback([o, &statut, verifie, purge] {
    if (verifie->parsed() || purge->parsed()) return;
    Execute(statut, [&] { Liste(*o); });
  });
}

}  // namespace vesko_app

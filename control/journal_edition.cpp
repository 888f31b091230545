#include "control/journal_edition.h"

#include <pwd.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QFileInfo>
#include <QSysInfo>
#include <cerrno>
#include <cstdlib>
#include <stdexcept>

#include "control/ctr_vesko.h"
#include "control/journal_postgres.h"
#include "control/journal_sqlite.h"
#include "marbrel/magasin.h"
#include "marbrel/pg_store.h"
#include "marbrel/sqlite_store.h"

namespace journal {

std::string Emplacement(const marbrel::Base* base, const std::string& impose) {
  if (!impose.empty()) return impose;
  if (const char* env = std::getenv("VESKO_JOURNAL"); env != nullptr && *env != '\0') return env;
  if (base == nullptr) return {};
  if (const auto* sqlite = dynamic_cast<const marbrel::SqliteStore*>(&base->Magasin())) {
    return sqlite->Chemin() + ".journal";
  }
  if (const auto* postgres = dynamic_cast<const marbrel::PostgresStore*>(&base->Magasin())) {
    return postgres->Adresse();
  }
  return {};
}

std::unique_ptr<Journal> OuvreJournal(const std::string& emplacement, bool ecriture) {
  if (marbrel::EstAdressePostgres(emplacement)) {
    return std::make_unique<JournalPostgres>(
        emplacement, ecriture ? JournalPostgres::Mode::Ecriture : JournalPostgres::Mode::Lecture);
  }
  return std::make_unique<JournalSqlite>(
      emplacement, ecriture ? JournalSqlite::Mode::Ecriture : JournalSqlite::Mode::Lecture);
}

std::unique_ptr<Journal> OuvrePour(const marbrel::Base* base, const std::string& impose) {
  const std::string emplacement = Emplacement(base, impose);
  if (emplacement.empty()) {
    throw std::runtime_error(
        "impression refusée : cette base n'a pas de journal des impressions ; indiquez-en un "
        "(--journal FICHIER ou la variable VESKO_JOURNAL).");
  }
  try {
    return OuvreJournal(emplacement, /*ecriture=*/true);
  } catch (const std::exception& e) {
    throw std::runtime_error(std::string("impression refusée : ") + e.what());
  }
}

std::string Lieu(const printing::Destination& destination, const printing::Surface* surface) {
  if (surface != nullptr) {
    std::string trace = surface->Trace();
    if (!trace.empty()) return trace;
  }
  if (destination.nom == "PDF") {
    const QString fichier = QString::fromStdString(printing::ListeImprimantes::FichierPdf());
    return "PDF " + QFileInfo(fichier).absoluteFilePath().toStdString();
  }
  return destination.nom;
}

std::string Resume(const std::vector<Incident>& incidents) {
  // A batch where every dossier fails would make a huge line: the first
  // few say enough, the count says the rest.
  constexpr size_t kMontres = 5;
  std::string texte;
  for (size_t i = 0; i < incidents.size() && i < kMontres; ++i) {
    const Incident& n = incidents[i];
    texte += (i == 0 ? "" : " ; ") + n.section +
             (n.cle.empty() ? "" : ", fiche « " + n.cle + " »") + " : " + n.message;
  }
  if (incidents.size() > kMontres) {
    texte += " ; et " + std::to_string(incidents.size() - kMontres) + " autre(s) échec(s).";
  }
  return texte;
}

namespace {

std::string CompteSysteme() {
  if (const passwd* p = getpwuid(geteuid()); p != nullptr && p->pw_name != nullptr) {
    return p->pw_name;
  }
  if (const char* u = std::getenv("USER"); u != nullptr) return u;
  return "uid " + std::to_string(geteuid());
}

std::string Programme() {
  if (QCoreApplication::instance() != nullptr) {
    const QString nom = QCoreApplication::applicationName();
    if (!nom.isEmpty()) return nom.toStdString();
  }
  return program_invocation_short_name;
}

// "+01:00": the offset of local time from UTC at that moment.
std::string Decalage(const QDateTime& local) {
  const int s = local.offsetFromUtc();
  const int m = (s < 0 ? -s : s) / 60;
  return QStringLiteral("%1%2:%3")
      .arg(s < 0 ? '-' : '+')
      .arg(m / 60, 2, 10, QLatin1Char('0'))
      .arg(m % 60, 2, 10, QLatin1Char('0'))
      .toStdString();
}

}  // namespace

Entree Contexte(const std::string& utilisateur) {
  Entree e;
  const QDateTime maintenant = QDateTime::currentDateTime();
  e.heure_utc = maintenant.toUTC().toString(Qt::ISODateWithMs).toStdString();
  e.decalage = Decalage(maintenant);
  e.utilisateur_systeme = CompteSysteme();
  e.hote = QSysInfo::machineHostName().toStdString();
  e.utilisateur = utilisateur;
  e.programme = Programme();
  e.processus = getpid();
  return e;
}

TraceEdition::TraceEdition(std::unique_ptr<Journal> journal, std::string utilisateur)
    : journal_(std::move(journal)), utilisateur_(std::move(utilisateur)) {}

TraceEdition::~TraceEdition() {
  if (debut_ == 0) return;
  try {
    Fin(kEchouee, 0, "impression interrompue par une erreur avant sa fin.", destination_);
  } catch (...) {
  }
}

void TraceEdition::Debut(const std::string& type, const std::vector<std::string>& cles,
                         const std::string& destination) {
  Entree e = Contexte(utilisateur_);
  e.genre = kImpression;
  e.type = type;
  e.cles = cles;
  e.destination = destination;
  try {
    debut_ = journal_->Ajoute(e);
  } catch (const std::exception& erreur) {
    throw std::runtime_error(std::string("impression refusée : ") + erreur.what());
  }
  destination_ = destination;
}

void TraceEdition::Fin(const std::string& issue, std::int64_t pages, const std::string& message,
                       const std::string& destination) {
  Entree e = Contexte(utilisateur_);
  e.genre = kIssue;
  e.impression = debut_;
  e.issue = issue;
  e.pages = pages;
  e.message = message;
  e.destination = destination;
  debut_ = 0;
  try {
    journal_->Ajoute(e);
  } catch (const std::exception& erreur) {
    throw std::runtime_error(
        std::string("l'issue de l'impression n'a pas pu être écrite dans le journal : ") +
        erreur.what());
  }
}

void TraceEdition::Sans_Impression(const std::string& type, const std::vector<std::string>& cles,
                                   const std::string& destination, const std::string& issue,
                                   const std::string& message) {
  Debut(type, cles, destination);
  Fin(issue, 0, message, destination);
}

}  // namespace journal

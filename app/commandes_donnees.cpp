// The data side of `vesko`: init, import, export and select.
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "app/commandes.h"
#include "app/format_selection.h"
#include "app/nom_base.h"
#include "control/journal_postgres.h"
#include "db/code_personne.h"
#include "marbrel/base.h"
#include "marbrel/creation_base.h"
#include "marbrel/dump.h"
#include "marbrel/erreur.h"
#include "marbrel/magasin.h"
#include "marbrel/repertoire.h"

namespace vesko_app {

namespace {

struct Arguments {
  std::string base;
  std::vector<std::string> dumps;
  std::vector<std::string> fichiers;
  std::string repertoire;
  std::string encodage = "utf8";
  std::string phrase;
  std::string champs = "0";
  bool strict = false;  // import: refuse main-file keys that cannot be isolated
  std::string format = "tsv";
};

// The keys of the persons' main files that the selections by code cannot
// isolate: each is told on standard error; --strict refuses the import.
void VerifieCodes(const std::vector<marbrel::Dump>& dumps, bool strict) {
  std::size_t refusees = 0;
  for (const marbrel::Dump& d : dumps) {
    for (const auto& [fichier, enregistrements] : d.fichiers) {
      if (fichier != "CIVILAIDE" && fichier != "CIVILAIDANT") continue;
      for (const auto& e : enregistrements) {
        const std::string refus = db::Refus_Code(e.first);
        if (refus.empty()) continue;
        ++refusees;
        std::cerr << "vesko : " << (strict ? "" : "attention : ") << d.origine << ", " << fichier
                  << " : " << refus
                  << " Ses capacités, tâches, aidants incompatibles et indisponibilités ne "
                     "seront pas imprimés.\n";
      }
    }
  }
  if (strict && refusees > 0) {
    throw marbrel::Erreur(marbrel::ERR_IMPORT,
                          "Import refusé (--strict) : " + std::to_string(refusees) +
                              " code(s) de personne ne peuvent pas être isolés ; la base n'a "
                              "pas été modifiée.");
  }
}

// An existing store; a SQLite path that holds none gets a message saying what
// to do (a PostgreSQL store without its tables says so itself).
std::shared_ptr<marbrel::Store> OuvreBase(const std::string& nom, marbrel::Acces acces) {
  if (!marbrel::EstAdressePostgres(nom) && !std::filesystem::exists(nom)) {
    throw marbrel::Erreur(marbrel::ERR_BASE, "La base " + nom + " n'existe pas (vesko init --db " +
                                                 nom + " la crée).");
  }
  return marbrel::OuvreMagasin(nom, acces);
}

void Init(const Arguments& a) {
  const std::string nom = NomDeBase(a.base);
  if (marbrel::EstAdressePostgres(nom)) {
    // The tables are made in one transaction and refused where they exist.
    auto store = marbrel::OuvreMagasin(nom, marbrel::Acces::Creation);
    marbrel::CreeFichiersVesko(*store);
    // The access journal of its prints lives in the same database.
    journal::JournalPostgres::CreeTable(nom);
    return;
  }
  if (std::filesystem::exists(nom)) {
    throw marbrel::Erreur(marbrel::ERR_BASE, "La base " + nom +
                                                 " existe déjà : vesko init ne remplace jamais "
                                                 "une base.");
  }
  try {
    auto store = marbrel::OuvreMagasin(nom, marbrel::Acces::Creation);
    marbrel::CreeFichiersVesko(*store);
  } catch (...) {
    // A store left half made would be taken for a good one by the next command.
    std::error_code ignore;
    std::filesystem::remove(nom, ignore);
    throw;
  }
}

void Import(const Arguments& a) {
  if (a.repertoire.empty() == a.dumps.empty()) {
    throw UsageError("donnez des dumps JSON ou un dossier (--dir), l'un ou l'autre.");
  }
  const marbrel::Encodage encodage = marbrel::EncodageNomme(a.encodage);
  // Everything is read and checked before the store is opened for writing.
  std::vector<marbrel::Dump> dumps;
  if (!a.repertoire.empty()) {
    dumps.push_back(marbrel::LitRepertoire(a.repertoire, encodage));
  } else {
    for (const std::string& chemin : a.dumps) dumps.push_back(marbrel::LitDumpFichier(chemin));
  }
  VerifieCodes(dumps, a.strict);
  auto store = OuvreBase(NomDeBase(a.base), marbrel::Acces::LectureEcriture);
  marbrel::Importe(*store, dumps);
  std::size_t fichiers = 0, enregistrements = 0;
  for (const marbrel::Dump& d : dumps) {
    fichiers += d.fichiers.size();
    for (const auto& f : d.fichiers) enregistrements += f.second.size();
  }
  std::cout << enregistrements << " enregistrement(s) de " << fichiers
            << " fichier(s) importé(s).\n";
}

void Export(const Arguments& a) {
  const marbrel::Encodage encodage = marbrel::EncodageNomme(a.encodage);
  auto store = OuvreBase(NomDeBase(a.base), marbrel::Acces::LectureSeule);
  if (!a.repertoire.empty()) {
    marbrel::ExporteRepertoire(*store, a.fichiers, a.repertoire, encodage);
    return;
  }
  if (encodage != marbrel::Encodage::Utf8) {
    throw UsageError("--encodage ne vaut qu'avec --dir : un dump JSON est toujours en UTF-8.");
  }
  // One snapshot: the dump is one state of the store.
  store->DebutInstantane();
  struct Fin {
    marbrel::Store& s;
    ~Fin() { s.FinInstantane(); }
  } fin{*store};
  marbrel::Exporte(*store, a.fichiers, std::cout);
}

// The words of --fields, the key alone when there are none.
std::vector<std::string> Champs(const std::string& liste) {
  std::vector<std::string> mots;
  std::size_t i = 0;
  while ((i = liste.find_first_not_of(" \t", i)) != std::string::npos) {
    std::size_t fin = liste.find_first_of(" \t", i);
    mots.push_back(liste.substr(i, fin == std::string::npos ? fin : fin - i));
    i = fin;
  }
  if (mots.empty()) mots.push_back("0");
  return mots;
}

void Select(const Arguments& a) {
  if (a.phrase.find_first_not_of(" \t") == std::string::npos) {
    throw UsageError("la phrase de sélection est vide.");
  }
  const FormatSelection format = FormatNomme(a.format);
  marbrel::Base base(OuvreBase(NomDeBase(a.base), marbrel::Acces::LectureSeule));
  marbrel::TabDyn commande;
  commande.Remplace(1, a.phrase);
  commande.Remplace(3, a.champs);
  marbrel::Liste_Selection liste = base.Selectionne(commande.Texte(), "");
  EcritSelection(liste, Champs(a.champs), format, std::cout);
}

const char* const kAideBase =
    "Base : un fichier SQLite, ou postgresql://utilisateur@hôte/base (défaut : VESKO_DB)";

}  // namespace

void AjouteCommandesDonnees(CLI::App& app, int& statut) {
  auto a = std::make_shared<Arguments>();

  CLI::App* init = app.add_subcommand(
      "init", "Crée une base vide : les 33 fichiers des dossiers et leurs dictionnaires.");
  init->add_option("--db", a->base,
                   "Base à créer (un fichier SQLite qui ne doit pas exister, "
                   "ou postgresql://… sans tables Vesko)");
  init->callback([a, &statut] { Execute(statut, [a] { Init(*a); }); });

  CLI::App* import = app.add_subcommand(
      "import", "Charge des dumps JSON (dans l'ordre) ou un dossier de fichiers, tout ou rien.");
  import->add_option("--db", a->base, kAideBase);
  import->add_option("dumps", a->dumps, "Dumps JSON à charger");
  import->add_option("--dir", a->repertoire,
                     "Dossier de fichiers multivaleur : un dossier par fichier, un fichier par "
                     "enregistrement");
  import->add_option("--encodage", a->encodage, "Encodage du dossier : utf8 ou latin1")
      ->capture_default_str();
  import->add_flag("--strict", a->strict,
                   "Refuse l'import si un code de personne (CIVILAIDE, CIVILAIDANT) ne peut pas "
                   "être isolé par les sélections");
  import->callback([a, &statut] { Execute(statut, [a] { Import(*a);
});
}  // namespace vesko_app
);

CLI::App* exporte = app.add_subcommand(
    "export",
    "Écrit un dump JSON de la base (ou des fichiers nommés) sur la sortie standard, "
    "ou un dossier de fichiers (--dir).");
exporte->add_option("--db", a->base, kAideBase);
exporte->add_option("fichiers", a->fichiers, "Fichiers à exporter (tous par défaut)");
exporte->add_option("--dir", a->repertoire, "Dossier neuf où écrire les fichiers");
exporte->add_option("--encodage", a->encodage, "Encodage du dossier : utf8 ou latin1")
    ->capture_default_str();
exporte->callback([a, &statut] { Execute(statut, [a] { Export(*a); }); });

CLI::App* select = app.add_subcommand(
    "select", "Exécute une phrase SSELECT/SELECT et écrit une ligne par enregistrement.");
select->add_option("--db", a->base, kAideBase);
select->add_option("phrase", a->phrase, "La phrase, par exemple 'SSELECT CIVILAIDE PAR 2'")
    ->required();
select->add_option("--fields", a->champs, "Champs à écrire, séparés par des blancs (0 = la clé)")
    ->capture_default_str();
select->add_option("--format", a->format, "tsv, csv ou json")->capture_default_str();
select->callback([a, &statut] { Execute(statut, [a] { Select(*a); }); });
}

}  // namespace vesko_app

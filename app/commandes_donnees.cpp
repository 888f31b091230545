// The data side of `vesko`: init, import, export and select.
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "app/commandes.h"
#include "db/code_personne.h"
#include "marbrel/base.h"
#include "marbrel/creation_base.h"
#include "marbrel/dump.h"
#include "marbrel/erreur.h"
#include "marbrel/marques.h"
#include "marbrel/sqlite_store.h"

namespace vesko_app {

namespace {

struct Arguments {
  std::string base;
  std::vector<std::string> dumps;
  std::vector<std::string> fichiers;
  std::string phrase;
  std::string champs = "0";
  bool strict = false;  // import: refuse main-file keys that cannot be isolated
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

// An existing store; a path that holds none gets a message saying what to do.
std::shared_ptr<marbrel::SqliteStore> OuvreBase(const std::string& chemin, bool lecture_seule) {
  if (!std::filesystem::exists(chemin)) {
    throw marbrel::Erreur(
        marbrel::ERR_BASE,
        "La base " + chemin + " n'existe pas (vesko init --db " + chemin + " la crée).");
  }
  using Mode = marbrel::SqliteStore::Mode;
  return std::make_shared<marbrel::SqliteStore>(
      chemin, lecture_seule ? Mode::LectureSeule : Mode::LectureEcriture);
}

void Init(const Arguments& a) {
  if (std::filesystem::exists(a.base)) {
    throw marbrel::Erreur(marbrel::ERR_BASE, "La base " + a.base +
                                                 " existe déjà : vesko init ne remplace jamais "
                                                 "une base.");
  }
  try {
    marbrel::SqliteStore store(a.base, marbrel::SqliteStore::Mode::Creation);
    marbrel::CreeFichiersVesko(store);
  } catch (...) {
    // A store left half made would be taken for a good one by the next command.
    std::error_code ignore;
    std::filesystem::remove(a.base, ignore);
    throw;
  }
}

void Import(const Arguments& a) {
  // Every dump is read and checked before the store is opened for writing.
  std::vector<marbrel::Dump> dumps;
  for (const std::string& chemin : a.dumps) dumps.push_back(marbrel::LitDumpFichier(chemin));
  VerifieCodes(dumps, a.strict);
  auto store = OuvreBase(a.base, false);
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
  auto store = OuvreBase(a.base, true);
  marbrel::Exporte(*store, a.fichiers, std::cout);
}

// One row per line, fields separated by tabs; the values of a multivalued
// field (sub-value marks in the row) are shown separated by "]".
void Select(const Arguments& a) {
  if (a.phrase.find_first_not_of(" \t") == std::string::npos) {
    throw UsageError("la phrase de sélection est vide.");
  }
  marbrel::Base base(OuvreBase(a.base, true));
  marbrel::TabDyn commande;
  commande.Remplace(1, a.phrase);
  commande.Remplace(3, a.champs);
  marbrel::Liste_Selection liste = base.Selectionne(commande.Texte(), "");
  // The number of fields asked for: the words of --fields (the key when none).
  long nombre_champs = 0;
  bool dans_mot = false;
  for (char c : a.champs) {
    bool blanc = c == ' ' || c == '\t';
    if (!blanc && !dans_mot) ++nombre_champs;
    dans_mot = !blanc;
  }
  if (nombre_champs == 0) nombre_champs = 1;
  for (long r = 1; r <= liste.DCount(); ++r) {
    std::string ligne;
    for (long f = 1; f <= nombre_champs; ++f) {
      if (f > 1) ligne += '\t';
      for (char c : liste(r, f)) ligne += c == marbrel::SM ? ']' : c;
    }
    std::cout << ligne << '\n';
  }
}

}  // namespace

void AjouteCommandesDonnees(CLI::App& app, int& statut) {
  auto a = std::make_shared<Arguments>();

  CLI::App* init = app.add_subcommand(
      "init", "Crée une base vide : les 33 fichiers des dossiers et leurs dictionnaires.");
  init->add_option("--db", a->base, "Fichier de la base à créer (il ne doit pas exister)")
      ->required();
  init->callback([a, &statut] { Execute(statut, [a] { Init(*a); }); });

  CLI::App* import = app.add_subcommand(
      "import", "Charge un ou plusieurs dumps JSON, dans l'ordre, tout ou rien.");
  import->add_option("--db", a->base, "Fichier de la base")->required();
  import->add_option("dumps", a->dumps, "Dumps JSON à charger")->required();
  import->add_flag("--strict", a->strict,
                   "Refuse l'import si un code de personne (CIVILAIDE, CIVILAIDANT) ne peut pas "
                   "être isolé par les sélections");
  import->callback([a, &statut] { Execute(statut, [a] { Import(*a);
});
}  // namespace vesko_app
);

CLI::App* exporte = app.add_subcommand(
    "export", "Écrit un dump JSON de la base (ou des fichiers nommés) sur la sortie standard.");
exporte->add_option("--db", a->base, "Fichier de la base")->required();
exporte->add_option("fichiers", a->fichiers, "Fichiers à exporter (tous par défaut)");
exporte->callback([a, &statut] { Execute(statut, [a] { Export(*a); }); });

CLI::App* select = app.add_subcommand(
    "select", "Exécute une phrase SSELECT/SELECT et écrit une ligne par enregistrement.");
select->add_option("--db", a->base, "Fichier de la base")->required();
select->add_option("phrase", a->phrase, "La phrase, par exemple 'SSELECT CIVILAIDE PAR 2'")
    ->required();
select->add_option("--fields", a->champs, "Champs à écrire, séparés par des blancs (0 = la clé)")
    ->capture_default_str();
select->callback([a, &statut] { Execute(statut, [a] { Select(*a); }); });
}

}  // namespace vesko_app

#include "tests/support/banc.h"

#include <QApplication>
#include <cstdlib>
#include <filesystem>
#include <sstream>

#include "marbrel/creation_base.h"
#include "marbrel/marques.h"
#include "marbrel/outils.h"
#include "marbrel/schema.h"
#include "marbrel/sqlite_store.h"
#include "printing/imprimantes.h"
#include "printing/print_formats.h"
#include "tests/support/magasin_defaillant.h"

namespace banc {

namespace {

// One QApplication for the whole test program (the control is a widget).
void Application() {
  static int argc = 1;
  static char nom[] = "tests";
  static char* argv[] = {nom, nullptr};
  static QApplication* app = [] {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    return new QApplication(argc, argv);
  }();
  (void)app;
}

}  // namespace

marbrel::TabDyn Rec(std::initializer_list<std::string> attributs) {
  std::string texte;
  for (const std::string& a : attributs) {
    if (&a != attributs.begin()) texte += marbrel::AM;
    for (char c : a) texte += c == ']' ? marbrel::VM : (c == '\\' ? marbrel::SM : c);
  }
  return marbrel::TabDyn(texte);
}

Banc::Banc() {
  Application();
  char modele[] = "/tmp/vesko-banc-XXXXXX";
  dossier_ = mkdtemp(modele);
  chemin_ = dossier_ + "/base.vesko";
  auto store =
      std::make_shared<marbrel::SqliteStore>(chemin_, marbrel::SqliteStore::Mode::Creation);
  // The same files and dictionary items as `vesko init`.
  marbrel::CreeFichiersVesko(*store);
  ecriture_ = std::make_shared<marbrel::Base>(store);
  controle_ = std::make_unique<Ctr_Vesko>();
}

Banc::~Banc() {
  controle_.reset();
  ecriture_.reset();
  std::error_code ec;
  std::filesystem::remove_all(dossier_, ec);
}

void Banc::Met(const std::string& fichier, const std::string& cle, const marbrel::TabDyn& rec) {
  ecriture_->Magasin().CreeFichier(fichier);
  ecriture_->Magasin().Ecrit(fichier, cle, rec.Texte());
}

void Banc::MetDict(const std::string& fichier, const std::string& item,
                   const marbrel::TabDyn& rec) {
  Met("DICT " + fichier, item, rec);
}

void Banc::Imprime(const std::string& type, const std::vector<std::string>& cles,
                   const std::string& aujourdhui) {
  enregistrement_ = {};
  printing::Destination enregistreur{
      "Enregistrement", [this](const printing::Travail&) {
        return std::make_unique<printing::RecordingSurface>(&enregistrement_);
      }};
  printing::ListeImprimantes::Courante().Installe({enregistreur});
  marbrel::Outils::Instance().Installe_Choix([](const std::string&) { return "0"; },
                                             [] { return std::int16_t{9}; });
  marbrel::TabDyn liste;
  for (size_t i = 0; i < cles.size(); ++i) liste.Remplace(static_cast<long>(i + 1), cles[i]);
  std::string t = type;
  controle_->Fixe_Aujourdhui(std::stol(marbrel::Outils::Instance().Date_Interne(aujourdhui)));
  // A print opens the store read-only, like the command does.
  std::shared_ptr<marbrel::Store> store =
      std::make_shared<marbrel::SqliteStore>(chemin_, marbrel::SqliteStore::Mode::LectureSeule);
  if (!en_panne_.empty()) {
    store = std::make_shared<MagasinDefaillant>(store, en_panne_);
    // The failing store is not a file: its journal is named for it.
    controle_->Fixe_Journal(chemin_ + ".journal");
  }
  controle_->TheDatabase(std::make_shared<marbrel::Base>(store));
  controle_->Edition(liste, t);
}

std::string Banc::Texte() const { return printing::EnTexte(enregistrement_); }
std::string Banc::Json() const { return printing::EnJson(enregistrement_); }

std::vector<std::string> Banc::Lignes() const {
  std::vector<std::string> lignes;
  std::istringstream texte(Texte());
  for (std::string ligne; std::getline(texte, ligne);) lignes.push_back(ligne);
  return lignes;
}

}  // namespace banc

// `vesko print`: prints dossiers the way a host does — keys in a TabDyn, one
// call of Edition — onto a PDF file, a print queue or a recording (text/JSON).
#include <QApplication>
#include <QDate>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <unistd.h>

#include "app/commandes.h"
#include "app/impression_options.h"
#include "control/ctr_vesko.h"
#include "marbrel/base.h"
#include "marbrel/outils.h"
#include "printing/imprimantes.h"
#include "printing/print_formats.h"
#include "printing/recording.h"

namespace vesko_app {

namespace {

// The keys of the command line; "-" reads more keys from standard input,
// one per line (blank lines ignored).
std::vector<std::string> Cles(const std::vector<std::string>& arguments) {
  std::vector<std::string> cles;
  for (const std::string& a : arguments) {
    if (a != "-") {
      cles.push_back(a);
      continue;
    }
    std::string ligne;
    while (std::getline(std::cin, ligne)) {
      if (!ligne.empty() && ligne.back() == '\r') ligne.pop_back();
      if (!ligne.empty()) cles.push_back(ligne);
    }
  }
  return cles;
}

long JourDe(const std::string& date_iso) {
  QDate d = QDate::fromString(QString::fromStdString(date_iso), Qt::ISODate);
  if (!d.isValid()) {
    throw UsageError("date invalide « " + date_iso + " » : attendu AAAA-MM-JJ (par exemple 2024-03-15).");
  }
  return marbrel::Outils::Date_Interne(d.year(), d.month(), d.day());
}

// Asks on the terminal which printer to use; 0 cancels. Returns the index in
// the list, or -1.
long DemandeImprimante(const std::vector<printing::Destination>& liste) {
  std::cout << "Imprimantes disponibles :\n";
  for (size_t i = 0; i < liste.size(); ++i) {
    std::cout << "  " << (i + 1) << ". " << liste[i].nom << "\n";
  }
  std::cout << "  0. Annuler\n";
  for (;;) {
    std::cout << "Votre choix : " << std::flush;
    std::string reponse;
    if (!std::getline(std::cin, reponse)) return -1;
    if (marbrel::EstNumerique(reponse) && reponse.find('.') == std::string::npos) {
      long n = std::stol(reponse);
      if (n == 0) return -1;
      if (n >= 1 && n <= static_cast<long>(liste.size())) return n - 1;
    }
    std::cout << "Répondez par un numéro entre 0 et " << liste.size() << ".\n";
  }
}

void Ecrit(const std::string& chemin, const std::string& contenu) {
  std::ofstream f(chemin, std::ios::binary);
  f << contenu;
  f.close();
  if (!f) throw std::runtime_error("impossible d'écrire le fichier " + chemin + ".");
}

void Imprime(const OptionsImpression& o, int& argc, char** argv) {
  if (o.type.empty()) throw UsageError("le type de dossier (--type AIDE ou AIDANT) est obligatoire.");
  int sorties = !o.pdf.empty() + !o.imprimante.empty() + !o.texte.empty() + !o.json.empty();
  if (sorties > 1) throw UsageError("une seule sortie à la fois : --pdf, --printer, --text ou --json.");
  if (sorties == 0 && !isatty(STDIN_FILENO)) {
    throw UsageError(
        "aucune sortie choisie : précisez --pdf FICHIER, --printer FILE, --text FICHIER ou "
        "--json FICHIER (sans terminal, la liste des imprimantes ne peut pas être proposée).");
  }
  std::vector<std::string> cles = Cles(o.cles);
  long aujourdhui = o.date.empty() ? -1 : JourDe(o.date);

  // The control is a widget: it needs an application, even without a screen.
  if (!std::getenv("DISPLAY") && !std::getenv("WAYLAND_DISPLAY") && !std::getenv("QT_QPA_PLATFORM")) {
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
  }
  QApplication application(argc, argv);

  auto base = marbrel::Base::OuvreSqlite(o.base, /*lecture_seule=*/true);

  printing::Enregistrement enregistrement;
  auto& imprimantes = printing::ListeImprimantes::Courante();
  long choix = -1;
  if (!o.texte.empty() || !o.json.empty()) {
    imprimantes.Installe({{"Enregistrement", [&](const printing::Travail&) {
                             return std::make_unique<printing::RecordingSurface>(&enregistrement);
                           }}});
    choix = 0;
  } else {
    if (!o.pdf.empty()) printing::ListeImprimantes::FixeFichierPdf(o.pdf);
    const auto& liste = imprimantes.Destinations();
    if (!o.pdf.empty()) {
      choix = static_cast<long>(liste.size()) - 1;  // the built-in "PDF" closes the list
    } else if (!o.imprimante.empty()) {
      for (size_t i = 0; i < liste.size(); ++i) {
        if (liste[i].nom == o.imprimante) choix = static_cast<long>(i);
      }
      if (choix < 0) throw std::runtime_error("l'imprimante « " + o.imprimante + " » est inconnue.");
    } else {
      choix = DemandeImprimante(liste);
    }
  }
  marbrel::Outils::Instance().Installe_Choix(
      [choix](const std::string&) { return std::to_string(choix); },
      [] { return std::int16_t{9}; });

  Ctr_Vesko controle;
  if (!o.date.empty()) controle.Fixe_Aujourdhui(aujourdhui);
  controle.TheClient(std::make_shared<marbrel::Client>());
  controle.TheDatabase(base);
  marbrel::TabDyn liste;
  for (size_t i = 0; i < cles.size(); ++i) liste.Remplace(static_cast<long>(i + 1), cles[i]);
  std::string type = o.type;
  controle.Edition(liste, type);

  if (choix < 0) throw std::runtime_error("impression annulée : aucune imprimante n'a été choisie.");
  for (const std::string& cle : controle.Cles_Absentes()) {
    std::cerr << "vesko : la fiche « " << cle << " » est absente du fichier "
              << (o.type == "AIDANT" ? "CIVILAIDANT" : "CIVILAIDE")
              << " : son dossier est imprimé vide.\n";
  }
  for (const Incident& i : controle.Incidents()) {
    std::cerr << "vesko : échec dans " << i.section << " pour la fiche « " << i.cle
              << " » : " << i.message << "\n";
  }
  if (!o.texte.empty()) Ecrit(o.texte, printing::EnTexte(enregistrement));
  if (!o.json.empty()) Ecrit(o.json, printing::EnJson(enregistrement));
  if (!o.pdf.empty()) std::cerr << "Dossiers imprimés dans " << o.pdf << "\n";
}

}  // namespace

void AjouteCommandeImpression(CLI::App& app, int& statut, int& argc, char** argv) {
  auto* print = app.add_subcommand("print", "Imprime les dossiers des personnes données");
  auto o = std::make_shared<OptionsImpression>();
  DeclareOptionsImpression(*print, *o);
  print->callback([o, &statut, &argc, argv] {
    Execute(statut, [&] { Imprime(*o, argc, argv); });
  });
}

}  // namespace vesko_app

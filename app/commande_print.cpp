// `vesko print`: prints dossiers the way a host does — keys in a TabDyn, one
// call of Edition — onto a PDF file, a print queue, a recording (text, JSON,
// PNG images) or the print preview.
#include <sys/stat.h>
#include <unistd.h>

#include <QApplication>
#include <QDate>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>

#include "app/commandes.h"
#include "app/impression_options.h"
#include "app/impression_queue.h"
#include "control/ctr_vesko.h"
#include "marbrel/base.h"
#include "marbrel/outils.h"
#include "printing/apercu.h"
#include "printing/imprimantes.h"
#include "printing/pdf_surface.h"
#include "printing/recording.h"
#include "printing/rendu.h"
#include "printing/sortie_format.h"

namespace vesko_app {

namespace {

enum class Sortie { Pdf, File, Texte, Json, Png, Apercu, Demande };

// What the options ask for, once checked.
struct Commande {
  Sortie sortie = Sortie::Demande;
  int copies = 1;
  std::int16_t papier = 9;  // DMPAPER code
};

// The paper names the command accepts and their DMPAPER codes.
std::int16_t CodePapier(const std::string& nom) {
  const QString n = QString::fromStdString(nom);
  if (n.compare("A4", Qt::CaseInsensitive) == 0) return 9;
  if (n.compare("A3", Qt::CaseInsensitive) == 0) return 8;
  if (n.compare("Letter", Qt::CaseInsensitive) == 0) return 1;
  throw UsageError("format de papier inconnu « " + nom + " » (--paper) : A4, A3 ou Letter.");
}

Commande Verifie(const OptionsImpression& o) {
  if (o.type.empty())
    throw UsageError("le type de dossier (--type AIDE ou AIDANT) est obligatoire.");
  Commande c;
  const std::pair<bool, Sortie> sorties[] = {
      {!o.pdf.empty(), Sortie::Pdf},     {!o.imprimante.empty(), Sortie::File},
      {!o.texte.empty(), Sortie::Texte}, {!o.json.empty(), Sortie::Json},
      {!o.png.empty(), Sortie::Png},     {o.apercu, Sortie::Apercu}};
  int n = 0;
  for (const auto& [choisie, sortie] : sorties) {
    if (choisie) {
      ++n;
      c.sortie = sortie;
    }
  }
  if (n > 1) {
    throw UsageError(
        "une seule sortie à la fois : --pdf, --printer, --text, --json, --png ou --preview.");
  }
  if (n == 0 && !isatty(STDIN_FILENO)) {
    throw UsageError(
        "aucune sortie choisie : précisez --pdf FICHIER, --printer FILE, --text FICHIER, "
        "--json FICHIER, --png DOSSIER ou --preview (sans terminal, la liste des imprimantes ne "
        "peut pas être proposée).");
  }
  const bool imprimante = c.sortie == Sortie::File || c.sortie == Sortie::Demande;
  if (!imprimante && !o.pdf_secours.empty()) {
    throw UsageError("--fallback-pdf ne vaut qu'avec une imprimante (--printer FILE).");
  }
  if (!imprimante && o.attendre) {
    throw UsageError("--wait ne vaut qu'avec une imprimante (--printer FILE).");
  }
  if (!marbrel::EstNumerique(o.copies) ||
      o.copies.find_first_not_of("0123456789") != std::string::npos || std::stol(o.copies) < 1 ||
      std::stol(o.copies) > 999) {
    throw UsageError("nombre d'exemplaires invalide « " + o.copies +
                     " » (--copies) : un entier de 1 à 999.");
  }
  c.copies = static_cast<int>(std::stol(o.copies));
  if (!imprimante && c.copies > 1) {
    throw UsageError("--copies ne vaut qu'avec une imprimante (--printer FILE).");
  }
  c.papier = CodePapier(o.papier);
  return c;
}

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
    throw UsageError("date invalide « " + date_iso +
                     " » : attendu AAAA-MM-JJ (par exemple 2024-03-15).");
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

// --text or --json written as the pages come (one page in memory), into a
// temporary file beside the destination that takes its name once complete:
// a failed run leaves nothing half-written.
class FichierFormat {
 public:
  FichierFormat(const std::string& chemin, printing::SortieFormat::Format format)
      : chemin_(chemin), provisoire_(chemin + ".XXXXXX") {
    const int fd = mkstemp(provisoire_.data());
    if (fd < 0) throw std::runtime_error("impossible d'écrire le fichier " + chemin + ".");
    const mode_t masque = umask(0);
    umask(masque);
    fchmod(fd, 0666 & ~masque);
    close(fd);
    flux_.open(provisoire_, std::ios::binary | std::ios::trunc);
    sortie_ = std::make_unique<printing::SortieFormat>(flux_, format, chemin);
  }
  ~FichierFormat() {
    if (!termine_) std::remove(provisoire_.c_str());
  }
  printing::SortieFormat& Sortie() { return *sortie_; }
  void Termine() {
    sortie_->Termine();
    flux_.close();
    if (!flux_ || std::rename(provisoire_.c_str(), chemin_.c_str()) != 0) {
      throw std::runtime_error("impossible d'écrire le fichier " + chemin_ + ".");
    }
    termine_ = true;
  }

 private:
  std::string chemin_, provisoire_;
  std::ofstream flux_;
  std::unique_ptr<printing::SortieFormat> sortie_;
  bool termine_ = false;
};

// The built-in "PDF" printer alone: a file needs no print server.
std::vector<printing::Destination> PdfSeul(const std::string& chemin) {
  printing::ListeImprimantes::FixeFichierPdf(chemin);
  return {{"PDF", [](const printing::Travail& travail) {
             return printing::SurfacePdf(printing::ListeImprimantes::FichierPdf(), travail);
           }}};
}

// Where the document goes: installs the printer list the control chooses
// from and returns the index of the choice (-1: cancelled). A queue is
// checked first; when it cannot print, the document goes to the fallback PDF
// if there is one, otherwise the command fails naming the queue and why.
long ChoisitDestination(const OptionsImpression& o, const Commande& c,
                        printing::Enregistrement& enregistrement, EnvoiFile& envoi) {
  auto& imprimantes = printing::ListeImprimantes::Courante();
  switch (c.sortie) {
    case Sortie::Texte:
    case Sortie::Json:
    case Sortie::Png:
    case Sortie::Apercu:
      imprimantes.Installe({{"Enregistrement", [&](const printing::Travail&) {
                               return std::make_unique<printing::RecordingSurface>(&enregistrement);
                             }}});
      return 0;
    case Sortie::Pdf:
      imprimantes.Installe(PdfSeul(o.pdf));
      return 0;
    case Sortie::File:
    case Sortie::Demande:
      break;
  }
  // A named queue is asked about before the list is made: a server that
  // does not answer is told at once.
  if (c.sortie == Sortie::File && !envoi.PeutImprimer(o.imprimante)) {
    imprimantes.Installe(PdfSeul(o.pdf_secours));
    return 0;
  }
  imprimantes.Installe(envoi.Destinations());
  const auto& liste = imprimantes.Destinations();
  long choix = -1;
  if (c.sortie == Sortie::Demande) {
    choix = DemandeImprimante(liste);
    // The built-in "PDF" closes the list.
    if (choix < 0 || choix + 1 == static_cast<long>(liste.size())) return choix;
    if (!envoi.PeutImprimer(liste[choix].nom)) {
      imprimantes.Installe(PdfSeul(o.pdf_secours));
      return 0;
    }
    return choix;
  }
  for (size_t i = 0; i + 1 < liste.size() && choix < 0; ++i) {
    if (liste[i].nom == o.imprimante) choix = static_cast<long>(i);
  }
  if (choix < 0) {
    throw std::runtime_error("l'imprimante « " + o.imprimante +
                             " » est connue du serveur d'impression mais absente de la liste "
                             "des imprimantes de Qt.");
  }
  return choix;
}

// The preview needs a screen: without one the dialog would wait for a click
// that cannot come.
void ExigeEcran() {
  const QString plateforme = QGuiApplication::platformName();
  if (plateforme == "offscreen" || plateforme == "minimal") {
    throw std::runtime_error("l'aperçu (--preview) a besoin d'un écran : la plateforme « " +
                             plateforme.toStdString() +
                             " » n'en a pas (DISPLAY ou WAYLAND_DISPLAY absents).");
  }
}

void MontreApercu(const printing::Enregistrement& enregistrement, const std::string& titre) {
  QPrinter imprimante(QPrinter::HighResolution);
  imprimante.setDocName(QString::fromStdString(titre));
  auto dialogue = printing::Apercu(enregistrement, imprimante);
  if (dialogue->exec() == QDialog::Accepted) {
    std::cerr << "Document imprimé depuis l'aperçu.\n";
  } else {
    std::cerr << "Aperçu fermé : rien n'a été imprimé.\n";
  }
}

void Imprime(const OptionsImpression& o, int& argc, char** argv) {
  const Commande c = Verifie(o);
  std::vector<std::string> cles = Cles(o.cles);
  long aujourdhui = o.date.empty() ? -1 : JourDe(o.date);

  // The control is a widget: it needs an application, even without a screen.
  if (!std::getenv("DISPLAY") && !std::getenv("WAYLAND_DISPLAY") &&
      !std::getenv("QT_QPA_PLATFORM")) {
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
  }
  // Without a session (a server, a cron job) Qt would warn on every print that
  // it has no runtime directory: give it the private one it would choose.
  if (!std::getenv("XDG_RUNTIME_DIR")) {
    const std::string dossier = "/tmp/runtime-" + std::to_string(getuid());
    if (mkdir(dossier.c_str(), 0700) == 0 || errno == EEXIST) {
      setenv("XDG_RUNTIME_DIR", dossier.c_str(), 1);
    }
  }
  QApplication application(argc, argv);
  if (c.sortie == Sortie::Apercu) ExigeEcran();

  auto base = marbrel::Base::OuvreSqlite(o.base, /*lecture_seule=*/true);

  printing::Enregistrement enregistrement;
  EnvoiFile envoi(c.copies, o.pdf_secours);
  const long choix = ChoisitDestination(o, c, enregistrement, envoi);
  std::unique_ptr<FichierFormat> format;
  if (c.sortie == Sortie::Texte || c.sortie == Sortie::Json) {
    format = std::make_unique<FichierFormat>(c.sortie == Sortie::Texte ? o.texte : o.json,
                                             c.sortie == Sortie::Texte
                                                 ? printing::SortieFormat::Format::Texte
                                                 : printing::SortieFormat::Format::Json);
    printing::ListeImprimantes::Courante().Installe(
        {{"Enregistrement",
          [&format](const printing::Travail&) { return format->Sortie().NouvelleSurface(); }}});
  }
  const std::int16_t papier = c.papier;
  marbrel::Outils::Instance().Installe_Choix(
      [choix](const std::string&) { return std::to_string(choix); }, [papier] { return papier; });

  Ctr_Vesko controle;
  if (!o.date.empty()) controle.Fixe_Aujourdhui(aujourdhui);
  controle.TheClient(std::make_shared<marbrel::Client>());
  controle.TheDatabase(base);
  marbrel::TabDyn liste;
  for (size_t i = 0; i < cles.size(); ++i) liste.Remplace(static_cast<long>(i + 1), cles[i]);
  std::string type = o.type;
  controle.Edition(liste, type);

  if (choix < 0)
    throw std::runtime_error("impression annulée : aucune imprimante n'a été choisie.");
  for (const std::string& cle : controle.Cles_Absentes()) {
    std::cerr << "vesko : la fiche « " << cle << " » est absente du fichier "
              << (o.type == "AIDANT" ? "CIVILAIDANT" : "CIVILAIDE")
              << " : son dossier est imprimé vide.\n";
  }
  for (const Incident& i : controle.Incidents()) {
    // A job that could not be sent is told once, below, with what was done instead.
    if (envoi.Explique(i.message)) continue;
    std::cerr << "vesko : échec dans " << i.section << " pour la fiche « " << i.cle
              << " » : " << i.message << "\n";
  }
  switch (c.sortie) {
    case Sortie::Texte:
    case Sortie::Json:
      format->Termine();
      break;
    case Sortie::Png: {
      const auto images = printing::EcritPng(enregistrement, o.png, kDpiPng);
      std::cerr << images.size() << " page(s) écrite(s) dans " << o.png << "\n";
      break;
    }
    case Sortie::Apercu:
      MontreApercu(enregistrement, "DOSSIER " + o.type + " " + (cles.empty() ? "" : cles[0]));
      break;
    case Sortie::Pdf:
      std::cerr << "Dossiers imprimés dans " << o.pdf << "\n";
      break;
    case Sortie::File:
    case Sortie::Demande:
      if (envoi.FileChoisie()) {
        envoi.Conclut(o.attendre);
      } else {
        std::cerr << "Dossiers imprimés dans " << printing::ListeImprimantes::FichierPdf() << "\n";
      }
      break;
  }
}

}  // namespace

void AjouteCommandeImpression(CLI::App& app, int& statut, int& argc, char** argv) {
  auto* print = app.add_subcommand("print", "Imprime les dossiers des personnes données");
  auto o = std::make_shared<OptionsImpression>();
  DeclareOptionsImpression(*print, *o);
  print->callback([o, &statut, &argc, argv] { Execute(statut, [&] { Imprime(*o, argc, argv); }); });
}

}  // namespace vesko_app

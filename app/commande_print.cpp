// `vesko print`: prints dossiers the way a host does — keys in a TabDyn, one
// call of Edition — onto a PDF file, a print queue, a recording (text, JSON,
// PNG images) or the print preview.
#include <sys/stat.h>
#include <unistd.h>

#include <QApplication>
#include <QDate>
#include <QFileInfo>
#include <QPrinter>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>

#include "app/choix_terminal.h"
#include "app/commandes.h"
#include "app/fichier_format.h"
#include "app/impression_options.h"
#include "app/impression_queue.h"
#include "app/nom_base.h"
#include "app/progression_terminal.h"
#include "control/ctr_vesko.h"
#include "marbrel/base.h"
#include "marbrel/marques.h"
#include "marbrel/outils.h"
#include "marbrel/visible.h"
#include "printing/apercu.h"
#include "printing/imprimantes.h"
#include "printing/pdf_surface.h"
#include "printing/print_formats.h"
#include "printing/provisoires.h"
#include "printing/qt_surface.h"
#include "printing/recording.h"
#include "printing/rendu.h"
#include "printing/sortie_format.h"
#include "printing/sortie_sure.h"
#include "printing/suivi.h"
#include "printing/surface_avec_fin.h"
#include "printing/traductions.h"

namespace vesko_app {

namespace {

enum class Sortie { Pdf, File, Texte, Json, Png, Apercu, Demande };

// What the options ask for, once checked.
struct Commande {
  Sortie sortie = Sortie::Demande;
  int copies = 1;
  std::int16_t papier = 9;                 // DMPAPER code
  std::chrono::seconds delai{0};           // --timeout of --wait (0: none)
  printing::cups::OptionsTravail options;  // -o, as lp takes them
  bool pdf_sur_sortie = false;             // --pdf -
};

// The paper names the command accepts and their DMPAPER codes.
std::int16_t CodePapier(const std::string& nom) {
  const QString n = QString::fromStdString(nom);
  if (n.compare("A4", Qt::CaseInsensitive) == 0) return 9;
  if (n.compare("A3", Qt::CaseInsensitive) == 0) return 8;
  if (n.compare("Letter", Qt::CaseInsensitive) == 0) return 1;
  throw UsageError("format de papier inconnu « " + nom + " » (--paper) : A4, A3 ou Letter.");
}

// The paper a print server's media keyword names, among those the command
// draws on (0: another one, the drawing stays on its own paper).
std::int16_t CodeMedia(const std::string& media) {
  const std::string m = QString::fromStdString(media).toLower().toStdString();
  if (m == "a4" || m.rfind("iso_a4_", 0) == 0) return 9;
  if (m == "a3" || m.rfind("iso_a3_", 0) == 0) return 8;
  if (m == "letter" || m.rfind("na_letter_", 0) == 0) return 1;
  return 0;
}

Commande Verifie(const OptionsImpression& o) {
  if (o.type.empty())
    throw UsageError("le type de dossier (--type AIDE ou AIDANT) est obligatoire.");
  // The control prints any other word as a mixed dossier, for the hosts that
  // rely on it; a user who types one has made a mistake.
  if (o.type != "AIDE" && o.type != "AIDANT")
    throw UsageError("type de dossier inconnu « " + o.type + " » (--type) : AIDE ou AIDANT.");
  Commande c;
  c.pdf_sur_sortie = o.pdf == "-";
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
  if (!imprimante && !o.options_cups.empty()) {
    throw UsageError("-o ne vaut qu'avec une imprimante (--printer FILE).");
  }
  if (!o.delai.empty()) {
    if (!o.attendre) throw UsageError("--timeout ne vaut qu'avec --wait.");
    if (o.delai.find_first_not_of("0123456789") != std::string::npos || o.delai.size() > 6 ||
        std::stol(o.delai) < 1) {
      throw UsageError("délai invalide « " + o.delai +
                       " » (--timeout) : un nombre entier de secondes, au moins 1.");
    }
    c.delai = std::chrono::seconds(std::stol(o.delai));
  }
  for (const std::string& option : o.options_cups) {
    try {
      for (auto& paire : printing::cups::LitOptions(option)) c.options.push_back(paire);
    } catch (const std::exception& e) {
      throw UsageError(e.what());
    }
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
  c.papier = CodePapier(o.papier.empty() ? "A4" : o.papier);
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
  // Exactly ten characters: Qt's ISO reading would also take a date and time.
  QDate d = QDate::fromString(QString::fromStdString(date_iso), "yyyy-MM-dd");
  if (date_iso.size() != 10 || !d.isValid()) {
    throw UsageError("date invalide « " + texte::Visible(date_iso) +
                     " » : attendu AAAA-MM-JJ (par exemple 2024-03-15).");
  }
  return marbrel::Outils::Date_Interne(d.year(), d.month(), d.day());
}

// The built-in "PDF" printer alone: a file needs no print server. nom is what
// the access journal says when it is not the file's path.
std::vector<printing::Destination> PdfSeul(const std::string& chemin,
                                           const std::string& nom = "PDF") {
  printing::ListeImprimantes::FixeFichierPdf(chemin);
  return {{nom, [](const printing::Travail& travail) {
             return printing::SurfacePdfSure(printing::ListeImprimantes::FichierPdf(), travail);
           }}};
}

// A recording, as the access journal names it: what becomes of it.
std::string NomEnregistrement(const OptionsImpression& o, const Commande& c) {
  auto absolu = [](const std::string& chemin) {
    return QFileInfo(QString::fromStdString(chemin)).absoluteFilePath().toStdString();
  };
  switch (c.sortie) {
    case Sortie::Texte:
      return "texte " + absolu(o.texte);
    case Sortie::Json:
      return "JSON " + absolu(o.json);
    case Sortie::Png:
      return "PNG " + absolu(o.png);
    default:
      return "Aperçu";
  }
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
    case Sortie::Apercu:
      // The name says in the access journal where the recording goes.
      imprimantes.Installe({{NomEnregistrement(o, c), [&](const printing::Travail&) {
                               return std::make_unique<printing::RecordingSurface>(&enregistrement);
                             }}});
      return 0;
    case Sortie::Png:
      // The images are written as the run ends: a folder that cannot take
      // them fails the run itself.
      imprimantes.Installe({{NomEnregistrement(o, c), [&](const printing::Travail&) {
                               return printing::AvecFin(
                                   std::make_unique<printing::RecordingSurface>(&enregistrement),
                                   [&] { printing::EcritPng(enregistrement, o.png, kDpiPng); });
                             }}});
      return 0;
    case Sortie::Pdf:
      // A PDF for standard output is drawn in a temporary file of no interest
      // to the journal: where it goes is the output.
      imprimantes.Installe(c.pdf_sur_sortie ? PdfSeul(o.pdf, "PDF sur la sortie standard")
                                            : PdfSeul(o.pdf));
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
    choix = DemandeImprimante(liste, printing::cups::Files(), std::cin, std::cerr);
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
    // The server knows it (it was just asked) but Qt does not list it: an
    // lpoptions instance, or a queue added since. The job goes there all the same.
    std::vector<printing::Destination> complete = liste;
    complete.insert(complete.end() - 1, envoi.DestinationPour(o.imprimante));
    choix = static_cast<long>(complete.size()) - 2;
    imprimantes.Installe(std::move(complete));
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

// The preview of the command line only shows: printing is the command's own
// run (--printer), which checks the queue, reports the job and is journaled.
void MontreApercu(const printing::Enregistrement& enregistrement, const std::string& titre) {
  printing::DialogueApercu dialogue(enregistrement, /*offre_impression=*/false);
  dialogue.Imprimante().setDocName(QString::fromStdString(titre));
  dialogue.exec();
  std::cerr << "Aperçu fermé : rien n'a été imprimé (pour imprimer : --printer FILE).\n";
}

// A PDF for standard output ("--pdf -") is drawn into a private temporary
// file, copied out once complete and removed however the command ends.
class PdfSurSortie {
 public:
  PdfSurSortie() {
    const char* tmp = std::getenv("TMPDIR");
    const std::string modele =
        std::string(tmp != nullptr && *tmp != '\0' ? tmp : "/tmp") + "/vesko-sortie-XXXXXX.pdf";
    // Recorded, so that Ctrl-C removes it like any document being drawn.
    chemin_ = printing::CreeProvisoire(modele, 4);
    if (chemin_.empty())
      throw std::runtime_error("impossible de créer le fichier temporaire " + modele + ".");
  }
  ~PdfSurSortie() {
    std::remove(chemin_.c_str());
    printing::OublieProvisoire(chemin_);
  }
  PdfSurSortie(const PdfSurSortie&) = delete;
  PdfSurSortie& operator=(const PdfSurSortie&) = delete;
  const std::string& Chemin() const { return chemin_; }
  void Copie() const {
    std::ifstream f(chemin_, std::ios::binary);
    std::cout << f.rdbuf() << std::flush;
    if (!std::cout)
      throw std::runtime_error("le PDF n'a pas pu être écrit sur la sortie standard.");
  }

 private:
  std::string chemin_;
};

// The paper of a print on a queue when --paper does not say: a media among
// the -o options, else the queue's (or its instance's) default, else A4.
std::int16_t PapierDeLaFile(const Commande& c, const std::string& file) {
  for (auto it = c.options.rbegin(); it != c.options.rend(); ++it) {
    if (it->first == "media" && CodeMedia(it->second) != 0) return CodeMedia(it->second);
  }
  for (const auto& [nom, valeur] : printing::cups::OptionsParDefaut(file)) {
    if (nom == "media" && CodeMedia(valeur) != 0) return CodeMedia(valeur);
  }
  return c.papier;
}

void Imprime(const OptionsImpression& options, int& argc, char** argv) {
  const Commande c = Verifie(options);
  // Ctrl-C, a closed terminal or a stop removes the document being drawn.
  printing::ProtegeContreInterruptions();
  std::vector<std::string> cles = Cles(options.cles);
  // Like lp without a file, a print of nobody is a mistake, not an empty document.
  if (cles.empty()) {
    throw UsageError(
        "aucune clé : donnez les clés des personnes, ou - pour les lire sur l'entrée "
        "standard.");
  }
  long aujourdhui = options.date.empty() ? -1 : JourDe(options.date);
  std::unique_ptr<PdfSurSortie> sortie_standard;
  OptionsImpression o = options;
  if (o.pdf == "-") {
    sortie_standard = std::make_unique<PdfSurSortie>();
    o.pdf = sortie_standard->Chemin();
  }
  const std::string nom_base = NomDeBase(o.base);

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
  printing::InstalleTraductionsQt(application);
  if (c.sortie == Sortie::Apercu) ExigeEcran();

  auto base = marbrel::Base::Ouvre(nom_base, /*lecture_seule=*/true);

  printing::Enregistrement enregistrement;
  EnvoiFile envoi(c.copies, o.pdf_secours);
  envoi.Options(c.options);
  const long choix = ChoisitDestination(o, c, enregistrement, envoi);
  std::unique_ptr<FichierFormat> format;
  if (c.sortie == Sortie::Texte || c.sortie == Sortie::Json) {
    const bool texte = c.sortie == Sortie::Texte;
    format = std::make_unique<FichierFormat>(
        texte ? o.texte : o.json,
        texte ? printing::SortieFormat::Format::Texte : printing::SortieFormat::Format::Json,
        texte ? "fichier texte" : "fichier JSON");
    // The name says in the access journal where the recording goes.
    printing::ListeImprimantes::Courante().Installe(
        {{NomEnregistrement(o, c),
          [&format](const printing::Travail&) { return format->NouvelleSurface(); }}});
  }
  auto& imprimantes = printing::ListeImprimantes::Courante();
  std::int16_t papier = c.papier;
  if (choix >= 0 && o.papier.empty() && envoi.FileChoisie() &&
      imprimantes.Destinations()[static_cast<size_t>(choix)].nom != "PDF") {
    papier = PapierDeLaFile(c, imprimantes.Destinations()[static_cast<size_t>(choix)].nom);
  }
  marbrel::Outils::Instance().Installe_Choix(
      [choix](const std::string&) { return std::to_string(choix); }, [papier] { return papier; });

  Ctr_Vesko controle;
  // A long run shows how far it is on the terminal.
  ProgressionTerminal progression;
  // The run's printer is gone once Edition returns: its page count is kept.
  long pages = 0;
  auto avancement = [&controle, &pages] {
    if (const printing::Printer* p = controle.Imprimante()) pages = p->PageCount();
    return Avancement{controle.Index_Personne, controle.Nb_Personne, pages};
  };
  imprimantes.Installe(printing::AvecSuivi(imprimantes.Destinations(), [&] {
    progression.Montre(avancement());
    return true;
  }));
  if (!o.date.empty()) controle.Fixe_Aujourdhui(aujourdhui);
  controle.Fixe_Journal(o.journal);
  controle.TheClient(std::make_shared<marbrel::Client>());
  controle.TheDatabase(base);
  // One key per attribute, joined in one pass: a batch of any size is built
  // in a time proportional to it.
  std::string texte_cles;
  for (const std::string& cle : cles) {
    if (&cle != &cles.front()) texte_cles += marbrel::AM;
    texte_cles += cle;
  }
  marbrel::TabDyn liste(std::move(texte_cles));
  std::string type = o.type;
  controle.Edition(liste, type);
  progression.Termine(avancement());

  if (choix < 0)
    throw std::runtime_error("impression annulée : aucune imprimante n'a été choisie.");
  for (const std::string& cle : controle.Cles_Absentes()) {
    std::cerr << "vesko : la fiche « " << texte::Visible(cle) << " » est absente du fichier "
              << (o.type == "AIDANT" ? "CIVILAIDANT" : "CIVILAIDE")
              << " : son dossier est imprimé vide.\n";
  }
  // Every incident makes the command fail once the output is done: a
  // dossier with a section missing must not pass for a complete one.
  std::size_t incidents = 0;
  bool document_perdu = false;
  for (const Incident& i : controle.Incidents()) {
    // A job that could not be sent is told once, below, with what was done instead.
    if (envoi.Explique(i.message)) continue;
    ++incidents;
    if (i.section == "Fin du document") document_perdu = true;
    std::cerr << "vesko : échec dans " << i.section;
    if (!i.cle.empty()) std::cerr << " pour la fiche « " << texte::Visible(i.cle) << " »";
    std::cerr << " : " << texte::Visible(i.message) << "\n";
  }
  switch (c.sortie) {
    case Sortie::Texte:
    case Sortie::Json:
      // Ended with the run; a run cut short before its end has no file.
      if (!document_perdu && !format->EstTermine()) format->Termine();
      break;
    case Sortie::Png:
      if (document_perdu) break;
      std::cerr << enregistrement.pages.size() << " page(s) écrite(s) dans " << o.png << "\n";
      break;
    case Sortie::Apercu:
      MontreApercu(enregistrement, "DOSSIER " + o.type + " " + (cles.empty() ? "" : cles[0]));
      break;
    case Sortie::Pdf:
      if (document_perdu) break;
      if (sortie_standard) {
        sortie_standard->Copie();
      } else {
        std::cerr << (incidents ? "Document écrit, incomplet, dans " : "Dossiers imprimés dans ")
                  << o.pdf << "\n";
      }
      break;
    case Sortie::File:
    case Sortie::Demande:
      if (document_perdu) break;
      if (envoi.FileChoisie()) {
        envoi.Conclut(o.attendre, c.delai);
      } else {
        std::cerr << (incidents ? "Document écrit, incomplet, dans " : "Dossiers imprimés dans ")
                  << printing::ListeImprimantes::FichierPdf() << "\n";
      }
      break;
  }
  if (incidents > 0) {
    throw std::runtime_error(
        std::to_string(incidents) + " incident(s) pendant l'impression (ci-dessus) : " +
        (document_perdu ? "le document n'a pas été produit." : "les dossiers sont incomplets."));
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

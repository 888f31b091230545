#include "printing/cups.h"

#include <cups/cups.h>
#include <stdlib.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <thread>

#include "printing/provisoires.h"
#include "printing/qt_surface.h"
#include "printing/sortie_sure.h"
#include "printing/pdf_surface.h"

namespace printing::cups {

namespace {

namespace fs = std::filesystem;

// One connection to the server for the length of a question; libcups' own
// default connection would hide which server did not answer and why.
class Connexion {
 public:
  Connexion() {
    http_ = httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(),
                         /*blocking=*/1, /*msec=*/5000, nullptr);
    if (http_ == nullptr) erreur_ = Sonde();
  }
  ~Connexion() {
    if (http_ != nullptr) httpClose(http_);
  }
  Connexion(const Connexion&) = delete;
  Connexion& operator=(const Connexion&) = delete;

  http_t* Http() const { return http_; }
  const std::string& Erreur() const { return erreur_; }

 private:
  // The usual ways a connection fails, in the user's language; the system's
  // words for the rest.
  static std::string RaisonSysteme(int numero) {
    switch (numero) {
      case ECONNREFUSED:
        return "connexion refusée";
      case ETIMEDOUT:
        return "délai de connexion dépassé";
      case EHOSTUNREACH:
      case ENETUNREACH:
        return "machine injoignable";
      case ENOENT:
        return "socket absent";
      case EACCES:
        return "accès refusé";
      default:
        return std::strerror(numero);
    }
  }

  // libcups says neither why it could not connect nor keeps errno: the
  // server's addresses are tried once more, plainly, to learn the reason.
  static std::string Sonde() {
    http_addrlist_t* adresses =
        httpAddrGetList(cupsServer(), AF_UNSPEC, std::to_string(ippPort()).c_str());
    if (adresses == nullptr) return "adresse introuvable";
    int erreur = 0;
    for (http_addrlist_t* a = adresses; a != nullptr; a = a->next) {
      const int fd = socket(httpAddrFamily(&a->addr), SOCK_STREAM, 0);
      if (fd < 0) {
        erreur = errno;
        continue;
      }
      timeval delai{5, 0};
      setsockopt(fd, SOL_SOCKET, SO_SNDTIMEO, &delai, sizeof delai);
      erreur = connect(fd, &a->addr.addr, static_cast<socklen_t>(httpAddrLength(&a->addr))) == 0
                   ? 0
                   : errno;
      close(fd);
      if (erreur == 0) break;
    }
    httpAddrFreeList(adresses);
    return erreur == 0 ? "il accepte la connexion mais ne répond pas" : RaisonSysteme(erreur);
  }

  http_t* http_ = nullptr;
  std::string erreur_;
};

// "name/instance" names an instance of the queue "name": the server knows
// the queue only.
std::string NomFile(const std::string& file) { return file.substr(0, file.find('/')); }
std::string Instance(const std::string& file) {
  const size_t barre = file.find('/');
  return barre == std::string::npos ? "" : file.substr(barre + 1);
}

// The queue or its instance with its lpoptions (nullptr: unknown).
cups_dest_t* DestinationCups(http_t* http, const std::string& file) {
  const std::string instance = Instance(file);
  cups_dest_t* dest =
      cupsGetNamedDest(http, NomFile(file).c_str(), instance.empty() ? nullptr : instance.c_str());
  if (dest == nullptr || instance.empty()) return dest;
  // libcups makes up an instance that no lpoptions file defines: it must be
  // among the destinations the user's and the system's lpoptions list.
  cups_dest_t* toutes = nullptr;
  const int n = cupsGetDests2(http, &toutes);
  const bool definie = cupsGetDest(NomFile(file).c_str(), instance.c_str(), n, toutes) != nullptr;
  cupsFreeDests(n, toutes);
  if (definie) return dest;
  cupsFreeDests(1, dest);
  return nullptr;
}

std::string UriFile(const std::string& nom) {
  char uri[HTTP_MAX_URI];
  httpAssembleURIf(HTTP_URI_CODING_ALL, uri, sizeof uri, "ipp", nullptr, "localhost", ippPort(),
                   "/printers/%s", nom.c_str());
  return uri;
}

// The text attributes of one IPP answer, by name ("" when absent).
std::string Texte(ipp_t* reponse, const char* nom) {
  ipp_attribute_t* a = ippFindAttribute(reponse, nom, IPP_TAG_ZERO);
  if (a == nullptr) return "";
  std::string texte;
  for (int i = 0; i < ippGetCount(a); ++i) {
    const char* valeur = ippGetString(a, i, nullptr);
    if (valeur == nullptr) continue;
    if (!texte.empty()) texte += ", ";
    texte += valeur;
  }
  return texte;
}

// printer-state-message, which cupsGetNamedDest does not ask for: the reason
// an administrator gave with cupsdisable -r / cupsreject -r, or the last
// words of the printer's backend.
std::string MessageFile(http_t* http, const std::string& nom) {
  ipp_t* demande = ippNewRequest(IPP_OP_GET_PRINTER_ATTRIBUTES);
  ippAddString(demande, IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr,
               UriFile(nom).c_str());
  static const char* const voulus[] = {"printer-state-message"};
  ippAddStrings(demande, IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes", 1, nullptr,
                voulus);
  ipp_t* reponse = cupsDoRequest(http, demande, "/");
  std::string message = Texte(reponse, "printer-state-message");
  ippDelete(reponse);
  return message;
}

// The reasons a queue gives when it has no message, in words a user reads.
std::string Raisons(const std::string& raisons) {
  if (raisons.empty() || raisons == "none") return "";
  if (raisons == "paused") return "mise en pause par un administrateur";
  return raisons;
}

Verification VerifieSur(const Connexion& connexion, const std::string& file) {
  Verification v;
  v.file = file;
  if (connexion.Http() == nullptr) {
    v.etat = EtatFile::ServeurMuet;
    v.raison = connexion.Erreur();
    return v;
  }
  const std::string nom = NomFile(file);
  cups_dest_t* dest = cupsGetNamedDest(connexion.Http(), nom.c_str(), nullptr);
  if (dest != nullptr && !Instance(file).empty()) {
    cups_dest_t* instance = DestinationCups(connexion.Http(), file);
    if (instance == nullptr) {
      cupsFreeDests(1, dest);
      v.etat = EtatFile::Inconnue;
      v.raison = "aucune instance « " + Instance(file) + " » dans les fichiers lpoptions";
      return v;
    }
    cupsFreeDests(1, instance);
  }
  if (dest == nullptr) {
    const ipp_status_t statut = cupsLastError();
    if (statut == IPP_STATUS_ERROR_NOT_FOUND || statut <= IPP_STATUS_OK_EVENTS_COMPLETE) {
      v.etat = EtatFile::Inconnue;
      v.raison = "aucune file de ce nom";
    } else {
      v.etat = EtatFile::ServeurMuet;
      v.raison = cupsLastErrorString();
    }
    return v;
  }
  auto option = [dest](const char* nom_option) {
    const char* valeur = cupsGetOption(nom_option, dest->num_options, dest->options);
    return std::string(valeur ? valeur : "");
  };
  const bool accepte = option("printer-is-accepting-jobs") != "false";
  const bool arretee = option("printer-state") == std::to_string(IPP_PSTATE_STOPPED);
  const std::string raisons = Raisons(option("printer-state-reasons"));
  cupsFreeDests(1, dest);
  if (accepte && !arretee) return v;

  v.etat = accepte ? EtatFile::Arretee : EtatFile::Refuse;
  v.raison = MessageFile(connexion.Http(), nom);
  if (v.raison.empty()) v.raison = raisons;
  return v;
}

// The state and the server's last word about one job.
struct EtatTravail {
  bool connu = false;
  ipp_jstate_t etat = IPP_JSTATE_PENDING;
};

EtatTravail EtatDe(const Connexion& connexion, const std::string& nom, int numero) {
  EtatTravail e;
  cups_job_t* travaux = nullptr;
  const int n =
      cupsGetJobs2(connexion.Http(), &travaux, nom.c_str(), /*myjobs=*/0, CUPS_WHICHJOBS_ALL);
  for (int i = 0; i < n; ++i) {
    if (travaux[i].id == numero) {
      e.connu = true;
      e.etat = travaux[i].state;
    }
  }
  cupsFreeJobs(n, travaux);
  return e;
}

// Why a job ended as it did: the printer's message when it ended, else the
// job's reasons.
std::string RaisonTravail(const Connexion& connexion, const std::string& nom, int numero) {
  ipp_t* demande = ippNewRequest(IPP_OP_GET_JOB_ATTRIBUTES);
  ippAddString(demande, IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr,
               UriFile(nom).c_str());
  ippAddInteger(demande, IPP_TAG_OPERATION, IPP_TAG_INTEGER, "job-id", numero);
  static const char* const voulus[] = {"job-printer-state-message", "job-state-reasons"};
  ippAddStrings(demande, IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes", 2, nullptr,
                voulus);
  ipp_t* reponse = cupsDoRequest(connexion.Http(), demande, "/");
  std::string raison = Texte(reponse, "job-printer-state-message");
  if (raison.empty()) raison = Texte(reponse, "job-state-reasons");
  ippDelete(reponse);
  return raison;
}

std::string AvecRaison(const std::string& texte, const std::string& raison) {
  return raison.empty() ? texte + "." : texte + " : " + raison + ".";
}

}  // namespace

std::string Serveur() {
  const std::string serveur = cupsServer();
  if (!serveur.empty() && serveur[0] == '/') return serveur;
  return serveur + ":" + std::to_string(ippPort());
}

std::string Verification::Message() const {
  const std::string q = "l'imprimante « " + file + " »";
  switch (etat) {
    case EtatFile::Prete:
      return "";
    case EtatFile::Arretee:
      return AvecRaison(q + " est arrêtée", raison.empty() ? "aucune raison donnée" : raison);
    case EtatFile::Refuse:
      return AvecRaison(q + " refuse les travaux",
                        raison.empty() ? "aucune raison donnée" : raison);
    case EtatFile::Inconnue:
      return AvecRaison(q + " est inconnue du serveur d'impression " + Serveur(), raison);
    case EtatFile::ServeurMuet:
      return "le serveur d'impression " + Serveur() + " ne répond pas (" + raison +
             ") : impossible d'imprimer sur « " + file + " ».";
  }
  return "";
}

Verification Verifie(const std::string& file) {
  Connexion connexion;
  return VerifieSur(connexion, file);
}

int Soumet(const std::string& file, const std::string& pdf, const std::string& titre,
           const Options& options) {
  Connexion connexion;
  const Verification v = VerifieSur(connexion, file);
  if (!v.Prete()) throw std::runtime_error(v.Message());

  cups_option_t* liste = nullptr;
  int n = 0;
  if (cups_dest_t* dest = DestinationCups(connexion.Http(), file)) {
    for (int i = 0; i < dest->num_options; ++i)
      n = cupsAddOption(dest->options[i].name, dest->options[i].value, n, &liste);
    cupsFreeDests(1, dest);
  }
  n = cupsAddOption("media", options.papier.c_str(), n, &liste);
  if (options.copies > 1)
    n = cupsAddOption("copies", std::to_string(options.copies).c_str(), n, &liste);
  for (const auto& [nom, valeur] : options.autres)
    n = cupsAddOption(nom.c_str(), valeur.c_str(), n, &liste);
  const int numero =
      cupsPrintFile2(connexion.Http(), NomFile(file).c_str(), pdf.c_str(), titre.c_str(), n, liste);
  cupsFreeOptions(n, liste);
  if (numero == 0) {
    throw std::runtime_error("le serveur d'impression " + Serveur() +
                             " a refusé le travail pour « " + file +
                             " » : " + cupsLastErrorString() + ".");
  }
  return numero;
}

std::vector<FileServeur> Files() {
  Connexion connexion;
  if (connexion.Http() == nullptr) {
    Verification v;
    v.etat = EtatFile::ServeurMuet;
    v.raison = connexion.Erreur();
    throw std::runtime_error("le serveur d'impression " + Serveur() + " ne répond pas (" +
                             v.raison + ").");
  }
  cups_dest_t* dests = nullptr;
  const int n = cupsGetDests2(connexion.Http(), &dests);
  std::vector<FileServeur> files;
  for (int i = 0; i < n; ++i) {
    FileServeur f;
    f.nom = dests[i].name;
    if (dests[i].instance != nullptr) f.nom += std::string("/") + dests[i].instance;
    f.defaut = dests[i].is_default != 0;
    files.push_back(f);
  }
  cupsFreeDests(n, dests);
  for (FileServeur& f : files) f.etat = VerifieSur(connexion, f.nom);
  return files;
}

OptionsTravail LitOptions(const std::string& texte) {
  cups_option_t* liste = nullptr;
  const int n = cupsParseOptions(texte.c_str(), 0, &liste);
  OptionsTravail options;
  for (int i = 0; i < n; ++i) options.emplace_back(liste[i].name, liste[i].value);
  cupsFreeOptions(n, liste);
  if (options.empty()) {
    throw std::runtime_error("option d'impression illisible « " + texte +
                             " » : attendu NOM=VALEUR, comme avec lp -o.");
  }
  return options;
}

OptionsTravail OptionsParDefaut(const std::string& file) {
  OptionsTravail options;
  Connexion connexion;
  if (connexion.Http() == nullptr) return options;
  if (cups_dest_t* dest = DestinationCups(connexion.Http(), file)) {
    for (int i = 0; i < dest->num_options; ++i)
      options.emplace_back(dest->options[i].name, dest->options[i].value);
    cupsFreeDests(1, dest);
  }
  return options;
}

IssueTravail Attend(const std::string& file, int numero, const SuiviAttente& suivi,
                    std::chrono::milliseconds pas) {
  const std::string nom = NomFile(file);
  const auto debut = std::chrono::steady_clock::now();
  std::string dernier_message, vu;
  for (;;) {
    Connexion connexion;
    if (connexion.Http() == nullptr) {
      return {FinTravail::Perdu, "le serveur d'impression " + Serveur() + " ne répond plus (" +
                                     connexion.Erreur() + ")"};
    }
    const EtatTravail e = EtatDe(connexion, nom, numero);
    if (!e.connu) return {FinTravail::Perdu, "le serveur d'impression ne le connaît pas"};
    switch (e.etat) {
      case IPP_JSTATE_COMPLETED:
        return {FinTravail::Termine, ""};
      case IPP_JSTATE_CANCELED:
        return {FinTravail::Annule, RaisonTravail(connexion, nom, numero)};
      case IPP_JSTATE_ABORTED:
        return {FinTravail::Abandonne, RaisonTravail(connexion, nom, numero)};
      default: {
        // Waiting or printing: it ends only if its queue still runs.
        const Verification v = VerifieSur(connexion, file);
        if (v.etat == EtatFile::Arretee) return {FinTravail::FileArretee, v.raison};
        // A printer that jams keeps the job and says why; the user hears it
        // once the message holds over two questions, so that the last words
        // of a job about to end are told once, with its end.
        const std::string message = MessageFile(connexion.Http(), nom);
        if (message == vu && message != dernier_message) {
          dernier_message = message;
          if (!message.empty() && suivi.message) suivi.message(message);
        }
        vu = message;
        break;
      }
    }
    if (suivi.delai.count() > 0 && std::chrono::steady_clock::now() - debut >= suivi.delai) {
      return {FinTravail::Delai, vu};
    }
    std::this_thread::sleep_for(pas);
  }
}

std::string Message(const std::string& file, int numero, const IssueTravail& issue) {
  const std::string t = "le travail " + NomFile(file) + "-" + std::to_string(numero);
  switch (issue.fin) {
    case FinTravail::Termine:
      return t + " est terminé : l'imprimante « " + file + " » l'a imprimé.";
    case FinTravail::Annule:
      return AvecRaison(t + " a été annulé", issue.raison);
    case FinTravail::Abandonne:
      return AvecRaison(t + " a échoué sur l'imprimante « " + file + " »", issue.raison);
    case FinTravail::FileArretee:
      return AvecRaison(t + " attend sur l'imprimante « " + file + " », qui s'est arrêtée",
                        issue.raison);
    case FinTravail::Perdu:
      return AvecRaison(t + " est perdu", issue.raison);
    case FinTravail::Delai:
      return AvecRaison(
          t + " n'est toujours pas imprimé sur « " + file + " » à la fin du délai d'attente",
          issue.raison);
  }
  return t;
}

namespace {

// A temporary PDF for the drawing of one job, removed with the object.
class FichierTemporaire {
 public:
  FichierTemporaire() {
    std::string modele = (fs::temp_directory_path() / "vesko-travail-XXXXXX.pdf").string();
    // Recorded as it is made: an interruption removes it (the drawing of a
    // dossier must not outlive the run).
    chemin_ = CreeProvisoire(modele, 4);
    if (chemin_.empty()) {
      throw std::runtime_error("impossible de créer le fichier temporaire de l'impression dans " +
                               fs::temp_directory_path().string() + " : " + RaisonSysteme(errno) +
                               ".");
    }
  }
  ~FichierTemporaire() {
    OublieProvisoire(chemin_);
    std::error_code ignore;
    fs::remove(chemin_, ignore);
  }
  const std::string& Chemin() const { return chemin_; }

 private:
  std::string chemin_;
};

class SurfaceFileCups : public Surface {
 public:
  SurfaceFileCups(std::string file, const Travail& travail,
                  std::shared_ptr<const ReglagesEnvoi> reglages)
      : file_(std::move(file)),
        titre_(travail.titre),
        copies_(travail.copies),
        reglages_(std::move(reglages)),
        pdf_(SurfacePdf(temporaire_.Chemin(), travail)) {
    if (reglages_ && reglages_->copies > 1) copies_ = reglages_->copies;
  }

  void DebutDocument(const Papier& papier) override {
    papier_ = papier;
    pdf_->DebutDocument(papier);
  }
  void NouvellePage() override { pdf_->NouvellePage(); }
  void Texte(double x, double y, const Police& police, const std::string& texte) override {
    pdf_->Texte(x, y, police, texte);
  }
  void Trait(double x1, double y1, double x2, double y2, int largeur) override {
    pdf_->Trait(x1, y1, x2, y2, largeur);
  }

  void FinDocument() override {
    pdf_->FinDocument();
    // A document cut short (a full temporary folder) is never sent.
    VerifiePdf(temporaire_.Chemin(), file_);
    Envoi envoi;
    envoi.file = file_;
    envoi.titre = titre_;
    try {
      envoi.numero =
          Soumet(file_, temporaire_.Chemin(), titre_,
                 {papier_.nom, copies_, reglages_ ? reglages_->options : OptionsTravail{}});
    } catch (const std::exception& e) {
      envoi.erreur = e.what();
      Garde(envoi);
    }
    envoi_ = envoi;
    if (reglages_ && reglages_->rapport) reglages_->rapport(envoi);
    if (!envoi.erreur.empty()) throw std::runtime_error(envoi.erreur);
  }
  std::string Trace() const override {
    std::string trace = "file " + file_;
    if (envoi_.numero > 0) {
      trace +=
          ", travail " + file_.substr(0, file_.find('/')) + "-" + std::to_string(envoi_.numero);
    }
    if (!envoi_.secours.empty()) trace += ", non envoyé : PDF de secours " + envoi_.secours;
    return trace;
  }

 private:
  // What was drawn is not lost when the job cannot be sent: it goes where
  // the settings ask.
  void Garde(Envoi& envoi) const {
    if (!reglages_ || reglages_->pdf_secours.empty()) return;
    bool erreur = false;
    try {
      CopieFichierSur(temporaire_.Chemin(), reglages_->pdf_secours, "fichier PDF");
    } catch (const std::exception&) {
      erreur = true;
    }
    if (erreur) {
      envoi.erreur +=
          " Le PDF de secours « " + reglages_->pdf_secours + " » n'a pas pu être écrit non plus.";
    } else {
      envoi.secours = reglages_->pdf_secours;
    }
  }

  std::string file_;
  std::string titre_;
  int copies_;
  std::shared_ptr<const ReglagesEnvoi> reglages_;
  FichierTemporaire temporaire_;
  std::unique_ptr<Surface> pdf_;
  Papier papier_;
  Envoi envoi_;  // once the document ended
};

}  // namespace

std::unique_ptr<Surface> SurfaceFile(const std::string& file, const Travail& travail,
                                     std::shared_ptr<const ReglagesEnvoi> reglages) {
  return std::make_unique<SurfaceFileCups>(file, travail, std::move(reglages));
}

std::vector<Destination> Destinations(std::shared_ptr<const ReglagesEnvoi> reglages) {
  std::vector<Destination> liste = ListeImprimantes::Systeme();
  // Every entry but the built-in "PDF", which closes the list, is a queue.
  for (size_t i = 0; i + 1 < liste.size(); ++i) {
    liste[i].ouvre = [file = liste[i].nom, reglages](const Travail& travail) {
      return SurfaceFile(file, travail, reglages);
    };
  }
  return liste;
}

}  // namespace printing::cups

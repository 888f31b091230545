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
  int n = cupsAddOption("media", options.papier.c_str(), 0, &liste);
  n = cupsAddOption("copies", std::to_string(options.copies < 1 ? 1 : options.copies).c_str(), n,
                    &liste);
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

IssueTravail Attend(const std::string& file, int numero, std::chrono::milliseconds pas) {
  const std::string nom = NomFile(file);
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
        break;
      }
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
  }
  return t;
}

namespace {

// A temporary PDF for the drawing of one job, removed with the object.
class FichierTemporaire {
 public:
  FichierTemporaire() {
    std::string modele = (fs::temp_directory_path() / "vesko-travail-XXXXXX.pdf").string();
    const int fd = mkstemps(modele.data(), 4);
    if (fd < 0) {
      throw std::runtime_error("impossible de créer le fichier temporaire de l'impression dans " +
                               fs::temp_directory_path().string() + ".");
    }
    close(fd);
    chemin_ = modele;
  }
  ~FichierTemporaire() {
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
    Envoi envoi;
    envoi.file = file_;
    envoi.titre = titre_;
    try {
      envoi.numero = Soumet(file_, temporaire_.Chemin(), titre_, {papier_.nom, copies_});
    } catch (const std::exception& e) {
      envoi.erreur = e.what();
      Garde(envoi);
    }
    if (reglages_ && reglages_->rapport) reglages_->rapport(envoi);
    if (!envoi.erreur.empty()) throw std::runtime_error(envoi.erreur);
  }

 private:
  // What was drawn is not lost when the job cannot be sent: it goes where
  // the settings ask.
  void Garde(Envoi& envoi) const {
    if (!reglages_ || reglages_->pdf_secours.empty()) return;
    std::error_code erreur;
    fs::copy_file(temporaire_.Chemin(), reglages_->pdf_secours,
                  fs::copy_options::overwrite_existing, erreur);
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

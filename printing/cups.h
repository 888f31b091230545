// The print server (CUPS) as the print command and the hosts need it: whether
// a queue can take a job now, a job sent from a PDF of ours with the id the
// server gives it, and what became of that job.
//
// A job for a queue is written by the same PDF writer as a PDF file into a
// temporary PDF, then handed to the server with cupsPrintFile: that is the
// one way to learn the job's id (Qt's own CUPS engine submits its file and
// drops the id). One document, one job.
//
// Every message is French, names the queue and gives the server's reason.
// The server is the one libcups picks: CUPS_SERVER, ~/.cups/client.conf,
// then the system's.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "printing/imprimantes.h"
#include "printing/surface.h"

namespace printing::cups {

// The server as "host:port" or its socket path, for messages.
std::string Serveur();

enum class EtatFile {
  Prete,        // idle or printing, and accepting jobs
  Arretee,      // stopped (cupsdisable, or stopped by a backend's error)
  Refuse,       // not accepting jobs (cupsreject)
  Inconnue,     // the server has no queue of that name
  ServeurMuet,  // the print server could not be reached
};

struct Verification {
  EtatFile etat = EtatFile::Prete;
  std::string file;    // the queue asked about
  std::string raison;  // the server's words: state message, reasons or connection error
  bool Prete() const { return etat == EtatFile::Prete; }
  // One line for the user, naming the queue and the reason; "" when ready.
  std::string Message() const;
};

// Asks the server about the queue file ("name" or "name/instance"; an
// instance that no lpoptions file defines makes the queue unknown).
// Never fails: an unreachable server is a verdict like the others.
Verification Verifie(const std::string& file);

// Job options as `lp -o` takes them: name and value.
using OptionsTravail = std::vector<std::pair<std::string, std::string>>;

// "name=value name2 …" as `lp -o` reads it (a name alone means "true").
// Fails with a French message naming the text when it holds no option.
OptionsTravail LitOptions(const std::string& texte);

// One queue of the server as `lpstat -p -d` shows it.
struct FileServeur {
  std::string nom;  // "name", or "name/instance" for an lpoptions instance
  bool defaut = false;
  Verification etat;  // ready, stopped or refusing, with the server's reason
};

// Every queue of the server and the instances lpoptions defines, in the
// server's order. Fails with the French message naming the server when it
// does not answer.
std::vector<FileServeur> Files();

// What one job should look like on paper.
struct Options {
  std::string papier = "A4";  // the media keyword: A4, A3, Letter…
  int copies = 1;             // sent when above 1; otherwise the queue's default holds
  OptionsTravail autres;      // given last: they override everything else
};

// The queue's defaults as `lp -d file` applies them: the user's and the
// system's lpoptions for the queue or its instance ("name/instance"), over
// the server's defaults. Empty when the server cannot be reached.
OptionsTravail OptionsParDefaut(const std::string& file);

// Sends the PDF file pdf to the queue as one job titled titre, after checking
// the queue. The job's options are, as with lp, the queue's defaults and its
// instance's (OptionsParDefaut), then the paper and copies, then
// options.autres. Returns the job's id. Fails (std::runtime_error) with the
// check's message, or with the server's refusal naming the queue.
int Soumet(const std::string& file, const std::string& pdf, const std::string& titre,
           const Options& options);

enum class FinTravail {
  Termine,      // the printer took every page
  Annule,       // cancelled by a user or an administrator
  Abandonne,    // aborted by the system (the printer failed)
  FileArretee,  // still waiting, but its queue has stopped: nobody will print it
  Perdu,        // the server no longer knows the job, or cannot be reached
  Delai,        // still not ended when the wait's time ran out
};

struct IssueTravail {
  FinTravail fin = FinTravail::Termine;
  std::string raison;  // the server's message about the job or its queue
};

// How a wait keeps the user informed and when it gives up.
struct SuiviAttente {
  // Told the printer's state message each time it changes while the job
  // waits or prints ("Plus de papier dans le bac 1"), once the new message
  // has held over two questions to the server; never told "".
  std::function<void(const std::string&)> message;
  // The longest wait (0: no limit); past it the wait ends with Delai.
  std::chrono::milliseconds delai{0};
};

// Waits for the job numero of the queue to end, asking the server every pas.
// Returns when it completed, was cancelled or aborted, when its queue stops
// while it still waits, when the server loses it, or when suivi's time runs
// out (the reason is then the printer's latest message).
IssueTravail Attend(const std::string& file, int numero, const SuiviAttente& suivi = {},
                    std::chrono::milliseconds pas = std::chrono::milliseconds(250));

// "le travail Q-12 est terminé." and the like, for the user.
std::string Message(const std::string& file, int numero, const IssueTravail& issue);

// What became of one document sent to a queue through SurfaceFile.
struct Envoi {
  std::string file;
  std::string titre;
  int numero = 0;       // the job's id once sent; 0 when it was not sent
  std::string erreur;   // why it was not sent
  std::string secours;  // where the drawn PDF was kept after a failure ("" = nowhere)
};

// How the queues of a printer list send their jobs.
struct ReglagesEnvoi {
  int copies = 1;          // replaces the document's own count when above 1
  OptionsTravail options;  // given to every job after the others (Options::autres)
  // When sending fails, the drawn PDF is kept here ("" = it is dropped).
  std::string pdf_secours;
  // Told about every document once it is sent or has failed.
  std::function<void(const Envoi&)> rapport;
};

// A surface for one job on the queue file: draws into a temporary PDF and
// sends it when the document ends (the paper of the document becomes the
// job's media). FinDocument fails with the French message when the job could
// not be sent; the report is made either way.
std::unique_ptr<Surface> SurfaceFile(const std::string& file, const Travail& travail,
                                     std::shared_ptr<const ReglagesEnvoi> reglages);

// The system's printer list (ListeImprimantes::Systeme(): the default queue
// first, the others, then "PDF") whose queues send their jobs through
// SurfaceFile with these settings. reglages may change between documents.
std::vector<Destination> Destinations(std::shared_ptr<const ReglagesEnvoi> reglages);

}  // namespace printing::cups

#include "control/ctr_vesko.h"

#include <QCoreApplication>
#include <QDate>

#include "control/compteur32.h"
#include "control/journal_edition.h"
#include "db/lecture.h"
#include "db/procedure.h"
#include "db/variable.h"
#include "marbrel/erreur.h"
#include "marbrel/marques.h"
#include "marbrel/outils.h"
#include "printing/imprimantes.h"

Ctr_Vesko::Ctr_Vesko(QWidget* parent) : QWidget(parent) {
  Etq_Edition = new QLabel(QStringLiteral("Edition de la fiche"), this);
  Etq_Edition->setObjectName(QStringLiteral("Etq_Edition"));
  Etq_Edition->adjustSize();
  setObjectName(QStringLiteral("Ctr_Vesko"));
  resize(Etq_Edition->sizeHint());
}

Ctr_Vesko::~Ctr_Vesko() = default;

void Ctr_Vesko::TheClient(std::shared_ptr<marbrel::Client> client) {
  Variable::Client = std::move(client);
}

void Ctr_Vesko::TheDatabase(std::shared_ptr<marbrel::Base> base) {
  Variable::Base = std::move(base);
}

long Ctr_Vesko::Aujourdhui() const {
  if (aujourdhui_fixe_) return *aujourdhui_fixe_;
  QDate d = QDate::currentDate();
  return marbrel::Outils::Date_Interne(d.year(), d.month(), d.day());
}

void Ctr_Vesko::Edition(TabDyn& W_TabDyn, std::string& W_Type) {
  incidents_.clear();
  cles_absentes_.clear();
  abandon_ = false;
  // The files are released whatever happens, also when no printer is chosen
  // and when opening or the printer set-up fails.
  struct Fermeture {
    Ctr_Vesko* ctrl;
    ~Fermeture() {
      ctrl->imprimante_.reset();
      Procedure::Ferme_Fichiers();
    }
  } fermeture{this};

  Procedure::Ouvre_Fichiers();
  // The journal is opened before the printer is chosen: a run it cannot
  // record is refused before the user is asked anything.
  journal::TraceEdition trace(journal::OuvrePour(Variable::Base.get(), journal_), utilisateur_);
  Un_Centimetre = 567;
  Cadre_Gauche = false;
  db::FixeAujourdhui(Aujourdhui());

  // An empty W_TabDyn still gives one pass, for the key "". A batch too large
  // to count is refused here, before the printer is chosen: never a count cut
  // short that would print fewer dossiers than asked.
  Nb_Personne = W_TabDyn.Vide() ? 1
                                : compteur::Entier32(W_TabDyn.Compte(-1, -1),
                                                     "Le nombre de personnes à imprimer");
  const std::vector<std::string> cles = W_TabDyn.Attributs(Nb_Personne);

  marbrel::Outils& outils = marbrel::Outils::Instance();
  std::string choix = outils.Choix_Imprimante("A4");
  QCoreApplication::processEvents();
  if (!marbrel::EstNumerique(choix) || std::stol(choix) == -1) {
    trace.Sans_Impression(W_Type, cles, "aucune imprimante", journal::kAnnulee,
                          "aucune imprimante n'a été choisie.");
    return;
  }

  long index = std::stol(choix);
  const auto& destinations = printing::ListeImprimantes::Courante().Destinations();
  if (index < 0 || index >= static_cast<long>(destinations.size())) {
    throw marbrel::Erreur(marbrel::ERR_BASE, "L'imprimante n° " + choix + " n'existe pas (" +
                                                 std::to_string(destinations.size()) +
                                                 " imprimantes disponibles).");
  }
  const printing::Destination& destination = destinations[static_cast<size_t>(index)];
  printing::Travail travail;
  travail.titre = "DOSSIER " + W_Type + " " + W_TabDyn.Extrait(1, -1, -1);
  // What the document holds, for its properties: the type and every key.
  travail.sujet = "Dossiers " + W_Type + " :";
  for (char c : " " + W_TabDyn.Extrait(-1, -1, -1)) {
    travail.sujet += c == marbrel::AM ? std::string(", ") : std::string(1, c);
  }
  std::unique_ptr<printing::Surface> surface;
  try {
    surface = destination.ouvre(travail);
  } catch (const std::exception& e) {
    trace.Sans_Impression(W_Type, cles, journal::Lieu(destination, nullptr), journal::kEchouee,
                          e.what());
    throw;
  }
  const printing::Surface& lieu = *surface;
  trace.Debut(W_Type, cles, journal::Lieu(destination, &lieu));
  imprimante_ = std::make_unique<printing::Printer>(std::move(surface));
  imprimante_->SetPaperSize(outils.Reglage_Imprimante());
  Parametrage_Imprimante();
  Type_Dossier = W_Type;
  Prepare_Impression(W_TabDyn);
  // A run the user stopped is recorded as such, whatever it had drawn.
  const char* issue = abandon_             ? journal::kAnnulee
                      : incidents_.empty() ? journal::kTerminee
                                           : journal::kEchouee;
  trace.Fin(issue, imprimante_->PageCount(),
            abandon_ ? "impression arrêtée par l'utilisateur : rien n'a été envoyé."
                     : journal::Resume(incidents_),
            journal::Lieu(destination, &lieu));
}

void Ctr_Vesko::Parametrage_Imprimante() {
  P().SetFontSize(11);
  P().SetFontName("Courier New");
}

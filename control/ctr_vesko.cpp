#include "control/ctr_vesko.h"

#include <QCoreApplication>
#include <QDate>

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
  Un_Centimetre = 567;
  Cadre_Gauche = false;
  db::FixeAujourdhui(Aujourdhui());

  // An empty W_TabDyn still gives one pass, for the key "".
  Nb_Personne =
      W_TabDyn.Extrait(-1, -1, -1).empty() ? 1 : static_cast<std::int16_t>(W_TabDyn.Compte(-1, -1));

  marbrel::Outils& outils = marbrel::Outils::Instance();
  std::string choix = outils.Choix_Imprimante("A4");
  QCoreApplication::processEvents();
  if (!marbrel::EstNumerique(choix) || std::stol(choix) == -1) return;

  long index = std::stol(choix);
  const auto& destinations = printing::ListeImprimantes::Courante().Destinations();
  if (index < 0 || index >= static_cast<long>(destinations.size())) {
    throw marbrel::Erreur(marbrel::ERR_BASE, "L'imprimante n° " + choix + " n'existe pas (" +
                                                 std::to_string(destinations.size()) +
                                                 " imprimantes disponibles).");
  }
  printing::Travail travail;
  travail.titre = "DOSSIER " + W_Type + " " + W_TabDyn.Extrait(1, -1, -1);
  // What the document holds, for its properties: the type and every key.
  travail.sujet = "Dossiers " + W_Type + " :";
  for (char c : " " + W_TabDyn.Extrait(-1, -1, -1)) {
    travail.sujet += c == marbrel::AM ? std::string(", ") : std::string(1, c);
  }
  imprimante_ =
      std::make_unique<printing::Printer>(destinations[static_cast<size_t>(index)].ouvre(travail));
  imprimante_->SetPaperSize(outils.Reglage_Imprimante());
  Parametrage_Imprimante();
  Type_Dossier = W_Type;
  Prepare_Impression(W_TabDyn);
}

void Ctr_Vesko::Parametrage_Imprimante() {
  P().SetFontSize(11);
  P().SetFontName("Courier New");
}

#include "app/gui/fenetre_hote.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPrinter>
#include <QProgressDialog>
#include <QPushButton>
#include <QSettings>
#include <QStandardItemModel>
#include <QStatusBar>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>

#include "app/gui/fenetre_journal.h"
#include "app/gui/personnes.h"
#include "app/gui/recherche.h"
#include "control/journal_edition.h"
#include "marbrel/magasin.h"
#include "marbrel/outils.h"
#include "printing/apercu.h"
#include "printing/imprimantes.h"
#include "printing/sortie_sure.h"
#include "printing/suivi.h"

namespace hote {

namespace {

QString Q(const std::string& texte) { return QString::fromStdString(texte); }

const QString kCleBase = QStringLiteral("base");
const QString kCleType = QStringLiteral("type");

// The settings of the window: the user's, under the program's name.
QSettings Reglages() {
  return QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Vesko"),
                   QStringLiteral("vesko-gui"));
}

}  // namespace

QString Phrase(const QString& texte) {
  QString phrase = texte.trimmed();
  if (phrase.isEmpty()) return phrase;
  phrase[0] = phrase[0].toUpper();
  if (!phrase.endsWith('.') && !phrase.endsWith(QStringLiteral("…")) && !phrase.endsWith('!') &&
      !phrase.endsWith('?')) {
    phrase += '.';
  }
  return phrase;
}

QString FenetreHote::BaseMemorisee() { return Reglages().value(kCleBase).toString(); }
QString FenetreHote::TypeMemorise() { return Reglages().value(kCleType).toString(); }

void FenetreHote::Memorise() const {
  QSettings reglages = Reglages();
  if (!chemin_base_.isEmpty())
    reglages.setValue(kCleBase, QFileInfo(chemin_base_).absoluteFilePath());
  reglages.setValue(kCleType, type_->currentData().toString());
  reglages.sync();
}

FenetreHote::FenetreHote(QWidget* parent)
    : QMainWindow(parent),
      reglages_(std::make_shared<printing::cups::ReglagesEnvoi>()),
      envois_(std::make_shared<std::vector<printing::cups::Envoi>>()),
      choix_(this, reglages_) {
  reglages_->rapport = [envois = envois_](const printing::cups::Envoi& e) { envois->push_back(e); };
  ConstruitFormulaire();
  controle_->TheClient(std::make_shared<marbrel::Client>());
}

FenetreHote::~FenetreHote() {
  // The choice installed for a run points into this window.
  marbrel::Outils::Instance().Installe_Choix({}, {});
}

void FenetreHote::ConstruitFormulaire() {
  setWindowTitle(QStringLiteral("Vesko — fiches des aidants et des aidés"));
  auto* formulaire = new QWidget(this);
  auto* colonne = new QVBoxLayout(formulaire);

  auto* ligne_base = new QHBoxLayout;
  ligne_base->addWidget(new QLabel(QStringLiteral("Base :"), formulaire));
  base_ = new QLabel(QStringLiteral("aucune base ouverte"), formulaire);
  base_->setObjectName(QStringLiteral("Etq_Base"));
  ligne_base->addWidget(base_, 1);
  auto* ouvrir = new QPushButton(QStringLiteral("Ouvrir une base…"), formulaire);
  ligne_base->addWidget(ouvrir);
  colonne->addLayout(ligne_base);

  auto* ligne_choix = new QHBoxLayout;
  ligne_choix->addWidget(new QLabel(QStringLiteral("Type de dossier :"), formulaire));
  type_ = new QComboBox(formulaire);
  type_->addItem(QStringLiteral("Aidés (AIDE)"), QStringLiteral("AIDE"));
  type_->addItem(QStringLiteral("Aidants (AIDANT)"), QStringLiteral("AIDANT"));
  ligne_choix->addWidget(type_);
  ligne_choix->addSpacing(16);
  ligne_choix->addWidget(new QLabel(QStringLiteral("Rechercher :"), formulaire));
  recherche_ = new QLineEdit(formulaire);
  recherche_->setPlaceholderText(QStringLiteral("clé, nom ou prénom, plusieurs mots possibles"));
  recherche_->setClearButtonEnabled(true);
  ligne_choix->addWidget(recherche_, 1);
  colonne->addLayout(ligne_choix);

  modele_ = new QStandardItemModel(0, 3, this);
  modele_->setHorizontalHeaderLabels(
      {QStringLiteral("Clé"), QStringLiteral("Nom"), QStringLiteral("Prénom")});
  filtre_ = new FiltreRecherche(this);
  filtre_->setSourceModel(modele_);
  vue_ = new QTableView(formulaire);
  vue_->setObjectName(QStringLiteral("Liste_Personnes"));
  vue_->setModel(filtre_);
  vue_->setSelectionBehavior(QAbstractItemView::SelectRows);
  vue_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  vue_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  vue_->setSortingEnabled(true);
  vue_->sortByColumn(0, Qt::AscendingOrder);
  vue_->verticalHeader()->hide();
  vue_->horizontalHeader()->setStretchLastSection(true);
  colonne->addWidget(vue_, 1);

  auto* ligne_actions = new QHBoxLayout;
  controle_ = new Ctr_Vesko(formulaire);
  // The control sizes itself to its caption but offers the layout no size
  // hint: the form keeps the size it took.
  controle_->setMinimumSize(controle_->size());
  ligne_actions->addWidget(controle_);
  ligne_actions->addStretch(1);
  auto* bouton_journal = new QPushButton(QStringLiteral("Journal des impressions…"), formulaire);
  ligne_actions->addWidget(bouton_journal);
  bouton_apercu_ = new QPushButton(QStringLiteral("Aperçu…"), formulaire);
  bouton_imprimer_ = new QPushButton(QStringLiteral("Imprimer…"), formulaire);
  bouton_imprimer_->setDefault(true);
  bouton_imprimer_->setShortcut(QKeySequence::Print);
  bouton_imprimer_->setToolTip(
      QKeySequence(QKeySequence::Print).toString(QKeySequence::NativeText));
  ligne_actions->addWidget(bouton_apercu_);
  ligne_actions->addWidget(bouton_imprimer_);
  colonne->addLayout(ligne_actions);

  setCentralWidget(formulaire);
  resize(720, 480);
  statusBar()->showMessage(QStringLiteral("Ouvrez une base pour lister les personnes."));

  connect(ouvrir, &QPushButton::clicked, this, [this] {
    const QString chemin = QFileDialog::getOpenFileName(
        this, QStringLiteral("Ouvrir une base"), QString(),
        QStringLiteral("Bases Vesko (*.vesko);;Tous les fichiers (*)"));
    if (chemin.isEmpty()) return;
    try {
      OuvreBase(chemin);
    } catch (const std::exception& e) {
      QMessageBox::warning(this, QStringLiteral("Ouvrir une base"), Phrase(Q(e.what())));
    }
  });
  connect(type_, &QComboBox::currentIndexChanged, this, [this] {
    try {
      RemplitListe();
    } catch (const std::exception& e) {
      QMessageBox::warning(this, QStringLiteral("Liste des personnes"), Phrase(Q(e.what())));
    }
  });
  connect(recherche_, &QLineEdit::textChanged, this, &FenetreHote::Recherche);
  connect(bouton_imprimer_, &QPushButton::clicked, this, &FenetreHote::ImprimeEtSignale);
  connect(bouton_apercu_, &QPushButton::clicked, this, &FenetreHote::ApercuEtSignale);
  connect(bouton_journal, &QPushButton::clicked, this, [this] {
    if (OuvreJournal() == nullptr) {
      statusBar()->showMessage(QStringLiteral("Ouvrez d'abord une base."));
    }
  });
}

void FenetreHote::OuvreBase(const QString& chemin) {
  const std::string nom = chemin.toStdString();
  const bool postgres = marbrel::EstAdressePostgres(nom);
  const QFileInfo fichier(chemin);
  if (!postgres) {
    if (!fichier.exists()) throw std::runtime_error("la base « " + nom + " » n'existe pas.");
    if (fichier.isDir()) throw std::runtime_error("« " + nom + " » est un dossier, pas une base.");
    if (!fichier.isReadable()) {
      throw std::runtime_error("la base « " + nom + " » ne peut pas être lue (droits d'accès).");
    }
  }
  std::shared_ptr<marbrel::Base> base;
  try {
    base = marbrel::Base::Ouvre(nom, /*lecture_seule=*/true);
  } catch (const std::exception& e) {
    if (postgres) {
      throw std::runtime_error("la base « " + marbrel::NomAffiche(nom) +
                               " » ne peut pas être ouverte : " + e.what());
    }
    // The embedded store's reason is the database engine's, in English.
    throw std::runtime_error("« " + nom +
                             " » ne peut pas être ouvert : ce n'est pas une base Vesko, ou elle "
                             "est endommagée ou verrouillée.");
  }
  base_ouverte_ = std::move(base);
  chemin_base_ = chemin;
  base_->setText(marbrel::EstAdressePostgres(chemin.toStdString())
                     ? QString::fromStdString(marbrel::NomAffiche(chemin.toStdString()))
                     : QFileInfo(chemin).absoluteFilePath());
  RemplitListe();
}

void FenetreHote::ChoisitType(const QString& type) {
  const int index = type_->findData(type);
  if (index < 0) {
    throw std::invalid_argument("type de dossier inconnu « " + type.toStdString() +
                                " » : AIDE ou AIDANT.");
  }
  if (index == type_->currentIndex()) {
    RemplitListe();
  } else {
    type_->setCurrentIndex(index);  // the list follows through the signal
  }
}

void FenetreHote::RemplitListe() {
  modele_->removeRows(0, modele_->rowCount());
  if (!base_ouverte_) return;
  const std::string type = type_->currentData().toString().toStdString();
  for (const Personne& p : Personnes(*base_ouverte_, type)) {
    modele_->appendRow(
        {new QStandardItem(Q(p.cle)), new QStandardItem(Q(p.nom)), new QStandardItem(Q(p.prenom))});
  }
  vue_->resizeColumnsToContents();
  Recherche(recherche_->text());
}

void FenetreHote::Recherche(const QString& texte) {
  if (recherche_->text() != texte) recherche_->setText(texte);
  filtre_->Cherche(texte);
  if (!base_ouverte_) return;
  const QString fichier = Q(FichierPrincipal(type_->currentData().toString().toStdString()));
  if (filtre_->rowCount() == modele_->rowCount()) {
    statusBar()->showMessage(
        QStringLiteral("%1 personne(s) dans %2.").arg(modele_->rowCount()).arg(fichier));
  } else {
    statusBar()->showMessage(QStringLiteral("%1 personne(s) affichée(s) sur %2 dans %3.")
                                 .arg(filtre_->rowCount())
                                 .arg(modele_->rowCount())
                                 .arg(fichier));
  }
}

void FenetreHote::Selectionne(const QStringList& cles) {
  vue_->clearSelection();
  for (int r = 0; r < filtre_->rowCount(); ++r) {
    if (cles.contains(filtre_->index(r, 0).data().toString())) {
      vue_->selectionModel()->select(filtre_->index(r, 0),
                                     QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
  }
}

QStringList FenetreHote::ClesChoisies() const {
  QModelIndexList lignes = vue_->selectionModel()->selectedRows(0);
  std::sort(lignes.begin(), lignes.end(),
            [](const QModelIndex& a, const QModelIndex& b) { return a.row() < b.row(); });
  QStringList cles;
  for (const QModelIndex& i : lignes) cles << i.data().toString();
  return cles;
}

int FenetreHote::PersonnesAffichees() const { return filtre_->rowCount(); }

Bilan FenetreHote::Imprime() {
  std::vector<printing::Destination> liste = printing::cups::Destinations(reglages_);
  // The built-in "PDF" closes the list: the window's takes its name once complete.
  liste.back().ouvre = [](const printing::Travail& travail) {
    return printing::SurfacePdfSure(printing::ListeImprimantes::FichierPdf(), travail);
  };
  // Whatever the destination, it gets the pages and order the dialog asked for.
  for (printing::Destination& d : liste) {
    d.ouvre = [ouvre = d.ouvre, this](const printing::Travail& travail) {
      return AvecPagesChoisies(ouvre(travail), choix_.Pages());
    };
  }
  return Edite(std::move(liste), /*apercu=*/false);
}

Bilan FenetreHote::Apercu(bool montre) {
  apercu_ = printing::Enregistrement();
  Bilan bilan = Edite({{"Aperçu",
                        [this](const printing::Travail&) {
                          return std::make_unique<printing::RecordingSurface>(&apercu_);
                        }}},
                      /*apercu=*/true);
  if (!bilan.fait || !montre) return bilan;
  // Printing from the preview is a print like the others: the same dialog,
  // the same checks, the same job and its report.
  printing::DialogueApercu dialogue(apercu_, /*offre_impression=*/true, this);
  // "Imprimer…" is the window's own print: dialog, queue check, job, journal.
  if (dialogue.exec() == QDialog::Accepted) return Imprime();
  return bilan;
}

Bilan FenetreHote::Edite(std::vector<printing::Destination> liste, bool apercu) {
  Bilan bilan;
  const QStringList cles = ClesChoisies();
  if (!base_ouverte_) {
    bilan.resume = QStringLiteral("Ouvrez d'abord une base.");
    return bilan;
  }
  if (cles.isEmpty()) {
    bilan.resume = QStringLiteral("Choisissez au moins une personne dans la liste.");
    return bilan;
  }
  marbrel::TabDyn W_TabDyn;
  for (int i = 0; i < cles.size(); ++i) W_TabDyn.Remplace(i + 1, cles[i].toStdString());
  std::string W_Type = type_->currentData().toString().toStdString();

  // The window draws through the control's printer list: the host's own
  // surfaces report the progress of the run.
  printing::ListeImprimantes::Courante().Installe(
      printing::AvecSuivi(std::move(liste), [this, apercu] { return Progression(apercu); }));
  std::string reponse = "-1";
  marbrel::Outils::Instance().Installe_Choix(
      [this, apercu, &reponse](const std::string& format) {
        reponse = apercu ? "0" : choix_.Choisit(format);
        return reponse;
      },
      [this] { return choix_.Papier(); });
  envois_->clear();

  // The host hands the database over before every Edition: the control lets
  // it go at the end of each run.
  controle_->TheDatabase(base_ouverte_);
  // The progress dialog appears only once the printer is chosen (the first
  // page begun): before that it would stand over the print dialog.
  progression_.reset();
  en_cours_ = true;
  for (QWidget* w :
       std::initializer_list<QWidget*>{type_, recherche_, vue_, bouton_apercu_, bouton_imprimer_}) {
    w->setEnabled(false);
  }
  bool edition_faite = true;
  try {
    controle_->Edition(W_TabDyn, W_Type);
  } catch (const std::exception& e) {
    edition_faite = false;
    bilan.alertes << Phrase(Q(e.what()));
    bilan.resume = apercu ? QStringLiteral("L'aperçu n'a pas pu être préparé.")
                          : QStringLiteral("L'impression n'a pas été faite.");
  }
  for (QWidget* w :
       std::initializer_list<QWidget*>{type_, recherche_, vue_, bouton_apercu_, bouton_imprimer_}) {
    w->setEnabled(true);
  }
  en_cours_ = false;
  progression_.reset();
  marbrel::Outils::Instance().Installe_Choix({}, {});

  if (controle_->Abandonnee()) {
    bilan.resume = apercu ? QStringLiteral("Aperçu annulé.")
                          : QStringLiteral("Impression annulée : rien n'a été envoyé.");
    return bilan;
  }
  if (!edition_faite) return bilan;
  if (reponse == "-1") {
    bilan.resume = QStringLiteral("Impression annulée : aucune imprimante n'a été choisie.");
    return bilan;
  }
  for (const std::string& cle : controle_->Cles_Absentes()) {
    bilan.alertes << QStringLiteral(
                         "La fiche « %1 » est absente du fichier %2 : son dossier est "
                         "imprimé vide.")
                         .arg(Q(cle), Q(FichierPrincipal(W_Type)));
  }
  for (const Incident& i : controle_->Incidents()) {
    const bool dit_plus_bas =
        std::any_of(envois_->begin(), envois_->end(),
                    [&](const printing::cups::Envoi& e) { return e.erreur == i.message; });
    if (dit_plus_bas) continue;
    bilan.alertes << Phrase(QStringLiteral("Échec dans %1 pour la fiche « %2 » : %3")
                                .arg(Q(i.section), Q(i.cle), Q(i.message)));
  }
  bilan.fait = edition_faite;
  if (apercu) {
    bilan.fait = !apercu_.pages.empty();
    bilan.resume = QStringLiteral("Aperçu de %1 dossier(s), %2 page(s).")
                       .arg(cles.size())
                       .arg(apercu_.pages.size());
    return bilan;
  }
  for (const printing::cups::Envoi& e : *envois_) {
    if (e.erreur.empty()) {
      bilan.resume = QStringLiteral("Travail %1-%2 envoyé à l'imprimante « %3 ».")
                         .arg(Q(e.file.substr(0, e.file.find('/'))))
                         .arg(e.numero)
                         .arg(Q(e.file));
    } else {
      bilan.fait = false;
      bilan.alertes << Phrase(Q(e.erreur));
      bilan.resume = QStringLiteral("L'impression n'a pas été envoyée.");
    }
  }
  if (envois_->empty() && edition_faite) {
    bilan.resume = QStringLiteral("Dossiers imprimés dans %1.")
                       .arg(Q(printing::ListeImprimantes::FichierPdf()));
  }
  return bilan;
}

bool FenetreHote::Progression(bool apercu) {
  if (!progression_) {
    progression_ = std::make_unique<QProgressDialog>(this);
    progression_->setWindowTitle(apercu ? QStringLiteral("Aperçu des dossiers")
                                        : QStringLiteral("Impression des dossiers"));
    progression_->setCancelButtonText(QStringLiteral("Annuler"));
    progression_->setRange(0, controle_->Nb_Personne);
    progression_->setWindowModality(Qt::WindowModal);
    progression_->setMinimumDuration(400);
    progression_->setAutoReset(false);
    progression_->setAutoClose(false);
    progression_->setValue(0);
  }
  progression_->setLabelText(QStringLiteral("Dossier %1 sur %2…")
                                 .arg(controle_->Index_Personne)
                                 .arg(controle_->Nb_Personne));
  progression_->setValue(std::max(0, controle_->Index_Personne - 1));
  // The window repaints and answers between two pages; its inputs are
  // disabled for the run, and closing it waits for the end.
  QCoreApplication::processEvents();
  if (progression_->wasCanceled()) {
    controle_->Abandonne();
    return false;
  }
  return true;
}

FenetreJournal* FenetreHote::OuvreJournal() {
  if (!base_ouverte_) return nullptr;
  auto* fenetre = new FenetreJournal(journal::Emplacement(base_ouverte_.get(), ""), this);
  fenetre->setAttribute(Qt::WA_DeleteOnClose);
  fenetre->show();
  return fenetre;
}

void FenetreHote::ImprimeEtSignale() { Signale(Imprime()); }
void FenetreHote::ApercuEtSignale() { Signale(Apercu()); }

void FenetreHote::Signale(const Bilan& bilan) {
  statusBar()->showMessage(bilan.resume);
  if (!bilan.alertes.isEmpty()) {
    QMessageBox::warning(this, QStringLiteral("Edition de la fiche"),
                         bilan.alertes.join(QStringLiteral("\n")));
  }
}

void FenetreHote::closeEvent(QCloseEvent* evenement) {
  if (en_cours_) {
    evenement->ignore();
    return;
  }
  Memorise();
  QMainWindow::closeEvent(evenement);
}

}  // namespace hote

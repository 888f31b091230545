#include "app/gui/fenetre_journal.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QDateTime>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "control/journal_edition.h"
#include "marbrel/magasin.h"

namespace hote {

namespace {

QString Q(const std::string& texte) { return QString::fromStdString(texte); }

// The journal keeps UTC times; a day of the filters is a local day.
std::string DebutDuJour(QDate jour) {
  return jour.startOfDay().toUTC().toString(Qt::ISODateWithMs).toStdString();
}

QString Issue(const journal::Passage& p) {
  if (p.issue.numero == 0) return QStringLiteral("sans issue");
  QString texte = Q(p.issue.issue);
  if (p.issue.issue != journal::kAnnulee)
    texte += QStringLiteral(", %1 page(s)").arg(p.issue.pages);
  if (!p.issue.message.empty()) texte += QStringLiteral(" : ") + Q(p.issue.message);
  return texte;
}

}  // namespace

FenetreJournal::FenetreJournal(std::string chemin, QWidget* parent)
    : QDialog(parent), chemin_(std::move(chemin)) {
  setWindowTitle(QStringLiteral("Journal des impressions"));
  auto* colonne = new QVBoxLayout(this);

  auto* filtres = new QHBoxLayout;
  avec_depuis_ = new QCheckBox(QStringLiteral("Depuis le"), this);
  depuis_ = new QDateEdit(QDate::currentDate().addMonths(-1), this);
  avec_jusqu_a_ = new QCheckBox(QStringLiteral("jusqu'au"), this);
  jusqu_a_ = new QDateEdit(QDate::currentDate(), this);
  for (QDateEdit* d : {depuis_, jusqu_a_}) {
    d->setCalendarPopup(true);
    d->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
  }
  cle_ = new QLineEdit(this);
  cle_->setPlaceholderText(QStringLiteral("clé du dossier"));
  utilisateur_ = new QLineEdit(this);
  utilisateur_->setPlaceholderText(QStringLiteral("utilisateur"));
  auto* filtrer = new QPushButton(QStringLiteral("Filtrer"), this);
  filtrer->setDefault(true);
  for (QWidget* w : std::initializer_list<QWidget*>{avec_depuis_, depuis_, avec_jusqu_a_, jusqu_a_,
                                                    cle_, utilisateur_, filtrer}) {
    filtres->addWidget(w);
  }
  colonne->addLayout(filtres);

  table_ = new QTableWidget(0, 9, this);
  table_->setObjectName(QStringLiteral("Table_Journal"));
  table_->setHorizontalHeaderLabels(
      {QStringLiteral("N°"), QStringLiteral("Date (UTC)"), QStringLiteral("Compte"),
       QStringLiteral("Utilisateur"), QStringLiteral("Programme"), QStringLiteral("Type"),
       QStringLiteral("Clés"), QStringLiteral("Destination"), QStringLiteral("Issue")});
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->verticalHeader()->hide();
  table_->horizontalHeader()->setStretchLastSection(true);
  colonne->addWidget(table_, 1);

  auto* bas = new QHBoxLayout;
  etat_ = new QLabel(this);
  bas->addWidget(etat_, 1);
  auto* verifier = new QPushButton(QStringLiteral("Vérifier la chaîne"), this);
  auto* fermer = new QPushButton(QStringLiteral("Fermer"), this);
  bas->addWidget(verifier);
  bas->addWidget(fermer);
  colonne->addLayout(bas);
  resize(980, 420);

  connect(filtrer, &QPushButton::clicked, this, &FenetreJournal::Actualise);
  connect(cle_, &QLineEdit::returnPressed, this, &FenetreJournal::Actualise);
  connect(utilisateur_, &QLineEdit::returnPressed, this, &FenetreJournal::Actualise);
  connect(verifier, &QPushButton::clicked, this, &FenetreJournal::Verifie);
  connect(fermer, &QPushButton::clicked, this, &QDialog::accept);
  Actualise();
}

void FenetreJournal::Filtre(QDate depuis, QDate jusqu_a, const QString& cle,
                            const QString& utilisateur) {
  avec_depuis_->setChecked(depuis.isValid());
  if (depuis.isValid()) depuis_->setDate(depuis);
  avec_jusqu_a_->setChecked(jusqu_a.isValid());
  if (jusqu_a.isValid()) jusqu_a_->setDate(jusqu_a);
  cle_->setText(cle);
  utilisateur_->setText(utilisateur);
  Actualise();
}

void FenetreJournal::Actualise() {
  table_->setRowCount(0);
  journal::Filtre f;
  if (avec_depuis_->isChecked()) f.depuis = DebutDuJour(depuis_->date());
  if (avec_jusqu_a_->isChecked()) f.jusqu_a = DebutDuJour(jusqu_a_->date().addDays(1));
  f.cle = cle_->text().trimmed().toStdString();
  f.utilisateur = utilisateur_->text().trimmed().toStdString();
  std::vector<journal::Passage> passages;
  try {
    const auto j = journal::OuvreJournal(chemin_, /*ecriture=*/false);
    passages = j->Liste(f);
  } catch (const std::exception& e) {
    etat_->setText(Q(e.what()));
    return;
  }
  for (const journal::Passage& p : passages) {
    const journal::Entree& i = p.impression;
    QStringList cles;
    for (const std::string& c : i.cles) cles << Q(c);
    const std::string destination =
        p.issue.numero != 0 && !p.issue.destination.empty() ? p.issue.destination : i.destination;
    const QStringList cellules = {QString::number(i.numero),
                                  Q(i.heure_utc.substr(0, 19)).replace('T', ' ') +
                                      QStringLiteral(" (") + Q(i.decalage) + QStringLiteral(")"),
                                  Q(i.utilisateur_systeme + "@" + i.hote),
                                  Q(i.utilisateur),
                                  Q(i.programme),
                                  Q(i.type),
                                  cles.join(' '),
                                  Q(destination),
                                  Issue(p)};
    const int ligne = table_->rowCount();
    table_->insertRow(ligne);
    for (int c = 0; c < cellules.size(); ++c) {
      table_->setItem(ligne, c, new QTableWidgetItem(cellules[c]));
    }
  }
  table_->resizeColumnsToContents();
  etat_->setText(QStringLiteral("%1 impression(s) — %2")
                     .arg(passages.size())
                     .arg(Q(marbrel::NomAffiche(chemin_))));
}

int FenetreJournal::Lignes() const { return table_->rowCount(); }

QString FenetreJournal::Cellule(int ligne, int colonne) const {
  const QTableWidgetItem* item = table_->item(ligne, colonne);
  return item ? item->text() : QString();
}

QString FenetreJournal::Etat() const { return etat_->text(); }

void FenetreJournal::Verifie() {
  try {
    const auto j = journal::OuvreJournal(chemin_, /*ecriture=*/false);
    const journal::Verdict v = j->Verifie();
    QString message = Q(v.message);
    message[0] = message[0].toUpper();
    if (v.intact) {
      QMessageBox::information(this, windowTitle(), message);
    } else {
      QMessageBox::warning(this, windowTitle(), message);
    }
  } catch (const std::exception& e) {
    QMessageBox::warning(this, windowTitle(), Q(e.what()));
  }
}

}  // namespace hote

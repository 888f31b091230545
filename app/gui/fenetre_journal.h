// "Journal des impressions": the runs of the access journal of the open store
// — who printed whose dossier, when, where, and how it ended — with the
// filters of `vesko journal` (from, until, key, user) and the chain's check.
#pragma once

#include <QDate>
#include <QDialog>
#include <QString>
#include <string>

class QCheckBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QTableWidget;

namespace hote {

class FenetreJournal : public QDialog {
  Q_OBJECT

 public:
  // The journal at chemin, read-only. Lists every run at once; a journal that
  // cannot be read says so in the window, not as an error.
  explicit FenetreJournal(std::string chemin, QWidget* parent = nullptr);

  // Sets the filters (a null date or an empty text does not filter; until is
  // inclusive) and lists the matching runs, oldest first.
  void Filtre(QDate depuis, QDate jusqu_a, const QString& cle, const QString& utilisateur);
  // Lists again with the filters shown in the window.
  void Actualise();

  int Lignes() const;
  // The text of a cell; columns: "N°", "Date (UTC)", "Compte", "Utilisateur",
  // "Programme", "Type", "Clés", "Destination", "Issue".
  QString Cellule(int ligne, int colonne) const;
  // The line under the table: the count, or why the journal cannot be read.
  QString Etat() const;

 private:
  void Verifie();

  std::string chemin_;
  QCheckBox* avec_depuis_ = nullptr;
  QDateEdit* depuis_ = nullptr;
  QCheckBox* avec_jusqu_a_ = nullptr;
  QDateEdit* jusqu_a_ = nullptr;
  QLineEdit* cle_ = nullptr;
  QLineEdit* utilisateur_ = nullptr;
  QTableWidget* table_ = nullptr;
  QLabel* etat_ = nullptr;
};

}  // namespace hote

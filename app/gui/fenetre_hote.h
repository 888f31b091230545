// The reference host window: a form that holds a Ctr_Vesko and uses it the
// way the service's own application does. It opens a store, lists the
// persons of the chosen dossier type with their names (searchable, several
// can be selected) and prints them by setting TheDatabase and calling
// Edition. The printer is chosen in Qt's print dialog; a preview shows the
// same document before anything is sent.
#pragma once

#include <QMainWindow>
#include <QString>
#include <QStringList>
#include <memory>

#include "app/gui/choix_imprimante.h"
#include "control/ctr_vesko.h"
#include "printing/cups.h"
#include "printing/recording.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QProgressDialog;
class QPushButton;
class QStandardItemModel;
class QTableView;

namespace hote {

class FenetreJournal;
class FiltreRecherche;

// A message for a box: a sentence, starting with a capital letter and ending
// with a full stop.
QString Phrase(const QString& texte);

// What a print from the window came to, for the status bar and the user.
struct Bilan {
  bool fait = false;    // a document was produced
  QString resume;       // one line for the status bar
  QStringList alertes;  // what the user must read: failures, absent keys
};

class FenetreHote : public QMainWindow {
  Q_OBJECT

 public:
  explicit FenetreHote(QWidget* parent = nullptr);
  ~FenetreHote() override;

  // Opens the store (read only) and lists its persons of the current type.
  // Fails with a French sentence naming the file.
  void OuvreBase(const QString& chemin);
  // "AIDE" or "AIDANT": the persons listed and the dossier printed.
  void ChoisitType(const QString& type);
  // Shows only the persons whose key, name and first name hold every word of
  // texte, accents and case ignored; the status bar counts them.
  void Recherche(const QString& texte);
  // Selects the listed persons of these keys (the others are unselected).
  void Selectionne(const QStringList& cles);
  // The keys selected, in the order of the list as shown.
  QStringList ClesChoisies() const;
  int PersonnesAffichees() const;

  // Prints the selected persons' dossiers as one document on the printer
  // chosen in Qt's print dialog (a queue that cannot print is said before
  // anything is drawn). Once the printer is chosen, a progress dialog follows
  // the run; its "Annuler" abandons the document as a whole. Nothing is shown
  // about the outcome: the caller reports it.
  Bilan Imprime();
  // Records the selected persons' dossiers and shows them in a print preview
  // (modal) whose "Imprimer…" prints them as Imprime does. With montre false
  // the preview is only prepared (tests).
  Bilan Apercu(bool montre = true);
  // The store and dossier type of the last session (QSettings), reopened by
  // vesko-gui when no --db is given; "" when none.
  static QString BaseMemorisee();
  static QString TypeMemorise();

  // Shows the "Journal des impressions" window of the open store (not modal;
  // the host window owns it). nullptr when no store is open.
  FenetreJournal* OuvreJournal();

  Ctr_Vesko& Controle() { return *controle_; }
  const printing::Enregistrement& DernierApercu() const { return apercu_; }

 protected:
  void closeEvent(QCloseEvent* evenement) override;

 private:
  void ConstruitFormulaire();
  void RemplitListe();
  void ImprimeEtSignale();
  void ApercuEtSignale();
  void Signale(const Bilan& bilan);
  // One Edition of the selected keys on this printer list: for a preview the
  // control is given its one entry, otherwise the print dialog chooses.
  Bilan Edite(std::vector<printing::Destination> liste, bool apercu);
  // Called by the surfaces as the run goes; false once the user abandoned it.
  bool Progression(bool apercu);
  void Memorise() const;

  Ctr_Vesko* controle_ = nullptr;
  QLabel* base_ = nullptr;
  QComboBox* type_ = nullptr;
  QLineEdit* recherche_ = nullptr;
  QTableView* vue_ = nullptr;
  QStandardItemModel* modele_ = nullptr;
  FiltreRecherche* filtre_ = nullptr;
  QPushButton* bouton_apercu_ = nullptr;
  QPushButton* bouton_imprimer_ = nullptr;
  std::unique_ptr<QProgressDialog> progression_;

  QString chemin_base_;
  std::shared_ptr<marbrel::Base> base_ouverte_;
  std::shared_ptr<printing::cups::ReglagesEnvoi> reglages_;
  std::shared_ptr<std::vector<printing::cups::Envoi>> envois_;
  ChoixImprimanteQt choix_;
  printing::Enregistrement apercu_;
  bool en_cours_ = false;
};

}  // namespace hote

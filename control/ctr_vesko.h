// Ctr_Vesko: the dossier-printing control a host places on one of its forms.
//
// The host sets TheClient and TheDatabase, then calls Edition with the keys of
// the persons and the dossier type ("AIDANT" or "AIDE"). Edition opens the
// database files, lets the user choose a printer, sets it up, prints every
// dossier as one document and closes the files again. Every other public
// member is a building block of that run; their names and order are the
// control's published interface (control/interface.h).
#pragma once

#include <QLabel>
#include <QWidget>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "layout/monnaie.h"
#include "marbrel/base.h"
#include "marbrel/client.h"
#include "marbrel/liste_selection.h"
#include "marbrel/tabdyn.h"
#include "printing/printer.h"

using marbrel::TabDyn;
using mise_en_page::Monnaie;

// Something that went wrong during a run without stopping it: the print goes
// on, and the host (or the command line) can tell the user.
struct Incident {
  std::string section;  // the procedure that failed
  std::string cle;      // the person being printed
  std::string message;  // the library's or runtime's French message
};

class Ctr_Vesko : public QWidget {
  Q_OBJECT

 public:
  explicit Ctr_Vesko(QWidget* parent = nullptr);
  ~Ctr_Vesko() override;

  // ---- The published interface, in slot order. ----
  // 1, 2: the host's objects. The client is kept and never used; the base is
  // what Edition opens every file through. Ferme_Fichiers drops the base at
  // the end of each run, so the host sets it before every Edition.
  void TheClient(std::shared_ptr<marbrel::Client> client);
  void TheDatabase(std::shared_ptr<marbrel::Base> base);
  // 3: prints the dossiers of the keys held one per attribute of W_TabDyn.
  // Fails (and prints nothing) when the files cannot be opened, the printer
  // cannot be set up or the run cannot be written in the access journal
  // (control/journal_edition.h); once printing has begun, failures are
  // recorded as Incidents and the run goes on. Every run, cancelled ones
  // included, leaves its entry and its outcome in the journal.
  void Edition(TabDyn& W_TabDyn, std::string& W_Type);
  void Parametrage_Imprimante();
  void Prepare_Impression(TabDyn& W_TabDyn);
  void Entete_Page(std::string& W_Code);
  void Etat_Civil();
  void NewPage(std::string& W_Code);
  void Conjoint_Aide();
  void Autres_Personnes_Foyer();
  void Ressource_Aide(std::string& W_Code);
  void Origine_Dossier(std::string& W_Code);
  void Origine_Contact(std::int32_t& W_Att, std::string& W_Lib);
  void Adresse_Facturation(std::string& W_Code);
  void Adresse_Bancaire(std::string& W_Code);
  void Sectorisation();
  void Modalite_Interv(std::string& W_Code);
  void Formation(std::string& W_Code);
  void Experience();
  void Activite();
  void Capacite_Tache(std::string& W_Code);
  void Comportement();
  void Aidant_Incompatible(std::string& W_Code);
  void Dispo(std::string& W_Code);
  void Habitat(std::string& W_Code);
  void Enfant_Hors_Foyer();
  void Personne_A_Prevenir(std::string& W_Code);
  void Contact();
  void Intervenants_Exterieurs();
  void Medecin_Traitant();
  void Intervenant();
  void Aide_Technique();
  void Antecedent(std::string& W_Code);
  void Diagnostic();
  void Trait_Med();
  void Fiche_Med(std::int32_t& W_Att);
  void Handicap();
  void Detail_Etranger(std::string& W_Code);
  void Bloc_Note_Aidant(std::string& W_Code);
  void Bloc_Note_Aide(std::string& W_Code);
  void Bloc_Note(TabDyn& W_Bloc, std::string& W_Code);
  void Titre(const std::string& Libelle);
  void Cadre(Monnaie W_PointDepart, std::int32_t W_Nbligne, const TabDyn& W_TailleCol);
  void ImprimeDonnées(std::string& W_Code);
  void Remplir_Liste_Tache();
  // 46: the name of the host's own user, written in the access journal with
  // every run beside the operating-system account ("" until a host sets it).
  void Utilisateur(const std::string& W_Utilisateur) { utilisateur_ = W_Utilisateur; }
  const std::string& Utilisateur() const { return utilisateur_; }

  // ---- For hosts and tests, outside the published interface. ----
  // Fixes "today" for the next runs (internal day number): the header date,
  // the ages and the unavailability selection. Unset, each run uses the
  // system's date.
  void Fixe_Aujourdhui(long jour) { aujourdhui_fixe_ = jour; }
  void Oublie_Aujourdhui() { aujourdhui_fixe_.reset(); }
  // The access journal's file for the next runs, instead of the one beside
  // the store or in VESKO_JOURNAL ("" goes back to those).
  void Fixe_Journal(const std::string& chemin) { journal_ = chemin; }
  // What went wrong in the latest run, and the keys absent from the main file.
  const std::vector<Incident>& Incidents() const { return incidents_; }
  const std::vector<std::string>& Cles_Absentes() const { return cles_absentes_; }
  // Prints the building blocks on this printer outside Edition (tests, hosts
  // composing their own documents); Edition replaces it with its own.
  void Commence_Sur(std::unique_ptr<printing::Printer> imprimante) {
    imprimante_ = std::move(imprimante);
  }
  // The printer of the current run (nullptr outside a run).
  printing::Printer* Imprimante() { return imprimante_.get(); }
  // Asks the run under way to stop (a host's "Annuler", called from a
  // surface's progress hook): no further section is printed and the document
  // is not ended, so its surface is dropped unfinished and nothing of the run
  // reaches the printer. Edition clears the request when it starts.
  void Abandonne() { abandon_ = true; }
  bool Abandonnee() const { return abandon_; }

  // ---- Run state, read and written by the print routines. ----
  std::int16_t Un_Centimetre = 567;
  bool Cadre_Gauche = false;
  std::int32_t Nb_Personne = 0;  // however many keys the host passes: never cut
  std::int32_t Index_Personne = 0;
  std::string Type_Dossier;
  std::int32_t Num_Page = 0;
  std::int32_t Compteur_Ligne = 0;  // lines of the latest ImprimeDonnées
  TabDyn Travail1;                  // two scratch records of the run
  TabDyn Travail2;
  TabDyn Taille_Col;          // column widths in cm for Cadre, values of attribute 1
  TabDyn Resultat_Selection;  // latest selection: row r = attribute r, fields as values

  // List-printing members used by ImprimeDonnées, set by its caller.
  TabDyn Liste_Source;              // the record whose list is printed
  std::int32_t Liste_Attribut = 0;  // the attribute holding the codes
  std::int32_t Liste_Nb_Ligne = 0;  // entries in the list
  std::int32_t Liste_Type = 0;      // 1 care recipient, 2 carer
  std::int32_t Liste_Ligne_Par_Page = 0;
  std::int32_t Liste_Largeur = 55;          // width of the label column text
  std::string Liste_Entete;                 // column header printed above the list
  TabDyn Liste_Taille_Col;                  // the two widths of the list's frame
  Monnaie W_PointDepart;                    // top of the current chunk
  std::int32_t Liste_Lignes_Chunk = 0;      // rows of the current chunk
  std::int32_t Liste_Lignes_Restantes = 0;  // rows after the current chunk
  std::int32_t Liste_Index = 0;             // current row
  long long Liste_Total = 0;                // sum of a carer's values (hundredths)
  bool Liste_Catalogue = false;             // rows are the task lines of Liste_Tache
  bool Liste_Centiemes = false;             // a carer's values are stored in hundredths
  std::string Code_Dossier;                 // the person's key, kept by Capacite_Tache for the
                                            // sections called without it

  // Task list built by Remplir_Liste_Tache for the tasks section.
  TabDyn Liste_Tache;
  std::int32_t Ligne_Tache = 1;
  std::int32_t Nb_Tache = 0;
  TabDyn Tache_Personne;            // the person's task record
  std::int32_t Tache_Attribut = 1;  // its attribute holding the task codes

 private:
  void Indispo(std::string& W_Code);
  std::int32_t Position_Coupure(const std::string& Texte);
  friend struct Essai_Coupure;  // the tests' door to the private word-wrap rule

  // Runs one row of the dossier; a failure is recorded and the run goes on.
  template <typename F>
  void Garde(const char* section, const std::string& cle, F&& action);
  long Aujourdhui() const;
  // The current printer; sections print through it.
  printing::Printer& P() { return *imprimante_; }

  QLabel* Etq_Edition = nullptr;
  std::unique_ptr<printing::Printer> imprimante_;
  std::optional<long> aujourdhui_fixe_;
  std::vector<Incident> incidents_;
  std::vector<std::string> cles_absentes_;
  std::string utilisateur_;
  std::string journal_;
  bool abandon_ = false;
};

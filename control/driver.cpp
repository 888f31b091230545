// The print run: every person's dossier, in the order of its type, as one
// document.
#include <QApplication>
#include <QGuiApplication>
#include <algorithm>
#include <vector>

#include "control/ctr_vesko.h"
#include "db/lecture.h"
#include "db/variable.h"
#include "marbrel/erreur.h"
#include "marbrel/marques.h"

template <typename F>
void Ctr_Vesko::Garde(const char* appel, const std::string& cle, F&& action) {
  // The section is named as the procedure, without its arguments.
  std::string section(appel);
  section = section.substr(0, section.find('('));
  try {
    action();
  } catch (const std::exception& e) {
    incidents_.push_back({section, cle, e.what()});
  } catch (...) {
    incidents_.push_back({section, cle, "erreur inconnue"});
  }
}

namespace {

// The wait pointer and the disabled control for the length of a run, put back
// however the run ends.
class AttenteVisible {
 public:
  explicit AttenteVisible(QWidget* controle) : controle_(controle) {
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
      QGuiApplication::setOverrideCursor(Qt::WaitCursor);
      curseur_ = true;
    }
    controle_->setEnabled(false);
  }
  ~AttenteVisible() {
    if (curseur_) QGuiApplication::restoreOverrideCursor();
    controle_->setEnabled(true);
  }

 private:
  QWidget* controle_;
  bool curseur_ = false;
};

}  // namespace

void Ctr_Vesko::Prepare_Impression(TabDyn& W_TabDyn) {
  {
    AttenteVisible attente(this);
    Travail1 = TabDyn();
    Travail2 = TabDyn();
    bool deja_imprime = false;
    const bool aide = Type_Dossier == "AIDE";
    const bool aidant = Type_Dossier == "AIDANT";

    // The keys are taken out of W_TabDyn once: reading attribute i walks the
    // record from its start, which a batch of many thousand persons cannot
    // afford some forty times per dossier.
    const std::vector<std::string> cles = W_TabDyn.Attributs(Nb_Personne);
    for (std::int32_t i = 1; i <= Nb_Personne && !abandon_; ++i) {
      Index_Personne = i;
      // The key is given afresh to each call that takes it: a section
      // receives it by reference and must not change the next one's.
      auto cle = [&]() { return cles[static_cast<size_t>(i - 1)]; };
      std::string code = cle();
      // Nothing read for the previous person may reach this one's dossier,
      // even when a read of this one fails and leaves its slot as it was.
      for (TabDyn& slot : Variable::Enregistrements) slot = TabDyn();
      Variable::Tables = TabDyn();
      Liste_Source = TabDyn();
      Tache_Personne = TabDyn();
      Resultat_Selection = TabDyn();

      Garde("Lecture de la fiche", code, [&] {
        Fic fichier = aidant ? Fic::CIVILAIDANT : Fic::CIVILAIDE;
        Variable::Principal = TabDyn();
        if (code.empty()) return;
        const auto& f = Variable::Fichier(fichier);
        try {
          Variable::Principal = f->Lit(code);
        } catch (const marbrel::Erreur& e) {
          if (e.Numero() != marbrel::ERR_CLE_ABSENTE) throw;
          cles_absentes_.push_back(code);
        }
      });
      Variable::Enregistrement(aidant ? Fic::CIVILAIDANT : Fic::CIVILAIDE) = Variable::Principal;

      if (deja_imprime) Garde("Saut de page", code, [&] { P().NewPage(); });
      deja_imprime = true;

#define VESKO_LIGNE(condition, appel)      \
  if ((condition) && !abandon_) {          \
    std::string W_Code = cle();            \
    Garde(#appel, W_Code, [&] { appel; }); \
  }
      VESKO_LIGNE(true, Entete_Page(W_Code));
      VESKO_LIGNE(true, Etat_Civil());
      VESKO_LIGNE(true, NewPage(W_Code));
      VESKO_LIGNE(aide, Ressource_Aide(W_Code));
      VESKO_LIGNE(aide, Origine_Dossier(W_Code));
      VESKO_LIGNE(aide, Adresse_Facturation(W_Code));
      VESKO_LIGNE(true, Adresse_Bancaire(W_Code));
      VESKO_LIGNE(true, Sectorisation());
      VESKO_LIGNE(aide, NewPage(W_Code));
      VESKO_LIGNE(aide, Modalite_Interv(W_Code));
      VESKO_LIGNE(aide, Aidant_Incompatible(W_Code));
      VESKO_LIGNE(aide, NewPage(W_Code));
      VESKO_LIGNE(!aide, Formation(W_Code));
      VESKO_LIGNE(!aide, Experience());
      VESKO_LIGNE(!aide, Activite());
      VESKO_LIGNE(!aide, NewPage(W_Code));
      VESKO_LIGNE(true, Capacite_Tache(W_Code));
      // Behaviour stays on the tasks' page only when it still has room there.
      VESKO_LIGNE(aide && Compteur_Ligne + 4 >= 41, NewPage(W_Code));
      VESKO_LIGNE(true, Comportement());
      VESKO_LIGNE(aidant, NewPage(W_Code));
      VESKO_LIGNE(aidant, Dispo(W_Code));
      VESKO_LIGNE(aide, NewPage(W_Code));
      VESKO_LIGNE(true, Indispo(W_Code));
      VESKO_LIGNE(aide, Habitat(W_Code));
      VESKO_LIGNE(aide, Enfant_Hors_Foyer());
      VESKO_LIGNE(true, Personne_A_Prevenir(W_Code));
      VESKO_LIGNE(!aidant, Contact());
      VESKO_LIGNE(!aidant, NewPage(W_Code));
      VESKO_LIGNE(!aidant, Intervenants_Exterieurs());
      VESKO_LIGNE(!aidant, Aide_Technique());
      VESKO_LIGNE(!aidant, Antecedent(W_Code));
      VESKO_LIGNE(!aidant, Diagnostic());
      VESKO_LIGNE(!aidant, NewPage(W_Code));
      VESKO_LIGNE(!aidant, Trait_Med());
      VESKO_LIGNE(!aidant, Bloc_Note_Aide(W_Code));
      VESKO_LIGNE(aidant, Handicap());
      VESKO_LIGNE(aidant, Detail_Etranger(W_Code));
      VESKO_LIGNE(aidant, Bloc_Note_Aidant(W_Code));
#undef VESKO_LIGNE
    }
    Travail1 = TabDyn();
    Travail2 = TabDyn();
    QCoreApplication::processEvents();
  }
  // The document is always ended, so everything printed reaches the printer;
  // an abandoned run is the exception: its surface goes unfinished.
  if (!abandon_) Garde("Fin du document", "", [&] { P().EndDoc(); });
}

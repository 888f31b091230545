// The smallest host of the Vesko control: a form that holds a Ctr_Vesko and
// prints dossiers with it, as a host application does.
//
//   hote_exemple BASE TYPE FICHIER.pdf CLE...   (BASE: a SQLite file or postgresql://…)
//
// It places the control on its form, hands it a client and a database, says
// which printer to use (the built-in "PDF", writing FICHIER.pdf) and calls
// Edition. It also loads the control's plugin, as a host that links nothing
// would, and makes a second control through the plugin's class object.
#include <QApplication>
#include <QLabel>
#include <QPluginLoader>
#include <QVBoxLayout>
#include <iostream>

#include "component/fabrique.h"
#include "control/ctr_vesko.h"
#include "marbrel/base.h"
#include "marbrel/outils.h"
#include "printing/imprimantes.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  if (argc < 5) {
    std::cerr << "usage : hote_exemple BASE.vesko AIDE|AIDANT FICHIER.pdf CLE...\n";
    return 2;
  }

  // The form and the control on it.
  QWidget formulaire;
  auto* colonne = new QVBoxLayout(&formulaire);
  auto* controle = new Ctr_Vesko(&formulaire);
  colonne->addWidget(controle);
  formulaire.show();

  // The printer choice belongs to the host: here, always the built-in "PDF"
  // printer, which closes the system's printer list, on A4 paper.
  printing::ListeImprimantes::FixeFichierPdf(argv[3]);
  const auto& imprimantes = printing::ListeImprimantes::Courante().Destinations();
  const std::string pdf = std::to_string(imprimantes.size() - 1);
  marbrel::Outils::Instance().Installe_Choix([pdf](const std::string&) { return pdf; },
                                             [] { return std::int16_t{9}; });

  // The host's objects, set before every Edition, then the keys, one per
  // attribute.
  controle->TheClient(std::make_shared<marbrel::Client>());
  controle->TheDatabase(marbrel::Base::Ouvre(argv[1], /*lecture_seule=*/true));
  marbrel::TabDyn cles;
  for (int i = 4; i < argc; ++i) cles.Remplace(i - 3, argv[i]);
  std::string type = argv[2];
  controle->Edition(cles, type);
  for (const Incident& i : controle->Incidents()) {
    std::cerr << "échec dans " << i.section << " pour « " << i.cle << " » : " << i.message << "\n";
  }
  std::cout << "Dossiers imprimés dans " << argv[3] << "\n";

  // The same control, made through the plugin's class object.
  QPluginLoader chargeur(QStringLiteral(VESKO_PLUGIN));
  auto* fabrique = qobject_cast<FabriqueControle*>(chargeur.instance());
  if (fabrique == nullptr) {
    std::cerr << "plugin non chargé : " << chargeur.errorString().toStdString() << "\n";
    return 1;
  }
  auto* second = static_cast<Ctr_Vesko*>(fabrique->Cree(&formulaire));
  colonne->addWidget(second);
  std::cout << "Contrôle du plugin : "
            << second->findChild<QLabel*>("Etq_Edition")->text().toStdString() << "\n";
  return 0;
}

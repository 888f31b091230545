// `vesko component register|unregister|info`: installs the control's plugin
// where hosts find it, removes it, describes it.
//
// The plugin is found next to this program: <bin>/../lib/vesko/plugins once
// installed, <build>/plugins in a build tree; --plugin names another file.
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QPluginLoader>
#include <QStandardPaths>
#include <iostream>

#include "app/chargement_plugin.h"
#include "app/commandes.h"
#include "component/fabrique.h"
#include "component/registre.h"

namespace vesko_app {

namespace {

const QString kNomPlugin = QStringLiteral("libvesko_controle.so");
// The control's library the plugin needs, by its soname.
const QString kNomBibliotheque = QStringLiteral("libvesko.so.0");

std::string S(const QString& texte) { return texte.toStdString(); }

// The plugin this program was built or installed with.
QString PluginLivre(const std::string& choisi) {
  if (!choisi.empty()) return QFileInfo(QString::fromStdString(choisi)).absoluteFilePath();
  const QDir programme(QCoreApplication::applicationDirPath());
  for (const QString& chemin : {programme.filePath("../lib/vesko/plugins/" + kNomPlugin),
                                programme.filePath("plugins/" + kNomPlugin)}) {
    if (QFileInfo::exists(chemin)) return QFileInfo(chemin).canonicalFilePath();
  }
  throw std::runtime_error("le plugin " + S(kNomPlugin) + " est introuvable à côté de " +
                           S(programme.absolutePath()) + " : précisez-le avec --plugin.");
}

// The plugin's metadata, read from the file without loading its code.
QJsonObject Metadonnees(const QString& plugin) {
  if (!QFileInfo::exists(plugin)) {
    throw std::runtime_error("le plugin « " + S(plugin) + " » n'existe pas.");
  }
  const QJsonObject tout = QPluginLoader(plugin).metaData();
  if (tout.value("IID").toString() != QStringLiteral(FabriqueControle_iid)) {
    throw std::runtime_error("« " + S(plugin) + " » n'est pas le composant Vesko (interface " +
                             FabriqueControle_iid + " attendue).");
  }
  return tout;
}

QString DossierParDefaut() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
         QStringLiteral("/vesko/plugins");
}

// The libvesko the plugin was built or installed with: beside the plugins'
// folder once installed (lib/vesko/plugins → lib), in lib/ of a build tree.
QString BibliothequeLivree(const QString& plugin) {
  const QDir dossier = QFileInfo(plugin).absoluteDir();
  for (const QString& chemin : {dossier.filePath("../../" + kNomBibliotheque),
                                dossier.filePath("../lib/" + kNomBibliotheque)}) {
    if (QFileInfo::exists(chemin)) return QFileInfo(chemin).canonicalFilePath();
  }
  return QString();
}

void Copie(const QString& source, const QString& cible) {
  if (QFileInfo(cible) == QFileInfo(source)) return;
  QFile::remove(cible);
  if (!QFile::copy(source, cible)) {
    throw std::runtime_error("« " + S(source) + " » ne peut pas être copié dans « " + S(cible) +
                             " ».");
  }
}

// Removes a registered copy: the plugin and the library put beside it.
void RetireCopie(const QString& plugin) {
  QFile::remove(plugin);
  const QString bibliotheque = QFileInfo(plugin).absoluteDir().filePath(kNomBibliotheque);
  if (QFileInfo::exists(bibliotheque)) QFile::remove(bibliotheque);
}

void Enregistre(const std::string& plugin_choisi, const std::string& dossier_choisi) {
  const QString source = PluginLivre(plugin_choisi);
  const QJsonObject meta = Metadonnees(source);
  const QString dossier =
      dossier_choisi.empty() ? DossierParDefaut()
                             : QFileInfo(QString::fromStdString(dossier_choisi)).absoluteFilePath();
  if (!QDir().mkpath(dossier)) {
    throw std::runtime_error("le dossier « " + S(dossier) + " » ne peut pas être créé.");
  }
  const QString cible = QDir(dossier).filePath(kNomPlugin);
  const auto ancienne = vesko_composant::Inscrit();
  const bool meme_place = QFileInfo(cible) == QFileInfo(source);
  Copie(source, cible);
  // The copy finds its library beside it (the plugin looks in its own
  // folder first), wherever the copy goes.
  const QString bibliotheque = BibliothequeLivree(source);
  if (!meme_place && !bibliotheque.isEmpty()) {
    Copie(bibliotheque, QDir(dossier).filePath(kNomBibliotheque));
  }
  if (const std::string raison = EssaieChargement(S(cible)); !raison.empty()) {
    if (!meme_place) RetireCopie(cible);
    throw std::runtime_error("le plugin copié dans « " + S(cible) +
                             " » ne se charge pas : rien n'a été enregistré (" + raison + ").");
  }
  vesko_composant::Inscris({cible, meta.value("IID").toString(),
                            meta.value("MetaData").toObject().value("version").toString()});
  // A registration elsewhere is replaced, not left behind.
  if (ancienne && QFileInfo(ancienne->chemin) != QFileInfo(cible) &&
      QFileInfo(ancienne->chemin) != QFileInfo(source)) {
    RetireCopie(ancienne->chemin);
    std::cout << "Ancienne copie retirée : " << S(ancienne->chemin) << "\n";
  }
  std::cout << "Composant Ctr_Vesko enregistré : " << S(cible) << "\n";
}

void Desenregistre() {
  const auto inscription = vesko_composant::Inscrit();
  if (!inscription) {
    std::cout << "Le composant Ctr_Vesko n'était pas enregistré.\n";
    return;
  }
  if (QFileInfo::exists(inscription->chemin) && !QFile::remove(inscription->chemin)) {
    throw std::runtime_error("le plugin « " + S(inscription->chemin) +
                             " » ne peut pas être supprimé.");
  }
  RetireCopie(inscription->chemin);
  vesko_composant::Desinscris();
  std::cout << "Composant Ctr_Vesko retiré : " << S(inscription->chemin) << "\n";
}

void Decrit(const std::string& plugin_choisi) {
  const auto inscription = vesko_composant::Inscrit();
  const QString plugin =
      !plugin_choisi.empty() || !inscription ? PluginLivre(plugin_choisi) : inscription->chemin;
  const QJsonObject tout = Metadonnees(plugin);
  const QJsonObject meta = tout.value("MetaData").toObject();
  std::cout << "Composant   : " << S(meta.value("classe").toString()) << " ("
            << S(meta.value("legende").toString()) << ")\n"
            << "Version     : " << S(meta.value("version").toString()) << "\n"
            << "Interface   : " << S(tout.value("IID").toString()) << "\n"
            << "Plugin      : " << S(plugin) << "\n"
            << "Enregistré  : "
            << (inscription ? "oui, " + S(inscription->chemin) : std::string("non")) << "\n";
  const QJsonArray membres = meta.value("interface").toArray();
  std::cout << "Membres publiés (" << membres.size() << ", dans l'ordre des slots) :\n";
  for (const auto& valeur : membres) {
    const QJsonObject m = valeur.toObject();
    std::string parametres;
    for (const auto& p : m.value("parametres").toArray()) {
      if (!parametres.empty()) parametres += ", ";
      parametres += S(p.toObject().value("nom").toString()) + " As " +
                    S(p.toObject().value("type").toString());
    }
    std::cout << "  " << m.value("slot").toInt() << ". " << S(m.value("nom").toString()) << " ("
              << S(m.value("genre").toString()) << ")"
              << (parametres.empty() ? "" : " : " + parametres) << "\n";
  }
}

}  // namespace

void AjouteCommandeComposant(CLI::App& app, int& statut, int& argc, char** argv) {
  auto* composant = app.add_subcommand("component", "Enregistre, retire ou décrit le composant");
  composant->require_subcommand(1);
  auto plugin = std::make_shared<std::string>();
  auto dossier = std::make_shared<std::string>();
  // Qt finds this program's folder through the application object.
  auto lance = [&statut, &argc, argv](const std::function<void()>& action) {
    Execute(statut, [&] {
      QCoreApplication application(argc, argv);
      action();
    });
  };

  auto* enregistre = composant->add_subcommand(
      "register", "Installe le plugin du contrôle et l'inscrit pour les hôtes");
  enregistre->add_option("--plugin", *plugin, "Plugin à installer (défaut : celui de vesko)");
  enregistre->add_option("--dir", *dossier,
                         "Dossier des plugins (défaut : ~/.local/share/vesko/plugins)");
  enregistre->callback([=] { lance([&] { Enregistre(*plugin, *dossier); }); });

  auto* retire = composant->add_subcommand("unregister", "Retire le plugin inscrit");
  retire->callback([=] { lance([&] { Desenregistre(); }); });

  auto* decrit = composant->add_subcommand("info", "Décrit le composant et son interface");
  decrit->add_option("--plugin", *plugin,
                     "Plugin à décrire (défaut : l'inscrit, sinon celui de vesko)");
  decrit->callback([=] { lance([&] { Decrit(*plugin); }); });
}

}  // namespace vesko_app

// vesko-gui: the reference host window. It places the control on a form and
// prints the dossiers of the persons chosen in a list, the way the service's
// own application does.
//
//   vesko-gui [--db FICHIER] [--type AIDE|AIDANT] [--date AAAA-MM-JJ]
//             [--search TEXTE] [--select CLE,CLE…] [--capture IMAGE.png]
//
// --capture draws the window as it first appears into a PNG image and quits
// (documentation and tests; works under QT_QPA_PLATFORM=offscreen).
//
// Without --db (and --type) the store and type of the last session are
// taken up again. A store that cannot be opened does not stop the program:
// the window opens and a message box says why.
#include <QApplication>
#include <QCommandLineParser>
#include <QDate>
#include <QFileInfo>
#include <QMessageBox>
#include <QTimer>
#include <iostream>

#include "app/gui/fenetre_hote.h"
#include "marbrel/magasin.h"
#include "marbrel/outils.h"
#include "printing/traductions.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("vesko-gui"));
  printing::InstalleTraductionsQt(application);

  QCommandLineParser arguments;
  arguments.setApplicationDescription(
      QStringLiteral("Vesko — fenêtre hôte : liste les personnes d'une base et imprime leurs "
                     "dossiers."));
  arguments.addHelpOption();
  const QCommandLineOption base(QStringLiteral("db"),
                                QStringLiteral("Base à ouvrir (défaut : VESKO_DB)."),
                                QStringLiteral("FICHIER|postgresql://…"));
  const QCommandLineOption type(QStringLiteral("type"),
                                QStringLiteral("Type de dossier : AIDE ou AIDANT."),
                                QStringLiteral("TYPE"));
  const QCommandLineOption date(QStringLiteral("date"),
                                QStringLiteral("Date du jour des impressions."),
                                QStringLiteral("AAAA-MM-JJ"));
  const QCommandLineOption recherche(QStringLiteral("search"),
                                     QStringLiteral("Texte recherché dans la liste."),
                                     QStringLiteral("TEXTE"));
  const QCommandLineOption selection(
      QStringLiteral("select"), QStringLiteral("Clés à sélectionner."), QStringLiteral("CLE,CLE…"));
  const QCommandLineOption capture(QStringLiteral("capture"),
                                   QStringLiteral("Enregistre l'image de la fenêtre et quitte."),
                                   QStringLiteral("IMAGE.png"));
  arguments.addOptions({base, type, date, recherche, selection, capture});
  arguments.process(application);

  hote::FenetreHote fenetre;
  QString probleme;  // told in a message box once the window shows
  try {
    if (arguments.isSet(date)) {
      const QDate jour = QDate::fromString(arguments.value(date), Qt::ISODate);
      if (!jour.isValid()) {
        throw std::invalid_argument("date invalide « " + arguments.value(date).toStdString() +
                                    " » : attendu AAAA-MM-JJ.");
      }
      fenetre.Controle().Fixe_Aujourdhui(
          marbrel::Outils::Date_Interne(jour.year(), jour.month(), jour.day()));
    }
    if (arguments.isSet(type)) {
      fenetre.ChoisitType(arguments.value(type));
    } else if (!arguments.isSet(base) && !hote::FenetreHote::TypeMemorise().isEmpty()) {
      fenetre.ChoisitType(hote::FenetreHote::TypeMemorise());
    }
  } catch (const std::exception& e) {
    std::cerr << "vesko-gui : " << e.what() << "\n";
    return 2;
  }
  try {
    if (arguments.isSet(base)) {
      fenetre.OuvreBase(arguments.value(base));
    } else if (!qEnvironmentVariableIsEmpty("VESKO_DB")) {
      fenetre.OuvreBase(qEnvironmentVariable("VESKO_DB"));
    } else if (const QString memorisee = hote::FenetreHote::BaseMemorisee();
               !memorisee.isEmpty() && (QFileInfo::exists(memorisee) ||
                                        marbrel::EstAdressePostgres(memorisee.toStdString()))) {
      fenetre.OuvreBase(memorisee);
    }
    if (arguments.isSet(recherche)) fenetre.Recherche(arguments.value(recherche));
    if (arguments.isSet(selection)) {
      fenetre.Selectionne(arguments.value(selection).split(',', Qt::SkipEmptyParts));
    }
  } catch (const std::exception& e) {
    probleme = hote::Phrase(QString::fromStdString(e.what()));
  }
  fenetre.show();
  // A capture has nobody to answer a box: the reason goes to standard error.
  if (!probleme.isEmpty() && arguments.isSet(capture)) {
    std::cerr << "vesko-gui : " << probleme.toStdString() << "\n";
  }
  if (!probleme.isEmpty() && !arguments.isSet(capture)) {
    QTimer::singleShot(0, &fenetre, [&fenetre, probleme] {
      QMessageBox::warning(&fenetre, QStringLiteral("Ouvrir une base"), probleme);
    });
  }

  if (arguments.isSet(capture)) {
    const QString image = arguments.value(capture);
    QTimer::singleShot(0, &fenetre, [&fenetre, &application, image] {
      if (!fenetre.grab().save(image, "PNG")) {
        std::cerr << "vesko-gui : l'image « " << image.toStdString()
                  << " » ne peut pas être écrite.\n";
        application.exit(1);
        return;
      }
      application.exit(0);
    });
  }
  return application.exec();
}

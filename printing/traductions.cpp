#include "printing/traductions.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace printing {

bool InstalleTraductionsQt(QCoreApplication& application) {
  // "qt_fr" gathers the modules' catalogues (qtbase_fr: widgets, print
  // support); the translators live as long as the application.
  auto* traducteur = new QTranslator(&application);
  if (!traducteur->load(QLocale(QLocale::French, QLocale::France), QStringLiteral("qt"),
                        QStringLiteral("_"), QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    delete traducteur;
    return false;
  }
  return QCoreApplication::installTranslator(traducteur);
}

}  // namespace printing

// Qt's own dialogs (print, page set-up, files, the preview's controls, the
// message boxes' buttons) in French, like the program's own text: Qt's French
// translations (package qt6-translations-l10n) are installed in the
// application. The program speaks French only, so they are loaded whatever
// the desktop's language.
#pragma once

class QCoreApplication;

namespace printing {

// Installs Qt's French translations in application; false when they are not
// installed on this machine (Qt's English then stays).
bool InstalleTraductionsQt(QCoreApplication& application);

}  // namespace printing

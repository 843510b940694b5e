#pragma once

#include <QLocale>

class QCoreApplication;

namespace zelvaine {

// Installs the string table that best matches the locale's interface languages, in their order
// of preference: German for de_DE, de_AT, de_CH …; otherwise English, whose table only carries
// the plural forms. Qt's own texts (file dialogs) follow when the system has them, and the
// locale becomes the default one, so that numbers are written the player's way too.
// Returns true when the player sees a language other than English. Call once, after the
// application object exists and before the first window is loaded.
bool installTranslations(QCoreApplication& app, const QLocale& locale = QLocale::system());

} // namespace zelvaine

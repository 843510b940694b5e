#include "app/translations.hpp"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

namespace zelvaine {
namespace {

// Parented to the application, so that it lives as long as anything can translate.
QTranslator* loadTable(QCoreApplication& app, const QLocale& locale, const QString& name, const QString& directory)
{
    auto* translator = new QTranslator(&app);
    if (translator->load(locale, name, QStringLiteral("_"), directory)) return translator;
    delete translator;
    return nullptr;
}

} // namespace

bool installTranslations(QCoreApplication& app, const QLocale& locale)
{
    // Numbers follow the same locale as the words: "12.345 Züge", never "12,345 Züge". The
    // system's locale is the default already, with the player's own number settings.
    if (locale != QLocale::system()) QLocale::setDefault(locale);
    const QString directory = QStringLiteral(":/i18n");
    // load() walks locale.uiLanguages() in order, so a player who prefers French and then
    // German gets German rather than English.
    QTranslator* table = loadTable(app, locale, QStringLiteral("zelvaine"), directory);
    // None of the player's languages: English, which still needs its plural forms.
    if (!table) table = loadTable(app, QLocale(QLocale::English), QStringLiteral("zelvaine"), directory);
    if (!table) return false;
    QCoreApplication::installTranslator(table);

    const QLocale chosen(table->language());
    if (chosen.language() == QLocale::English) return false;
    // Qt's own dialogs and controls in the same language, when the system has Qt's translations.
    if (QTranslator* qt =
            loadTable(app, chosen, QStringLiteral("qt"), QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(qt);
    }
    return true;
}

} // namespace zelvaine

// Zelvaine: the store restored or dealt, the preferences, the sound player, then the window.

#include "app/qt_localizer.hpp"
#include "sound/sound_effects.hpp"
#include "sound/sound_effects_cues.hpp"
#include "store/game_preferences.hpp"
#include "store/game_store.hpp"
#include "store/sqlite_defaults_store.hpp"
#include "ui/game_board.hpp"
#include "ui/preferences_model.hpp"

#include <QGuiApplication>
#include <QIcon>
#include <QTimer>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QtQml/QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(ZelvainePlugin)

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName("Zelvaine");
    QGuiApplication::setOrganizationName("Zelvaine");
    QQuickStyle::setStyle("Fusion");
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/zelvaine.svg")));
    // For the start-up benchmark: the time from launch to the board's first frame.
    const bool quitAfterFirstFrame = application.arguments().contains(QStringLiteral("--quit-after-first-frame"));

    zelvaine::QtLocalizer localizer;
    zelvaine::installLocalizer(&localizer);

    zelvaine::SqliteDefaultsStore defaults;
    zelvaine::SoundEffectsCues sound(zelvaine::SoundEffects::shared(defaults));
    zelvaine::GameStore store(std::nullopt, defaults, sound);
    zelvaine::GamePreferences preferences(defaults, sound);
    zelvaine::GameBoard board(store);
    zelvaine::PreferencesModel preferencesModel(preferences);

    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral("qrc:/"));
    engine.setInitialProperties({{"board", QVariant::fromValue(&board)},
                                 {"preferences", QVariant::fromValue(&preferencesModel)}});
    engine.load(QUrl(QStringLiteral("qrc:/Zelvaine/qml/Main.qml")));
    if (engine.rootObjects().isEmpty()) return 1;
    if (quitAfterFirstFrame) {
        if (auto* window = qobject_cast<QQuickWindow*>(engine.rootObjects().first())) {
            QObject::connect(window, &QQuickWindow::frameSwapped, &application, &QCoreApplication::quit,
                             Qt::QueuedConnection);
        }
    }

    // Deferred saves and the database's own writes must reach the disk when the player leaves.
    QObject::connect(&application, &QGuiApplication::applicationStateChanged, [&](Qt::ApplicationState state) {
        if (state != Qt::ApplicationActive) {
            store.flushDeferredPersistence();
            defaults.flush();
        }
    });
    const int status = QGuiApplication::exec();
    store.flushDeferredPersistence();
    defaults.flush();
    return status;
}

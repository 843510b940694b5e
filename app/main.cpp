// Zelvaine: the store restored or dealt, the preferences, the sound player, then the window.

#include "app/command_line.hpp"
#include "app/frame_timer.hpp"
#include "app/qml_menu.hpp"
#include "app/qt_localizer.hpp"
#include "app/quit_signals.hpp"
#include "app/renderer_choice.hpp"
#include "app/single_instance.hpp"
#include "app/translations.hpp"
#include "app/update_feed.hpp"
#include "app/updater.hpp"
#include "app/window_placement.hpp"
#include "sound/sound_effects.hpp"
#include "sound/sound_effects_cues.hpp"
#include "store/game_preferences.hpp"
#include "store/game_store.hpp"
#include "store/sqlite_defaults_store.hpp"
#include "ui/game_board.hpp"
#include "ui/preferences_model.hpp"
#include "ui/solver_commands.hpp"
#include "zelvaine/version.hpp"

#include <QGuiApplication>
#include <QIcon>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QScreen>
#include <QSessionManager>
#include <QTimer>
#include <QtQml/QQmlExtensionPlugin>

#include <iostream>

Q_IMPORT_QML_PLUGIN(ZelvainePlugin)
Q_IMPORT_QML_PLUGIN(ZelvaineShellPlugin)

int main(int argc, char** argv)
{
    // Answered before QGuiApplication exists, which would need a display.
    const zelvaine::CommandLine commandLine = zelvaine::readCommandLine(argc, argv, std::cout, std::cerr);
    if (commandLine.exitStatus) return *commandLine.exitStatus;

    QGuiApplication application(argc, argv);
    // A logout, a shutdown or Ctrl+C ends the game like a closed window, saves included.
    zelvaine::QuitSignals quitSignals;
    QObject::connect(&quitSignals, &zelvaine::QuitSignals::received, &application, &QCoreApplication::quit);
    QGuiApplication::setApplicationName("Zelvaine");
    QGuiApplication::setOrganizationName("Zelvaine");
    QGuiApplication::setApplicationVersion(QString::fromLatin1(zelvaine::build::version));
    // The desktop file's name: the desktop ties the window to its launcher, icon and name by it
    // (the window's application id on Wayland).
    QGuiApplication::setDesktopFileName(QString::fromLatin1(zelvaine::applicationId));
    // The dark colours are the window's palette in Main.qml, inherited by its menus and dialogs:
    // Qt Quick Controls do not follow QGuiApplication::setPalette().
    QQuickStyle::setStyle("Fusion");
    zelvaine::chooseFastestRenderer();
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/zelvaine.svg")));

    // Before anything reads the saved game: a second game would save over this one's.
    zelvaine::SingleInstance instance;
    QStringList sharedGames;
    if (commandLine.sharedGame)
        sharedGames << zelvaine::SingleInstance::fileUri(QString::fromLocal8Bit(*commandLine.sharedGame));
    const QString activationToken = qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN")
                                        ? qEnvironmentVariable("XDG_ACTIVATION_TOKEN")
                                        : qEnvironmentVariable("DESKTOP_STARTUP_ID");
    if (instance.handOver(sharedGames, activationToken)) return 0;
    // For the start-up benchmark: the time from launch to the board's first frame.
    const bool quitAfterFirstFrame = commandLine.quitAfterFirstFrame;

    zelvaine::installTranslations(application);
    zelvaine::QtLocalizer localizer;
    zelvaine::installLocalizer(&localizer);

    zelvaine::SqliteDefaultsStore defaults;
    zelvaine::SoundEffectsCues sound(zelvaine::SoundEffects::shared(defaults));
    zelvaine::GameStore store(std::nullopt, defaults, sound);
    zelvaine::GamePreferences preferences(defaults, sound);
    const zelvaine::GameCenterService gameCenter; // no game service here: both of its flags stay false
    zelvaine::GameBoard board(store, &preferences);
    zelvaine::PreferencesModel preferencesModel(preferences);
    zelvaine::SolverCommands solverCommands(store, &preferences);
    // Solves would go on through the window's teardown, slowing the exit on a busy machine.
    QObject::connect(&application, &QCoreApplication::aboutToQuit, &solverCommands,
                     &zelvaine::SolverCommands::stopForQuit);
    // Checks for a newer release when the player asks, and on its own as configured.
    // A packager (or a test) may point the checker elsewhere with --update-configuration=FILE.
    const QString updateConfiguration = commandLine.updateConfiguration
                                            ? QString::fromLocal8Bit(*commandLine.updateConfiguration)
                                            : QStringLiteral(":/update/update.json");
    zelvaine::Updater updater(zelvaine::loadUpdateConfiguration(updateConfiguration), &defaults);
    updater.startAutomaticChecks();

    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral("qrc:/"));
    QVariantMap windowProperties{{"board", QVariant::fromValue(&board)},
                                 {"preferences", QVariant::fromValue(&preferencesModel)},
                                 {"solver", QVariant::fromValue(&solverCommands)},
                                 {"updater", QVariant::fromValue(&updater)},
                                 {"versionText", QString::fromLatin1(zelvaine::build::versionText)}};
    // The window opens as the player left it, within the room this screen has.
    const QScreen* screen = QGuiApplication::primaryScreen();
    const zelvaine::WindowPlacement opening =
        zelvaine::initialWindowPlacement(zelvaine::loadWindowPlacement(defaults),
                                         screen ? screen->availableSize() : QSize());
    windowProperties.insert("width", opening.size.width());
    windowProperties.insert("height", opening.size.height());
    if (opening.maximized) windowProperties.insert("visibility", QWindow::Maximized);
    engine.setInitialProperties(windowProperties);
    engine.load(QUrl(QStringLiteral("qrc:/ZelvaineShell/qml/Main.qml")));
    if (engine.rootObjects().isEmpty()) return 1;
    auto* window = qobject_cast<QQuickWindow*>(engine.rootObjects().first());
    auto* placement = window ? new zelvaine::WindowPlacementTracker(*window) : nullptr;
    // The frame benchmark reads every frame's time from here.
    if (window && qEnvironmentVariableIsSet("ZELVAINE_FRAME_TIMES")) new zelvaine::FrameTimer(window);
    if (quitAfterFirstFrame && window) {
        QObject::connect(window, &QQuickWindow::frameSwapped, &application, &QCoreApplication::quit,
                         Qt::QueuedConnection);
    }
    // The menu bar is complete once the window shows; a second later it is trimmed to the
    // game's commands, and its menus keep themselves trimmed from then on.
    if (window) {
        QObject::connect(
            window, &QQuickWindow::frameSwapped, window,
            [window] {
                QTimer::singleShot(1000, window,
                                   [window] { zelvaine::pruneMenuBar(window->property("menuBar").value<QObject*>()); });
            },
            Qt::SingleShotConnection);
    }

    // Tests of the whole program stand in for a player who accepts every question.
    if (commandLine.answerYes) {
        QObject::connect(
            &board, &zelvaine::GameBoard::confirmationChanged, &board,
            [&board] {
                if (board.confirmation() != zelvaine::Confirmation::Kind::None) board.confirm();
            },
            Qt::QueuedConnection);
    }

    // A shared game named on the command line (the file manager opens .zelvaine files this way)
    // asks to be opened like one chosen in the game.
    for (const QString& uri : sharedGames) board.openGamePath(uri);
    // Another launch: the window comes forward, and its file is asked about like any other.
    QObject::connect(&instance.requests(), &zelvaine::InstanceRequests::activate, &application,
                     [window](const QString& token) {
                         if (!window) return;
                         // Lets the window manager give the focus to a launch the player made elsewhere.
                         if (!token.isEmpty()) qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
                         if (window->visibility() == QWindow::Minimized) window->showNormal();
                         window->show();
                         window->raise();
                         window->requestActivate();
                     });
    QObject::connect(&instance.requests(), &zelvaine::InstanceRequests::open, &board, [&board](const QStringList& uris) {
        for (const QString& uri : uris) board.openGamePath(uri);
    });

    // Deferred saves and the database's own writes must reach the disk when the player leaves:
    // the application goes inactive, or the game window is hidden or minimised.
    const auto flush = [&] {
        store.flushDeferredPersistence();
        defaults.flush();
    };
    // Leaving for good, the automatic finish the player accepted is played out rather than left
    // half-way.
    const auto finishAndFlush = [&] {
        board.completeAutomaticFinish();
        if (placement) zelvaine::saveWindowPlacement(defaults, placement->placement());
        flush();
    };
    QObject::connect(&application, &QGuiApplication::applicationStateChanged, [flush](Qt::ApplicationState state) {
        if (state != Qt::ApplicationActive) flush();
    });
    if (window) {
        QObject::connect(window, &QWindow::visibilityChanged, [flush](QWindow::Visibility visibility) {
            if (visibility == QWindow::Hidden || visibility == QWindow::Minimized) flush();
        });
    }
#ifndef QT_NO_SESSIONMANAGER
    // The session is ending; the session manager may still kill us without a quit.
    QObject::connect(&application, &QGuiApplication::commitDataRequest,
                     [finishAndFlush](QSessionManager&) { finishAndFlush(); });
#endif
    const int status = QGuiApplication::exec();
    finishAndFlush();
    return status;
}

// The application window's menu commands: what each one does, and when it is unavailable.

#include "app/qml_menu.hpp"
#include "app/updater.hpp"
#include "store/game_confirmation.hpp"
#include "store/game_preferences.hpp"
#include "store/game_store.hpp"
#include "store/in_memory_defaults_store.hpp"
#include "tests/app/test_http_server.hpp"
#include "tests/support/positions.hpp"
#include "tests/support/quick_items.hpp"
#include "ui/game_board.hpp"
#include "ui/preferences_model.hpp"
#include "ui/solver_commands.hpp"

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>
#include <QtQml/QQmlExtensionPlugin>

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <memory>
#include <thread>

Q_IMPORT_QML_PLUGIN(ZelvainePlugin)
Q_IMPORT_QML_PLUGIN(ZelvaineShellPlugin)

namespace zelvaine {
namespace {

using testing::card;
using testing::findItem;

class MainWindowTest : public ::testing::Test {
protected:
    void open(const GameState& game, Updater* updater = nullptr, solver::WinnabilityService::SolveFunction solve = {})
    {
        store = std::make_unique<GameStore>(game, defaults, sound);
        board = std::make_unique<GameBoard>(*store, &preferences);
        solver = std::make_unique<SolverCommands>(*store, &preferences, std::move(solve));
        engine = std::make_unique<QQmlApplicationEngine>();
        engine->addImportPath(QStringLiteral("qrc:/"));
        engine->setInitialProperties({{"board", QVariant::fromValue(board.get())},
                                      {"preferences", QVariant::fromValue(&preferencesModel)},
                                      {"solver", QVariant::fromValue(solver.get())},
                                      {"updater", QVariant::fromValue(static_cast<QObject*>(updater))}});
        engine->load(QUrl(QStringLiteral("qrc:/ZelvaineShell/qml/Main.qml")));
        ASSERT_FALSE(engine->rootObjects().isEmpty());
        window = qobject_cast<QQuickWindow*>(engine->rootObjects().first());
        ASSERT_TRUE(window);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
    }

    // A menu item's command: its action when it has one.
    QObject* command(const char* name) const
    {
        QObject* item = window->findChild<QObject*>(name);
        if (!item) return nullptr;
        auto* action = item->property("action").value<QObject*>();
        return action ? action : item;
    }
    bool enabled(const char* name) const
    {
        QObject* found = command(name);
        EXPECT_TRUE(found) << name;
        return found && found->property("enabled").toBool();
    }
    // An action's trigger, or what a plain item does when chosen.
    void trigger(const char* name) const
    {
        QObject* found = command(name);
        ASSERT_TRUE(found) << name;
        const bool isAction = found->metaObject()->indexOfMethod("trigger()") >= 0;
        QMetaObject::invokeMethod(found, isAction ? "trigger" : "triggered");
    }
    void press(QKeySequence keys) const { QTest::keySequence(window, keys); }

    InMemoryDefaultsStore defaults;
    SilentSoundCues sound;
    GamePreferences preferences{defaults, sound};
    PreferencesModel preferencesModel{preferences};
    std::unique_ptr<GameStore> store;
    std::unique_ptr<GameBoard> board;
    std::unique_ptr<SolverCommands> solver;
    std::unique_ptr<QQmlApplicationEngine> engine;
    QQuickWindow* window = nullptr;
};

// At the window's smallest size, and in a tall window that narrow, every place and every
// toolbar button can be reached: nothing lies outside the window.
TEST_F(MainWindowTest, TheWholeBoardFitsAtTheSmallestSize)
{
    open(testing::knownDeal());
    const QSize smallest = window->minimumSize();
    ASSERT_GE(smallest.width(), 900);
    QStringList places;
    for (int c = 0; c < 10; ++c) places << QString("tableau-%1-9").arg(c);
    for (int f = 0; f < 8; ++f) places << QString("foundation-%1").arg(f);
    for (int s = 0; s < 4; ++s) places << QString("hand-%1").arg(s);
    places << "moveCount"
           << "redoButton"
           << "hintButton"
           << "gameTransferMenu"
           << "rulesButton"
           << "settingsButton";
    for (const QSize size : {smallest, QSize(smallest.width(), smallest.width() + 100)}) {
        for (const bool handOnRight : {false, true}) {
            preferencesModel.setHandOnRight(handOnRight);
            window->resize(size);
            QTest::qWait(50);
            const QRectF inside(QPointF(0, 0), window->size());
            for (const QString& name : places) {
                QQuickItem* place = findItem(window->contentItem(), name);
                ASSERT_TRUE(place) << name.toStdString();
                const QRectF frame = place->mapRectToScene(QRectF(0, 0, place->width(), place->height()));
                EXPECT_TRUE(inside.contains(frame)) << name.toStdString() << " at " << size.width() << "x"
                                                    << size.height() << (handOnRight ? ", hand on the right" : "");
            }
        }
    }
}

// A menu item's drawn title or key.
QQuickItem* menuText(QQuickWindow* window, const char* item, const char* part)
{
    auto* found = window->findChild<QQuickItem*>(item);
    EXPECT_TRUE(found) << item;
    return found ? found->findChild<QQuickItem*>(part) : nullptr;
}

QColor colourOf(QQuickItem* text)
{
    EXPECT_TRUE(text);
    if (!text) return {};
    QColor colour = text->property("color").value<QColor>();
    colour.setAlphaF(colour.alphaF() * text->opacity());
    return colour;
}

// An unavailable command is drawn in the dimmed text colour, an available one in the bright one,
// its key as well as its title; which are available follows the history.
TEST_F(MainWindowTest, DisabledMenuItemsLookDisabledAndFollowTheHistory)
{
    open(testing::knownDeal());
    ASSERT_FALSE(enabled("restartGameMenuItem"));
    ASSERT_TRUE(enabled("newGameMenuItem"));
    const QColor disabled = colourOf(menuText(window, "restartGameMenuItem", "menuItemTitle"));
    const QColor available = colourOf(menuText(window, "newGameMenuItem", "menuItemTitle"));
    EXPECT_LT(disabled.lightnessF(), available.lightnessF() - 0.2);
    // A fresh deal has nothing to undo or redo, and this window has no update checker.
    for (const char* name : {"undoMenuItem", "redoMenuItem", "checkForUpdatesItem"}) {
        ASSERT_FALSE(enabled(name)) << name;
        EXPECT_EQ(colourOf(menuText(window, name, "menuItemTitle")), disabled) << name;
    }
    const QColor disabledKeys = colourOf(menuText(window, "undoMenuItem", "menuItemKeys"));
    const QColor availableKeys = colourOf(menuText(window, "newGameMenuItem", "menuItemKeys"));
    EXPECT_LT(disabledKeys.lightnessF() * disabledKeys.alphaF(),
              availableKeys.lightnessF() * availableKeys.alphaF() - 0.1);

    // The look follows the state, and the state the history: a move, its undo back to the start,
    // and a new move that clears what could be redone.
    ASSERT_TRUE(store->move(MoveSource::tableau(0, 9), MoveDestination::tableau(4)));
    EXPECT_EQ(colourOf(menuText(window, "undoMenuItem", "menuItemTitle")), available);
    EXPECT_TRUE(enabled("restartGameMenuItem"));
    EXPECT_FALSE(enabled("redoMenuItem"));
    store->undo();
    EXPECT_FALSE(enabled("restartGameMenuItem"));
    EXPECT_TRUE(enabled("redoMenuItem"));
    ASSERT_TRUE(store->move(MoveSource::hand(0), MoveDestination::foundation(0)));
    EXPECT_FALSE(enabled("redoMenuItem"));
}

// The rules and the settings are windows of their own, which inherit nothing: they take the game
// window's dark colours, so that their buttons look like the rest of the game.
TEST_F(MainWindowTest, TheSheetsTakeTheGamesColours)
{
    open(testing::knownDeal());
    auto buttonColour = [](QQuickItem* item) {
        return item->property("palette").value<QObject*>()->property("button").value<QColor>();
    };
    const QColor game = buttonColour(window->contentItem());
    store->setShowRules(true);
    preferences.setShowSettings(true);
    for (const auto& [sheet, done] :
         {std::pair{"rulesWindow", "rulesDoneButton"}, std::pair{"settingsWindow", "settingsDoneButton"}}) {
        auto* opened = window->findChild<QQuickWindow*>(sheet);
        ASSERT_TRUE(opened) << sheet;
        QQuickItem* button = findItem(opened->contentItem(), done);
        ASSERT_TRUE(button) << done;
        EXPECT_EQ(buttonColour(button), game) << sheet;
    }
}

// Every command shows its key beside its title, as the platform writes it, and the title keeps
// its room.
TEST_F(MainWindowTest, MenusShowEachCommandsKey)
{
    open(testing::knownDeal());
    const std::pair<const char*, QKeySequence> commands[] = {
        {"preferencesItem", QKeySequence("Ctrl+,")},           {"quitItem", QKeySequence(QKeySequence::Quit)},
        {"openGameMenuItem", QKeySequence("Ctrl+O")},          {"newGameMenuItem", QKeySequence("Ctrl+N")},
        {"restartGameMenuItem", QKeySequence("Ctrl+R")},       {"undoMenuItem", QKeySequence("Ctrl+Z")},
        {"redoMenuItem", QKeySequence("Ctrl+Shift+Z")},        {"hintMenuItem", QKeySequence("Ctrl+Shift+/")},
        {"canBeWonMenuItem", QKeySequence("Ctrl+Shift+C")},    {"undoToWinnableMenuItem", QKeySequence("Ctrl+Shift+L")},
        {"winningMoveMenuItem", QKeySequence("Ctrl+Shift+W")},
    };
    for (const auto& [name, keys] : commands) {
        QQuickItem* shown = menuText(window, name, "menuItemKeys");
        ASSERT_TRUE(shown) << name;
        EXPECT_EQ(shown->property("text").toString(), keys.toString(QKeySequence::NativeText)) << name;
        QQuickItem* title = menuText(window, name, "menuItemTitle");
        EXPECT_FALSE(title->property("truncated").toBool()) << name;
        EXPECT_LE(title->x() + title->property("contentWidth").toReal(), shown->x()) << name;
    }
    EXPECT_TRUE(menuText(window, "aboutItem", "menuItemKeys")->property("text").toString().isEmpty());
}

// A menu is as wide as its longest command with its key, as German ones need: the style's own
// width cut "Wiederholen" short beside "Strg+Umschalt+Z".
TEST_F(MainWindowTest, AMenuIsAsWideAsItsLongestCommand)
{
    open(testing::knownDeal());
    QQmlComponent component(engine.get());
    component.setData(R"(
        import QtQuick
        import QtQuick.Controls
        import Zelvaine
        FittedMenu {
            ShortcutMenuItem { objectName: "short"; text: "Hilfe" }
            ShortcutMenuItem {
                objectName: "long"
                action: Action { text: "Bis zur letzten gewinnbaren Stellung zurücknehmen"; shortcut: "Ctrl+Shift+L" }
            }
        })",
                      QUrl());
    std::unique_ptr<QObject> menu(
        component.createWithInitialProperties({{"parent", QVariant::fromValue(window->contentItem())}}));
    ASSERT_TRUE(menu) << component.errorString().toStdString();
    QMetaObject::invokeMethod(menu.get(), "open");
    ASSERT_TRUE(QTest::qWaitFor([&] { return menu->property("opened").toBool(); }, 2000));
    auto* item = menu->findChild<QQuickItem*>("long");
    ASSERT_TRUE(item);
    QQuickItem* title = item->findChild<QQuickItem*>("menuItemTitle");
    QQuickItem* keys = item->findChild<QQuickItem*>("menuItemKeys");
    ASSERT_TRUE(title && keys);
    EXPECT_FALSE(title->property("truncated").toBool());
    EXPECT_LE(title->x() + title->property("contentWidth").toReal(), keys->x());
}

TEST_F(MainWindowTest, APendingQuestionLocksTheCommands)
{
    open(testing::knownDeal());
    ASSERT_TRUE(store->move(MoveSource::tableau(0, 9), MoveDestination::tableau(4)));
    for (const char* name : {"newGameMenuItem", "openGameMenuItem", "preferencesItem", "hintMenuItem", "undoMenuItem"})
        EXPECT_TRUE(enabled(name)) << name;

    press(QKeySequence("Ctrl+N"));
    ASSERT_EQ(store->confirmation(), GameConfirmation::newGame);
    for (const char* name : {"newGameMenuItem", "openGameMenuItem", "restartGameMenuItem", "preferencesItem",
                             "hintMenuItem", "undoMenuItem"})
        EXPECT_FALSE(enabled(name)) << name;
    // A second Ctrl+N changes nothing: the question stays, the game stays.
    press(QKeySequence("Ctrl+N"));
    EXPECT_EQ(store->confirmation(), GameConfirmation::newGame);
    EXPECT_EQ(store->state().moveCount, 1);
    board->dismissConfirmation();
    EXPECT_TRUE(enabled("newGameMenuItem"));
}

// A keyboard player opens each menu with Alt and its title's letter, or the first with F10, and
// plays its commands with the arrows and Return.
TEST_F(MainWindowTest, TheMenusOpenFromTheKeyboard)
{
    open(testing::knownDeal());
    auto menuTitled = [this](const QString& title) -> QObject* {
        for (QObject* object : window->findChildren<QObject*>()) {
            if (object->inherits("QQuickMenu") && object->property("title").toString() == title) return object;
        }
        return nullptr;
    };
    for (const auto& [key, title] :
         {std::pair{Qt::Key_Z, "&Zelvaine"}, std::pair{Qt::Key_F, "&File"}, std::pair{Qt::Key_E, "&Edit"},
          std::pair{Qt::Key_S, "&Solver"}, std::pair{Qt::Key_H, "&Help"}}) {
        QObject* menu = menuTitled(title);
        ASSERT_TRUE(menu) << title;
        QTest::keyClick(window, key, Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor([menu] { return menu->property("opened").toBool(); }, 2000)) << title;
        QTest::keyClick(window, Qt::Key_Escape);
        EXPECT_TRUE(QTest::qWaitFor([menu] { return !menu->property("visible").toBool(); }, 2000)) << title;
    }
    // F10 goes to the menu bar, as in the desktop's other programs.
    QObject* first = menuTitled("&Zelvaine");
    QTest::keyClick(window, Qt::Key_F10);
    EXPECT_TRUE(QTest::qWaitFor([first] { return first->property("opened").toBool(); }, 2000));
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([first] { return !first->property("visible").toBool(); }, 2000));

    // Opened from the keyboard, a menu lights its first available command, for Return to play
    // and a screen reader to say.
    ASSERT_TRUE(store->move(MoveSource::tableau(0, 9), MoveDestination::tableau(4)));
    QObject* edit = menuTitled("&Edit");
    QTest::keyClick(window, Qt::Key_E, Qt::AltModifier);
    ASSERT_TRUE(QTest::qWaitFor([edit] { return edit->property("opened").toBool(); }, 2000));
    EXPECT_EQ(edit->property("currentIndex").toInt(), 0);
    QTest::keyClick(window, Qt::Key_Return);
    EXPECT_EQ(store->state().moveCount, 0) << "Edit's first command, Undo";
    ASSERT_TRUE(QTest::qWaitFor([edit] { return !edit->property("visible").toBool(); }, 2000));

    // Opened by the pointer, it lights nothing until the pointer goes there.
    auto* bar = window->findChild<QQuickItem*>("menuBar");
    ASSERT_TRUE(bar);
    auto titleCentre = [bar](const QString& text) {
        for (QQuickItem* item : bar->findChildren<QQuickItem*>()) {
            if (item->inherits("QQuickMenuBarItem") && item->property("text").toString() == text)
                return item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
        }
        ADD_FAILURE() << "no title " << text.toStdString();
        return QPoint();
    };
    const QPoint title = titleCentre("&Edit");
    QTest::mouseMove(window, title);
    QTest::qWait(50); // hover is delivered with the next frame
    QTest::mouseClick(window, Qt::LeftButton, {}, title);
    ASSERT_TRUE(QTest::qWaitFor([edit] { return edit->property("opened").toBool(); }, 2000));
    EXPECT_EQ(edit->property("currentIndex").toInt(), -1);
    // Closed by Escape under the resting pointer, the bar is done with its menus: the pointer
    // passing over the next title does not open that one.
    QTest::keyClick(window, Qt::Key_Escape);
    ASSERT_TRUE(QTest::qWaitFor([edit] { return !edit->property("visible").toBool(); }, 2000));
    QTest::qWait(50);
    QTest::mouseMove(window, titleCentre("&Solver"));
    QTest::qWait(300);
    EXPECT_FALSE(menuTitled("&Solver")->property("visible").toBool());
    EXPECT_FALSE(window->activeFocusItem() && window->activeFocusItem()->inherits("QQuickMenuBarItem"))
        << "the keyboard stays with the board";

    // A second click on a title closes its menu.
    QTest::mouseClick(window, Qt::LeftButton, {}, title);
    ASSERT_TRUE(QTest::qWaitFor([edit] { return edit->property("opened").toBool(); }, 2000));
    QTest::mouseClick(window, Qt::LeftButton, {}, title);
    EXPECT_TRUE(QTest::qWaitFor([edit] { return !edit->property("visible").toBool(); }, 2000));
    QTest::qWait(100);
    EXPECT_FALSE(edit->property("visible").toBool()) << "the second click opened it again";
}

// Each key acts on every press, the second as surely as the first: a key bound twice would
// leave Qt to take turns between its bindings.
TEST_F(MainWindowTest, EveryKeyWorksEveryTime)
{
    open(testing::knownDeal());
    for (int press = 0; press < 2; ++press) {
        SCOPED_TRACE(press == 0 ? "first press" : "second press");
        store->clearMessage();
        this->press(QKeySequence("Ctrl+Shift+/"));
        EXPECT_EQ(store->messageKind(), GameMessageKind::hint);

        this->press(QKeySequence("Ctrl+O"));
        EXPECT_TRUE(store->isImportingGame());
        store->setIsImportingGame(false);

        this->press(QKeySequence("Ctrl+,"));
        EXPECT_TRUE(preferences.showSettings());
        preferences.setShowSettings(false);
        // The settings window had the keyboard; the game window takes it back.
        window->requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));

        this->press(QKeySequence("Ctrl+N"));
        EXPECT_EQ(store->confirmation(), GameConfirmation::newGame);
        board->dismissConfirmation();
        QTest::qWait(300); // the question's closing transition, while it still holds the keys
    }
    ASSERT_TRUE(store->move(MoveSource::tableau(0, 9), MoveDestination::tableau(4)));
    ASSERT_TRUE(store->move(MoveSource::hand(0), MoveDestination::foundation(0)));
    press(QKeySequence("Ctrl+Z"));
    press(QKeySequence("Ctrl+Z"));
    EXPECT_EQ(store->state().moveCount, 0);
    press(QKeySequence("Ctrl+Shift+Z"));
    press(QKeySequence("Ctrl+Shift+Z"));
    EXPECT_EQ(store->state().moveCount, 2);
    for (int press = 0; press < 2; ++press) {
        this->press(QKeySequence("Ctrl+R"));
        EXPECT_EQ(store->confirmation(), GameConfirmation::restartGame);
        board->dismissConfirmation();
        QTest::qWait(300);
    }
    // Every command key belongs to its menu command alone; no separate binding competes with one
    // (the dialogs bind only Return and Enter).
    for (QObject* object : window->findChildren<QObject*>()) {
        if (!object->inherits("QQuickShortcut")) continue;
        QVariantList sequences = object->property("sequences").toList();
        sequences << object->property("sequence");
        for (const QVariant& sequence : sequences)
            EXPECT_FALSE(QKeySequence(sequence.toString())[0].keyboardModifiers() & Qt::ControlModifier)
                << sequence.toString().toStdString();
    }
}

// A solver command shows it is at work by offering to stop, keeps the others back meanwhile, and
// answers in a notice; a move abandons it.
TEST_F(MainWindowTest, SolverCommandsShowTheyAreWorkingAndAnswerInANotice)
{
    // A search that works until it is stopped, then one that answers at once.
    std::atomic<bool> endless = true;
    open(testing::knownDeal(), nullptr, [&](const GameState&, const solver::SolverOptions&, std::stop_token stop) {
        while (endless && !stop.stop_requested()) std::this_thread::yield();
        return solver::SolveResult{stop.stop_requested() ? solver::Verdict::unknown : solver::Verdict::unwinnable, {}, 0};
    });
    const QString title = command("canBeWonMenuItem")->property("text").toString();
    EXPECT_FALSE(enabled("undoToWinnableMenuItem")) << "no history yet";
    press(QKeySequence("Ctrl+Shift+C"));
    EXPECT_EQ(solver->running(), SolverCommands::Command::CheckWinnability);
    EXPECT_NE(command("canBeWonMenuItem")->property("text").toString(), title);
    EXPECT_TRUE(enabled("canBeWonMenuItem"));
    EXPECT_FALSE(enabled("winningMoveMenuItem"));
    ASSERT_TRUE(store->move(MoveSource::tableau(0, 9), MoveDestination::tableau(4)));
    EXPECT_EQ(solver->running(), SolverCommands::Command::None);
    EXPECT_EQ(command("canBeWonMenuItem")->property("text").toString(), title);
    EXPECT_TRUE(enabled("undoToWinnableMenuItem"));

    // Chosen again while it works, the command stops the search.
    press(QKeySequence("Ctrl+Shift+C"));
    EXPECT_EQ(solver->running(), SolverCommands::Command::CheckWinnability);
    press(QKeySequence("Ctrl+Shift+C"));
    EXPECT_EQ(solver->running(), SolverCommands::Command::None);

    endless = false;
    press(QKeySequence("Ctrl+Shift+C"));
    ASSERT_TRUE(QTest::qWaitFor([this] { return solver->running() == SolverCommands::Command::None; }, 120000));
    EXPECT_EQ(store->messageKind(), GameMessageKind::notice);
    EXPECT_EQ(store->message(), "This deal can no longer be won.");
}

// The toolbar's verdict shows only while the player asks for it, and says what it found.
TEST_F(MainWindowTest, TheWinnabilityIndicatorFollowsItsPreference)
{
    open(testing::knownDeal(), nullptr, [](const GameState&, const solver::SolverOptions&, std::stop_token) {
        return solver::SolveResult{solver::Verdict::winnable, {}, 0};
    });
    QQuickItem* indicator = findItem(window->contentItem(), "winnabilityIndicator");
    ASSERT_TRUE(indicator);
    EXPECT_FALSE(indicator->isVisible());
    preferences.setShowsWinnability(true);
    EXPECT_TRUE(indicator->isVisible());
    ASSERT_TRUE(QTest::qWaitFor([this] { return solver->liveVerdict() == SolverCommands::Verdict::Winnable; }, 120000));
    EXPECT_EQ(indicator->property("text").toString(), "Can be won");
    EXPECT_EQ(indicator->property("accessibleName").toString(), "Winnability: Can be won");
    QTest::qWait(100);
    const auto shot = std::filesystem::path(ZELVAINE_SCREENSHOT_DIR) / "board-winnability.png";
    EXPECT_TRUE(window->grabWindow().save(QString::fromStdString(shot.string())));
    preferences.setShowsWinnability(false);
    EXPECT_FALSE(indicator->isVisible());
}

TEST_F(MainWindowTest, HintIsUnavailableOnceTheDealIsWon)
{
    GameState almost = testing::emptyBoard();
    const char* tops[] = {"KC", "KC", "KD", "KD", "KH", "KH", "QS", "KS"};
    for (std::size_t f = 0; f < 8; ++f) almost.foundations[f] = testing::foundationUpTo(tops[f]);
    almost.hand[0] = card("KS");
    open(almost);
    EXPECT_TRUE(enabled("hintMenuItem"));
    ASSERT_TRUE(store->move(MoveSource::hand(0), MoveDestination::foundation(6)));
    EXPECT_FALSE(enabled("hintMenuItem"));
}

TEST_F(MainWindowTest, TrimmingTheMenuBarKeepsEveryCommand)
{
    open(testing::knownDeal());
    QObject* bar = window->property("menuBar").value<QObject*>();
    ASSERT_TRUE(bar);
    pruneMenuBar(bar);
    QCoreApplication::processEvents();
    for (const char* name : {"aboutItem", "checkForUpdatesItem", "preferencesItem", "quitItem", "openGameMenuItem",
                             "newGameMenuItem", "restartGameMenuItem", "undoMenuItem", "redoMenuItem", "hintMenuItem",
                             "canBeWonMenuItem", "undoToWinnableMenuItem", "winningMoveMenuItem"})
        EXPECT_TRUE(window->findChild<QObject*>(name)) << name;
    // Zelvaine, File, Edit, Solver and Help.
    EXPECT_EQ(bar->property("count").toInt(), 5);
    // The commands still act after the trim.
    press(QKeySequence("Ctrl+Shift+/"));
    EXPECT_EQ(store->messageKind(), GameMessageKind::hint);
    store->clearMessage();
    press(QKeySequence("Ctrl+Shift+C"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return store->messageKind() == GameMessageKind::notice; }, 120000));
}

QObject* dialog(QQuickWindow* window, const char* name)
{
    auto* found = window->findChild<QObject*>(name);
    EXPECT_TRUE(found) << name;
    return found;
}
bool showing(QQuickWindow* window, const char* name)
{
    QObject* found = dialog(window, name);
    return found && found->property("visible").toBool();
}

// Return takes a dialog's default button and Escape cancels; either way the board has the next
// click, not a leftover dialog.
TEST_F(MainWindowTest, ReturnAndEscapeAnswerAboutAndTheUpdateResult)
{
    Updater updater(readUpdateConfiguration(R"({"feedURL": ""})"), nullptr);
    open(testing::knownDeal(), &updater);
    EXPECT_FALSE(enabled("checkForUpdatesItem")) << "a build without a feed cannot check";

    for (const auto key : {Qt::Key_Return, Qt::Key_Escape, Qt::Key_Enter}) {
        trigger("aboutItem");
        ASSERT_TRUE(QTest::qWaitFor([&] { return showing(window, "aboutDialog"); }, 2000));
        QTest::keyClick(window, key);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !showing(window, "aboutDialog"); }, 2000)) << key;

        // The result of a check, here the honest word that this copy never checks.
        updater.checkForUpdates();
        ASSERT_TRUE(QTest::qWaitFor([&] { return showing(window, "updateResultDialog"); }, 2000));
        QTest::keyClick(window, key);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !showing(window, "updateResultDialog"); }, 2000)) << key;
    }
    EXPECT_TRUE(updater.failureReason().contains("no update feed"));
    QTest::qWait(300); // the closing transition
    QQuickItem* card = findItem(window->contentItem(), "tableau-0-9");
    ASSERT_TRUE(card);
    QTest::mouseClick(window, Qt::LeftButton, {}, card->mapToScene(QPointF(card->width() / 2, 8)).toPoint());
    EXPECT_EQ(store->selection(), MoveSource::tableau(0, 9));
}

// A running check shows its progress; Escape stops waiting, and no result follows.
TEST_F(MainWindowTest, ACheckShowsItsProgressAndCanBeStopped)
{
    testing::TestHttpServer server;
    server.serve("/feed.xml", {200, {}, {}, true, true});
    Updater updater({UpdateConfiguration{server.url("/feed.xml"), false, std::chrono::hours(24)}, {}}, nullptr);
    open(testing::knownDeal(), &updater);
    ASSERT_TRUE(enabled("checkForUpdatesItem"));
    trigger("checkForUpdatesItem");
    ASSERT_TRUE(QTest::qWaitFor([&] { return showing(window, "updateProgressDialog"); }, 2000));
    EXPECT_FALSE(enabled("checkForUpdatesItem")) << "one check at a time";
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !showing(window, "updateProgressDialog"); }, 2000));
    EXPECT_EQ(updater.state(), Updater::State::Idle);
    EXPECT_TRUE(enabled("checkForUpdatesItem"));
    QTest::qWait(200);
    EXPECT_FALSE(showing(window, "updateResultDialog"));
}

} // namespace
} // namespace zelvaine

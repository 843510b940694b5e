// The application window's menu commands: what each one does, and when it is unavailable.

#include "app/qml_menu.hpp"
#include "store/game_confirmation.hpp"
#include "store/game_preferences.hpp"
#include "store/game_store.hpp"
#include "store/in_memory_defaults_store.hpp"
#include "tests/support/positions.hpp"
#include "ui/game_board.hpp"
#include "ui/preferences_model.hpp"

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <QtQml/QQmlExtensionPlugin>

#include <gtest/gtest.h>

#include <memory>

Q_IMPORT_QML_PLUGIN(ZelvainePlugin)

namespace zelvaine {
namespace {

using testing::card;

class MainWindowTest : public ::testing::Test {
protected:
    void open(const GameState& game)
    {
        store = std::make_unique<GameStore>(game, defaults, sound);
        board = std::make_unique<GameBoard>(*store, &preferences);
        engine = std::make_unique<QQmlApplicationEngine>();
        engine->addImportPath(QStringLiteral("qrc:/"));
        engine->setInitialProperties({{"board", QVariant::fromValue(board.get())},
                                      {"preferences", QVariant::fromValue(&preferencesModel)}});
        engine->load(QUrl(QStringLiteral("qrc:/Zelvaine/qml/Main.qml")));
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
    void trigger(const char* name) const { QMetaObject::invokeMethod(command(name), "trigger"); }
    void press(QKeySequence keys) const { QTest::keySequence(window, keys); }

    InMemoryDefaultsStore defaults;
    SilentSoundCues sound;
    GamePreferences preferences{defaults, sound};
    PreferencesModel preferencesModel{preferences};
    std::unique_ptr<GameStore> store;
    std::unique_ptr<GameBoard> board;
    std::unique_ptr<QQmlApplicationEngine> engine;
    QQuickWindow* window = nullptr;
};

QQuickItem* findItem(QQuickItem* root, const QString& name)
{
    if (root->objectName() == name) return root;
    for (QQuickItem* child : root->childItems()) {
        if (QQuickItem* found = findItem(child, name)) return found;
    }
    return nullptr;
}

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
    places << "moveCount" << "redoButton" << "hintButton" << "gameTransferMenu" << "rulesButton" << "settingsButton";
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

// An unavailable command is drawn in the dimmed text colour, an available one in the bright one.
TEST_F(MainWindowTest, DisabledMenuItemsLookDisabled)
{
    open(testing::knownDeal());
    auto textColour = [&](const char* name) {
        auto* item = window->findChild<QQuickItem*>(name);
        EXPECT_TRUE(item) << name;
        auto* label = item ? item->property("contentItem").value<QQuickItem*>() : nullptr;
        EXPECT_TRUE(label) << name;
        return label ? label->property("color").value<QColor>() : QColor();
    };
    ASSERT_FALSE(enabled("restartGameMenuItem"));
    ASSERT_TRUE(enabled("newGameMenuItem"));
    const QColor disabled = textColour("restartGameMenuItem");
    const QColor available = textColour("newGameMenuItem");
    EXPECT_NE(disabled, available);
    EXPECT_LT(disabled.lightnessF(), available.lightnessF() - 0.2);
    EXPECT_EQ(textColour("undoMenuItem"), disabled);
}

TEST_F(MainWindowTest, RestartUndoAndRedoFollowTheHistory)
{
    open(testing::knownDeal());
    // A fresh deal: nothing to restart, undo or redo.
    EXPECT_FALSE(enabled("restartGameMenuItem"));
    EXPECT_FALSE(enabled("undoMenuItem"));
    EXPECT_FALSE(enabled("redoMenuItem"));

    ASSERT_TRUE(store->move(MoveSource::tableau(0, 9), MoveDestination::tableau(4)));
    EXPECT_TRUE(enabled("restartGameMenuItem"));
    EXPECT_TRUE(enabled("undoMenuItem"));
    EXPECT_FALSE(enabled("redoMenuItem"));

    // Undone back to the start: the position equals the deal's again.
    press(QKeySequence("Ctrl+Z"));
    EXPECT_EQ(store->state().moveCount, 0);
    EXPECT_FALSE(enabled("restartGameMenuItem"));
    EXPECT_TRUE(enabled("redoMenuItem"));
    press(QKeySequence("Ctrl+Shift+Z"));
    EXPECT_EQ(store->state().moveCount, 1);
    press(QKeySequence("Ctrl+Z"));
    // A new move clears what could be redone.
    ASSERT_TRUE(store->move(MoveSource::hand(0), MoveDestination::foundation(0)));
    EXPECT_FALSE(enabled("redoMenuItem"));
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

TEST_F(MainWindowTest, CommandsReachTheGame)
{
    open(testing::knownDeal());
    press(QKeySequence("Ctrl+Shift+/"));
    EXPECT_EQ(store->messageKind(), GameMessageKind::hint);
    trigger("openGameMenuItem");
    EXPECT_TRUE(store->isImportingGame());
    store->setIsImportingGame(false);
    ASSERT_TRUE(store->move(MoveSource::tableau(0, 9), MoveDestination::tableau(4)));
    press(QKeySequence("Ctrl+R"));
    EXPECT_EQ(store->confirmation(), GameConfirmation::restartGame);
    board->dismissConfirmation();
    press(QKeySequence("Ctrl+,"));
    EXPECT_TRUE(preferences.showSettings());
    EXPECT_FALSE(enabled("checkForUpdatesItem")) << "no update checker in this window";
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
                             "newGameMenuItem", "restartGameMenuItem", "undoMenuItem", "redoMenuItem", "hintMenuItem"})
        EXPECT_TRUE(window->findChild<QObject*>(name)) << name;
    EXPECT_EQ(bar->property("count").toInt(), 4);
    // The commands still act after the trim.
    press(QKeySequence("Ctrl+Shift+/"));
    EXPECT_EQ(store->messageKind(), GameMessageKind::hint);
}

} // namespace
} // namespace zelvaine

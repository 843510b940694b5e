// The real board in an offscreen window, played with the mouse as a player would.

#include "store/game_confirmation.hpp"
#include "store/game_document.hpp"
#include "store/game_preferences.hpp"
#include "store/game_store.hpp"
#include "store/in_memory_defaults_store.hpp"
#include "store/saved_game.hpp"
#include "tests/store/store_fakes.hpp"
#include "tests/support/positions.hpp"
#include "tests/support/quick_items.hpp"
#include "tests/support/scratch_folder.hpp"
#include "ui/card_drag_controller.hpp"
#include "ui/game_board.hpp"
#include "ui/preferences_model.hpp"

#include <QAccessible>
#include <QGuiApplication>
#include <QPointer>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QStyleHints>
#include <QTest>
#include <QtQml/QQmlExtensionPlugin>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <tuple>

Q_IMPORT_QML_PLUGIN(ZelvainePlugin)

namespace zelvaine {
namespace {

using testing::card;
using testing::cards;

using testing::findItem;
using testing::kingsLeft;
using testing::knownDeal;

// Menus, panels and questions live in the window's overlay, beside the board.
QQuickItem* overlayRoot(QQuickWindow* window)
{
    QQuickItem* content = window->contentItem();
    return content->parentItem() ? content->parentItem() : content;
}

QQuickItem* visibleMenuItem(QQuickWindow* window, const char* property, const QString& value)
{
    std::vector<QQuickItem*> pending{overlayRoot(window)};
    while (!pending.empty()) {
        QQuickItem* item = pending.back();
        pending.pop_back();
        if (item->isVisible() && item->property(property).toString() == value) return item;
        for (QQuickItem* child : item->childItems()) pending.push_back(child);
    }
    return nullptr;
}

// A separate window's items, found through its own item tree.
QQuickItem* inWindow(QQuickWindow* window, const QString& name) { return findItem(window->contentItem(), name); }

QRectF sceneFrame(const QQuickItem* item) { return item->mapRectToScene(QRectF(0, 0, item->width(), item->height())); }

void clickItem(QQuickWindow* window, QQuickItem* target)
{
    ASSERT_TRUE(target);
    QTest::mouseClick(window, Qt::LeftButton, {}, sceneFrame(target).center().toPoint());
}

QUrl fileUrl(const std::filesystem::path& file) { return QUrl::fromLocalFile(QString::fromStdString(file.string())); }

// A picture of the window, to look at and for the README.
void saveShot(QQuickWindow* window, const std::string& name)
{
    const auto file = std::filesystem::path(ZELVAINE_SCREENSHOT_DIR) / (name + ".png");
    EXPECT_TRUE(window->grabWindow().save(QString::fromStdString(file.string()))) << name;
}

class GameViewTest : public ::testing::Test {
protected:
    void SetUp() override { open(knownDeal(), QSize(1600, 1000)); }

    // A persisting store restores `game` from the defaults, as the application would after a restart.
    void open(const GameState& game, QSize size, bool persisting = false)
    {
        // Views first, then the board, then the store it observes.
        view.reset();
        window.reset();
        board.reset();
        if (persisting) {
            defaults.setData(savedGameKey,
                             {std::make_shared<const std::string>(encodeSavedGame({game, game, {}, {}, {}}))});
            store = std::make_unique<GameStore>(std::nullopt, defaults, sound);
        } else {
            store = std::make_unique<GameStore>(game, defaults, sound);
        }
        board = std::make_unique<GameBoard>(*store, &preferences);
        preferencesModel = std::make_unique<PreferencesModel>(preferences);
        window = std::make_unique<QQuickWindow>();
        window->resize(size);
        QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/Zelvaine/qml/GameView.qml")));
        QObject* created = component.createWithInitialProperties(
            {{"board", QVariant::fromValue(board.get())}, {"preferences", QVariant::fromValue(preferencesModel.get())}});
        ASSERT_TRUE(created) << component.errorString().toStdString();
        view.reset(qobject_cast<QQuickItem*>(created));
        view->setParentItem(window->contentItem());
        view->setSize(size);
        window->show();
        ASSERT_TRUE(QTest::qWaitFor([this] { return window->isExposed(); }, 5000))
            << "platform " << QGuiApplication::platformName().toStdString();
        QTest::qWait(30); // the first frame
        view->forceActiveFocus();
    }

    QQuickItem* item(const QString& name) const { return findItem(view.get(), name); }

    void click(const QString& name, QPointF at = {-1, -1})
    {
        QQuickItem* target = item(name);
        ASSERT_TRUE(target) << name.toStdString();
        if (at.x() < 0) at = QPointF(target->width() / 2, std::min(target->height() / 2, 8.0));
        QTest::mouseClick(window.get(), Qt::LeftButton, {}, target->mapToScene(at).toPoint());
    }

    // Presses at `from`, travels to `to` in a few steps as a hand would, and lets go there.
    void dragBetween(QPointF from, QPointF to, int steps = 8)
    {
        QTest::mousePress(window.get(), Qt::LeftButton, {}, from.toPoint());
        for (int i = 1; i <= steps; ++i) {
            QTest::mouseMove(window.get(), (from + (to - from) * i / steps).toPoint());
        }
        QTest::mouseRelease(window.get(), Qt::LeftButton, {}, to.toPoint());
    }
    QPointF centreOf(const QString& name, double dy = 0) const
    {
        QQuickItem* target = item(name);
        if (!target) return {};
        return target->mapToScene(QPointF(target->width() / 2, dy > 0 ? dy : target->height() / 2));
    }
    CardDragController* drag() const { return view->findChild<CardDragController*>(); }

    testing::ScratchFolder scratch;
    testing::CountingDefaultsStore defaults;
    SilentSoundCues sound;
    GamePreferences preferences{defaults, sound};
    QQmlEngine engine;
    std::unique_ptr<GameStore> store;
    std::unique_ptr<GameBoard> board;
    std::unique_ptr<PreferencesModel> preferencesModel;
    std::unique_ptr<QQuickWindow> window;
    std::unique_ptr<QQuickItem> view;
};

TEST_F(GameViewTest, TapACardThenItsDestination)
{
    QSignalSpy selectionSpy(board.get(), &GameBoard::selectionChanged);
    click("tableau-0-9");
    EXPECT_EQ(store->selection(), MoveSource::tableau(0, 9));
    EXPECT_TRUE(board->columnTargets()[4]);
    click("tableau-4-9");
    EXPECT_EQ(store->state().tableau[4].size(), 11U);
    EXPECT_EQ(store->state().moveCount, 1);
    // Picked up and put down; an undo with nothing picked up changes no selection to show.
    EXPECT_EQ(selectionSpy.count(), 2);
    store->undo();
    store->redo();
    EXPECT_EQ(selectionSpy.count(), 2);
    QTest::qWait(20);
    ASSERT_TRUE(item("tableau-4-10"));
    EXPECT_FALSE(item("tableau-0-9"));
    // The card drawn where it now lies: paper there, not felt. (A card added to a column once
    // landed at the window's corner.)
    const QImage frame = window->grabWindow();
    QQuickItem* added = item("tableau-4-10");
    const QRect card = added->mapRectToScene(QRectF(4, 4, added->width() - 8, added->height() - 8)).toRect();
    double lightness = 0;
    for (int y = card.top(); y <= card.bottom(); y += 4) {
        for (int x = card.left(); x <= card.right(); x += 4) lightness += frame.pixelColor(x, y).lightnessF();
    }
    lightness /= ((card.height() + 3) / 4) * ((card.width() + 3) / 4);
    EXPECT_GT(lightness, 0.7) << "mostly paper";
}

TEST_F(GameViewTest, TwoQuickTapsPlayTheObviousMove)
{
    click("hand-0");
    click("hand-0");
    EXPECT_EQ(store->state().foundations[0].size(), 1U);
    QTest::qWait(20);
    EXPECT_TRUE(item("hand-empty-0"));
    EXPECT_TRUE(item("foundation-0"));
}

TEST_F(GameViewTest, TheBareTableClearsTheSelection)
{
    click("tableau-0-9");
    ASSERT_TRUE(store->selection());
    QTest::mouseClick(window.get(), Qt::LeftButton, {}, QPoint(5, window->height() - 5));
    EXPECT_FALSE(store->selection());
}

// What a screen reader sees of a place, and its Press, which must be the player's tap.
TEST_F(GameViewTest, AssistiveToolsReadAndPressThePlaces)
{
    auto accessible = [this](const QString& name) { return QAccessible::queryAccessibleInterface(item(name)); };
    auto press = [&](const QString& name) {
        QAccessibleInterface* place = accessible(name);
        ASSERT_TRUE(place && place->actionInterface()) << name.toStdString();
        place->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    };
    EXPECT_TRUE(item("gameBoard"));
    EXPECT_EQ(item("column-3")->property("count").toInt(), 10);
    QAccessibleInterface* card = accessible("tableau-0-9");
    ASSERT_TRUE(card);
    EXPECT_EQ(card->text(QAccessible::Name), "eight of hearts");
    EXPECT_FALSE(card->state().selected);
    EXPECT_EQ(item("tableau-0-9")->property("accessibleValue").toString(), "Not selected");
    EXPECT_EQ(item("tableau-9-0")->property("accessibleHint").toString(), "This card is blocked");
    press("tableau-0-9");
    EXPECT_EQ(store->selection(), MoveSource::tableau(0, 9));
    EXPECT_TRUE(card->state().selected);
    EXPECT_EQ(item("tableau-0-9")->property("accessibleValue").toString(), "Selected");
    press("tableau-4-9");
    EXPECT_EQ(store->state().moveCount, 1);
    EXPECT_EQ(accessible("column-0")->text(QAccessible::Name), "Column 1, 9 cards");
    EXPECT_EQ(accessible("column-4")->text(QAccessible::Name), "Column 5, 11 cards");

    // A hand card is one element, named by its card; pressing it selects it.
    QAccessibleInterface* hand = accessible("hand-0");
    ASSERT_TRUE(hand);
    EXPECT_EQ(hand->childCount(), 0);
    press("hand-0");
    EXPECT_EQ(store->selection(), MoveSource::hand(0));
    EXPECT_EQ(accessible("foundation-2")->text(QAccessible::Name), "Foundation 3");
    press("foundation-2");
    ASSERT_EQ(store->state().foundations[2].size(), 1U);

    // A foundation is a list named by its number, holding its top card as a button of its own.
    QAccessibleInterface* foundation = accessible("foundation-2");
    EXPECT_EQ(foundation->text(QAccessible::Name), "Foundation 3");
    EXPECT_EQ(foundation->role(), QAccessible::List);
    QAccessibleInterface* top = nullptr;
    for (int i = 0; i < foundation->childCount(); ++i) {
        if (foundation->child(i)->role() == QAccessible::Button) top = foundation->child(i);
    }
    ASSERT_TRUE(top) << "the foundation's card is not readable";
    EXPECT_EQ(top->text(QAccessible::Name).toStdString(), accessibleName(store->state().foundations[2].back()));
    ASSERT_TRUE(top->actionInterface());
    top->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(store->selection(), MoveSource::foundation(2));
    EXPECT_TRUE(top->state().selected);
    EXPECT_FALSE(foundation->state().selected);
}

TEST_F(GameViewTest, AMoveRebuildsOnlyTheColumnsItTouches)
{
    std::vector<int> before;
    for (int c = 0; c < 10; ++c) before.push_back(board->column(c).rebuiltRows());
    click("tableau-0-9");
    click("tableau-4-9");
    ASSERT_EQ(store->state().moveCount, 1);
    for (int c = 0; c < 10; ++c) {
        const int rebuilt = board->column(c).rebuiltRows() - before[static_cast<std::size_t>(c)];
        EXPECT_EQ(rebuilt, c == 0 || c == 4 ? 1 : 0) << "column " << c;
    }
}

TEST_F(GameViewTest, TheKeyboardPlaysToo)
{
    // The hidden ring waits on the first column's lowest card, also after that column changed.
    ASSERT_TRUE(store->move(MoveSource::tableau(0, 9), MoveDestination::tableau(4)));
    store->undo();

    QTest::keyClick(window.get(), Qt::Key_Right); // shows the focus on column 1's lowest card
    EXPECT_EQ(board->focusKind(), Place::Kind::Column);
    EXPECT_EQ(board->focusIndex(), 0);
    EXPECT_EQ(board->focusCardIndex(), 9);
    QTest::keyClick(window.get(), Qt::Key_Return);
    EXPECT_EQ(store->selection(), MoveSource::tableau(0, 9));
    for (int i = 0; i < 4; ++i) QTest::keyClick(window.get(), Qt::Key_Right);
    EXPECT_EQ(board->focusIndex(), 4);
    QTest::keyClick(window.get(), Qt::Key_Space);
    EXPECT_EQ(store->state().tableau[4].size(), 11U);
    EXPECT_EQ(board->focusCardIndex(), 10) << "the ring follows the card it played";
    // Undone and done again, the card takes the ring along.
    board->undo();
    EXPECT_EQ(board->focusIndex(), 0);
    EXPECT_EQ(board->focusCardIndex(), 9);
    board->redo();
    EXPECT_EQ(board->focusIndex(), 4);
    EXPECT_EQ(board->focusCardIndex(), 10);

    QTest::keyClick(window.get(), Qt::Key_Down); // the lowest card: a wide window has no hand below
    EXPECT_EQ(board->focusKind(), Place::Kind::Column);
    for (int i = 0; i < 5; ++i) QTest::keyClick(window.get(), Qt::Key_Left); // to the hand panel at the left
    EXPECT_EQ(board->focusKind(), Place::Kind::Hand);
    EXPECT_EQ(board->focusIndex(), 1);
    QTest::keyClick(window.get(), Qt::Key_Return);
    EXPECT_EQ(store->selection(), MoveSource::hand(1));
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_FALSE(store->selection());
    EXPECT_EQ(board->focusKind(), Place::Kind::None);
}

// The keyboard is in one place at a time: a toolbar button the Tab key lit, or the ring.
TEST_F(GameViewTest, TheKeyboardIsEitherOnTheToolbarOrOnTheTable)
{
    ASSERT_TRUE(store->move(MoveSource::tableau(0, 9), MoveDestination::tableau(4)));
    QQuickItem* undo = inWindow(window.get(), "undoButton");
    ASSERT_TRUE(undo);
    QTest::keyClick(window.get(), Qt::Key_Tab);
    ASSERT_TRUE(undo->hasActiveFocus());

    // An arrow takes the keyboard to the table, and Space then plays the ring's card, not Undo.
    QTest::keyClick(window.get(), Qt::Key_Right);
    EXPECT_EQ(board->focusKind(), Place::Kind::Column);
    EXPECT_FALSE(undo->hasActiveFocus());
    QTest::keyClick(window.get(), Qt::Key_Space);
    EXPECT_EQ(store->state().moveCount, 1);
    EXPECT_EQ(store->selection(), MoveSource::tableau(0, 8));

    // Back on the toolbar the ring goes out, and Return presses the lit button.
    QTest::keyClick(window.get(), Qt::Key_Tab);
    ASSERT_TRUE(undo->hasActiveFocus());
    EXPECT_EQ(board->focusKind(), Place::Kind::None);
    QTest::keyClick(window.get(), Qt::Key_Return);
    EXPECT_EQ(store->state().moveCount, 0);

    // Undo, with nothing left to undo, is off and hands the keyboard back to the table; a
    // click on a button leaves it there, as on the desktop's toolbars.
    EXPECT_TRUE(QTest::qWaitFor([&] { return view->hasActiveFocus(); }, 1000));
    QTest::keyClick(window.get(), Qt::Key_Right);
    board->redo();
    click("undoButton");
    EXPECT_EQ(store->state().moveCount, 0);
    EXPECT_FALSE(undo->hasActiveFocus());
    EXPECT_NE(board->focusKind(), Place::Kind::None);
}

TEST_F(GameViewTest, TheMenuKeyOpensTheFocusedCardsMenu)
{
    const auto menuItem = [&](const QString& name) { return visibleMenuItem(window.get(), "objectName", name); };
    QTest::keyClick(window.get(), Qt::Key_Right); // the focus shows on the first column's lowest card
    QTest::keyClick(window.get(), Qt::Key_Left);  // into the hand panel at the left
    QTest::keyClick(window.get(), Qt::Key_Up);
    ASSERT_EQ(board->focusKind(), Place::Kind::Hand);
    ASSERT_EQ(board->focusIndex(), 0);

    // An ace in the hand: its first command, Move to Foundation, is ready for Return.
    QTest::keyClick(window.get(), Qt::Key_Menu);
    QTest::qWait(100);
    ASSERT_TRUE(menuItem("menuMoveToFoundation"));
    QTest::keyClick(window.get(), Qt::Key_Return);
    QTest::qWait(100);
    EXPECT_EQ(store->state().foundations[0].size(), 1U);
    EXPECT_FALSE(menuItem("menuMoveToFoundation")) << "the menu closes";

    // Shift+F10 too; Escape closes the menu and leaves the table as it was.
    QTest::keyClick(window.get(), Qt::Key_Down);
    ASSERT_EQ(board->focusIndex(), 1);
    QTest::keyClick(window.get(), Qt::Key_F10, Qt::ShiftModifier);
    QTest::qWait(100);
    ASSERT_TRUE(menuItem("menuMoveToHand"));
    const GameState before = store->state();
    QTest::keyClick(window.get(), Qt::Key_Escape);
    QTest::qWait(100);
    EXPECT_FALSE(menuItem("menuMoveToHand"));
    EXPECT_EQ(store->state(), before);
    QTest::keyClick(window.get(), Qt::Key_Down); // the arrows are the board's again
    EXPECT_EQ(board->focusIndex(), 2);
}

TEST_F(GameViewTest, TheContextMenuPlaysByName)
{
    auto openMenu = [&](const QString& place) {
        QQuickItem* target = item(place);
        ASSERT_TRUE(target) << place.toStdString();
        QTest::mouseClick(window.get(), Qt::RightButton, {},
                          target->mapToScene(QPointF(target->width() / 2, 10)).toPoint());
        QTest::qWait(100);
    };
    auto menuItem = [&](const QString& name) { return visibleMenuItem(window.get(), "objectName", name); };
    auto choose = [&](QQuickItem* entry) {
        clickItem(window.get(), entry);
        QTest::qWait(50);
    };

    openMenu("hand-0");
    ASSERT_TRUE(menuItem("menuMoveToHand"));
    EXPECT_FALSE(menuItem("menuMoveToHand")->isEnabled()); // the hand is full
    choose(menuItem("menuMoveToFoundation"));
    EXPECT_EQ(store->state().foundations[0].size(), 1U);

    openMenu("tableau-0-9");
    EXPECT_TRUE(menuItem("menuMoveToHand")->isEnabled());
    choose(menuItem("menuMoveToHand"));
    EXPECT_EQ(store->state().hand[0]->rank, Rank::eight);
    store->undo();

    // Every column of the submenu, from a column card, a hand card and a foundation card: the
    // legal ones move, the others leave the table as it was and say why on the toast.
    for (const auto& [place, source] : {std::pair{QString("tableau-0-9"), MoveSource::tableau(0, 9)},
                                        std::pair{QString("hand-1"), MoveSource::hand(1)},
                                        std::pair{QString("foundation-0"), MoveSource::foundation(0)}}) {
        for (int column = 0; column < 10; ++column) {
            SCOPED_TRACE(place.toStdString() + " to column " + std::to_string(column + 1));
            const GameState before = store->state();
            const bool legal = store->canMove(source, MoveDestination::tableau(column));
            store->clearMessage();
            openMenu(place);
            choose(visibleMenuItem(window.get(), "text", "Move to Column"));
            choose(menuItem("menuColumn-" + QString::number(column)));
            EXPECT_FALSE(menuItem("menuColumn-" + QString::number(column))) << "the menu closes";
            if (legal) {
                EXPECT_EQ(store->state().moveCount, before.moveCount + 1);
                EXPECT_EQ(store->state().tableau[static_cast<std::size_t>(column)].size(),
                          before.tableau[static_cast<std::size_t>(column)].size() + 1);
                store->undo();
                QTest::qWait(20);
            } else {
                EXPECT_EQ(store->state(), before);
                if (column != source.index || source.kind != MoveSource::Kind::tableau) {
                    ASSERT_TRUE(store->message());
                    EXPECT_EQ(item("gameToast")->property("shown").toString().toStdString(), *store->message());
                }
            }
        }
    }
}

// The toast lies where it hides no card, in a wide, a tall, the smallest and a low window; over
// the toolbar it stands beside the buttons when there is room.
TEST_F(GameViewTest, TheToastHidesNoCard)
{
    int besideButtons = 0;
    for (const QSize size : {QSize(1600, 1000), QSize(900, 1200), QSize(960, 600), QSize(1280, 760)}) {
        open(knownDeal(), size);
        board->showHint();
        QTest::qWait(400);
        QQuickItem* toast = item("gameToast");
        ASSERT_TRUE(toast && toast->isVisible());
        const QRectF plate = sceneFrame(toast);
        EXPECT_TRUE(QRectF(QPointF(0, 0), size).contains(plate));
        QStringList places;
        for (int c = 0; c < 10; ++c) {
            for (int i = 0; i < 10; ++i) places << QString("tableau-%1-%2").arg(c).arg(i);
        }
        for (int f = 0; f < 8; ++f) places << QString("foundation-%1").arg(f);
        for (int h = 0; h < 4; ++h) places << QString("hand-%1").arg(h);
        for (const QString& name : places) {
            QQuickItem* place = item(name);
            ASSERT_TRUE(place) << name.toStdString();
            EXPECT_FALSE(sceneFrame(place).intersects(plate))
                << name.toStdString() << " in " << size.width() << "x" << size.height();
        }
        // Over the toolbar, where the stretch between the title and the buttons can hold it.
        const QRectF undoFrame = sceneFrame(item("undoButton"));
        const auto* stretch = item("boardToolbar")->property("freeStretch").value<QQuickItem*>();
        if (plate.bottom() > undoFrame.top() && plate.top() < undoFrame.bottom() &&
            stretch->width() >= plate.width() + 24) {
            ++besideButtons;
            EXPECT_LE(plate.right(), undoFrame.left()) << "over Undo in " << size.width() << "x" << size.height();
        }
    }
    EXPECT_GT(besideButtons, 0) << "no window put the toast over the toolbar with room beside the buttons";
}

// A refusal too long for one line beside the buttons wraps there; where even that has no room it
// hides the buttons under a plate as dark as the felt makes the toast, and a click on it dismisses
// it rather than pressing a button the player cannot see.
TEST_F(GameViewTest, ALongMessageOverTheToolbarStaysReadable)
{
    const std::string refusal = "three must land on an opposite-color four. ten of diamonds cannot accept it.";
    int wrapped = 0;
    int covering = 0;
    for (const QSize size : {QSize(1280, 700), QSize(960, 600)}) {
        SCOPED_TRACE(std::to_string(size.width()) + "x" + std::to_string(size.height()));
        open(knownDeal(), size);
        store->refuse(refusal);
        QTest::qWait(400);
        QQuickItem* toast = item("gameToast");
        ASSERT_TRUE(toast && toast->isVisible());
        const QRectF plate = sceneFrame(toast);
        const QRectF undoFrame = sceneFrame(item("undoButton"));
        const QColor color = toast->property("color").value<QColor>();
        if (!plate.intersects(undoFrame)) {
            EXPECT_GT(toast->height(), 50) << "wrapped to fit beside the buttons";
            EXPECT_LT(color.alphaF(), 0.5);
            ++wrapped;
            continue;
        }
        ++covering;
        EXPECT_GT(color.alphaF(), 0.9) << "buttons show through the text";
        QTest::mouseClick(window.get(), Qt::LeftButton, {}, plate.center().toPoint());
        EXPECT_FALSE(store->message()) << "the click dismisses the message";
        EXPECT_EQ(store->state().moveCount, 0) << "and presses nothing under it";
    }
    EXPECT_EQ(wrapped, 1);
    EXPECT_EQ(covering, 1);
}

// When the finish is offered, and not again once declined, the reactions decide; here the offer
// reaches the board and, accepted, plays itself with the cards flying.
TEST_F(GameViewTest, TheFinishIsOfferedAndPlaysItself)
{
    open(kingsLeft(), QSize(1600, 1000), true);
    ASSERT_TRUE(store->move(MoveSource::tableau(0, 0), MoveDestination::foundation(0)));
    QCoreApplication::processEvents(); // the board reacts once the move is over
    ASSERT_EQ(board->confirmation(), Confirmation::Kind::AutoComplete);
    EXPECT_EQ(board->confirmationTitle(), "Finish automatically?");
    // The offer's acceptance is saved; the eight flying cards are saved once, at the end.
    board->confirm();
    EXPECT_TRUE(board->autoCompleting());
    EXPECT_TRUE(store->challenge().usedAutoComplete);
    const int savesBefore = defaults.saves;
    ASSERT_TRUE(QTest::qWaitFor([this] { return drag()->active(); }, 2000)) << "a card flies to its foundation";
    EXPECT_EQ(drag()->faces().size(), 1);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !board->autoCompleting(); }, 5000));
    EXPECT_EQ(defaults.saves - savesBefore, 1);
    EXPECT_FALSE(drag()->active());
    EXPECT_TRUE(isWon(store->state()));
    EXPECT_EQ(store->state().moveCount, 8);
    EXPECT_EQ(store->history().size(), 8U);
}

TEST_F(GameViewTest, AWinShowsItsPanelOverADeafToolbarAndPlayAgainDeals)
{
    QGuiApplication::styleHints()->setUseHoverEffects(true); // off by default offscreen
    open(kingsLeft(), QSize(1600, 1000));
    QTest::mouseMove(window.get(), centreOf("settingsButton").toPoint());
    QTest::qWait(50);
    EXPECT_TRUE(item("settingsButton")->property("hovered").toBool()) << "the pointer lights up a button";
    QTest::mouseMove(window.get(), QPoint(5, 500));
    for (std::int64_t c = 0; c < 8; ++c) {
        ASSERT_TRUE(store->move(MoveSource::tableau(c, 0), MoveDestination::foundation(c)));
        QCoreApplication::processEvents();
        if (c == 0) board->dismissConfirmation(); // finishing by hand
    }
    ASSERT_TRUE(isWon(store->state()));
    QTest::qWait(50);
    EXPECT_GT(board->celebrationStartedAt(), 0);
    ASSERT_TRUE(item("winOverlay"));
    EXPECT_TRUE(item("winOverlay")->isVisible());
    EXPECT_FALSE(board->winMessage().isEmpty());
    EXPECT_EQ(board->winSummary(), "You built all eight foundations in 8 moves.");
    // The toolbar under the panel does not answer the pointer, not even by lighting up.
    QTest::mouseMove(window.get(), centreOf("settingsButton").toPoint());
    QTest::qWait(50);
    EXPECT_FALSE(item("settingsButton")->property("hovered").toBool());

    // An undo takes the panel away.
    store->undo();
    EXPECT_FALSE(item("winOverlay")->isVisible());
    QTest::qWait(20);
    ASSERT_TRUE(store->move(MoveSource::tableau(7, 0), MoveDestination::foundation(7)));

    click("playAgain");
    EXPECT_EQ(store->state().moveCount, 0);
    EXPECT_EQ(board->celebrationStartedAt(), 0);
    EXPECT_FALSE(item("winOverlay")->isVisible());
}

// Qt's own file panel, shown where the desktop has no file chooser, saves a typed name on Return,
// and the game asks before it replaces a file, as the desktop's choosers do.
TEST_F(GameViewTest, QtsFilePanelSavesOnReturnAndAsksBeforeReplacing)
{
    const auto typed = scratch.path() / "typed.zelvaine";
    const auto contents = [&] {
        std::ifstream in(typed);
        return std::string(std::istreambuf_iterator<char>(in), {});
    };
    // The name field of the panel once it shows, with `name` typed into it.
    const auto panelWith = [&](const char* name) {
        QQuickItem* field = nullptr;
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                for (auto* candidate : window->findChildren<QQuickItem*>("fileNameTextField"))
                    if (candidate->isVisible()) field = candidate;
                return field != nullptr;
            },
            2000));
        if (field) {
            field->setProperty("text", name);
            field->forceActiveFocus();
        }
        return field != nullptr;
    };
    const auto share = [&] {
        click("gameTransferMenu");
        QObject* item = nullptr;
        EXPECT_TRUE(
            QTest::qWaitFor([&] { return (item = visibleMenuItem(window.get(), "objectName", "shareGameItem")); }, 2000));
        if (item) QMetaObject::invokeMethod(item, "triggered");
    };
    ASSERT_TRUE(board->exportGame(fileUrl(scratch.path() / "first.zelvaine"))); // the panel opens here

    share();
    ASSERT_TRUE(panelWith("typed.zelvaine"));
    QTest::keyClick(window.get(), Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor([&] { return std::filesystem::exists(typed); }, 2000));

    std::ofstream(typed) << "another game";
    QObject* question = view->findChild<QObject*>("replaceQuestion");
    ASSERT_TRUE(question);
    const auto asked = [question] { return question->property("opened").toBool(); };
    share();
    ASSERT_TRUE(panelWith("typed.zelvaine"));
    QTest::keyClick(window.get(), Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor(asked, 2000));
    EXPECT_EQ(contents(), "another game");
    // Cancel goes back to the panel; Replace replaces.
    QTest::keyClick(window.get(), Qt::Key_Escape);
    ASSERT_TRUE(panelWith("typed.zelvaine"));
    QTest::keyClick(window.get(), Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor(asked, 2000));
    QTest::keyClick(window.get(), Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return contents().starts_with("{"); }, 2000));
}

// The board judges a new position only once the store's operation is over, so it sees the
// opened deal together with its own challenge record and with the question already answered.
TEST_F(GameViewTest, AnOpenedGameIsJudgedWithItsOwnRecord)
{
    const auto file = scratch.path() / "won.zelvaine";
    // The known deal's own cards, sorted home with `kingsHome` kings on their foundations and
    // the other kings alone in the columns: a file that any reader accepts.
    auto share = [&](std::size_t kingsHome) {
        const GameState deal = knownDeal();
        GameState current = deal;
        for (auto& column : current.tableau) column.clear();
        for (auto& slot : current.hand) slot.reset();
        std::vector<PlayingCard> all;
        for (const auto& column : deal.tableau) all.insert(all.end(), column.begin(), column.end());
        for (const auto& slot : deal.hand) all.push_back(*slot);
        std::ranges::sort(all, {}, [](const PlayingCard& c) { return std::tuple(c.suit, c.deck, c.rank); });
        for (std::size_t f = 0; f < 8; ++f) {
            current.foundations[f].assign(all.begin() + static_cast<std::ptrdiff_t>(13 * f),
                                          all.begin() + static_cast<std::ptrdiff_t>(13 * f + 12));
            if (f < kingsHome) current.foundations[f].push_back(all[13 * f + 12]);
            else current.tableau[f].push_back(all[13 * f + 12]);
        }
        current.moveCount = 200;
        std::ofstream(file) << ZelvaineGameDocument::fromStates(current, deal).encode();
    };
    auto openShared = [&] {
        board->openGame(fileUrl(file));
        ASSERT_EQ(board->confirmation(), Confirmation::Kind::OpenSharedGame) << board->message().toStdString();
        board->confirm();
        QCoreApplication::processEvents();
    };

    // A shared game that is already won counts as a win, but not as an eligible one.
    share(8);
    openShared();
    ASSERT_TRUE(isWon(store->state()));
    EXPECT_EQ(preferences.gamesWon(), 1);
    EXPECT_EQ(preferences.gameCenterEligibleWins(), 0);
    EXPECT_GT(board->celebrationStartedAt(), 0);

    // A shared game that can finish by itself is offered the finish as soon as it is open.
    share(1);
    openShared();
    EXPECT_EQ(board->confirmation(), Confirmation::Kind::AutoComplete);
}

TEST_F(GameViewTest, AFileThatCannotBeOpenedSaysWhyAndChangesNothing)
{
    ASSERT_TRUE(store->move(MoveSource::hand(0), MoveDestination::foundation(0)));
    const GameState before = store->state();
    const auto& dir = scratch.path();
    const auto path = [&](const char* name) { return QString::fromStdString((dir / name).string()); };

    // This game, as a newer version of the game would write it.
    ASSERT_TRUE(board->exportGame(QUrl::fromLocalFile(path("future.zelvaine"))));
    std::string text;
    std::getline(std::ifstream(dir / "future.zelvaine"), text, '\0');
    const auto version = text.find("\"formatVersion\":1");
    ASSERT_NE(version, std::string::npos);
    text.replace(version, 17, "\"formatVersion\":2");
    std::ofstream(dir / "future.zelvaine") << text;
    std::ofstream(dir / "huge.zelvaine") << std::string(6 * 1024 * 1024, ' ');
    std::ofstream(dir / "broken.zelvaine") << "not a game";
    const std::pair<QString, const char*> failures[] = {
        {path("missing.zelvaine"), "Zelvaine could not open that game file."},
        {path("broken.zelvaine"), "Zelvaine could not open that game file."},
        {path("future.zelvaine"), "This game uses unsupported Zelvaine file format version 2."},
        {path("huge.zelvaine"), "This Zelvaine game file is too large to open."},
    };
    for (const auto& [file, notice] : failures) {
        store->clearMessage();
        board->openGamePath(file);
        EXPECT_EQ(board->message().toStdString(), notice) << file.toStdString();
        EXPECT_EQ(board->messageKind(), Message::Kind::Notice);
        EXPECT_EQ(board->confirmation(), Confirmation::Kind::None);
        EXPECT_EQ(store->state(), before);
    }

    // While another question is asked, a file arriving is still read: a broken one says why and
    // leaves the question standing; a good one waits for nothing.
    board->requestNewGame();
    for (const auto& [file, notice] : failures) {
        store->clearMessage();
        board->openGamePath(file);
        EXPECT_EQ(board->message().toStdString(), notice) << file.toStdString();
        EXPECT_EQ(board->confirmation(), Confirmation::Kind::NewGame);
    }
    ASSERT_TRUE(board->exportGame(QUrl::fromLocalFile(path("good.zelvaine"))));
    store->clearMessage();
    board->openGamePath(path("good.zelvaine"));
    EXPECT_EQ(board->confirmation(), Confirmation::Kind::NewGame);
    EXPECT_TRUE(board->message().isEmpty());
    board->dismissConfirmation();

    // From outside, only a file named as a shared game is taken, whatever the case of its name.
    std::filesystem::copy_file(dir / "good.zelvaine", dir / "game.json");
    std::filesystem::copy_file(dir / "good.zelvaine", dir / "GOOD.Zelvaine");
    for (const char* ignored : {"game.json", "good.zelvaine.bak", "zelvaine"}) {
        board->openGamePath(path(ignored));
        EXPECT_EQ(board->confirmation(), Confirmation::Kind::None) << ignored;
        EXPECT_TRUE(board->message().isEmpty()) << ignored;
    }
    board->openGamePath(QUrl::fromLocalFile(path("GOOD.Zelvaine")).toString());
    EXPECT_EQ(board->confirmation(), Confirmation::Kind::OpenSharedGame);
}

// Sets an environment variable for one scope.
class ScopedEnvironment {
public:
    ScopedEnvironment(const char* name, const QByteArray& value)
        : name_(name), old_(qgetenv(name)), had_(qEnvironmentVariableIsSet(name))
    {
        qputenv(name, value);
    }
    ~ScopedEnvironment() { had_ ? qputenv(name_, old_) : qunsetenv(name_); }
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

private:
    const char* name_;
    QByteArray old_;
    bool had_;
};

// A share tells the player where it went, or why it went nowhere; the panels start in a folder
// that exists, and after a share where it went.
TEST_F(GameViewTest, SharingSaysWhereTheGameWentOrWhyNot)
{
    const auto home = scratch.path() / "home";
    std::filesystem::create_directories(home / "elsewhere");
    const ScopedEnvironment homeVariable("HOME", QByteArray::fromStdString(home.string()));
    const ScopedEnvironment configVariable("XDG_CONFIG_HOME", QByteArray::fromStdString((home / "config").string()));
    const auto folderOf = fileUrl;

    // No Documents folder: home; once there is one, there.
    EXPECT_EQ(board->gameFolder(), folderOf(home));
    std::filesystem::create_directories(home / "Documents");
    EXPECT_EQ(board->gameFolder(), folderOf(home / "Documents"));

    const std::pair<std::filesystem::path, const char*> failures[] = {
        {home / "Missing" / "Zelvaine Game.zelvaine", "does not exist"},
        {home / "elsewhere" / "taken.zelvaine" / "Zelvaine Game.zelvaine", "does not exist"},
        {"/proc/Zelvaine Game.zelvaine", "The game was not shared"},
    };
    std::filesystem::create_directories(home / "elsewhere" / "taken.zelvaine");
    std::filesystem::remove(home / "elsewhere" / "taken.zelvaine");
    std::ofstream(home / "elsewhere" / "taken.zelvaine") << "a file, not a folder";
    for (const auto& [file, why] : failures) {
        store->clearMessage();
        EXPECT_FALSE(board->exportGame(folderOf(file))) << file;
        EXPECT_TRUE(board->message().contains(why)) << board->message().toStdString();
        EXPECT_EQ(board->messageKind(), Message::Kind::Notice);
        EXPECT_FALSE(std::filesystem::exists(file));
    }
    // A path typed into the panel arrives without a scheme, and is named as typed.
    store->clearMessage();
    EXPECT_FALSE(board->exportGame(QUrl(QString::fromStdString((home / "Typed" / "Mine.zelvaine").string()))));
    EXPECT_TRUE(board->message().contains(QString::fromStdString((home / "Typed").string())))
        << board->message().toStdString();
    EXPECT_EQ(board->gameFolder(), folderOf(home / "Documents")) << "a failed share moves nothing";

    const auto shared = home / "elsewhere" / "Zelvaine Game.zelvaine";
    ASSERT_TRUE(board->exportGame(folderOf(shared)));
    EXPECT_TRUE(std::filesystem::exists(shared));
    EXPECT_EQ(board->message().toStdString(),
              "Game shared as “Zelvaine Game.zelvaine” in " + (home / "elsewhere").string() + ".");
    EXPECT_EQ(board->gameFolder(), folderOf(home / "elsewhere"));
}

// The save panel offers to save, in the folder where the last share went.
TEST_F(GameViewTest, TheSavePanelSaysSave)
{
    click("gameTransferMenu");
    QTest::qWait(300);
    clickItem(window.get(), visibleMenuItem(window.get(), "text", "Share Game"));
    QTest::qWait(500);
    QStringList buttons;
    const std::function<void(QQuickItem*)> collect = [&](QQuickItem* item) {
        if (item->inherits("QQuickAbstractButton") && item->isVisible()) buttons << item->property("text").toString();
        for (QQuickItem* child : item->childItems()) collect(child);
    };
    collect(overlayRoot(window.get()));
    EXPECT_TRUE(buttons.contains("Save")) << buttons.join(", ").toStdString();
    EXPECT_FALSE(buttons.contains("Open")) << buttons.join(", ").toStdString();
    QTest::keyClick(window.get(), Qt::Key_Escape);
}

TEST_F(GameViewTest, ADraggedStringLandsOnALegalColumn)
{
    // Column 0 ends in 9♣ 8♥; column 3 in 10♦. Grab the nine by its strip and drop the string on the ten.
    const QPointF grip = centreOf("tableau-0-8", 6);
    const QPointF overTen = centreOf("tableau-3-9");
    QTest::mousePress(window.get(), Qt::LeftButton, {}, grip.toPoint());
    QTest::mouseMove(window.get(), (grip + QPointF(20, 20)).toPoint());
    ASSERT_TRUE(drag()->active());
    EXPECT_EQ(drag()->faces().size(), 2);
    // The string leaves its column while it is dragged: the column draws only the cards above it.
    const auto hiddenFrom = [&](const QString& column) {
        for (QQuickItem* child : item(column)->childItems()) {
            if (const QVariant from = child->property("hiddenFrom"); from.isValid()) return from.toInt();
        }
        return -2;
    };
    EXPECT_EQ(hiddenFrom("column-0"), 8);
    EXPECT_EQ(hiddenFrom("column-3"), -1);
    QTest::mouseMove(window.get(), overTen.toPoint());
    QTest::mouseRelease(window.get(), Qt::LeftButton, {}, overTen.toPoint());

    EXPECT_EQ(store->state().tableau[3].size(), 12U);
    EXPECT_EQ(store->state().tableau[0].size(), 8U);
    EXPECT_EQ(store->state().moveCount, 1);
    EXPECT_FALSE(drag()->active());
    EXPECT_TRUE(item("dragOverlay")->isVisible()) << "a dropped string settles away";
    EXPECT_FALSE(store->message());
}

TEST_F(GameViewTest, ADropOnNothingExplainsAndSpringsBack)
{
    const GameState before = store->state();
    const QPointF from = centreOf("hand-0");
    QTest::mousePress(window.get(), Qt::LeftButton, {}, from.toPoint());
    QTest::mouseMove(window.get(), (from + QPointF(0, -10)).toPoint());
    ASSERT_TRUE(drag()->active());
    // Onto the middle of a column, where an ace has no place.
    const QPointF nowhere = centreOf("tableau-5-4");
    QTest::mouseMove(window.get(), nowhere.toPoint());
    QTest::mouseRelease(window.get(), Qt::LeftButton, {}, nowhere.toPoint());

    EXPECT_EQ(store->state(), before);
    EXPECT_EQ(board->message(), "That card cannot be dropped there.");
    EXPECT_TRUE(drag()->active()) << "the preview stays while it springs back";
    // A drag on another card meanwhile does nothing.
    dragBetween(centreOf("hand-1"), centreOf("hand-1") + QPointF(40, 0));
    EXPECT_EQ(drag()->sourceKind(), Place::Kind::Hand);
    EXPECT_EQ(drag()->sourceIndex(), 0);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !drag()->active(); }, 2000));
    // Gone at once: faded over the slot's own card it would show both.
    EXPECT_FALSE(item("dragOverlay")->isVisible());
    // Home again, over the slot it came from.
    EXPECT_NEAR(drag()->dragPosition()->location().x(), from.x(), 3);
    EXPECT_NEAR(drag()->dragPosition()->location().y(), from.y(), 3);
    EXPECT_EQ(store->state(), before);
}

TEST_F(GameViewTest, AShortDragIsATapAndABlockedCardShakes)
{
    const QPointF from = centreOf("hand-0");
    dragBetween(from, from + QPointF(4, 3), 2);
    EXPECT_FALSE(drag()->active());
    EXPECT_EQ(store->selection(), MoveSource::hand(0));

    // A drag on a blocked card moves nothing and shakes it once; a second drag meanwhile is ignored.
    QQuickItem* column = item("cards-9");
    const QPointF blocked = centreOf("tableau-9-0", 6);
    dragBetween(blocked, blocked + QPointF(60, 80));
    EXPECT_EQ(column->property("nudgedIndex").toInt(), 0);
    QTest::qWait(100);
    dragBetween(centreOf("tableau-9-1", 6), centreOf("tableau-9-1", 6) + QPointF(60, 80));
    EXPECT_EQ(column->property("nudgedIndex").toInt(), 0);
    EXPECT_TRUE(QTest::qWaitFor([column] { return column->property("nudgedIndex").toInt() == -1; }, 2000));
    EXPECT_EQ(column->property("nudgeOffset").toDouble(), 0);
    EXPECT_EQ(store->state().moveCount, 0);
    EXPECT_FALSE(drag()->active());
}

TEST_F(GameViewTest, ConfirmationsAreAskedOverTheBoard)
{
    click("tableau-0-9");
    click("tableau-4-9");
    board->requestRestart();
    QTest::qWait(100);
    QQuickItem* confirm = findItem(overlayRoot(window.get()), "confirmationConfirm");
    ASSERT_TRUE(confirm && confirm->isVisible());
    clickItem(window.get(), confirm);
    QTest::qWait(50);
    EXPECT_EQ(store->state().moveCount, 0);
    EXPECT_TRUE(store->challenge().usedRestart);
    EXPECT_EQ(board->confirmation(), Confirmation::Kind::None);

    // The keyboard answers too: Escape keeps the game, Return takes the highlighted answer,
    // and the next click reaches the board.
    click("tableau-0-9");
    click("tableau-4-9");
    board->requestNewGame();
    QTest::qWait(100);
    QTest::keyClick(window.get(), Qt::Key_Escape);
    QTest::qWait(50);
    EXPECT_EQ(board->confirmation(), Confirmation::Kind::None);
    EXPECT_EQ(store->state().moveCount, 1);
    board->requestRestart();
    QTest::qWait(100);
    QTest::keyClick(window.get(), Qt::Key_Return);
    QTest::qWait(50);
    EXPECT_EQ(board->confirmation(), Confirmation::Kind::None);
    EXPECT_EQ(store->state().moveCount, 0);
    click("tableau-0-9");
    EXPECT_EQ(store->selection(), MoveSource::tableau(0, 9));
}

TEST_F(GameViewTest, SettingsWriteThroughAndTakeEffectAtOnce)
{
    // The dealt game counts as one already.
    for (int i = 0; i < 12344; ++i) preferences.recordGameStarted("deal-" + std::to_string(i));
    // Made only while it shows, so that no hidden window stands in the accessibility tree.
    EXPECT_FALSE(view->findChild<QQuickWindow*>("settingsWindow"));
    click("settingsButton");
    QPointer<QQuickWindow> settings = view->findChild<QQuickWindow*>("settingsWindow");
    ASSERT_TRUE(settings);
    ASSERT_TRUE(QTest::qWaitFor([settings] { return settings->isExposed(); }, 3000));
    EXPECT_EQ(settings->size(), QSize(620, 590));

    // Counts are grouped for the locale; the best game is a bare number of moves, or a dash.
    EXPECT_EQ(inWindow(settings, "gamesPlayedValue")->property("text").toString(), "12,345");
    EXPECT_EQ(inWindow(settings, "bestGameValue")->property("text").toString(), "—");
    preferences.recordGameWon(1234, "deal-12343", true);
    EXPECT_EQ(inWindow(settings, "bestGameValue")->property("text").toString(), "1234 moves");
    EXPECT_EQ(inWindow(settings, "gamesWonValue")->property("text").toString(), "1");
    // A statistic tells only its own readers; the settings are not read again for it.
    QSignalSpy playedSpy(preferencesModel.get(), &PreferencesModel::gamesPlayedChanged);
    QSignalSpy hintSpy(preferencesModel.get(), &PreferencesModel::showsHintChanged);
    preferences.recordGameStarted("one-more-deal");
    EXPECT_EQ(playedSpy.count(), 1);
    EXPECT_EQ(hintSpy.count(), 0);

    // A switch turns the toolbar's button off, on the board at once and in the stored preferences.
    ASSERT_TRUE(item("hintButton")->isVisible());
    clickItem(settings, inWindow(settings, "showHintSwitch"));
    EXPECT_FALSE(preferences.showsHint());
    EXPECT_FALSE(item("hintButton")->isVisible());
    EXPECT_FALSE(GamePreferences(defaults, sound).showsHint()) << "stored, not only shown";
    clickItem(settings, inWindow(settings, "showUndoSwitch"));
    EXPECT_FALSE(item("redoButton")->isVisible());
    clickItem(settings, inWindow(settings, "handRight"));
    EXPECT_EQ(preferences.landscapeHandSide(), LandscapeHandSide::right);
    clickItem(settings, inWindow(settings, "moveMessagesSwitch"));
    EXPECT_FALSE(preferences.showsMoveMessages());
    clickItem(settings, inWindow(settings, "soundsSwitch"));
    EXPECT_FALSE(preferences.soundsEnabled());
    // The solver's box comes before the statistics, its switches showing the stored choices.
    QQuickItem* solverBox = inWindow(settings, "solverBox");
    ASSERT_TRUE(solverBox);
    EXPECT_LT(solverBox->mapToScene({}).y(), inWindow(settings, "gamesPlayedValue")->mapToScene({}).y());
    for (const char* name : {"showsWinnabilitySwitch", "winnableDealsOnlySwitch"})
        EXPECT_FALSE(inWindow(settings, name)->property("checked").toBool()) << name;
    preferences.setWinnableDealsOnly(true);
    EXPECT_TRUE(inWindow(settings, "winnableDealsOnlySwitch")->property("checked").toBool());
    preferences.setWinnableDealsOnly(false);

    // The privacy policy opens in place, with a way back.
    clickItem(settings, inWindow(settings, "privacyLink"));
    ASSERT_TRUE(QTest::qWaitFor([settings] { return inWindow(settings, "privacyPolicy") != nullptr; }, 2000));
    QTest::qWait(400);
    saveShot(settings, "settings-privacy");
    // It takes the settings' place rather than hiding them, and gives it back.
    EXPECT_FALSE(inWindow(settings, "privacyLink") && inWindow(settings, "privacyLink")->isVisible());
    clickItem(settings, inWindow(settings, "infoBackButton"));
    ASSERT_TRUE(QTest::qWaitFor([settings] { return inWindow(settings, "privacyPolicy") == nullptr; }, 2000));
    QTest::qWait(300);
    saveShot(settings, "settings");

    // Done closes the window and clears the flag, so the button opens it again.
    clickItem(settings, inWindow(settings, "settingsDoneButton"));
    EXPECT_FALSE(preferences.showSettings());
    EXPECT_TRUE(QTest::qWaitFor([settings] { return settings.isNull(); }, 2000));
}

TEST_F(GameViewTest, TheRulesSheetOpensAndCloses)
{
    EXPECT_FALSE(view->findChild<QQuickWindow*>("rulesWindow"));
    click("rulesButton");
    EXPECT_TRUE(store->showRules());
    QPointer<QQuickWindow> rules = view->findChild<QQuickWindow*>("rulesWindow");
    ASSERT_TRUE(rules);
    ASSERT_TRUE(QTest::qWaitFor([rules] { return rules->isExposed(); }, 3000));
    // Wide: the column keeps to 700 and sits in the middle; narrow: it shrinks and wraps.
    QQuickItem* column = inWindow(rules, "rulesColumn");
    ASSERT_TRUE(column);
    EXPECT_DOUBLE_EQ(column->width(), 700);
    EXPECT_NEAR(column->x() + column->width() / 2, column->parentItem()->width() / 2, 1);
    QTest::qWait(100);
    saveShot(rules, "rules");
    rules->resize(480, 600);
    QTest::qWait(100);
    EXPECT_LT(column->width(), 480);

    clickItem(rules, inWindow(rules, "rulesDoneButton"));
    EXPECT_FALSE(store->showRules());
    EXPECT_TRUE(QTest::qWaitFor([rules] { return rules.isNull(); }, 2000));
    click("rulesButton");
    EXPECT_TRUE(store->showRules());
}

// Renders the dealt table for a look, and for the README.
TEST_F(GameViewTest, RendersTheTableInBothArrangements)
{
    for (QSize size : {QSize(1600, 1000), QSize(900, 1200)}) {
        open(dealNewGame(), size);
        QTest::qWait(50);
        EXPECT_EQ(window->grabWindow().size(), size * window->devicePixelRatio());
        saveShot(window.get(), "board-" + std::to_string(size.width()) + "x" + std::to_string(size.height()));
    }
    // And a selection with its legal destination lit.
    open(knownDeal(), QSize(1600, 1000));
    click("tableau-0-9");
    QTest::qWait(50);
    saveShot(window.get(), "board-selection");

    // And a win, a second into its confetti.
    open(kingsLeft(), QSize(1600, 1000));
    for (std::int64_t c = 0; c < 8; ++c) store->move(MoveSource::tableau(c, 0), MoveDestination::foundation(c));
    QTest::qWait(1000);
    saveShot(window.get(), "board-win");

    // And a string in the air.
    open(knownDeal(), QSize(1600, 1000));
    const QPointF grip = centreOf("tableau-0-8", 6);
    QTest::mousePress(window.get(), Qt::LeftButton, {}, grip.toPoint());
    QTest::mouseMove(window.get(), (grip + QPointF(10, 10)).toPoint());
    QTest::mouseMove(window.get(), (grip + QPointF(160, 90)).toPoint());
    QTest::qWait(30);
    saveShot(window.get(), "board-drag");
    QTest::mouseRelease(window.get(), Qt::LeftButton, {}, (grip + QPointF(160, 90)).toPoint());
}

} // namespace
} // namespace zelvaine

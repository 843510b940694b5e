// The real board in an offscreen window, played with the mouse as a player would.

#include "store/game_preferences.hpp"
#include "store/game_store.hpp"
#include "store/in_memory_defaults_store.hpp"
#include "tests/support/positions.hpp"
#include "ui/game_board.hpp"
#include "ui/preferences_model.hpp"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <QtQml/QQmlExtensionPlugin>

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

Q_IMPORT_QML_PLUGIN(ZelvainePlugin)

namespace zelvaine {
namespace {

using testing::card;
using testing::cards;

// A deal-shaped position with known moves: 8♥ (column 0) fits on 9♠ (column 4); the hand
// holds A♦; column 9's top king is blocked by the cards on it.
GameState knownDeal()
{
    std::vector<PlayingCard> rest = makeTwoDeckSet();
    auto take = [&](Suit suit, Rank rank) {
        auto found = std::find_if(rest.begin(), rest.end(),
                                  [&](const PlayingCard& c) { return c.suit == suit && c.rank == rank; });
        PlayingCard c = *found;
        rest.erase(found);
        return c;
    };
    GameState s;
    s.tableau.resize(10);
    s.foundations.resize(8);
    s.hand = {take(Suit::diamonds, Rank::ace), take(Suit::spades, Rank::king), take(Suit::spades, Rank::king),
              take(Suit::clubs, Rank::king)};
    std::vector<std::vector<PlayingCard>> ends(10);
    ends[0] = {take(Suit::clubs, Rank::nine), take(Suit::hearts, Rank::eight)};
    ends[4] = {take(Suit::spades, Rank::nine)};
    const std::size_t others[] = {1, 2, 3, 5, 6, 7, 8, 9};
    const Suit queens[] = {Suit::clubs, Suit::clubs, Suit::diamonds, Suit::diamonds, Suit::hearts, Suit::hearts,
                           Suit::spades, Suit::spades};
    for (std::size_t i = 0; i < 8; ++i) ends[others[i]] = {take(queens[i], Rank::queen)};
    std::size_t next = 0;
    for (std::size_t c = 0; c < 10; ++c) {
        while (s.tableau[c].size() + ends[c].size() < 10) s.tableau[c].push_back(rest[next++]);
        s.tableau[c].insert(s.tableau[c].end(), ends[c].begin(), ends[c].end());
    }
    return s;
}

class GameViewTest : public ::testing::Test {
protected:
    void SetUp() override { open(knownDeal(), QSize(1600, 1000)); }

    void open(const GameState& game, QSize size)
    {
        // Views first, then the board, then the store it observes.
        view.reset();
        window.reset();
        board.reset();
        store = std::make_unique<GameStore>(game, defaults, sound);
        board = std::make_unique<GameBoard>(*store);
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

    // Delegates made by repeaters are found through the item tree, not the object tree.
    QQuickItem* item(const QString& name) const { return find(view.get(), name); }
    static QQuickItem* find(QQuickItem* root, const QString& name)
    {
        if (root->objectName() == name) return root;
        for (QQuickItem* child : root->childItems()) {
            if (QQuickItem* found = find(child, name)) return found;
        }
        return nullptr;
    }

    void click(const QString& name, QPointF at = {-1, -1})
    {
        QQuickItem* target = item(name);
        ASSERT_TRUE(target) << name.toStdString();
        if (at.x() < 0) at = QPointF(target->width() / 2, std::min(target->height() / 2, 8.0));
        QTest::mouseClick(window.get(), Qt::LeftButton, {}, target->mapToScene(at).toPoint());
    }

    InMemoryDefaultsStore defaults;
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
    click("tableau-0-9");
    EXPECT_EQ(store->selection(), MoveSource::tableau(0, 9));
    EXPECT_TRUE(board->columnTargets()[4]);
    click("tableau-4-9");
    EXPECT_EQ(store->state().tableau[4].size(), 11U);
    EXPECT_EQ(store->state().moveCount, 1);
    QTest::qWait(20);
    EXPECT_TRUE(item("tableau-4-10"));
    EXPECT_FALSE(item("tableau-0-9"));
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

TEST_F(GameViewTest, BlockedCardsAreNotSelected)
{
    click("tableau-9-0");
    EXPECT_FALSE(store->selection());
    EXPECT_EQ(item("tableau-9-0")->property("accessibleHint").toString(), "This card is blocked");
    EXPECT_EQ(item("tableau-9-9")->property("accessibleHint").toString(),
              "Tap to select, double tap to play an unambiguous move, or drag this card and its valid string");
}

TEST_F(GameViewTest, TheBareTableClearsTheSelection)
{
    click("tableau-0-9");
    ASSERT_TRUE(store->selection());
    QTest::mouseClick(window.get(), Qt::LeftButton, {}, QPoint(5, window->height() - 5));
    EXPECT_FALSE(store->selection());
}

TEST_F(GameViewTest, PlacesCarryTheirAccessibleNames)
{
    EXPECT_TRUE(item("gameBoard"));
    QQuickItem* column = item("column-3");
    ASSERT_TRUE(column);
    EXPECT_EQ(column->property("count").toInt(), 10);
    QQuickItem* card = item("tableau-0-9");
    ASSERT_TRUE(card);
    EXPECT_EQ(card->property("name").toString(), "eight of hearts");
    EXPECT_EQ(card->property("accessibleValue").toString(), "Not selected");
    click("tableau-0-9");
    EXPECT_EQ(card->property("accessibleValue").toString(), "Selected");
    EXPECT_TRUE(item("hand-1"));
    EXPECT_TRUE(item("foundation-7"));
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
    QTest::keyClick(window.get(), Qt::Key_Right); // shows the focus on column 1's lowest card
    EXPECT_EQ(board->focusRow(), 1);
    EXPECT_EQ(board->focusIndex(), 0);
    EXPECT_EQ(board->focusCardIndex(), 9);
    QTest::keyClick(window.get(), Qt::Key_Return);
    EXPECT_EQ(store->selection(), MoveSource::tableau(0, 9));
    for (int i = 0; i < 4; ++i) QTest::keyClick(window.get(), Qt::Key_Right);
    EXPECT_EQ(board->focusIndex(), 4);
    QTest::keyClick(window.get(), Qt::Key_Space);
    EXPECT_EQ(store->state().tableau[4].size(), 11U);

    QTest::keyClick(window.get(), Qt::Key_Down); // onto the card just played
    EXPECT_EQ(board->focusCardIndex(), 10);
    QTest::keyClick(window.get(), Qt::Key_Down); // and on to the hand
    EXPECT_EQ(board->focusRow(), 2);
    QTest::keyClick(window.get(), Qt::Key_Return);
    EXPECT_EQ(store->selection(), MoveSource::hand(1));
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_FALSE(store->selection());
    EXPECT_EQ(board->focusRow(), -1);
}

// Renders the dealt table for a look, and for the README.
TEST_F(GameViewTest, RendersTheTableInBothArrangements)
{
    for (QSize size : {QSize(1600, 1000), QSize(900, 1200)}) {
        open(dealNewGame(), size);
        QTest::qWait(50);
        const QImage image = window->grabWindow();
        ASSERT_FALSE(image.isNull());
        EXPECT_EQ(image.size(), size * window->devicePixelRatio());
        const auto file = std::filesystem::path(ZELVAINE_SCREENSHOT_DIR) /
                          ("board-" + std::to_string(size.width()) + "x" + std::to_string(size.height()) + ".png");
        EXPECT_TRUE(image.save(QString::fromStdString(file.string())));
    }
}

} // namespace
} // namespace zelvaine

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QGuiApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

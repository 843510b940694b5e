// What the board's QML objects decide rather than forward: the store's words turned into the
// names QML compares, and which messages the toast shows and for how long.

#include "store/game_store.hpp"
#include "store/in_memory_defaults_store.hpp"
#include "tests/support/positions.hpp"
#include "ui/game_board.hpp"
#include "ui/game_toast.hpp"
#include "ui/place_kind.hpp"
#include "ui/preferences_model.hpp"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace zelvaine {
namespace {

TEST(BoardVocabulary, EveryStoreWordHasItsOwnName)
{
    EXPECT_EQ(confirmationKind(std::nullopt), Confirmation::Kind::None);
    EXPECT_EQ(confirmationKind(GameConfirmation::newGame), Confirmation::Kind::NewGame);
    EXPECT_EQ(confirmationKind(GameConfirmation::restartGame), Confirmation::Kind::RestartGame);
    EXPECT_EQ(confirmationKind(GameConfirmation::autoComplete), Confirmation::Kind::AutoComplete);
    EXPECT_EQ(confirmationKind(GameConfirmation::openSharedGame), Confirmation::Kind::OpenSharedGame);
    EXPECT_EQ(messageKind(std::nullopt), Message::Kind::None);
    EXPECT_EQ(messageKind(GameMessageKind::hint), Message::Kind::Hint);
    EXPECT_EQ(messageKind(GameMessageKind::moveFeedback), Message::Kind::MoveFeedback);
    EXPECT_EQ(messageKind(GameMessageKind::notice), Message::Kind::Notice);
    EXPECT_EQ(focusDirection(Focus::Direction::Left), KeyboardFocus::Direction::left);
    EXPECT_EQ(focusDirection(Focus::Direction::Right), KeyboardFocus::Direction::right);
    EXPECT_EQ(focusDirection(Focus::Direction::Up), KeyboardFocus::Direction::up);
    EXPECT_EQ(focusDirection(Focus::Direction::Down), KeyboardFocus::Direction::down);

    // A place keeps its name through the selection, the keyboard's focus and back to a move.
    EXPECT_EQ(placeKind(KeyboardFocus::Row::foundations), Place::Kind::Foundation);
    EXPECT_EQ(placeKind(KeyboardFocus::Row::tableau), Place::Kind::Column);
    EXPECT_EQ(placeKind(KeyboardFocus::Row::hand), Place::Kind::Hand);
    for (const MoveSource& source : {MoveSource::tableau(3, 5), MoveSource::hand(2), MoveSource::foundation(7)}) {
        const Place::Kind kind = placeKind(source.kind);
        EXPECT_EQ(placeSource(kind, static_cast<int>(source.index), static_cast<int>(source.cardIndex)), source);
    }
    EXPECT_EQ(placeDestination(Place::Kind::Hand, 1), MoveDestination::hand(1));
    EXPECT_EQ(placeDestination(Place::Kind::Foundation, 4), MoveDestination::foundation(4));
    EXPECT_EQ(placeDestination(Place::Kind::Column, 9), MoveDestination::tableau(9));
}

class ToastTest : public ::testing::Test {
protected:
    ToastTest()
    {
        GameState state = testing::emptyBoard();
        state.tableau[0] = testing::cards("KS 9H");
        state.tableau[1] = testing::cards("10D");
        state.hand[0] = testing::card("AH");
        store = std::make_unique<GameStore>(state, defaults, sound);
        board = std::make_unique<GameBoard>(*store);
        toast.setBoard(board.get());
        toast.setPreferences(&preferencesModel);
    }
    // A move the rules refuse, which the store answers with move feedback.
    void refuse() { ASSERT_FALSE(store->move(MoveSource::tableau(0, 1), MoveDestination::tableau(1))); }

    InMemoryDefaultsStore defaults;
    SilentSoundCues sound;
    GamePreferences preferences{defaults, sound};
    PreferencesModel preferencesModel{preferences};
    std::unique_ptr<GameStore> store;
    std::unique_ptr<GameBoard> board;
    GameToast toast;
};

TEST_F(ToastTest, AMessageShowsAndIsAnnouncedOnceEachTimeItArrives)
{
    QSignalSpy arrivals(&toast, &GameToast::arrived);
    refuse();
    ASSERT_EQ(board->messageKind(), Message::Kind::MoveFeedback);
    EXPECT_EQ(toast.text(), board->message());
    EXPECT_FALSE(toast.text().isEmpty());
    QCoreApplication::processEvents();
    EXPECT_EQ(arrivals.count(), 1) << "once, though the text and its kind changed apart";

    // The same refusal again shows the same text and is announced again.
    refuse();
    QCoreApplication::processEvents();
    EXPECT_EQ(arrivals.count(), 2);

    store->clearMessage();
    EXPECT_TRUE(toast.text().isEmpty());
}

TEST_F(ToastTest, UnwantedRefusalsAreClearedAtOnceButHintsAndNoticesShow)
{
    preferences.setShowsMoveMessages(false);
    QSignalSpy arrivals(&toast, &GameToast::arrived);
    refuse();
    EXPECT_TRUE(toast.text().isEmpty());
    QCoreApplication::processEvents();
    EXPECT_EQ(board->message(), QString()) << "cleared from the store, not left to be read out later";
    EXPECT_EQ(arrivals.count(), 0);

    store->showNotice("Saved.");
    EXPECT_EQ(toast.text(), "Saved.");
    store->showHint();
    EXPECT_EQ(board->messageKind(), Message::Kind::Hint);
    EXPECT_EQ(toast.text(), board->message());
}

TEST_F(ToastTest, AMessageGoesAfterItsTimeUnlessANewerOneCame)
{
    store->showNotice("First.");
    QTest::qWait(GameToast::showMilliseconds / 2);
    store->showNotice("Second.");
    QTest::qWait(GameToast::showMilliseconds * 3 / 4);
    EXPECT_EQ(toast.text(), "Second.") << "the newer message has its own time";
    EXPECT_TRUE(QTest::qWaitFor([this] { return toast.text().isEmpty(); }, GameToast::showMilliseconds));
    EXPECT_EQ(board->message(), QString()) << "gone from the store with the toast";
}

} // namespace
} // namespace zelvaine

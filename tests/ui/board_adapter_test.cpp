// What the board's QML objects decide rather than forward: the store's words turned into the
// names QML compares, and which messages the toast shows and for how long.

#include "store/game_store.hpp"
#include "store/in_memory_defaults_store.hpp"
#include "tests/support/positions.hpp"
#include "ui/game_board.hpp"
#include "ui/game_toast.hpp"
#include "ui/place_kind.hpp"
#include "ui/preferences_model.hpp"

#include <QMetaMethod>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>

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

class BoardAdapterTest : public ::testing::Test {
protected:
    BoardAdapterTest()
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

// The store reports every assignment; the board passes on only what changed.
TEST_F(BoardAdapterTest, AMoveAnnouncesOnlyWhatItChanged)
{
    std::map<std::string, std::unique_ptr<QSignalSpy>> spies;
    const QMetaObject& meta = GameBoard::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        if (method.methodType() != QMetaMethod::Signal) continue;
        spies[method.name().toStdString()] = std::make_unique<QSignalSpy>(board.get(), method);
    }
    const auto count = [&](const char* signal) { return spies.at(signal)->count(); };

    ASSERT_TRUE(store->move(MoveSource::hand(0), MoveDestination::foundation(0)));
    EXPECT_EQ(count("moveCountChanged"), 1);
    EXPECT_EQ(count("canUndoChanged"), 1);
    EXPECT_EQ(count("hasProgressChanged"), 1);
    for (const char* unchanged : {"wonChanged", "canRedoChanged", "canShareChanged", "winTextChanged",
                                  "selectionChanged", "messageChanged", "messageArrived", "confirmationChanged"})
        EXPECT_EQ(count(unchanged), 0) << unchanged;

    // A message announces its text and kind once, the same refusal again only its arrival.
    refuse();
    EXPECT_EQ(count("messageChanged"), 1);
    EXPECT_EQ(count("messageArrived"), 1);
    refuse();
    EXPECT_EQ(count("messageChanged"), 1);
    EXPECT_EQ(count("messageArrived"), 2);
    store->clearMessage();
    EXPECT_EQ(count("messageChanged"), 2);
    EXPECT_EQ(count("messageArrived"), 2);
}

TEST_F(BoardAdapterTest, AMessageShowsAndIsAnnouncedOnceEachTimeItArrives)
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

TEST_F(BoardAdapterTest, UnwantedRefusalsAreClearedAtOnceButHintsAndNoticesShow)
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

TEST_F(BoardAdapterTest, AMessageGoesAfterItsTimeUnlessANewerOneCame)
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

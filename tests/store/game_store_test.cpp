#include "engine/hints.hpp"
#include "engine/move_rules.hpp"
#include "engine/random_source.hpp"
#include "engine/state_json.hpp"
#include "store/game_store.hpp"
#include "store/saved_game.hpp"
#include "tests/store/store_fakes.hpp"
#include "tests/support/positions.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace zelvaine {
namespace {

using testing::card;
using testing::cards;
using P = GameStoreProperty;

using testing::knownDeal;

class Recorder {
public:
    explicit Recorder(GameStore& store)
    {
        store.observe([this](P property) { seen.push_back(property); });
    }
    std::vector<P> take() { return std::exchange(seen, {}); }
    std::vector<P> seen;
};

class GameStoreTest : public ::testing::Test {
protected:
    GameStore playing(const GameState& game)
    {
        return GameStore(game, defaults, sound, [this] { return now; });
    }
    // A persisting store whose saved game is `game`.
    GameStore persisting(const GameState& game)
    {
        SavedGame saved{game, game, {}, {}, {}};
        const std::string json = encodeSavedGame(saved);
        defaults.set(savedGameKey, DefaultsData(json.begin(), json.end()));
        return GameStore(std::nullopt, defaults, sound, [this] { return now; });
    }
    std::optional<SavedGame> saved() const
    {
        auto blob = defaults.data(savedGameKey);
        if (!blob) return std::nullopt;
        return restoreSavedGame(std::string(blob->begin(), blob->end())).game;
    }

    InMemoryDefaultsStore defaults;
    testing::RecordingSoundCues sound;
    double now = 100;
};

TEST_F(GameStoreTest, CommittedMoveRecordsSavesAndSounds)
{
    GameStore store = persisting(knownDeal());
    Recorder recorder(store);
    const GameState before = store.state();
    store.setSelection(MoveSource::tableau(0, 9));
    recorder.take();

    EXPECT_TRUE(store.move(MoveSource::tableau(0, 9), MoveDestination::tableau(4)));
    EXPECT_EQ(recorder.take(), (std::vector{P::state, P::selection, P::messageKind, P::message}));
    EXPECT_EQ(store.history(), std::vector{before});
    EXPECT_EQ(store.state().moveCount, 1);
    EXPECT_FALSE(store.selection());
    EXPECT_EQ(sound.cues, std::vector<std::string>{"place"});
    ASSERT_TRUE(saved());
    EXPECT_EQ(saved()->currentState, store.state());
    EXPECT_EQ(saved()->history, store.history());
}

TEST_F(GameStoreTest, RefusalPublishesItsReasonInOrder)
{
    GameStore store = playing(knownDeal());
    Recorder recorder(store);
    store.setSelection(MoveSource::hand(0));
    recorder.take();
    EXPECT_FALSE(store.move(MoveSource::hand(1), MoveDestination::tableau(3)));
    EXPECT_EQ(recorder.take(), (std::vector{P::selection, P::messageKind, P::message}));
    EXPECT_EQ(store.message(), "king must land on an opposite-color next rank. ten of diamonds cannot accept it.");
    EXPECT_EQ(store.messageKind(), GameMessageKind::moveFeedback);
    EXPECT_FALSE(store.selection());
    EXPECT_EQ(sound.cues, std::vector<std::string>{"card-shove-1@0.32"});
    EXPECT_TRUE(store.history().empty());

    store.setSelection(MoveSource::hand(2));
    recorder.take();
    store.refuseKeepingSelection("That card cannot be dropped there.");
    EXPECT_EQ(recorder.take(), (std::vector{P::messageKind, P::message}));
    EXPECT_EQ(store.selection(), MoveSource::hand(2));
}

TEST_F(GameStoreTest, IgnoredMoveOnlyClearsTheSelection)
{
    GameStore store = playing(knownDeal());
    Recorder recorder(store);
    EXPECT_FALSE(store.move(MoveSource::tableau(0, 9), MoveDestination::tableau(0)));
    EXPECT_EQ(recorder.take(), std::vector{P::selection});
    EXPECT_TRUE(sound.cues.empty());
    EXPECT_FALSE(store.message());
}

TEST_F(GameStoreTest, HandRearrangementIsNotRecordedButClearsRedo)
{
    GameStore store = playing(knownDeal());
    ASSERT_TRUE(store.move(MoveSource::hand(0), MoveDestination::foundation(0)));
    store.undo();
    ASSERT_EQ(store.redoHistory().size(), 1U);
    const auto historyBefore = store.history();
    EXPECT_TRUE(store.move(MoveSource::hand(1), MoveDestination::hand(0)));
    EXPECT_EQ(store.history(), historyBefore);
    EXPECT_TRUE(store.redoHistory().empty());
    EXPECT_EQ(store.state().moveCount, 0);
    store.redo();
    EXPECT_EQ(store.state().moveCount, 0);
}

TEST_F(GameStoreTest, UndoRedoAndRestartRoundTrip)
{
    GameStore store = playing(knownDeal());
    const GameState start = store.state();
    ASSERT_TRUE(store.move(MoveSource::tableau(0, 9), MoveDestination::tableau(4)));
    ASSERT_TRUE(store.move(MoveSource::hand(0), MoveDestination::foundation(2)));
    const GameState afterTwo = store.state();

    store.undo();
    store.undo();
    EXPECT_EQ(store.state(), start);
    store.undo(); // nothing left
    EXPECT_EQ(store.state(), start);
    EXPECT_TRUE(store.challenge().usedUndo);
    store.redo();
    store.redo();
    EXPECT_EQ(store.state(), afterTwo);
    store.redo();
    EXPECT_EQ(store.state(), afterTwo);

    sound.cues.clear();
    store.restartGame();
    EXPECT_EQ(store.state(), start);
    EXPECT_TRUE(store.challenge().usedRestart);
    EXPECT_EQ(sound.cues, std::vector<std::string>{"card-fan-1@0.45"});
    store.undo();
    EXPECT_EQ(store.state(), afterTwo);
    EXPECT_EQ(store.state().moveCount, 2);
    EXPECT_TRUE(store.challenge().usedRestart);
    EXPECT_TRUE(store.challenge().usedUndo);
}

TEST_F(GameStoreTest, RestartOfAnUntouchedDealDoesNothing)
{
    GameStore store = playing(knownDeal());
    store.requestRestart();
    EXPECT_FALSE(store.confirmation());
    Recorder recorder(store);
    store.restartGame();
    EXPECT_EQ(recorder.take(), std::vector{P::confirmation});
    EXPECT_TRUE(store.history().empty());
    EXPECT_FALSE(store.challenge().usedRestart);
    EXPECT_TRUE(sound.cues.empty());
}

TEST_F(GameStoreTest, FoundationMoveFlagSurvivesUndo)
{
    GameStore store = playing(knownDeal());
    ASSERT_TRUE(store.move(MoveSource::hand(0), MoveDestination::foundation(0)));
    EXPECT_FALSE(store.challenge().movedCardFromFoundation);
    ASSERT_TRUE(store.move(MoveSource::foundation(0), MoveDestination::hand(0)));
    EXPECT_TRUE(store.challenge().movedCardFromFoundation);
    store.undo();
    EXPECT_TRUE(store.challenge().movedCardFromFoundation);
}

TEST_F(GameStoreTest, DoubleTapNeedsTheSameSourceWithinTheInterval)
{
    const auto a = MoveSource::hand(0);
    const auto b = MoveSource::hand(1);
    // Starting at zero so the differences are exactly the intervals named.
    auto tapsAfter = [&](double interval) {
        GameStore store = playing(knownDeal());
        now = 0;
        EXPECT_FALSE(store.registerTap(a));
        now = interval;
        return store.registerTap(a);
    };
    EXPECT_TRUE(tapsAfter(0.37));
    EXPECT_FALSE(tapsAfter(0.38));

    GameStore store = playing(knownDeal());
    now = 10;
    EXPECT_FALSE(store.registerTap(a));
    now = 10.1;
    EXPECT_TRUE(store.registerTap(a));
    EXPECT_FALSE(store.lastTap());

    now = 30;
    EXPECT_FALSE(store.registerTap(a));
    now = 30.1;
    EXPECT_FALSE(store.registerTap(b));
    now = 30.2;
    EXPECT_FALSE(store.registerTap(a));
}

TEST_F(GameStoreTest, TapsSelectMoveOrReselect)
{
    GameStore store = playing(knownDeal());
    const auto eight = MoveSource::tableau(0, 9);
    store.toggleSelection(eight);
    EXPECT_TRUE(store.isSelected(eight));
    store.toggleSelection(eight);
    EXPECT_FALSE(store.selection());
    store.toggleSelection(MoveSource::hand(42)); // nothing there
    EXPECT_FALSE(store.selection());

    EXPECT_FALSE(store.handleTap(MoveDestination::tableau(4), MoveSource::tableau(4, 0)));

    store.toggleSelection(MoveSource::hand(1));
    store.refuseKeepingSelection("x");
    EXPECT_FALSE(store.handleTap(MoveDestination::tableau(4), MoveSource::tableau(4, 0)));
    EXPECT_EQ(store.selection(), std::nullopt); // 9♠ sits on other cards: not movable alone
    EXPECT_FALSE(store.message());

    store.toggleSelection(eight);
    EXPECT_TRUE(store.handleTap(MoveDestination::tableau(4), MoveSource::tableau(4, 0)));
    EXPECT_EQ(store.state().tableau[4].back().rank, Rank::eight);
}

TEST_F(GameStoreTest, AGivenMoveShowsAsAHintAndCountsAsOne)
{
    GameStore store = persisting(knownDeal());
    Recorder recorder(store);
    store.showMoveHint(MoveSource::tableau(0, 9), MoveDestination::tableau(4));
    EXPECT_EQ(recorder.take(), (std::vector{P::challenge, P::messageKind, P::selection, P::message}));
    EXPECT_EQ(store.selection(), MoveSource::tableau(0, 9));
    EXPECT_EQ(store.message(), "Move eight of hearts to column 5.");
    EXPECT_EQ(store.messageKind(), GameMessageKind::hint);
    EXPECT_TRUE(saved()->challenge.usedHint);
}

TEST_F(GameStoreTest, HintSelectsAndExplainsInOrder)
{
    GameStore store = persisting(knownDeal());
    Recorder recorder(store);
    store.showHint();
    EXPECT_EQ(recorder.take(), (std::vector{P::challenge, P::messageKind, P::selection, P::message}));
    EXPECT_EQ(store.selection(), MoveSource::hand(0));
    EXPECT_EQ(store.message(), "Move ace of diamonds to foundation 1.");
    EXPECT_EQ(store.messageKind(), GameMessageKind::hint);
    EXPECT_TRUE(store.challenge().usedHint);
    EXPECT_TRUE(saved()->challenge.usedHint);

    // Without a hint the fallback shows and the selection stays as it was.
    GameState stuck = testing::emptyBoard();
    stuck.tableau[0] = cards("5S");
    stuck.hand = {card("5C"), card("5C"), card("5C"), card("5C")};
    GameStore other = playing(stuck);
    other.toggleSelection(MoveSource::hand(2));
    Recorder otherRecorder(other);
    other.showHint();
    EXPECT_EQ(otherRecorder.take(), (std::vector{P::challenge, P::messageKind, P::message}));
    EXPECT_EQ(other.selection(), MoveSource::hand(2));
    EXPECT_EQ(other.message(), "No immediate move found. Undo or start a new deal.");
}

TEST_F(GameStoreTest, MoveToFoundationAndAutoMove)
{
    GameStore store = playing(knownDeal());
    store.moveToFoundation(MoveSource::hand(1)); // a king: no foundation takes it
    EXPECT_EQ(store.message(), "No foundation can accept king of spades.");
    store.moveToFoundation(MoveSource::hand(0));
    EXPECT_EQ(store.state().foundations[0].size(), 1U);
    store.moveToFoundation(MoveSource::hand(0)); // empty slot: nothing at all
    EXPECT_EQ(store.state().moveCount, 1);

    EXPECT_TRUE(store.autoMove(MoveSource::tableau(0, 9)));
    EXPECT_EQ(store.state().tableau[4].back().rank, Rank::eight);
    EXPECT_FALSE(store.autoMove(MoveSource::hand(1)));
}

TEST_F(GameStoreTest, ConfirmationsAreOneAtATime)
{
    GameStore store = playing(knownDeal());
    store.requestNewGame();
    EXPECT_EQ(store.confirmation(), GameConfirmation::newGame);
    ASSERT_TRUE(store.move(MoveSource::hand(0), MoveDestination::foundation(0)));
    store.requestRestart();
    EXPECT_EQ(store.confirmation(), GameConfirmation::newGame);

    const auto document = store.makeDocument();
    ASSERT_TRUE(document);
    EXPECT_EQ(store.prepareSharedGame(*document), std::nullopt);
    EXPECT_FALSE(store.pendingSharedGame()); // ignored while a question is shown

    store.dismissConfirmation();
    EXPECT_EQ(store.prepareSharedGame(*document), std::nullopt);
    EXPECT_EQ(store.confirmation(), GameConfirmation::openSharedGame);
    store.dismissConfirmation();
    EXPECT_FALSE(store.pendingSharedGame());
    store.openPendingSharedGame(); // nothing pending: only clears
    EXPECT_FALSE(store.confirmation());
    EXPECT_FALSE(store.challenge().wasImported);

    store.offerAutoComplete();
    store.requestNewGame();
    EXPECT_EQ(store.confirmation(), GameConfirmation::autoComplete);
}

TEST_F(GameStoreTest, OpeningASharedGameStartsANewImportedDeal)
{
    GameStore store = persisting(knownDeal());
    ASSERT_TRUE(store.move(MoveSource::hand(0), MoveDestination::foundation(0)));
    const std::string identifier = store.gameIdentifier();
    const auto document = store.makeDocument();
    ASSERT_TRUE(document);

    ASSERT_EQ(store.prepareSharedGame(*document), std::nullopt);
    sound.cues.clear();
    Recorder recorder(store);
    store.openPendingSharedGame();
    EXPECT_EQ(recorder.take(),
              (std::vector{P::state, P::challenge, P::selection, P::messageKind, P::message, P::confirmation}));
    EXPECT_EQ(store.challenge(), GameChallengeRecord::imported());
    EXPECT_TRUE(store.history().empty());
    EXPECT_EQ(store.state().moveCount, 1);
    EXPECT_NE(store.gameIdentifier(), identifier);
    EXPECT_EQ(sound.cues, std::vector<std::string>{"card-fan-1@0.45"});
    EXPECT_EQ(saved()->challenge, GameChallengeRecord::imported());

    ZelvaineGameDocument future = *document;
    future.formatVersion = 3;
    const auto error = store.prepareSharedGame(future);
    ASSERT_TRUE(error);
    store.rejectSharedGame(error->description());
    EXPECT_EQ(store.message(), "This game uses unsupported Zelvaine file format version 3.");
    EXPECT_EQ(store.messageKind(), GameMessageKind::notice);
    store.rejectSharedGame(std::nullopt);
    EXPECT_EQ(store.message(), "Zelvaine could not open that game file.");
}

TEST_F(GameStoreTest, NewGameReplacesEverything)
{
    GameStore store = persisting(knownDeal());
    store.showHint();
    ASSERT_TRUE(store.move(MoveSource::hand(0), MoveDestination::foundation(0)));
    store.requestNewGame();
    sound.cues.clear();
    Recorder recorder(store);
    store.newGame();
    EXPECT_EQ(recorder.take(),
              (std::vector{P::state, P::challenge, P::selection, P::messageKind, P::message, P::confirmation}));
    EXPECT_EQ(store.state(), store.initialState());
    EXPECT_TRUE(isWellFormed(store.state()));
    EXPECT_TRUE(store.history().empty());
    EXPECT_FALSE(store.challenge().usedHint);
    EXPECT_EQ(sound.cues, std::vector<std::string>{"deal"});
    EXPECT_EQ(saved()->currentState, store.state());
}

// A dealer (the solver's, for winnable deals only) supplies new games while it is set. With no
// deal ready, New Game closes its question and leaves the game as it is; the dealer's word that
// it has one deals it, unless the player went on playing meanwhile.
TEST_F(GameStoreTest, NewGamesComeFromTheDealerAndWaitForItWithNoneReady)
{
    GameStore store = persisting(knownDeal());
    SeededRandom random(3);
    std::optional<GameState> ready = dealNewGame(random);
    const GameState first = *ready;
    store.setDealer([&] { return std::exchange(ready, std::nullopt); });
    store.newGame();
    EXPECT_EQ(store.state(), first);
    EXPECT_EQ(store.initialState(), first);

    const GameState table = store.state();
    store.requestNewGame();
    sound.cues.clear();
    Recorder recorder(store);
    store.newGame();
    EXPECT_TRUE(store.isAwaitingDeal());
    EXPECT_EQ(recorder.take(), std::vector{P::confirmation});
    EXPECT_EQ(store.state(), table);
    EXPECT_TRUE(sound.cues.empty());

    const GameState chosen = dealNewGame(random);
    ready = chosen;
    store.dealerHasDeal();
    EXPECT_FALSE(store.isAwaitingDeal());
    EXPECT_EQ(store.state(), chosen);
    EXPECT_EQ(saved()->currentState, chosen);
    EXPECT_EQ(sound.cues, std::vector<std::string>{"deal"});

    store.newGame();
    ASSERT_TRUE(store.isAwaitingDeal());
    store.undo(); // nothing to undo: still the same game, still waiting
    EXPECT_TRUE(store.isAwaitingDeal());
    const auto moves = legalMoves(store.state());
    ASSERT_FALSE(moves.empty());
    ASSERT_TRUE(store.move(moves.front().source, moves.front().destination));
    EXPECT_FALSE(store.isAwaitingDeal());
    const GameState played = store.state();
    ready = dealNewGame(random);
    store.dealerHasDeal();
    EXPECT_EQ(store.state(), played);
}

TEST_F(GameStoreTest, DeferredSavingWritesOnceAtTheEnd)
{
    testing::CountingDefaultsStore counting;
    {
        SavedGame saved{knownDeal(), knownDeal(), {}, {}, {}};
        const std::string json = encodeSavedGame(saved);
        counting.inner.set(savedGameKey, DefaultsData(json.begin(), json.end()));
    }
    GameStore store(std::nullopt, counting, sound);
    store.beginDeferringPersistence();
    store.beginDeferringPersistence();
    ASSERT_TRUE(store.move(MoveSource::hand(0), MoveDestination::foundation(0)));
    ASSERT_TRUE(store.move(MoveSource::hand(1), MoveDestination::hand(0)));
    EXPECT_EQ(counting.writes, 0);
    EXPECT_TRUE(store.hasDeferredPersistence());
    store.endDeferringPersistence();
    EXPECT_EQ(counting.writes, 0);
    store.flushDeferredPersistence(); // the application went inactive mid-run
    EXPECT_EQ(counting.writes, 1);
    EXPECT_FALSE(store.hasDeferredPersistence());
    store.endDeferringPersistence();
    EXPECT_EQ(counting.writes, 1);
    store.endDeferringPersistence(); // never below zero
    EXPECT_EQ(store.persistenceDeferralCount(), 0);
    store.undo();
    EXPECT_EQ(counting.writes, 2);
}

TEST_F(GameStoreTest, AStoreWithItsOwnGameNeverTouchesTheSavedGame)
{
    testing::CountingDefaultsStore counting;
    GameStore store(knownDeal(), counting, sound);
    store.showHint();
    store.move(MoveSource::hand(0), MoveDestination::foundation(0));
    store.undo();
    store.restartGame();
    store.newGame();
    store.persistNow();
    store.beginDeferringPersistence();
    store.move(MoveSource::hand(0), MoveDestination::foundation(0));
    store.endDeferringPersistence();
    store.flushDeferredPersistence();
    EXPECT_EQ(counting.reads, 0);
    EXPECT_EQ(counting.writes, 0);
}

TEST_F(GameStoreTest, GameIdentifierFollowsTheDeal)
{
    GameState deal = knownDeal();
    GameStore store = playing(deal);
    EXPECT_EQ(store.gameIdentifier(), deal.tableau[0][0].id.text());
    store.move(MoveSource::hand(0), MoveDestination::foundation(0));
    store.restartGame();
    EXPECT_EQ(store.gameIdentifier(), deal.tableau[0][0].id.text());

    GameState handOnly = testing::emptyBoard();
    handOnly.hand[2] = card("4D");
    EXPECT_EQ(playing(handOnly).gameIdentifier(), handOnly.hand[2]->id.text());
    EXPECT_EQ(playing(testing::emptyBoard()).gameIdentifier(), "empty-deal");
}

// Eight king-to-ace runs: the game finishes by foundation moves alone, through the store,
// across a restart of the program in the middle.
TEST_F(GameStoreTest, PlaysToAWinAndSurvivesARestartOfTheProgram)
{
    GameState runs = testing::emptyBoard();
    for (std::size_t run = 0; run < 8; ++run) {
        for (int rank = 13; rank >= 1; --rank) {
            runs.tableau[run].push_back(PlayingCard{Uuid::random(), allSuits[run / 2], static_cast<Rank>(rank),
                                                    static_cast<std::int64_t>(run % 2)});
        }
    }
    ASSERT_TRUE(isWellFormed(runs));

    {
        GameStore store = persisting(runs);
        store.enterAutoComplete();
        store.beginDeferringPersistence();
        for (int i = 0; i < 50; ++i) ASSERT_TRUE(store.performAutoMove(*nextFoundationAutoMove(store.state())));
        store.endDeferringPersistence();
    }
    GameStore store(std::nullopt, defaults, sound);
    EXPECT_EQ(store.state().moveCount, 50);
    EXPECT_EQ(store.history().size(), 50U);
    EXPECT_TRUE(store.challenge().usedAutoComplete);

    // A stale plan is refused.
    const auto step = *nextFoundationAutoMove(store.state());
    FoundationAutoMove stale = step;
    stale.foundationIndex = (step.foundationIndex + 1) % 8;
    EXPECT_FALSE(store.performAutoMove(stale));

    while (auto next = nextFoundationAutoMove(store.state())) ASSERT_TRUE(store.performAutoMove(*next));
    EXPECT_TRUE(isWon(store.state()));
    EXPECT_EQ(store.state().moveCount, 104);

    // A won game is not restored: the next start deals afresh.
    GameStore after(std::nullopt, defaults, sound);
    EXPECT_FALSE(isWon(after.state()));
    EXPECT_EQ(after.state().moveCount, 0);
}

} // namespace
} // namespace zelvaine

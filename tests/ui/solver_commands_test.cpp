// The solver's commands at the table, through the same object the window uses: each verdict's
// notice, the undo back to where the deal was lost, the winning move as a hint, and a change of
// position abandoning a command.

#include "ui/solver_commands.hpp"

#include "engine/hints.hpp"
#include "engine/move_rules.hpp"
#include "engine/random_source.hpp"
#include "solver/solver.hpp"
#include "store/game_preferences.hpp"
#include "store/game_store.hpp"
#include "store/in_memory_defaults_store.hpp"
#include "tests/support/positions.hpp"

#include <QTest>

#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>
#include <random>

namespace zelvaine {
namespace {

using solver::Verdict;

Verdict verdictOf(const GameState& position) { return solver::solve(position).verdict; }

// The first deal shuffled from seed 1 that the solver proves lost.
GameState lostDeal()
{
    SeededRandom random(1);
    while (true) {
        GameState deal = dealNewGame(random);
        if (verdictOf(deal) == Verdict::unwinnable) return deal;
    }
}

class SolverCommandsTest : public ::testing::Test {
protected:
    void open(const GameState& game)
    {
        commands.reset();
        store = std::make_unique<GameStore>(game, defaults, sound);
        commands = std::make_unique<SolverCommands>(*store, &preferences);
    }
    // Waits for the running command to end; the limit only keeps a broken build from hanging.
    bool finishes() const
    {
        return QTest::qWaitFor([this] { return commands->running() == SolverCommands::Command::None; }, 120000);
    }
    std::string notice() const { return store->message().value_or(""); }

    InMemoryDefaultsStore defaults;
    SilentSoundCues sound;
    GamePreferences preferences{defaults, sound};
    std::unique_ptr<GameStore> store;
    std::unique_ptr<SolverCommands> commands;
};

TEST_F(SolverCommandsTest, ALostDealIsToldSoAndHasNoWinnablePositionToGoBackTo)
{
    const GameState deal = lostDeal();
    open(deal);
    commands->checkWinnability();
    EXPECT_EQ(commands->running(), SolverCommands::Command::CheckWinnability);
    ASSERT_TRUE(finishes());
    EXPECT_EQ(notice(), "This deal can no longer be won.");
    EXPECT_EQ(store->messageKind(), GameMessageKind::notice);

    // A few moves on, the whole line is lost: nothing is undone.
    for (int i = 0; i < 3; ++i) {
        const auto moves = legalMoves(store->state());
        ASSERT_FALSE(moves.empty());
        ASSERT_TRUE(store->move(moves.front().source, moves.front().destination));
    }
    const GameState table = store->state();
    commands->undoToLastWinnablePosition();
    ASSERT_TRUE(finishes());
    EXPECT_EQ(notice(), "This deal could not be won from its start.");
    EXPECT_EQ(store->state(), table);
}

// Random play from a winnable deal until the solver finds the table lost; the command goes back
// to exactly the last position that can be won, and Redo walks forward from it.
TEST_F(SolverCommandsTest, UndoToTheLastWinnablePositionStopsWhereTheDealWasLost)
{
    SeededRandom random(1);
    GameState deal = dealNewGame(random);
    while (verdictOf(deal) != Verdict::winnable) deal = dealNewGame(random);
    open(deal);
    std::mt19937 choose(7);
    while (verdictOf(store->state()) == Verdict::winnable) {
        auto moves = legalMoves(store->state());
        ASSERT_FALSE(moves.empty());
        // Into the hand more often than not: that is how a deal gets lost.
        std::erase_if(moves, [&](const LegalMove& move) { return move.destination.isFoundation() && choose() % 4 != 0; });
        const LegalMove& move = moves[choose() % moves.size()];
        ASSERT_TRUE(store->move(move.source, move.destination));
    }
    ASSERT_EQ(verdictOf(store->state()), Verdict::unwinnable);
    const auto lostAt = store->state().moveCount;
    const auto lineLength = store->history().size();

    commands->checkWinnability();
    ASSERT_TRUE(finishes());
    EXPECT_EQ(notice(), "This deal can no longer be won.");

    commands->undoToLastWinnablePosition();
    EXPECT_EQ(commands->running(), SolverCommands::Command::UndoToWinnable);
    ASSERT_TRUE(finishes());
    EXPECT_EQ(verdictOf(store->state()), Verdict::winnable);
    EXPECT_EQ(notice(), "The deal was lost at move " + std::to_string(store->state().moveCount + 1) + ".");
    const std::size_t undone = lineLength - store->history().size();
    EXPECT_EQ(store->redoHistory().size(), undone);
    // The position after it is lost, and Redo walks forward to the table again.
    store->redo();
    EXPECT_NE(verdictOf(store->state()), Verdict::winnable);
    for (std::size_t i = 1; i < undone; ++i) store->redo();
    EXPECT_EQ(store->state().moveCount, lostAt);
}

TEST_F(SolverCommandsTest, AWinningMoveKeepsTheDealWinnableAndCountsAsAHint)
{
    SeededRandom random(2);
    GameState deal = dealNewGame(random);
    while (verdictOf(deal) != Verdict::winnable) deal = dealNewGame(random);
    open(deal);
    commands->showWinningMove();
    ASSERT_TRUE(finishes());
    EXPECT_EQ(store->messageKind(), GameMessageKind::hint);
    EXPECT_TRUE(store->challenge().usedHint);
    ASSERT_TRUE(store->selection());
    // The shown source with the destination its sentence names keeps the deal winnable.
    const MoveSource source = *store->selection();
    bool kept = false;
    for (const auto& [from, to] : legalMoves(store->state())) {
        if (!(from == source) || moveHintText(store->state(), from, to) != notice()) continue;
        const MoveOutcome outcome = applyMove(store->state(), from, to);
        const auto* moved = std::get_if<MoveMoved>(&outcome);
        if (moved && verdictOf(moved->state) == Verdict::winnable) kept = true;
    }
    EXPECT_TRUE(kept) << notice();
}

TEST_F(SolverCommandsTest, AMoveOrUndoAbandonsTheCommandAndItsAnswer)
{
    open(testing::knownDeal());
    commands->checkWinnability();
    ASSERT_TRUE(store->move(MoveSource::tableau(0, 9), MoveDestination::tableau(4)));
    EXPECT_EQ(commands->running(), SolverCommands::Command::None);
    commands->showWinningMove();
    store->undo();
    EXPECT_EQ(commands->running(), SolverCommands::Command::None);
    // No late answer turns up in place of the player's own messages.
    QTest::qWait(200);
    EXPECT_FALSE(store->message());
    EXPECT_FALSE(store->challenge().usedHint);
}

// Once the game quits, nothing is solved any more, whatever happens to the table meanwhile (the
// automatic finish is played out then), and no answer turns up.
TEST_F(SolverCommandsTest, OnceTheGameQuitsNothingIsSolved)
{
    open(testing::knownDeal());
    preferences.setShowsWinnability(true);
    preferences.setWinnableDealsOnly(true);
    commands->checkWinnability();
    commands->stopForQuit();
    EXPECT_EQ(commands->running(), SolverCommands::Command::None);
    ASSERT_TRUE(store->move(MoveSource::tableau(0, 9), MoveDestination::tableau(4)));
    commands->showWinningMove();
    EXPECT_EQ(commands->running(), SolverCommands::Command::None);
    // The plain shuffle deals without waiting for a proof.
    const GameState table = store->state();
    store->newGame();
    EXPECT_NE(store->state(), table);
    QTest::qWait(200);
    EXPECT_FALSE(store->message());
    EXPECT_EQ(commands->liveVerdict(), SolverCommands::Verdict::Checking);
}

// Moves and undos faster than the solver answers: the indicator ends on the table's own verdict,
// never on an answer about a position already left.
TEST_F(SolverCommandsTest, TheLiveVerdictEndsOnThePositionOnTheTable)
{
    SeededRandom random(4);
    open(dealNewGame(random));
    EXPECT_EQ(commands->liveVerdict(), SolverCommands::Verdict::Off);
    preferences.setShowsWinnability(true);
    EXPECT_EQ(commands->liveVerdict(), SolverCommands::Verdict::Checking);
    std::mt19937 choose(11);
    for (int round = 0; round < 6; ++round) {
        for (int i = 0; i < 8; ++i) {
            auto moves = legalMoves(store->state());
            ASSERT_FALSE(moves.empty());
            const LegalMove& move = moves[choose() % moves.size()];
            ASSERT_TRUE(store->move(move.source, move.destination));
            EXPECT_EQ(commands->liveVerdict(), SolverCommands::Verdict::Checking);
        }
        for (int i = 0; i < 3; ++i) store->undo();
        ASSERT_TRUE(
            QTest::qWaitFor([this] { return commands->liveVerdict() != SolverCommands::Verdict::Checking; }, 120000));
        const auto expected = [&] {
            switch (verdictOf(store->state())) {
            case Verdict::winnable: return SolverCommands::Verdict::Winnable;
            case Verdict::unwinnable: return SolverCommands::Verdict::Lost;
            case Verdict::unknown: break;
            }
            return SolverCommands::Verdict::Undecided;
        }();
        EXPECT_EQ(commands->liveVerdict(), expected) << "round " << round;
    }
    preferences.setShowsWinnability(false);
    EXPECT_EQ(commands->liveVerdict(), SolverCommands::Verdict::Off);
}

TEST_F(SolverCommandsTest, WithWinnableDealsOnlyEveryNewGameIsProvenWinnable)
{
    open(testing::knownDeal());
    preferences.setWinnableDealsOnly(true);
    for (int i = 0; i < 20; ++i) {
        const GameState before = store->state();
        store->newGame();
        // Dealt at once when a proven deal is ready, else as soon as one is.
        ASSERT_TRUE(QTest::qWaitFor([&] { return !store->isAwaitingDeal(); }, 120000)) << i;
        ASSERT_NE(store->state(), before) << i;
        EXPECT_EQ(verdictOf(store->state()), Verdict::winnable) << i;
    }
    // Off again, the plain shuffle deals at once, without waiting for a proof.
    preferences.setWinnableDealsOnly(false);
    const GameState before = store->state();
    store->newGame();
    EXPECT_FALSE(store->isAwaitingDeal());
    EXPECT_NE(store->state(), before);
}

// A search that proves every deal winnable, but only once the test lets it.
class GatedSolve {
public:
    solver::WinnabilityService::SolveFunction function()
    {
        return [this](const GameState&, const solver::SolverOptions&, std::stop_token stop) {
            std::unique_lock lock(mutex_);
            opened_.wait(lock, stop, [this] { return open_; });
            return solver::SolveResult{stop.stop_requested() ? Verdict::unknown : Verdict::winnable, {}, 0};
        };
    }
    void open()
    {
        {
            const std::scoped_lock lock(mutex_);
            open_ = true;
        }
        opened_.notify_all();
    }

private:
    std::mutex mutex_;
    std::condition_variable_any opened_;
    bool open_ = false;
};

class WinnableDealWaitTest : public SolverCommandsTest {
protected:
    void SetUp() override
    {
        store = std::make_unique<GameStore>(testing::knownDeal(), defaults, sound);
        commands = std::make_unique<SolverCommands>(*store, &preferences, gate.function());
        token = store->observe([this](GameStoreProperty property) {
            if (property == GameStoreProperty::state) ++positions;
        });
        preferences.setWinnableDealsOnly(true);
    }
    void TearDown() override
    {
        store->unobserve(token);
        commands.reset();
    }
    // Lets the dealer prove its deals, and gives their news time to arrive.
    void proveDeals()
    {
        gate.open();
        QTest::qWait(300);
    }

    GatedSolve gate;
    Observable<GameStoreProperty>::Token token = 0;
    int positions = 0;
};

// No proven deal yet: New Game leaves the table as it is and says what it waits for; asked again,
// it still deals one game, as soon as a deal is proven.
TEST_F(WinnableDealWaitTest, ANewGameWaitsForAProvenDealWithoutStackingUp)
{
    const GameState table = store->state();
    store->requestNewGame();
    store->newGame();
    EXPECT_TRUE(store->isAwaitingDeal());
    EXPECT_EQ(store->state(), table);
    EXPECT_FALSE(store->confirmation());
    EXPECT_EQ(notice(), "Finding a deal that can be won…");
    store->newGame();
    EXPECT_EQ(positions, 0);

    proveDeals();
    EXPECT_FALSE(store->isAwaitingDeal());
    EXPECT_NE(store->state(), table);
    EXPECT_EQ(store->state().moveCount, 0);
    EXPECT_EQ(positions, 1);
    EXPECT_FALSE(store->message());
}

TEST_F(WinnableDealWaitTest, TurningThePreferenceOffWhileWaitingDealsAtOnce)
{
    const GameState table = store->state();
    store->newGame();
    ASSERT_TRUE(store->isAwaitingDeal());
    preferences.setWinnableDealsOnly(false);
    EXPECT_FALSE(store->isAwaitingDeal());
    EXPECT_NE(store->state(), table);
    EXPECT_EQ(positions, 1);
}

} // namespace
} // namespace zelvaine

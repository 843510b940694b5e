#include "solver/best_first.hpp"
#include "solver/line_shortening.hpp"
#include "solver/solver.hpp"
#include "solver/solver_task.hpp"

#include "engine/move_rules.hpp"
#include "tests/solver/reduced_positions.hpp"
#include "tests/solver/reference_search.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <random>
#include <set>
#include <thread>
#include <utility>

namespace zelvaine {
namespace {

using solver::SolveResult;
using solver::Verdict;

// Deal `index` (from 0) of the deals shuffled from `seed`.
GameState seededDeal(std::uint64_t seed, int index)
{
    SeededRandom random(seed);
    GameState state = dealNewGame(random);
    for (int i = 0; i < index; ++i) state = dealNewGame(random);
    return state;
}

// Replays the line through the engine from `start`: every move must be made and the last must win.
::testing::AssertionResult winsWhenReplayed(const GameState& start, const SolveResult& result)
{
    if (result.verdict != Verdict::winnable) {
        return ::testing::AssertionFailure() << "verdict " << solver::toString(result.verdict);
    }
    GameState state = start;
    for (std::size_t i = 0; i < result.moves.size(); ++i) {
        const auto& [source, destination] = result.moves[i];
        MoveOutcome outcome = applyMove(state, source, destination);
        auto* moved = std::get_if<MoveMoved>(&outcome);
        if (moved == nullptr) {
            return ::testing::AssertionFailure()
                   << "move " << i << " (" << toString(source) << " to " << toString(destination) << ") was not made";
        }
        state = std::move(moved->state);
    }
    if (!isWon(state)) return ::testing::AssertionFailure() << "the line ends in a position that is not won";
    return ::testing::AssertionSuccess();
}

// Does the position have both copies of some card out of the foundations?
bool bothCopiesInPlay(const GameState& state)
{
    std::set<std::pair<Suit, Rank>> seen;
    bool twice = false;
    auto note = [&](const PlayingCard& card) { twice = !seen.insert({card.suit, card.rank}).second || twice; };
    for (const auto& column : state.tableau) {
        for (const auto& card : column) note(card);
    }
    for (const auto& slot : state.hand) {
        if (slot) note(*slot);
    }
    return twice;
}

TEST(SolverLines, NearlyFinishedPositionIsWonByItsLine)
{
    GameState state = testing::finishedBoard();
    // Hearts and spades from the top down, buried so that strings and the hand are needed.
    const auto hearts = testing::liftFromFoundation(state, 2, 4); // KH QH JH 10H
    const auto spades = testing::liftFromFoundation(state, 7, 3); // KS QS JS
    state.tableau[0] = {hearts[3], spades[0], hearts[1]};         // 10H KS QH
    state.tableau[1] = {spades[2], hearts[0], spades[1]};         // JS KH QS
    state.hand[3] = hearts[2];                                    // JH
    const SolveResult result = solver::solve(state);
    EXPECT_TRUE(winsWhenReplayed(state, result));
}

TEST(SolverLines, WonPositionNeedsNoMoves)
{
    const SolveResult result = solver::solve(testing::finishedBoard());
    EXPECT_EQ(result.verdict, Verdict::winnable);
    EXPECT_TRUE(result.moves.empty());
}

// Deal 734 of seed 1 is won only by moving part of a string onto an equal card: the quick space
// holds no win, so the search that allows splits must find it.
TEST(SolverLines, WinThatNeedsASplitIsFound)
{
    const GameState state = seededDeal(1, 734);
    const auto start = solver::SolverPosition::from(state);
    ASSERT_TRUE(start);
    solver::BestFirstSearch quick(*start, {solver::MoveSet::quick, solver::Lookahead::everyFoundation},
                                  {100'000, std::size_t{16} << 20, 4000});
    quick.runUntil(100'000, {});
    ASSERT_TRUE(quick.outcome().exhausted);
    ASSERT_FALSE(quick.outcome().won);

    EXPECT_TRUE(winsWhenReplayed(state, solver::solve(state, {.positionBudget = 200'000, .maxDepth = 4000})));
}

// A won line with a detour every few moves: a move, then the move that undoes it.
TEST(SolverLines, DetoursAreCutFromALine)
{
    const GameState deal = seededDeal(1, 0);
    const auto start = solver::SolverPosition::from(deal);
    solver::BestFirstSearch search(*start, {solver::MoveSet::quick, solver::Lookahead::everyFoundation},
                                   {.positions = 1'000'000, .memoryBytes = 64u << 20, .maxDepth = 4000});
    search.runUntil(1'000'000, {});
    ASSERT_TRUE(search.outcome().won);
    const std::vector<solver::Step>& line = search.outcome().line;

    std::vector<solver::Step> detoured;
    std::vector<solver::Step> moves;
    std::vector<solver::Step> replies;
    auto position = *start;
    int detours = 0;
    for (std::size_t i = 0; i < line.size(); ++i) {
        position.generateMoves(moves, solver::MoveSet::unforced);
        if (i % 7 != 0) moves.clear();
        for (const solver::Step& there : moves) {
            // A card back from the hand may land in another slot, and the line names slots.
            if (there.from == solver::Step::Place::hand || there.to == solver::Step::Place::hand) continue;
            // The line goes on from the very same columns, not just an equivalent position.
            const auto before = position;
            position.apply(there);
            position.generateMoves(replies, solver::MoveSet::unforced);
            const auto back = std::ranges::find_if(replies, [&](const solver::Step& reply) {
                auto after = position;
                after.apply(reply);
                return after.key() == before.key() && after.columns() == before.columns();
            });
            if (back != replies.end()) {
                detoured.insert(detoured.end(), {there, *back});
                position.apply(*back);
                ++detours;
                break;
            }
            position.undo(there);
        }
        detoured.push_back(line[i]);
        position.apply(line[i]);
    }
    ASSERT_GT(detours, 10);

    const std::vector<solver::Step> shorter = solver::shortenLine(*start, detoured);
    EXPECT_LE(shorter.size(), line.size());
    SolveResult result{Verdict::winnable, {}, 0};
    for (const solver::Step& step : shorter) result.moves.push_back({step.source(), step.destination()});
    EXPECT_TRUE(winsWhenReplayed(deal, result));
}

// Some deals are dead from the start, like the seventeenth of seed 1: the solver's proof must
// match the plain search's.
TEST(SolverVerdicts, UnwinnableDealAgreesWithPlainExhaustiveSearch)
{
    const GameState state = seededDeal(1, 16);
    EXPECT_EQ(solver::solve(state, {.positionBudget = 5'000, .maxDepth = 4000}).verdict, Verdict::unwinnable);
    EXPECT_EQ(testing::referenceWinnable(state, {.maxPositions = 1'000'000, .allowFromFoundation = true}), false);
}

// The verdict of the solver, with its symmetries, against the plain search without any.
TEST(SolverVerdicts, AgreeWithPlainExhaustiveSearchOnReducedPositions)
{
    int compared = 0;
    int withBothCopies = 0;
    for (std::uint32_t seed = 0; seed < 300; ++seed) {
        const GameState state = testing::reducedPosition(seed, 12 + seed % 9);
        const auto expected = testing::referenceWinnable(state, {.maxPositions = 30'000, .allowFromFoundation = true});
        if (!expected) continue;
        ++compared;
        const SolveResult result = solver::solve(state);
        if (*expected) {
            EXPECT_TRUE(winsWhenReplayed(state, result)) << "seed " << seed;
        } else {
            EXPECT_EQ(result.verdict, Verdict::unwinnable) << "seed " << seed;
        }
        if (bothCopiesInPlay(state)) ++withBothCopies;
    }
    EXPECT_GE(compared, 250);
    EXPECT_GT(withBothCopies, 50);
}

// Hearts and diamonds of deck 0 from the six up are out, every other foundation is full. No red
// card can rest on another, so the hand and the foundations decide everything.
struct RedPosition {
    GameState state = testing::finishedBoard();
    std::vector<PlayingCard> hearts = testing::liftFromFoundation(state, 2, 8);   // KH … 6H
    std::vector<PlayingCard> diamonds = testing::liftFromFoundation(state, 1, 8); // KD … 6D

    PlayingCard heart(int rank) const { return hearts[static_cast<std::size_t>(13 - rank)]; }
    PlayingCard diamond(int rank) const { return diamonds[static_cast<std::size_t>(13 - rank)]; }
};

TEST(SolverVerdicts, DeadlockIsUnwinnable)
{
    // Each six lies under the seven the other foundation needs; the hand is full and no column
    // is free.
    RedPosition red;
    GameState& state = red.state;
    state.tableau[0] = {red.heart(6), red.diamond(7)};
    state.tableau[1] = {red.diamond(6), red.heart(7)};
    for (int rank = 8, c = 2; rank <= 11; ++rank) {
        state.tableau[static_cast<std::size_t>(c++)] = {red.heart(rank)};
        state.tableau[static_cast<std::size_t>(c++)] = {red.diamond(rank)};
    }
    state.hand = {red.heart(12), red.diamond(12), red.heart(13), red.diamond(13)};
    ASSERT_EQ(testing::referenceWinnable(state), false);
    EXPECT_EQ(solver::solve(state).verdict, Verdict::unwinnable);
}

// Shuffles of the red cards of the deadlock above, half of them with the jack of spades free to
// come down: many dead, some alive, and small enough for the plain search every time.
TEST(SolverVerdicts, AgreeWithPlainExhaustiveSearchOnShuffledRedPositions)
{
    int winnable = 0;
    int unwinnable = 0;
    for (std::uint32_t seed = 0; seed < 200; ++seed) {
        std::mt19937 random(seed);
        RedPosition red;
        GameState& state = red.state;
        std::vector<PlayingCard> loose = red.hearts;
        loose.insert(loose.end(), red.diamonds.begin(), red.diamonds.end());
        if (seed % 2 == 1) {
            const auto spades = testing::liftFromFoundation(state, 3, 2);
            loose.insert(loose.end(), spades.begin(), spades.end());
        }
        // The sixes start two columns under another card, so that nothing can go home at first.
        std::shuffle(loose.begin(), loose.end(), random);
        std::ranges::stable_partition(loose, [](const PlayingCard& c) { return c.rank == Rank::six; });
        std::shuffle(loose.begin() + 2, loose.end(), random);
        const std::size_t sixes[] = {random() % 5, 5 + random() % 5};
        for (std::size_t s = 0; s < handSlotCount; ++s) state.hand[s] = loose[2 + s];
        for (std::size_t i = 0; i < 2; ++i) state.tableau[sixes[i]] = {loose[i], loose[2 + handSlotCount + i]};
        for (std::size_t i = 4 + handSlotCount, c = 0; i < loose.size(); ++i) {
            while (c < tableauColumnCount && !state.tableau[c].empty()) ++c;
            state.tableau[c < tableauColumnCount ? c : random() % tableauColumnCount].push_back(loose[i]);
        }
        const auto expected = testing::referenceWinnable(state, {.maxPositions = 50'000, .allowFromFoundation = true});
        if (!expected) continue; // too many positions for the plain search
        const SolveResult result = solver::solve(state);
        if (*expected) {
            ++winnable;
            EXPECT_TRUE(winsWhenReplayed(state, result)) << "seed " << seed;
        } else {
            ++unwinnable;
            EXPECT_EQ(result.verdict, Verdict::unwinnable) << "seed " << seed;
        }
    }
    EXPECT_GT(winnable, 10);
    EXPECT_GT(unwinnable, 10);
}

TEST(SolverVerdicts, OnlyAMoveBackFromAFoundationWins)
{
    // The same deadlock, but the jack of spades tops its foundation and can come down onto a red
    // queen: the only way to make room.
    RedPosition red;
    GameState& state = red.state;
    const auto spades = testing::liftFromFoundation(state, 3, 2); // KS QS, buried
    state.tableau[0] = {red.heart(6), red.diamond(7)};
    state.tableau[1] = {red.diamond(6), red.heart(7)};
    state.tableau[2] = {spades[1], red.diamond(12)};
    state.tableau[3] = {spades[0], red.heart(12)};
    for (int rank = 8, c = 4; rank <= 10; ++rank) {
        state.tableau[static_cast<std::size_t>(c++)] = {red.heart(rank)};
        state.tableau[static_cast<std::size_t>(c++)] = {red.diamond(rank)};
    }
    state.hand = {red.heart(13), red.diamond(13), red.heart(11), red.diamond(11)};
    ASSERT_EQ(testing::referenceWinnable(state, {.maxPositions = 2'000'000, .allowFromFoundation = false}), false);
    ASSERT_EQ(testing::referenceWinnable(state, {.maxPositions = 2'000'000, .allowFromFoundation = true}), true);
    const SolveResult result = solver::solve(state);
    EXPECT_TRUE(winsWhenReplayed(state, result));
    EXPECT_TRUE(result.moves.front().source.isFoundation());
}

TEST(SolverVerdicts, EitherCopyOfACardWillDo)
{
    // Both sevens of hearts are out: the deck-0 one lies under a king, its deck-1 twin is free and
    // serves either hearts foundation. The solver sees the two as one card; the line it finds must
    // still be legal card by card.
    GameState state = testing::finishedBoard();
    const auto hearts0 = testing::liftFromFoundation(state, 2, 7);               // KH … 7H, deck 0
    const auto hearts1 = testing::liftFromFoundation(state, 6, 7);               // KH … 7H, deck 1
    state.tableau[0] = {hearts0[6], hearts0[0]};                                 // 7H(0) under KH(0)
    for (std::size_t i = 0; i < 6; ++i) state.tableau[1 + i] = {hearts1[5 - i]}; // 8H … KH of deck 1
    state.tableau[7] = {hearts1[6]};                                             // 7H(1), free
    state.tableau[8] = {hearts0[1], hearts0[2]};
    state.tableau[9] = {hearts0[3], hearts0[4], hearts0[5]};
    EXPECT_TRUE(winsWhenReplayed(state, solver::solve(state)));
    EXPECT_EQ(testing::referenceWinnable(state), true);
}

TEST(SolverBudget, ExhaustedBudgetGivesUnknown)
{
    SeededRandom random(7);
    const SolveResult result = solver::solve(dealNewGame(random), {.positionBudget = 500, .maxDepth = 4000});
    EXPECT_EQ(result.verdict, Verdict::unknown);
    EXPECT_EQ(result.positions, 500u);
    EXPECT_TRUE(result.moves.empty());
}

TEST(SolverBudget, DepthCutOffNeverClaimsUnwinnable)
{
    // Winnable, but not in one move: a search cut off at depth 1 has proved nothing.
    GameState state = testing::finishedBoard();
    const auto hearts = testing::liftFromFoundation(state, 2, 2); // KH QH
    const auto clubs = testing::liftFromFoundation(state, 0, 2);  // KC QC
    state.tableau[0] = {hearts[1], clubs[0]};                     // QH KC
    state.tableau[1] = {clubs[1], hearts[0]};                     // QC KH
    for (std::size_t c = 2; c < 10; ++c) state.tableau[c] = {testing::liftFromFoundation(state, 3, 1)};
    EXPECT_EQ(solver::solve(state, {.positionBudget = 1'000'000, .maxDepth = 1}).verdict, Verdict::unknown);
}

TEST(SolverBudget, MemoryBudgetEndsTheSearchLikeThePositionBudget)
{
    // The eighteenth deal of seed 1 cannot be won, but only a search of some 500,000 positions
    // shows it: 2 MB holds far fewer, 64 MB enough.
    const GameState state = seededDeal(1, 17);
    const solver::SolverOptions small{.positionBudget = 10'000'000, .memoryBudget = 2u << 20, .maxDepth = 4000};
    const SolveResult cramped = solver::solve(state, small);
    EXPECT_EQ(cramped.verdict, Verdict::unknown);
    EXPECT_LT(cramped.positions, (2u << 20) / 8);
    EXPECT_EQ(solver::solve(state, small).positions, cramped.positions) << "the same budget, the same search";

    const SolveResult roomy = solver::solve(state, {.positionBudget = 10'000'000});
    EXPECT_EQ(roomy.verdict, Verdict::unwinnable);

    EXPECT_EQ(solver::solve(state, {.positionBudget = 1'000, .memoryBudget = 0, .maxDepth = 4000}).verdict,
              Verdict::unknown);
}

TEST(SolverBudget, TimeLimitEndsTheSearchWithUnknown)
{
    // Deal 638 of seed 1 takes some 24,000,000 positions, tens of seconds, to settle; the cap
    // stops it long before, however busy the machine.
    const GameState state = seededDeal(1, 638);
    const SolveResult result = solver::solve(state, {.positionBudget = 30'000'000,
                                                     .memoryBudget = std::size_t{512} << 20,
                                                     .timeLimit = std::chrono::milliseconds(20)});
    EXPECT_EQ(result.verdict, Verdict::unknown);
    EXPECT_LT(result.positions, 10'000'000u);
}

TEST(SolverTask, StopRequestedBeforeTheStartExaminesNothingMore)
{
    std::stop_source stop;
    stop.request_stop();
    SeededRandom random(1);
    const SolveResult result = solver::solve(dealNewGame(random), {}, stop.get_token());
    EXPECT_EQ(result.verdict, Verdict::unknown);
    EXPECT_LE(result.positions, 2u) << "only the starting position of each search";
}

TEST(SolverTask, CancelFromAnotherThreadGivesUnknown)
{
    // Deal 638 of seed 1 looks lost, but a search of 12,000,000 positions does not settle it, far
    // more than any machine gets through before the cancel; the pause only lets the search get
    // going.
    const GameState state = seededDeal(1, 638);
    std::atomic<bool> called = false;
    solver::SolverTask task(state, {.positionBudget = 1'000'000'000, .memoryBudget = std::size_t{1} << 30},
                            [&](const SolveResult&) { called = true; });
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    task.cancel();
    EXPECT_EQ(task.result().verdict, Verdict::unknown);
    EXPECT_LT(task.result().positions, 1'000'000u) << "the cancel, not a budget, ended the search";
    EXPECT_TRUE(task.isFinished());
    EXPECT_TRUE(called);
}

TEST(SolverTask, DeliversTheSameResultAsADirectSolve)
{
    SeededRandom random(5);
    const GameState state = dealNewGame(random);
    const solver::SolverOptions options{.positionBudget = 20'000, .maxDepth = 4000};
    solver::SolverTask task(state, options);
    const SolveResult direct = solver::solve(state, options);
    EXPECT_EQ(task.result().verdict, direct.verdict);
    EXPECT_EQ(task.result().positions, direct.positions);
    EXPECT_EQ(task.result().moves, direct.moves);
}

TEST(SolverInput, RefusesFoundationsNotBuiltInSequence)
{
    GameState state = testing::finishedBoard();
    std::swap(state.foundations[0][3], state.foundations[0][4]);
    EXPECT_TRUE(solver::unsolvableReason(state).has_value());
    EXPECT_EQ(solver::solve(state).verdict, Verdict::unknown);
    EXPECT_FALSE(solver::unsolvableReason(testing::knownDeal()).has_value());
}

} // namespace
} // namespace zelvaine

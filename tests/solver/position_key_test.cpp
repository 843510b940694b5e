// The key is what makes symmetric positions one: these check both halves of that promise.

#include "solver/solver_position.hpp"

#include "tests/solver/reduced_positions.hpp"

#include <gtest/gtest.h>

#include <random>

namespace zelvaine {
namespace {

std::uint64_t keyOf(const GameState& state)
{
    const auto position = solver::SolverPosition::from(state);
    EXPECT_TRUE(position.has_value());
    return position ? position->key() : 0;
}

GameState sample()
{
    GameState state = testing::finishedBoard();
    auto hearts0 = testing::liftFromFoundation(state, 2, 3); // KH QH JH, deck 0
    auto hearts1 = testing::liftFromFoundation(state, 6, 2); // KH QH, deck 1
    auto spades = testing::liftFromFoundation(state, 3, 2);  // KS QS
    state.tableau[0] = {spades[0], hearts0[1]};
    state.tableau[4] = {hearts0[0], spades[1], hearts1[1]};
    state.hand[0] = hearts0[2];
    state.hand[2] = hearts1[0];
    return state;
}

TEST(PositionKey, SymmetriesOfTheRulesGiveOneKey)
{
    const GameState base = sample();
    const std::uint64_t key = keyOf(base);

    GameState slots = base;
    std::swap(slots.hand[0], slots.hand[3]);
    std::swap(slots.hand[2], slots.hand[1]);
    EXPECT_EQ(keyOf(slots), key) << "hand slot order";

    GameState foundations = base;
    std::swap(foundations.foundations[2], foundations.foundations[6]); // hearts, heights 10 and 11
    std::swap(foundations.foundations[0], foundations.foundations[5]); // clubs and diamonds, both full
    EXPECT_EQ(keyOf(foundations), key) << "foundation order";

    GameState copies = base;
    std::swap(copies.tableau[4][2], copies.tableau[0][1]); // the two queens of hearts
    EXPECT_EQ(keyOf(copies), key) << "copies of a card";

    GameState columns = base;
    std::swap(columns.tableau[0], columns.tableau[9]);
    std::swap(columns.tableau[4], columns.tableau[1]);
    EXPECT_EQ(keyOf(columns), key) << "column order";

    GameState counted = base;
    counted.moveCount = 77;
    EXPECT_EQ(keyOf(counted), key) << "move count";
}

TEST(PositionKey, DifferentPositionsGiveDifferentKeys)
{
    const GameState base = sample();
    const std::uint64_t key = keyOf(base);

    GameState order = base;
    std::swap(order.tableau[4][0], order.tableau[4][1]);
    EXPECT_NE(keyOf(order), key) << "order inside a column";

    GameState toHand = base;
    toHand.hand[1] = toHand.tableau[0].back();
    toHand.tableau[0].pop_back();
    EXPECT_NE(keyOf(toHand), key) << "a card from a column to the hand";

    GameState split = base;
    split.tableau[5] = {split.tableau[4].back()};
    split.tableau[4].pop_back();
    EXPECT_NE(keyOf(split), key) << "a card to a column of its own";

    GameState heights = base;
    heights.tableau[7] = {heights.foundations[1].back()};
    heights.foundations[1].pop_back();
    EXPECT_NE(keyOf(heights), key) << "a card back from a foundation";

    // Two identical columns must not cancel each other out.
    GameState twins = testing::finishedBoard();
    const auto kings = testing::liftFromFoundation(twins, 2, 1);
    const auto others = testing::liftFromFoundation(twins, 6, 1);
    GameState one = twins;
    one.tableau[0] = {kings[0]};
    one.hand[0] = others[0];
    GameState two = twins;
    two.tableau[0] = {kings[0]};
    two.tableau[1] = {others[0]};
    EXPECT_NE(keyOf(one), keyOf(two));
}

// Walks a few hundred moves through reduced positions, every kind of move included: the key
// predicted for each move is the one the move makes, and undoing it restores the old one.
TEST(PositionKey, KeysFollowEveryMove)
{
    std::mt19937 random(5);
    for (std::uint64_t seed = 11; seed < 17; ++seed) {
        auto position = solver::SolverPosition::from(testing::reducedPosition(seed, 16 + seed));
        ASSERT_TRUE(position);
        std::vector<solver::Step> moves;
        for (int walk = 0; walk < 60; ++walk) {
            position->generateMoves(moves);
            if (moves.empty()) break;
            const std::uint64_t key = position->key();
            for (const auto& step : moves) {
                const std::uint64_t predicted = position->keyAfter(step);
                position->apply(step);
                EXPECT_EQ(position->key(), predicted);
                position->undo(step);
                EXPECT_EQ(position->key(), key);
            }
            position->apply(moves[std::uniform_int_distribution<std::size_t>(0, moves.size() - 1)(random)]);
        }
    }
}

} // namespace
} // namespace zelvaine

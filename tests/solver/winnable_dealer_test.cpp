#include "solver/winnable_dealer.hpp"

#include "engine/random_source.hpp"

#include <gtest/gtest.h>

#include <memory>

namespace zelvaine {
namespace {

// Twenty deals in a row, each proven winnable again by a solve of the test's own; the lost ones
// among the shuffles never come out.
TEST(WinnableDealerTest, EveryDealTakenIsWinnable)
{
    auto random = std::make_shared<SeededRandom>(1);
    int shuffled = 0;
    {
        solver::WinnableDealer dealer([random, &shuffled] {
            ++shuffled;
            return dealNewGame(*random);
        });
        for (int i = 0; i < 20; ++i) {
            const GameState deal = dealer.take();
            EXPECT_EQ(solver::solve(deal).verdict, solver::Verdict::winnable) << i;
            EXPECT_EQ(deal.moveCount, 0);
        }
    }
    // Seed 1 holds lost deals among its first twenty, so more were shuffled than taken.
    EXPECT_GT(shuffled, 20);
}

} // namespace
} // namespace zelvaine

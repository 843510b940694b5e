#include "solver/best_first.hpp"

#include "engine/game_state.hpp"
#include "engine/random_source.hpp"

#include <gtest/gtest.h>

namespace zelvaine {
namespace {

using solver::BestFirstSearch;

// The quick searches take turns in slices; a search stopped and resumed many times must walk
// exactly as one run straight through, or the solver's answers would depend on the slice size.
TEST(BestFirstSearch, ResumingInSlicesChangesNothing)
{
    SeededRandom random(1);
    const auto start = solver::SolverPosition::from(dealNewGame(random));
    ASSERT_TRUE(start);
    const solver::SearchLimits limits{.positions = 200'000, .memoryBytes = 64u << 20, .maxDepth = 4000};
    for (const auto lookahead : {solver::Lookahead::everyFoundation, solver::Lookahead::startedFoundations}) {
        BestFirstSearch whole(*start, {solver::MoveSet::quick, lookahead}, limits);
        whole.runUntil(limits.positions, {});
        ASSERT_TRUE(whole.outcome().won) << "the deal should be won well within the budget";

        BestFirstSearch sliced(*start, {solver::MoveSet::quick, lookahead}, limits);
        for (std::uint64_t until = 37; !sliced.finished(); until += 37) sliced.runUntil(until, {});
        EXPECT_TRUE(sliced.outcome().won);
        EXPECT_EQ(sliced.outcome().positions, whole.outcome().positions);
        EXPECT_EQ(sliced.outcome().line.size(), whole.outcome().line.size());
        for (std::size_t i = 0; i < whole.outcome().line.size() && i < sliced.outcome().line.size(); ++i) {
            EXPECT_EQ(sliced.outcome().line[i].source(), whole.outcome().line[i].source()) << "move " << i;
            EXPECT_EQ(sliced.outcome().line[i].destination(), whole.outcome().line[i].destination()) << "move " << i;
        }
    }
}

// A search whose budget is spent stops as finished without a win, and stays stopped.
TEST(BestFirstSearch, SpentBudgetFinishesWithoutAWin)
{
    SeededRandom random(7);
    const auto start = solver::SolverPosition::from(dealNewGame(random));
    ASSERT_TRUE(start);
    BestFirstSearch search(*start, {}, {.positions = 300, .memoryBytes = 64u << 20, .maxDepth = 4000});
    search.runUntil(100, {});
    EXPECT_FALSE(search.finished());
    search.runUntil(1'000'000, {});
    EXPECT_TRUE(search.finished());
    EXPECT_FALSE(search.outcome().won);
    EXPECT_FALSE(search.outcome().exhausted);
    EXPECT_EQ(search.outcome().positions, 300u);
    search.runUntil(2'000'000, {});
    EXPECT_EQ(search.outcome().positions, 300u);
}

} // namespace
} // namespace zelvaine

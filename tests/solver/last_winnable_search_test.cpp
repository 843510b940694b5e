#include "solver/last_winnable_search.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace zelvaine {
namespace {

using solver::LastWinnableSearch;
using solver::Verdict;

// Runs the search over a line whose first `winnable` positions can be won; counts the solves.
struct Outcome {
    std::optional<std::size_t> last;
    int probes = 0;
};
Outcome search(std::size_t count, std::size_t winnable, std::optional<std::size_t> undecided = std::nullopt)
{
    LastWinnableSearch search(count);
    Outcome outcome;
    while (auto probe = search.nextProbe()) {
        EXPECT_LT(*probe, count - 1) << "the last position is known lost";
        ++outcome.probes;
        search.report(probe == undecided ? Verdict::unknown
                      : *probe < winnable ? Verdict::winnable
                                          : Verdict::unwinnable);
    }
    outcome.last = search.lastWinnable();
    return outcome;
}

TEST(LastWinnableSearchTest, FindsTheLastWinnablePositionOfEveryLine)
{
    for (std::size_t count : {1U, 2U, 3U, 10U, 301U}) {
        for (std::size_t winnable = 0; winnable < count; ++winnable) {
            const Outcome outcome = search(count, winnable);
            if (winnable == 0) {
                EXPECT_FALSE(outcome.last) << count;
            } else {
                EXPECT_EQ(outcome.last, winnable - 1) << count << " " << winnable;
            }
            EXPECT_LE(outcome.probes, static_cast<int>(std::ceil(std::log2(static_cast<double>(count)))) + 1);
        }
    }
}

TEST(LastWinnableSearchTest, AnUndecidedPositionCountsAsLost)
{
    // Winnable up to 5 of 20, but 4 cannot be decided: the answer stays a proven one.
    const Outcome outcome = search(20, 6, 4);
    ASSERT_TRUE(outcome.last);
    EXPECT_LT(*outcome.last, 4U);
}

} // namespace
} // namespace zelvaine

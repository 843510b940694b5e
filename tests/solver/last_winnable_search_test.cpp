#include "solver/last_winnable_search.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace zelvaine {
namespace {

using solver::LastWinnableSearch;
using solver::Verdict;

constexpr std::uint64_t normalBudget = 1600;

// A line of positions, each with its verdict and the positions a solve needs to reach it; a
// smaller budget leaves it undecided, having spent the whole budget.
struct Position {
    Verdict verdict = Verdict::unwinnable;
    std::uint64_t needs = 10;
};

struct Outcome {
    Verdict table = Verdict::unknown;
    std::optional<std::size_t> last;
    int probes = 0;
    int normalProbes = 0;
};

Outcome search(const std::vector<Position>& line)
{
    LastWinnableSearch search(line.size(), normalBudget);
    Outcome outcome;
    while (auto probe = search.nextProbe()) {
        EXPECT_LT(probe->position, line.size());
        EXPECT_LE(probe->positionBudget, normalBudget);
        ++outcome.probes;
        if (probe->positionBudget == normalBudget) ++outcome.normalProbes;
        const Position& position = line[probe->position];
        if (position.needs <= probe->positionBudget) {
            search.report(position.verdict, position.needs);
        } else {
            search.report(Verdict::unknown, probe->positionBudget);
        }
    }
    outcome.table = search.table();
    outcome.last = search.lastWinnable();
    return outcome;
}

// The first `winnable` of `count` positions can be won, the rest are lost, all settled at once.
std::vector<Position> prefix(std::size_t count, std::size_t winnable)
{
    std::vector<Position> line(count);
    for (std::size_t i = 0; i < winnable; ++i) line[i].verdict = Verdict::winnable;
    return line;
}

TEST(LastWinnableSearchTest, FindsTheLastWinnablePositionOfEveryLineInAboutLog2Solves)
{
    for (std::size_t count : {1U, 2U, 3U, 10U, 301U}) {
        for (std::size_t winnable = 0; winnable < count; ++winnable) {
            const Outcome outcome = search(prefix(count, winnable));
            EXPECT_EQ(outcome.table, Verdict::unwinnable);
            if (winnable == 0) {
                EXPECT_FALSE(outcome.last) << count;
            } else {
                EXPECT_EQ(outcome.last, winnable - 1) << count << " " << winnable;
            }
            // The table's own solve, then the binary search.
            EXPECT_LE(outcome.probes, static_cast<int>(std::ceil(std::log2(static_cast<double>(count)))) + 2);
            EXPECT_EQ(outcome.normalProbes, 0);
        }
    }
}

TEST(LastWinnableSearchTest, OnlyALostTableIsSearched)
{
    const Outcome won = search(prefix(30, 30));
    EXPECT_EQ(won.table, Verdict::winnable);
    EXPECT_EQ(won.probes, 1);
    EXPECT_FALSE(won.last);

    // Undecided with the small budget, the table is solved again with the normal one.
    std::vector<Position> line(30, Position{Verdict::unknown, normalBudget + 1});
    const Outcome undecided = search(line);
    EXPECT_EQ(undecided.table, Verdict::unknown);
    EXPECT_EQ(undecided.probes, 2);
    EXPECT_EQ(undecided.normalProbes, 1);

    line = prefix(30, 7);
    line.back().needs = normalBudget;
    const Outcome hard = search(line);
    EXPECT_EQ(hard.table, Verdict::unwinnable);
    EXPECT_EQ(hard.last, 6U);
}

// Positions 10 to 12 are won only with more than the small budget, and the lost ones up to 19
// are proven only with the normal one: the search settles the candidate for the first lost
// position with the normal budget, goes on above it when it turns out winnable, and names 13 only
// once the normal budget proved it lost.
TEST(LastWinnableSearchTest, APositionTheSmallBudgetLeavesUndecidedIsSettledBeforeItIsNamed)
{
    std::vector<Position> line = prefix(40, 13);
    for (std::size_t i = 10; i <= 12; ++i) line[i].needs = normalBudget / 4;
    for (std::size_t i = 13; i <= 19; ++i) line[i].needs = normalBudget;
    const Outcome outcome = search(line);
    EXPECT_EQ(outcome.last, 12U);
    // 10, found winnable, and 13.
    EXPECT_EQ(outcome.normalProbes, 2);
}

// A long run of positions that take more than the small budget to win: having met one, the search
// probes its neighbours with a budget that wins them, rather than settling them one by one.
TEST(LastWinnableSearchTest, ARunOfHardWinsIsSearchedWithARaisedBudget)
{
    std::vector<Position> line = prefix(300, 200);
    for (std::size_t i = 100; i < 200; ++i) line[i].needs = normalBudget / 4;
    const Outcome outcome = search(line);
    EXPECT_EQ(outcome.last, 199U);
    // A few binary searches over parts of the line, where one by one would take a hundred.
    EXPECT_EQ(outcome.normalProbes, 1);
    EXPECT_LE(outcome.probes, 4 * static_cast<int>(std::ceil(std::log2(300.0))));
}

TEST(LastWinnableSearchTest, AnUndecidedPositionCountsAsLost)
{
    // Winnable up to 5 of 20, but 4 cannot be decided even with the normal budget: the answer
    // stays a proven one.
    std::vector<Position> line = prefix(20, 6);
    line[4] = {Verdict::winnable, normalBudget + 1};
    const Outcome outcome = search(line);
    ASSERT_TRUE(outcome.last);
    EXPECT_LT(*outcome.last, 4U);
}

} // namespace
} // namespace zelvaine

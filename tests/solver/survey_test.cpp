#include "solver/survey.hpp"

#include <gtest/gtest.h>

namespace zelvaine {
namespace {

TEST(Survey, WilsonIntervalMatchesPublishedValues)
{
    struct Case {
        std::uint64_t successes, trials;
        double low, high;
    };
    // Reference values from the closed formula, z = 1.96.
    for (const Case& c : {Case{0, 10, 0.0, 0.2775}, Case{5, 10, 0.2366, 0.7634}, Case{10, 10, 0.7225, 1.0},
                          Case{81, 263, 0.2553, 0.3662}}) {
        const auto [low, high] = solver::wilsonInterval(c.successes, c.trials);
        EXPECT_NEAR(low, c.low, 5e-4) << c.successes << "/" << c.trials;
        EXPECT_NEAR(high, c.high, 5e-4) << c.successes << "/" << c.trials;
    }
    EXPECT_EQ(solver::wilsonInterval(0, 0), std::make_pair(0.0, 1.0));
}

TEST(Survey, PercentileTakesTheNearestRank)
{
    std::vector<double> values;
    for (int i = 100; i >= 1; --i) values.push_back(i);
    EXPECT_EQ(solver::percentile(values, 0.5), 50);
    EXPECT_EQ(solver::percentile(values, 0.95), 95);
    EXPECT_EQ(solver::percentile(values, 0.99), 99);
    EXPECT_EQ(solver::percentile(values, 1.0), 100);
    EXPECT_EQ(solver::percentile({7.0}, 0.5), 7.0);
    EXPECT_EQ(solver::percentile({}, 0.5), 0.0);
}

} // namespace
} // namespace zelvaine

#include "solver/winnable_dealer.hpp"

#include "engine/random_source.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

namespace zelvaine {
namespace {

// Counts what the dealer's thread does, and lets the test wait for it. The waits only guard
// against a hang.
class DealerLog {
public:
    void count(int& counter)
    {
        const std::scoped_lock lock(mutex_);
        ++counter;
        changed_.notify_all();
    }
    bool waitFor(const std::function<bool()>& holds)
    {
        std::unique_lock lock(mutex_);
        return changed_.wait_for(lock, std::chrono::seconds(120), holds);
    }
    int value(const int& counter)
    {
        const std::scoped_lock lock(mutex_);
        return counter;
    }

    int shuffled = 0;
    int ready = 0;
    bool open = false;

private:
    std::mutex mutex_;
    std::condition_variable changed_;
};

// Twenty deals in a row, each proven winnable again by a solve of the test's own; the lost ones
// among the shuffles never come out.
TEST(WinnableDealerTest, EveryDealTakenIsWinnable)
{
    auto random = std::make_shared<SeededRandom>(1);
    DealerLog log;
    {
        solver::WinnableDealer dealer(
            [&] {
                log.count(log.shuffled);
                return dealNewGame(*random);
            },
            [&] { log.count(log.ready); });
        for (int i = 0; i < 20; ++i) {
            std::optional<GameState> deal;
            ASSERT_TRUE(log.waitFor([&] { return (deal = dealer.take()).has_value(); })) << i;
            EXPECT_EQ(solver::solve(*deal).verdict, solver::Verdict::winnable) << i;
            EXPECT_EQ(deal->moveCount, 0);
        }
    }
    // Seed 1 holds lost deals among its first twenty, so more were shuffled than taken.
    EXPECT_GT(log.value(log.shuffled), 20);
}

// Nothing proven yet: take() answers at once with nothing, and the dealer says when a deal is
// ready. It keeps the deals it was asked to and shuffles no more until one is taken.
TEST(WinnableDealerTest, TakingNeverWaitsAndTheDealerKeepsOnlyAFewDeals)
{
    SeededRandom random(2);
    GameState winnable = dealNewGame(random);
    while (solver::solve(winnable).verdict != solver::Verdict::winnable) winnable = dealNewGame(random);
    std::mutex gate;
    std::condition_variable opened;
    DealerLog log;
    solver::WinnableDealer dealer(
        [&] {
            std::unique_lock lock(gate);
            opened.wait(lock, [&] { return log.open; });
            log.count(log.shuffled);
            return winnable;
        },
        [&] { log.count(log.ready); }, {}, {}, 2);

    EXPECT_FALSE(dealer.take());
    {
        const std::scoped_lock lock(gate);
        log.open = true;
    }
    opened.notify_all();
    ASSERT_TRUE(log.waitFor([&] { return log.ready == 2; }));
    // Given time to go on, the dealer waits instead.
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_EQ(log.value(log.shuffled), 2);
    EXPECT_EQ(log.value(log.ready), 2);

    EXPECT_EQ(dealer.take(), winnable);
    ASSERT_TRUE(log.waitFor([&] { return log.ready == 3; }));
    EXPECT_EQ(log.value(log.shuffled), 3);
}

} // namespace
} // namespace zelvaine

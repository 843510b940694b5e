#include "solver/winnability_service.hpp"

#include "engine/game_state.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <vector>

namespace zelvaine {
namespace {

using solver::SolveResult;
using solver::Verdict;
using solver::WinnabilityService;

// Collects the delivered answers and lets the test wait for them. The waits only guard against
// a hang; no test depends on how long anything takes.
class Inbox {
public:
    void put(WinnabilityService::Answer answer)
    {
        const std::scoped_lock lock(mutex_);
        answers_.push_back(std::move(answer));
        arrived_.notify_all();
    }
    bool waitFor(std::size_t count)
    {
        std::unique_lock lock(mutex_);
        return arrived_.wait_for(lock, std::chrono::seconds(60), [&] { return answers_.size() >= count; });
    }
    std::vector<WinnabilityService::Answer> answers()
    {
        const std::scoped_lock lock(mutex_);
        return answers_;
    }

private:
    std::mutex mutex_;
    std::condition_variable arrived_;
    std::vector<WinnabilityService::Answer> answers_;
};

// A scripted search: a position with moveCount 1 blocks until it is stopped and reports how it
// ended; any other answers at once with "winnable".
struct ScriptedSolve {
    std::atomic<int> started{0};
    std::atomic<int> stopped{0};
    std::atomic<int> releases{0};

    WinnabilityService::SolveFunction function()
    {
        return [this](const GameState& position, const solver::SolverOptions&, std::stop_token stop) {
            ++started;
            if (position.moveCount == 1) {
                std::mutex mutex;
                std::unique_lock lock(mutex);
                std::condition_variable_any().wait(lock, stop, [] { return false; });
                ++stopped;
                return SolveResult{Verdict::unknown, {}, 0};
            }
            return SolveResult{Verdict::winnable, {}, static_cast<std::uint64_t>(position.moveCount)};
        };
    }
};

GameState positionNumbered(std::int64_t moveCount)
{
    GameState state;
    state.moveCount = moveCount;
    return state;
}

TEST(WinnabilityServiceTest, ANewerRequestStopsTheRunningSolveAndOnlyItsAnswerArrives)
{
    Inbox inbox;
    ScriptedSolve script;
    {
        WinnabilityService service([&](auto answer) { inbox.put(std::move(answer)); }, script.function(),
                                   [&] { ++script.releases; });
        const auto blocked = service.request(positionNumbered(1));
        while (script.started == 0) std::this_thread::yield();
        const auto newest = service.request(positionNumbered(7));
        EXPECT_FALSE(service.isCurrent(blocked));
        EXPECT_TRUE(service.isCurrent(newest));
        ASSERT_TRUE(inbox.waitFor(1));
        const auto answers = inbox.answers();
        ASSERT_EQ(answers.size(), 1U);
        EXPECT_EQ(answers[0].generation, newest);
        EXPECT_EQ(answers[0].result.positions, 7U);
        EXPECT_EQ(script.stopped, 1);
    }
    // Each solve, the stopped one too, hands its memory back.
    EXPECT_EQ(script.releases, 2);
}

TEST(WinnabilityServiceTest, ACancelStopsTheSolveAndDeliversNothing)
{
    Inbox inbox;
    ScriptedSolve script;
    WinnabilityService service([&](auto answer) { inbox.put(std::move(answer)); }, script.function(), [] {});
    const auto generation = service.request(positionNumbered(1));
    while (script.started == 0) std::this_thread::yield();
    service.cancel();
    EXPECT_FALSE(service.isCurrent(generation));
    // The worker is free again: the next request is answered, and it is the only answer.
    const auto next = service.request(positionNumbered(3));
    ASSERT_TRUE(inbox.waitFor(1));
    EXPECT_EQ(script.stopped, 1);
    const auto answers = inbox.answers();
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(answers[0].generation, next);
}

// Every solve waits until the test lets it finish, so that the requests all arrive while the
// worker is busy, however fast it is: each newer one stops the solve under way, and only the
// newest is solved to its end and answered.
TEST(WinnabilityServiceTest, RequestsMadeWhileBusyCollapseIntoTheNewest)
{
    Inbox inbox;
    std::mutex mutex;
    std::condition_variable_any opened;
    bool open = false;
    std::atomic<int> started{0};
    std::atomic<int> finished{0};
    std::atomic<bool> newestStarted{false};
    const auto solve = [&](const GameState& position, const solver::SolverOptions&, std::stop_token stop) {
        ++started;
        if (position.moveCount == 11) newestStarted = true;
        std::unique_lock lock(mutex);
        if (!opened.wait(lock, stop, [&] { return open; })) return SolveResult{Verdict::unknown, {}, 0};
        ++finished;
        return SolveResult{Verdict::winnable, {}, static_cast<std::uint64_t>(position.moveCount)};
    };
    WinnabilityService service([&](auto answer) { inbox.put(std::move(answer)); }, solve, [] {});
    service.request(positionNumbered(1));
    while (started == 0) std::this_thread::yield();
    std::uint64_t last = 0;
    for (int i = 2; i < 12; ++i) last = service.request(positionNumbered(i));
    // Each solve before the newest has been stopped by then.
    while (!newestStarted) std::this_thread::yield();
    {
        const std::scoped_lock lock(mutex);
        open = true;
    }
    opened.notify_all();
    ASSERT_TRUE(inbox.waitFor(1));
    const auto answers = inbox.answers();
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(answers[0].generation, last);
    EXPECT_EQ(answers[0].result.positions, 11U);
    EXPECT_EQ(finished, 1);
}

TEST(WinnabilityServiceTest, DestroyingTheServiceStopsARunningSolve)
{
    ScriptedSolve script;
    std::atomic<int> delivered{0};
    {
        WinnabilityService service([&](auto) { ++delivered; }, script.function(), [] {});
        service.request(positionNumbered(1));
        while (script.started == 0) std::this_thread::yield();
    }
    EXPECT_EQ(script.stopped, 1);
    EXPECT_EQ(delivered, 0);
}

// A line of ten positions, the first four winnable: the whole search is one request with one
// answer, its solves given budgets up to the service's own; cancelled mid-way, it answers nothing.
TEST(WinnabilityServiceTest, ALineIsSearchedAsOneRequestThatACancelStops)
{
    Inbox inbox;
    std::atomic<int> solves{0};
    std::atomic<std::uint64_t> largestBudget{0};
    std::atomic<std::int64_t> blockAt{-1};
    std::atomic<bool> blocked{false};
    const auto solve = [&](const GameState& position, const solver::SolverOptions& budget, std::stop_token stop) {
        ++solves;
        largestBudget = std::max<std::uint64_t>(largestBudget, budget.positionBudget);
        if (position.moveCount == blockAt) {
            blocked = true;
            std::mutex mutex;
            std::unique_lock lock(mutex);
            std::condition_variable_any().wait(lock, stop, [] { return false; });
            return SolveResult{Verdict::unknown, {}, 0};
        }
        return SolveResult{position.moveCount < 4 ? Verdict::winnable : Verdict::unwinnable, {}, 1};
    };
    WinnabilityService service([&](auto answer) { inbox.put(std::move(answer)); }, solve, [] {},
                               {.positionBudget = 1600});
    std::vector<GameState> line;
    for (int i = 0; i < 10; ++i) line.push_back(positionNumbered(i));

    const auto generation = service.requestLastWinnable(line);
    ASSERT_TRUE(inbox.waitFor(1));
    const auto answer = inbox.answers().front();
    EXPECT_EQ(answer.generation, generation);
    ASSERT_TRUE(answer.search);
    EXPECT_EQ(answer.search->table, Verdict::unwinnable);
    EXPECT_EQ(answer.search->lastWinnable, 3U);
    EXPECT_EQ(answer.search->solves, solves);
    EXPECT_LE(largestBudget, 1600U);

    blockAt = 4;
    service.requestLastWinnable(line);
    while (!blocked) std::this_thread::yield();
    service.cancel();
    const auto next = service.request(positionNumbered(2));
    ASSERT_TRUE(inbox.waitFor(2));
    const auto answers = inbox.answers();
    ASSERT_EQ(answers.size(), 2U);
    EXPECT_EQ(answers[1].generation, next);
    EXPECT_FALSE(answers[1].search);
}

} // namespace
} // namespace zelvaine

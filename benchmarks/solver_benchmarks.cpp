// How fast the solver examines positions, and what one verdict costs on reproducible deals.

#include "benchmarks/smoke_run.hpp"
#include "engine/move_rules.hpp"
#include "solver/exhaustive_search.hpp"
#include "solver/solver.hpp"
#include "solver/solver_position.hpp"
#include "solver/solver_task.hpp"
#include "solver/survey.hpp"
#include "solver/winnability_service.hpp"

#include <benchmark/benchmark.h>

#include <chrono>
#include <condition_variable>
#include <fstream>
#include <mutex>
#include <random>
#include <thread>
#include <unistd.h>

namespace zelvaine {
namespace {

GameState seededDeal(std::uint64_t seed, int index = 0)
{
    SeededRandom random(seed);
    GameState state = dealNewGame(random);
    for (int i = 0; i < index; ++i) state = dealNewGame(random);
    return state;
}

// The first eight deals of seed 1 under one budget: some are won quickly, some use the whole
// budget, so both the time to a verdict and the rate of positions show.
void BM_SolveSeededDeals(benchmark::State& state)
{
    SeededRandom random(1);
    std::vector<GameState> deals;
    for (int i = 0; i < 8; ++i) deals.push_back(dealNewGame(random));
    const solver::SolverOptions options{.positionBudget = static_cast<std::uint64_t>(state.range(0)), .maxDepth = 4000};
    std::uint64_t positions = 0;
    for (auto _ : state) {
        for (const GameState& deal : deals) {
            const auto result = solver::solve(deal, options);
            positions += result.positions;
            benchmark::DoNotOptimize(result);
        }
    }
    state.counters["positions/s"] = benchmark::Counter(static_cast<double>(positions), benchmark::Counter::kIsRate);
}
BENCHMARK(BM_SolveSeededDeals)->Arg(20'000)->Arg(200'000)->Unit(benchmark::kMillisecond);

// The complete search alone, over millions of positions: the position table outgrows the
// processor's caches, so this is the rate a proof that a deal is lost runs at. Deal 638 of seed 1
// takes some 24,000,000 positions to settle, so the budget ends each run.
void BM_CompleteSearch(benchmark::State& state)
{
    const auto start = solver::SolverPosition::from(seededDeal(1, 638));
    const auto budget = static_cast<std::uint64_t>(state.range(0));
    const solver::SearchLimits limits{budget, std::size_t{1} << 30, 1'000'000};
    std::uint64_t positions = 0;
    for (auto _ : state) {
        const auto outcome = solver::depthFirst(*start, limits, solver::ChildOrder::listed, {});
        positions += outcome.positions;
        benchmark::DoNotOptimize(outcome);
    }
    state.counters["positions/s"] = benchmark::Counter(static_cast<double>(positions), benchmark::Counter::kIsRate);
}
BENCHMARK(BM_CompleteSearch)->Arg(1'000'000)->Arg(8'000'000)->Iterations(1)->Unit(benchmark::kMillisecond);

// From cancel() to the result, for a search stopped after the given milliseconds. Deal 638 of
// seed 1 cannot be won, and no search settles it within seconds: at 50 ms the short complete
// search is running, at 500 ms (on a 2020s desktop) the best-first search over every move. The
// target is 10 ms.
void BM_CancelLatency(benchmark::State& state)
{
    const GameState deal = seededDeal(1, 638);
    for (auto _ : state) {
        solver::SolverTask task(deal, {.positionBudget = 100'000'000});
        std::this_thread::sleep_for(std::chrono::milliseconds(state.range(0)));
        const auto start = std::chrono::steady_clock::now();
        task.cancel();
        benchmark::DoNotOptimize(task.result());
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
}
BENCHMARK(BM_CancelLatency)->Arg(50)->Arg(500)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

// What the window's thread pays to ask the service, while a long solve runs: one request that
// supersedes it, then a cancel. The target is 2 ms for either.
void BM_ServiceRequestAndCancel(benchmark::State& state)
{
    const GameState deal = seededDeal(1, 638);
    solver::WinnabilityService service([](auto) {}, {.positionBudget = 100'000'000});
    service.request(deal);
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    for (auto _ : state) {
        service.request(deal);
        service.cancel();
    }
}
BENCHMARK(BM_ServiceRequestAndCancel)->Unit(benchmark::kMicrosecond);

// From a request that supersedes a long solve (stopped after 50 ms) to the new answer, for a
// position decided at once: the stale solve's stop, the memory handed back and the new solve.
void BM_ServiceSupersede(benchmark::State& state)
{
    const GameState lost = seededDeal(1, 638);
    SeededRandom random(1);
    const GameState quick = dealNewGame(random);
    std::mutex mutex;
    std::condition_variable arrived;
    bool answered = false;
    solver::WinnabilityService service(
        [&](auto) {
            const std::scoped_lock lock(mutex);
            answered = true;
            arrived.notify_all();
        },
        {.positionBudget = 100'000'000});
    for (auto _ : state) {
        service.request(lost);
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        {
            const std::scoped_lock lock(mutex);
            answered = false;
        }
        const auto start = std::chrono::steady_clock::now();
        service.request(quick);
        std::unique_lock lock(mutex);
        arrived.wait(lock, [&] { return answered; });
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
}
BENCHMARK(BM_ServiceSupersede)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

double residentMegabytes()
{
    std::ifstream statm("/proc/self/statm");
    long size = 0;
    long resident = 0;
    statm >> size >> resident;
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1 << 20);
}

// The service with a caller that waits for each answer, as the measurements below need.
class AskingService {
public:
    void ask(const GameState& position)
    {
        std::unique_lock lock(mutex_);
        const int expected = answers_ + 1;
        lock.unlock();
        service_.request(position);
        lock.lock();
        arrived_.wait(lock, [&] { return answers_ >= expected; });
    }

private:
    std::mutex mutex_;
    std::condition_variable arrived_;
    int answers_ = 0;
    solver::WinnabilityService service_{[this](auto) {
        const std::scoped_lock lock(mutex_);
        ++answers_;
        arrived_.notify_all();
    }};
};

// Resident memory before the first and after the fiftieth of fifty solves of seeded deals:
// the service hands each solve's memory back, so the two stay within 10 MB.
void BM_ServiceMemoryAfterFiftySolves(benchmark::State& state)
{
    SeededRandom random(5);
    std::vector<GameState> deals;
    for (int i = 0; i < 50; ++i) deals.push_back(dealNewGame(random));
    for (auto _ : state) {
        AskingService service;
        const double before = residentMegabytes();
        for (const GameState& deal : deals) service.ask(deal);
        state.counters["MB before"] = before;
        state.counters["MB after"] = residentMegabytes();
    }
}
BENCHMARK(BM_ServiceMemoryAfterFiftySolves)->Iterations(1)->Unit(benchmark::kMillisecond);

// The live verdict's delay as the player meets it: positions of random legal play (every fifth
// of up to 100 moves) from 100 deals of seed 1, each asked of the service the window uses, timed
// from the request to the answer. The target is 250 ms for 95% of them.
void BM_ServiceVerdictInPlay(benchmark::State& state)
{
    std::vector<GameState> positions;
    SeededRandom random(1);
    std::mt19937 choose(1);
    for (int d = 0; d < (smokeRun() ? 3 : 100); ++d) {
        GameState position = dealNewGame(random);
        for (int move = 0; move < 100; ++move) {
            if (move % 5 == 0) positions.push_back(position);
            const auto moves = legalMoves(position);
            if (moves.empty()) break;
            const LegalMove& chosen = moves[choose() % moves.size()];
            position = std::get<MoveMoved>(applyMove(position, chosen.source, chosen.destination)).state;
        }
    }
    AskingService service;
    std::vector<double> milliseconds;
    for (auto _ : state) {
        for (const GameState& position : positions) {
            const auto start = std::chrono::steady_clock::now();
            service.ask(position);
            milliseconds.push_back(
                std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
        }
    }
    const auto within = std::ranges::count_if(milliseconds, [](double ms) { return ms <= 250; });
    state.counters["positions"] = static_cast<double>(milliseconds.size());
    state.counters["within 250 ms"] = static_cast<double>(within) / static_cast<double>(milliseconds.size());
    state.counters["p95 ms"] = solver::percentile(milliseconds, 0.95);
}
BENCHMARK(BM_ServiceVerdictInPlay)->Iterations(1)->Unit(benchmark::kSecond);

void BM_GenerateMovesAndEvaluate(benchmark::State& state)
{
    auto position = solver::SolverPosition::from(seededDeal(2));
    std::vector<solver::Step> moves;
    for (auto _ : state) {
        position->generateMoves(moves);
        for (const auto& step : moves) {
            position->apply(step);
            benchmark::DoNotOptimize(position->evaluate());
            position->undo(step);
        }
    }
}
BENCHMARK(BM_GenerateMovesAndEvaluate);

void BM_PositionKey(benchmark::State& state)
{
    const auto position = solver::SolverPosition::from(seededDeal(3));
    for (auto _ : state) benchmark::DoNotOptimize(position->key());
}
BENCHMARK(BM_PositionKey);

} // namespace
} // namespace zelvaine

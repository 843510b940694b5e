// How fast the solver examines positions, and what one verdict costs on reproducible deals.

#include "solver/solver.hpp"
#include "solver/solver_position.hpp"

#include <benchmark/benchmark.h>

namespace zelvaine {
namespace {

GameState seededDeal(std::uint64_t seed)
{
    SeededRandom random(seed);
    return dealNewGame(random);
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

// "Undo to Last Winnable Position" as the player meets it: lost games of up to 300 moves from
// random legal play, each searched whole, the table's own solve included. The target is 2 s for
// 95% of them. Every answer is checked against independent solves. Besides the time to the answer, the processor time the process spent meanwhile:
// on a machine busy with other work, it is what the search would take on an idle one.

#include "benchmarks/smoke_run.hpp"
#include "engine/move_rules.hpp"
#include "engine/random_source.hpp"
#include "solver/last_winnable_search.hpp"
#include "solver/survey.hpp"
#include "solver/winnability_service.hpp"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <random>
#include <vector>

#include <time.h>

namespace zelvaine {
namespace {

// Lines of play, the deal first, ending in a position the solver proves lost: random legal play
// of a random length up to 300 moves from deals of seed 11.
std::vector<std::vector<GameState>> lostGames(std::size_t count)
{
    std::vector<std::vector<GameState>> games;
    SeededRandom random(11);
    std::mt19937 choose(11);
    while (games.size() < count) {
        std::vector<GameState> line{dealNewGame(random)};
        const auto length = 1 + choose() % 300;
        for (unsigned move = 0; move < length; ++move) {
            const auto moves = legalMoves(line.back());
            if (moves.empty()) break;
            const LegalMove& chosen = moves[choose() % moves.size()];
            line.push_back(std::get<MoveMoved>(applyMove(line.back(), chosen.source, chosen.destination)).state);
        }
        if (solver::solve(line.back()).verdict == solver::Verdict::unwinnable) games.push_back(std::move(line));
    }
    return games;
}

// The service the window asks, with a caller that waits for the answer.
class SearchingService {
public:
    solver::LastWinnableAnswer search(std::vector<GameState> line)
    {
        std::unique_lock lock(mutex_);
        answer_.reset();
        lock.unlock();
        service_.requestLastWinnable(std::move(line));
        lock.lock();
        arrived_.wait(lock, [&] { return answer_.has_value(); });
        return *answer_;
    }

private:
    std::mutex mutex_;
    std::condition_variable arrived_;
    std::optional<solver::LastWinnableAnswer> answer_;
    solver::WinnabilityService service_{[this](solver::WinnabilityService::Answer answer) {
        const std::scoped_lock lock(mutex_);
        answer_ = answer.search;
        arrived_.notify_all();
    }};
};

// The position named is winnable and the next one not, by the solver with its normal budget.
bool confirmed(const std::vector<GameState>& line, const solver::LastWinnableAnswer& answer)
{
    if (answer.table != solver::Verdict::unwinnable) return false;
    const std::size_t next = answer.lastWinnable ? *answer.lastWinnable + 1 : 0;
    if (answer.lastWinnable && solver::solve(line[*answer.lastWinnable]).verdict != solver::Verdict::winnable)
        return false;
    return solver::solve(line[next]).verdict != solver::Verdict::winnable;
}

double processorSeconds()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

void BM_UndoToLastWinnable(benchmark::State& state)
{
    const auto games = lostGames(static_cast<std::size_t>(state.range(0)));
    std::vector<double> seconds;
    std::vector<double> processor;
    std::vector<double> lengths;
    std::vector<double> solves;
    SearchingService service;
    for (auto _ : state) {
        for (const auto& line : games) {
            const auto start = std::chrono::steady_clock::now();
            const double startProcessor = processorSeconds();
            const auto answer = service.search(line);
            seconds.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
            processor.push_back(processorSeconds() - startProcessor);
            lengths.push_back(static_cast<double>(line.size() - 1));
            solves.push_back(answer.solves);
            if (!confirmed(line, answer)) {
                state.SkipWithError("an answer that an independent solve contradicts");
                return;
            }
        }
    }
    const auto within = std::ranges::count_if(seconds, [](double s) { return s <= 2.0; });
    state.counters["games"] = static_cast<double>(seconds.size());
    state.counters["median moves"] = solver::percentile(lengths, 0.5);
    state.counters["median solves"] = solver::percentile(solves, 0.5);
    state.counters["median s"] = solver::percentile(seconds, 0.5);
    state.counters["p95 s"] = solver::percentile(seconds, 0.95);
    state.counters["max s"] = solver::percentile(seconds, 1.0);
    state.counters["within 2 s"] = static_cast<double>(within) / static_cast<double>(seconds.size());
    const auto withinProcessor = std::ranges::count_if(processor, [](double s) { return s <= 2.0; });
    state.counters["cpu median s"] = solver::percentile(processor, 0.5);
    state.counters["cpu p95 s"] = solver::percentile(processor, 0.95);
    state.counters["cpu within 2 s"] = static_cast<double>(withinProcessor) / static_cast<double>(processor.size());
}
BENCHMARK(BM_UndoToLastWinnable)->Arg(smokeRun() ? 3 : 200)->Iterations(1)->Unit(benchmark::kSecond);

} // namespace
} // namespace zelvaine

// What the board asks of the rules on every change: a move, a sweep of canMove over every
// source and destination for highlighting, a hint, and the automatic-finish test; and what the
// store pays to write a position's JSON at every move and to read one back at start.
// Run: build/release/benchmarks/engine_benchmarks (see README).

#include "engine/auto_complete.hpp"
#include "engine/hints.hpp"
#include "engine/move_rules.hpp"
#include "engine/state_json.hpp"

#include <benchmark/benchmark.h>

#include <random>

namespace zelvaine {
namespace {

std::vector<MoveDestination> everyDestination()
{
    std::vector<MoveDestination> all{MoveDestination::hand()};
    for (std::int64_t i = 0; i < 10; ++i) all.push_back(MoveDestination::tableau(i));
    for (std::int64_t i = 0; i < 8; ++i) all.push_back(MoveDestination::foundation(i));
    for (std::int64_t i = 0; i < 4; ++i) all.push_back(MoveDestination::hand(i));
    return all;
}

std::vector<MoveSource> everySource(const GameState& s)
{
    std::vector<MoveSource> all;
    for (std::size_t c = 0; c < s.tableau.size(); ++c) {
        for (std::size_t i = 0; i < s.tableau[c].size(); ++i) {
            all.push_back(MoveSource::tableau(static_cast<std::int64_t>(c), static_cast<std::int64_t>(i)));
        }
    }
    for (std::int64_t i = 0; i < 4; ++i) all.push_back(MoveSource::hand(i));
    for (std::int64_t i = 0; i < 8; ++i) all.push_back(MoveSource::foundation(i));
    return all;
}

// A reproducible position some forty moves into a game, reached by following legal moves that
// a player might make (foundations first, then columns, then the hand).
GameState midGame()
{
    SeededRandom dealRandom(2026);
    GameState s = dealNewGame(dealRandom);
    std::mt19937_64 random(11);
    const auto destinations = everyDestination();
    while (s.moveCount < 40) {
        std::vector<std::pair<MoveSource, MoveDestination>> legal;
        for (const auto& source : everySource(s)) {
            for (const auto& destination : destinations) {
                if (!(source.isHand() && destination.isHand()) && canMove(s, source, destination)) {
                    legal.emplace_back(source, destination);
                }
            }
        }
        if (legal.empty()) break;
        const auto& [source, destination] = legal[random() % legal.size()];
        s = std::get<MoveMoved>(applyMove(s, source, destination)).state;
    }
    return s;
}

// Every card out, each suit's two runs in their own columns from king down to ace: the
// automatic finish must play all 104 cards.
GameState longestFinish()
{
    GameState s;
    s.tableau.resize(10);
    s.foundations.resize(8);
    s.hand.resize(4);
    for (std::size_t run = 0; run < 8; ++run) {
        for (int rank = 13; rank >= 1; --rank) {
            s.tableau[run].push_back(PlayingCard{Uuid::random(), allSuits[run / 2], static_cast<Rank>(rank),
                                                 static_cast<std::int64_t>(run % 2)});
        }
    }
    return s;
}

void BM_applyMove(benchmark::State& state)
{
    const GameState s = midGame();
    const Hint hint = findHint(s);
    const MoveSource source = hint.source.value_or(MoveSource::hand(0));
    MoveDestination destination = MoveDestination::hand();
    for (const auto& candidate : everyDestination()) {
        if (canMove(s, source, candidate)) {
            destination = candidate;
            break;
        }
    }
    for (auto _ : state) benchmark::DoNotOptimize(applyMove(s, source, destination));
    state.counters["moveCount"] = static_cast<double>(s.moveCount);
}
BENCHMARK(BM_applyMove);

void BM_canMoveSweep(benchmark::State& state)
{
    const GameState s = midGame();
    const auto sources = everySource(s);
    const auto destinations = everyDestination();
    for (auto _ : state) {
        int legal = 0;
        for (const auto& source : sources) {
            for (const auto& destination : destinations) legal += canMove(s, source, destination) ? 1 : 0;
        }
        benchmark::DoNotOptimize(legal);
    }
    state.counters["pairs"] = static_cast<double>(sources.size() * destinations.size());
}
BENCHMARK(BM_canMoveSweep);

void BM_findHint(benchmark::State& state)
{
    const GameState s = midGame();
    for (auto _ : state) benchmark::DoNotOptimize(findHint(s));
}
BENCHMARK(BM_findHint);

void BM_canAutoComplete(benchmark::State& state)
{
    const GameState s = midGame();
    for (auto _ : state) benchmark::DoNotOptimize(canAutoComplete(s));
}
BENCHMARK(BM_canAutoComplete);

// A new game: 104 fresh ids and a secure shuffle.
void BM_dealNewGame(benchmark::State& state)
{
    for (auto _ : state) benchmark::DoNotOptimize(dealNewGame());
}
BENCHMARK(BM_dealNewGame);

void BM_canAutoCompleteAllCards(benchmark::State& state)
{
    const GameState s = longestFinish();
    for (auto _ : state) benchmark::DoNotOptimize(canAutoComplete(s));
}
BENCHMARK(BM_canAutoCompleteAllCards);

void BM_positionToJson(benchmark::State& state)
{
    const GameState s = midGame();
    for (auto _ : state) benchmark::DoNotOptimize(toJson(s));
}
BENCHMARK(BM_positionToJson);

void BM_positionFromJson(benchmark::State& state)
{
    const std::string json = toJson(midGame());
    for (auto _ : state) benchmark::DoNotOptimize(gameStateFromJson(json));
}
BENCHMARK(BM_positionFromJson);

} // namespace
} // namespace zelvaine

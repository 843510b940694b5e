#pragma once

#include "engine/game_state.hpp"
#include "engine/move.hpp"

#include <chrono>
#include <cstdint>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace zelvaine::solver {

enum class Verdict : std::uint8_t { winnable, unwinnable, unknown };
std::string_view toString(Verdict verdict);

struct SolverMove {
    MoveSource source;
    MoveDestination destination;

    friend bool operator==(const SolverMove&, const SolverMove&) = default;
};

struct SolverOptions {
    // Distinct positions the search may enter before it gives up with "unknown". Counting
    // positions rather than time makes every answer repeat on any machine. The default takes
    // about two seconds on one core of a 2020s desktop.
    std::uint64_t positionBudget = 2'000'000;
    // Bytes the search's own tables may take; a search that would need more gives "unknown",
    // also the same on every machine. The default holds the default budget.
    std::size_t memoryBudget = std::size_t{64} << 20;
    // Longest line the search follows. A position cut off here makes the search incomplete, so
    // it can then no longer answer "unwinnable".
    std::size_t maxDepth = 100000;
    // Wall-clock time after which the search gives up with "unknown"; zero for none. Only a cap
    // on top of the budgets above: with one, a deal near the cap may be decided on a fast machine
    // and not on a slow one.
    std::chrono::milliseconds timeLimit{0};
};

// Settings for a verdict on nearly every deal, at the cost of up to a minute and 1 GB on a hard
// one. The complete search of a lost deal can pass 100,000 moves in one line.
inline constexpr SolverOptions exactOptions{.positionBudget = 80'000'000,
                                            .memoryBudget = std::size_t{1} << 30,
                                            .maxDepth = 1'000'000,
                                            .timeLimit = std::chrono::seconds(60)};

struct SolveResult {
    Verdict verdict = Verdict::unknown;
    // For "winnable": moves with the real indices of the given position; replayed through
    // applyMove from it, they reach a won position.
    std::vector<SolverMove> moves;
    std::uint64_t positions = 0;
};

// The reason the solver cannot read `state` (see SolverPosition::from), or none.
std::optional<std::string> unsolvableReason(const GameState& state);

// First two best-first searches over the quick move set (MoveSet::quick and its keepRuns part),
// led by different evaluations and taking turns, with 3/8 of the budget and half the memory
// each: they find most wins quickly and with short lines. When the first saw its whole space
// without a win, a depth-first search over every legal move with 1/8 of what is left, which
// proves most lost deals. Next a best-first search over every legal move with half of what is
// left, up to 4,000,000 positions. Then, unless one of them settled the deal, a depth-first
// search over every legal move with the rest. The searches over every move are complete: when
// one runs out of positions without a cut, the deal cannot be won. Positions that differ only
// by symmetries of the rules count once. A winning line comes back without the detours
// shortenLine finds. Stopping through `stop`, or reaching `timeLimit`, gives "unknown" at the
// next position examined.
// Positions are remembered by 64-bit keys only; two positions sharing a key would make one of
// them look seen, a chance near n²/2^65 for n positions (below one in a million at 10^6).
SolveResult solve(const GameState& state, const SolverOptions& options = {}, std::stop_token stop = {});

} // namespace zelvaine::solver

#include "solver/solver.hpp"

#include "solver/best_first.hpp"
#include "solver/exhaustive_search.hpp"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <queue>

namespace zelvaine::solver {

std::string_view toString(Verdict verdict)
{
    switch (verdict) {
    case Verdict::winnable: return "winnable";
    case Verdict::unwinnable: return "unwinnable";
    case Verdict::unknown: return "unknown";
    }
    return "unknown";
}

std::optional<std::string> unsolvableReason(const GameState& state)
{
    std::string problem;
    if (SolverPosition::from(state, &problem)) return std::nullopt;
    return problem;
}

namespace {

std::vector<SolverMove> movesOf(const std::vector<Step>& line)
{
    std::vector<SolverMove> moves;
    moves.reserve(line.size());
    for (const Step& step : line) moves.push_back({step.source(), step.destination()});
    return moves;
}

} // namespace

SolveResult solve(const GameState& state, const SolverOptions& options, std::stop_token stop)
{
    const auto start = SolverPosition::from(state);
    if (!start) return {};
    // Most deals are won, so the quick search gets most of the budget; a deal it cannot win
    // without moves back from the foundations is usually one whose smaller space it runs out of
    // early, which leaves the rest to the complete search.
    SearchLimits limits{options.positionBudget / 4 * 3, options.memoryBudget, options.maxDepth};
    const SearchOutcome quick = bestFirst(*start, MoveSet::withoutReturns, limits, stop);
    if (quick.won) return {Verdict::winnable, movesOf(quick.line), quick.positions};

    limits.positions = options.positionBudget - quick.positions;
    const SearchOutcome full = depthFirst(*start, limits, stop);
    const std::uint64_t positions = quick.positions + full.positions;
    if (full.won) return {Verdict::winnable, movesOf(full.line), positions};
    return {full.exhausted ? Verdict::unwinnable : Verdict::unknown, {}, positions};
}

} // namespace zelvaine::solver

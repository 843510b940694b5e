#include "solver/last_winnable_search.hpp"

#include <algorithm>
#include <cassert>

namespace zelvaine::solver {

namespace {

// The part of the normal budget a probe first gets.
constexpr std::uint64_t smallBudgetShare = 16;

} // namespace

LastWinnableSearch::LastWinnableSearch(std::size_t count, std::uint64_t normalBudget)
    : known_(count, Known::nothing),
      triedBudget_(count, 0),
      normalBudget_(normalBudget),
      smallBudget_(std::max<std::uint64_t>(normalBudget / smallBudgetShare, 1))
{
    assert(count > 0);
}

std::size_t LastWinnableSearch::firstNotWinnable() const
{
    const auto found = std::ranges::find_if(known_, [](Known known) {
        return known == Known::lost || known == Known::undecidedSmall || known == Known::undecided;
    });
    return static_cast<std::size_t>(found - known_.begin());
}

std::optional<LastWinnableSearch::Probe> LastWinnableSearch::nextProbe() const
{
    if (known_.empty()) return std::nullopt;
    const std::size_t table = known_.size() - 1;
    switch (known_[table]) {
    case Known::nothing: return Probe{table, smallBudget_};
    case Known::undecidedSmall: return Probe{table, normalBudget_};
    case Known::winnable:
    case Known::undecided: return std::nullopt;
    case Known::lost: break;
    }
    const std::size_t high = firstNotWinnable();
    std::size_t low = high;
    while (low > 0 && known_[low - 1] != Known::winnable) --low;
    if (low < high) return Probe{low + (high - low) / 2, smallBudget_};
    // Left undecided by a budget since raised, the candidate is tried with the raised one first.
    if (known_[high] == Known::undecidedSmall)
        return Probe{high, triedBudget_[high] < smallBudget_ ? smallBudget_ : normalBudget_};
    return std::nullopt;
}

void LastWinnableSearch::report(Verdict verdict, std::uint64_t positions)
{
    const auto probe = nextProbe();
    assert(probe);
    if (!probe) return;
    Known& known = known_[probe->position];
    switch (verdict) {
    case Verdict::winnable:
        known = Known::winnable;
        smallBudget_ = std::max(smallBudget_, std::min(positions * 2, normalBudget_));
        break;
    case Verdict::unwinnable: known = Known::lost; break;
    case Verdict::unknown:
        known = probe->positionBudget >= normalBudget_ ? Known::undecided : Known::undecidedSmall;
        triedBudget_[probe->position] = probe->positionBudget;
        break;
    }
}

Verdict LastWinnableSearch::table() const
{
    assert(isFinished());
    switch (known_.back()) {
    case Known::winnable: return Verdict::winnable;
    case Known::lost: return Verdict::unwinnable;
    case Known::nothing:
    case Known::undecidedSmall:
    case Known::undecided: break;
    }
    return Verdict::unknown;
}

std::optional<std::size_t> LastWinnableSearch::lastWinnable() const
{
    assert(isFinished());
    const std::size_t high = firstNotWinnable();
    if (known_.back() != Known::lost || high == 0) return std::nullopt;
    return high - 1;
}

LastWinnableAnswer findLastWinnable(std::span<const GameState> line, const SolverOptions& options,
                                    const PositionSolve& solve, std::stop_token stop)
{
    if (line.empty()) return {};
    LastWinnableSearch search(line.size(), options.positionBudget);
    LastWinnableAnswer answer;
    while (const auto probe = search.nextProbe()) {
        SolverOptions budget = options;
        budget.positionBudget = probe->positionBudget;
        const SolveResult result = solve(line[probe->position], budget, stop);
        ++answer.solves;
        if (stop.stop_requested()) return {};
        search.report(result.verdict, result.positions);
    }
    answer.table = search.table();
    answer.lastWinnable = search.lastWinnable();
    return answer;
}

} // namespace zelvaine::solver

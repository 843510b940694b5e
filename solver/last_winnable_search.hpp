#pragma once

#include "solver/solver.hpp"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <stop_token>
#include <vector>

namespace zelvaine::solver {

// Finds the last winnable position along a line of play, positions 0 … count-1, the last being
// the table. Play can only lose a deal, never win one back, so the positions that can be won
// form a prefix of the line and a binary search over it needs about log2(count) solves.
// Most positions are settled by a solve with a small part of the budget; what is costly is a
// position near the loss with a large space, lost or undecided. So the search probes with the
// small budget, counting a position it leaves undecided as not winnable, and gives the normal
// budget only to the position it is about to name as the first that cannot be won; should that
// one turn out winnable, the search goes on above it. Neighbouring positions of a line take
// alike to settle, so a win that took more than the small budget raises it for the probes that
// follow. The table, too, is solved with the small budget first.
// An undecided position counts as lost, so the answer is always one the solver proved: the
// position named is winnable, and the one after it is lost or undecided under the normal budget.
class LastWinnableSearch {
public:
    struct Probe {
        std::size_t position = 0;
        std::uint64_t positionBudget = 0;
    };

    LastWinnableSearch(std::size_t count, std::uint64_t normalBudget);

    // The position to solve next, or none once the answer is known.
    std::optional<Probe> nextProbe() const;
    // The probe's verdict, and the positions its solve entered.
    void report(Verdict verdict, std::uint64_t positions);

    bool isFinished() const { return !nextProbe(); }
    // Once finished: the verdict on the table; the search over the line runs only when it is lost.
    Verdict table() const;
    // When it is: the last winnable position, or none when not even the first can be won.
    std::optional<std::size_t> lastWinnable() const;

private:
    enum class Known : std::uint8_t { nothing, winnable, lost, undecidedSmall, undecided };

    // The first position known not winnable; every winnable one found lies below it.
    std::size_t firstNotWinnable() const;

    std::vector<Known> known_;
    // The budget that left a position undecided.
    std::vector<std::uint64_t> triedBudget_;
    std::uint64_t normalBudget_;
    std::uint64_t smallBudget_;
};

struct LastWinnableAnswer {
    Verdict table = Verdict::unknown;
    std::optional<std::size_t> lastWinnable;
    // The solves it took, the table's included.
    int solves = 0;
};

using PositionSolve = std::function<SolveResult(const GameState&, const SolverOptions&, std::stop_token)>;

// The whole search behind "Undo to Last Winnable Position", with `options` as the normal budget.
// A stop ends it early with the table undecided.
LastWinnableAnswer findLastWinnable(std::span<const GameState> line, const SolverOptions& options,
                                    const PositionSolve& solve, std::stop_token stop = {});

} // namespace zelvaine::solver

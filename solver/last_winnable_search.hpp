#pragma once

#include "solver/solver.hpp"

#include <cstddef>
#include <optional>

namespace zelvaine::solver {

// Finds the last winnable position along a line of play, positions 0 … count-1, the last of
// which is known lost. Play can only lose a deal, never win one back, so the positions that can
// be won form a prefix of the line and a binary search over it needs about log2(count) solves.
// The caller solves each position the search asks for and reports the verdict; an undecided
// position counts as lost, so the answer is always one the solver proved.
class LastWinnableSearch {
public:
    explicit LastWinnableSearch(std::size_t count);

    // The position to solve next, or none once the answer is known.
    std::optional<std::size_t> nextProbe() const;
    void report(Verdict verdict);

    bool isFinished() const { return !nextProbe(); }
    // Once finished: the last winnable position, or none when not even the first can be won.
    std::optional<std::size_t> lastWinnable() const;

private:
    // Winnable at `winnable_` (when set) and lost at `lost_`; the answer lies between.
    std::optional<std::size_t> winnable_;
    std::size_t lost_;
};

} // namespace zelvaine::solver

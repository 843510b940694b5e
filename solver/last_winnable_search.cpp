#include "solver/last_winnable_search.hpp"

#include <cassert>

namespace zelvaine::solver {

LastWinnableSearch::LastWinnableSearch(std::size_t count) : lost_(count == 0 ? 0 : count - 1)
{
    assert(count > 0);
}

std::optional<std::size_t> LastWinnableSearch::nextProbe() const
{
    const std::size_t low = winnable_ ? *winnable_ + 1 : 0;
    if (low >= lost_) return std::nullopt;
    return low + (lost_ - low) / 2;
}

void LastWinnableSearch::report(Verdict verdict)
{
    const auto probe = nextProbe();
    assert(probe);
    if (!probe) return;
    if (verdict == Verdict::winnable) {
        winnable_ = *probe;
    } else {
        lost_ = *probe;
    }
}

std::optional<std::size_t> LastWinnableSearch::lastWinnable() const
{
    assert(isFinished());
    return winnable_;
}

} // namespace zelvaine::solver

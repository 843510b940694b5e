#pragma once

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace zelvaine::solver {

// The 95% Wilson score interval of `successes` out of `trials`; (0, 1) when there are none.
std::pair<double, double> wilsonInterval(std::uint64_t successes, std::uint64_t trials);

// The nearest-rank percentile (0 < fraction ≤ 1) of unsorted values; 0 for none.
double percentile(std::vector<double> values, double fraction);

} // namespace zelvaine::solver

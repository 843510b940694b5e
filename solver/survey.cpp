#include "solver/survey.hpp"

#include <algorithm>
#include <cmath>

namespace zelvaine::solver {

std::pair<double, double> wilsonInterval(std::uint64_t successes, std::uint64_t trials)
{
    if (trials == 0) return {0.0, 1.0};
    constexpr double z = 1.959963984540054;
    const double n = static_cast<double>(trials);
    const double p = static_cast<double>(successes) / n;
    const double denominator = 1.0 + z * z / n;
    const double centre = (p + z * z / (2.0 * n)) / denominator;
    const double half = z / denominator * std::sqrt(p * (1.0 - p) / n + z * z / (4.0 * n * n));
    return {std::max(0.0, centre - half), std::min(1.0, centre + half)};
}

double percentile(std::vector<double> values, double fraction)
{
    if (values.empty()) return 0.0;
    std::ranges::sort(values);
    const auto rank = static_cast<std::size_t>(std::ceil(fraction * static_cast<double>(values.size())));
    return values[std::clamp<std::size_t>(rank, 1, values.size()) - 1];
}

} // namespace zelvaine::solver

#pragma once

#include <algorithm>
#include <array>

namespace zelvaine {

// A blocked card answers a drag with a short sideways shake that dies out.
struct NudgeStep {
    double offset = 0;
    double seconds = 0;
};

inline constexpr double nudgeAmplitude(double columnWidth) { return std::max(4.0, std::min(0.07 * columnWidth, 9.0)); }

inline constexpr std::array<NudgeStep, 5> blockedNudgeSteps(double columnWidth)
{
    const double a = nudgeAmplitude(columnWidth);
    return {{{a, 0.055}, {-a, 0.065}, {0.65 * a, 0.055}, {-0.45 * a, 0.05}, {0, 0.055}}};
}

} // namespace zelvaine

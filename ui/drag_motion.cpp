#include "ui/drag_motion.hpp"

#include <cmath>

namespace zelvaine {

double dropReturnProgress(double seconds)
{
    // Under-damped: ζ = 22 ÷ (2√310) ≈ 0.62, so it passes its rest once by a few per cent.
    constexpr double stiffness = 310;
    constexpr double damping = 22;
    const double natural = std::sqrt(stiffness);
    const double decay = damping / 2;
    const double damped = std::sqrt(natural * natural - decay * decay);
    if (seconds <= 0) return 0;
    return 1 - std::exp(-decay * seconds) * (std::cos(damped * seconds) + decay / damped * std::sin(damped * seconds));
}

} // namespace zelvaine

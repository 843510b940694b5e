#pragma once

namespace zelvaine {

// A refused drop springs back (mass 1, stiffness 310, damping 22) for this long; then the
// preview goes.
inline constexpr double dropReturnSeconds = 0.42;

// How far along a released spring is after `seconds`, from 0 to 1 with a little overshoot.
double dropReturnProgress(double seconds);

} // namespace zelvaine

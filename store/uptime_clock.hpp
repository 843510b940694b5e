#pragma once

#include <chrono>
#include <functional>

namespace zelvaine {

// Monotonic seconds; injected so that tests decide how far apart two taps are.
using UptimeClock = std::function<double()>;

inline double steadyUptimeSeconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

} // namespace zelvaine

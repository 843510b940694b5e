#pragma once

#include <cstdlib>

namespace zelvaine {

// scripts/test runs every benchmark once, briefly, so that none rots unnoticed; a benchmark whose
// work is a fixed sample (games played, deals surveyed) then takes a small one.
inline bool smokeRun() { return std::getenv("ZELVAINE_BENCHMARK_SMOKE") != nullptr; }

} // namespace zelvaine

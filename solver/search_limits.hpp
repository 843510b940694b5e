#pragma once

#include "solver/solver_position.hpp"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zelvaine::solver {

// What one search may use: distinct positions, bytes of its own tables, and the longest line.
struct SearchLimits {
    std::uint64_t positions = 0;
    std::size_t memoryBytes = 0;
    std::size_t maxDepth = 0;
};

// How one search ended. `exhausted` is true when every position reachable with the moves it
// was allowed was examined without a cut by depth; `line` is the win, when one was found.
struct SearchOutcome {
    bool won = false;
    bool exhausted = false;
    std::vector<Step> line;
    std::uint64_t positions = 0;
};

} // namespace zelvaine::solver

#pragma once

#include "solver/search_limits.hpp"
#include "solver/solver_position.hpp"

#include <stop_token>

namespace zelvaine::solver {

// Depth-first over every legal move, children in the order evaluate() ranks them, each distinct
// position entered once. It keeps only the key of a position and the moves of the current line,
// about 16 bytes a position, so within the same memory it reaches about twice as many positions
// as bestFirst: the search to run when the answer may be "cannot be won". Its wins can be long.
SearchOutcome depthFirst(const SolverPosition& start, const SearchLimits& limits, std::stop_token stop);

} // namespace zelvaine::solver

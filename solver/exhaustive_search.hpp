#pragma once

#include "solver/search_limits.hpp"
#include "solver/solver_position.hpp"

#include <cstdint>
#include <stop_token>

namespace zelvaine::solver {

// How a depth-first search orders the children of a position: ranked by evaluate(), to find a
// win soon, or as generateMoves lists them, which costs a third less a position when the
// search is there to prove that nothing wins.
enum class ChildOrder : std::uint8_t { ranked, listed };

// Depth-first over every legal move, each distinct position entered once. It keeps only the key
// of a position and the moves of the current line, about 16 bytes a position, so within the same
// memory it reaches about twice as many positions as a best-first search: the search to run when
// the answer may be "cannot be won". Its wins can be long.
SearchOutcome depthFirst(const SolverPosition& start, const SearchLimits& limits, ChildOrder order, std::stop_token stop);

} // namespace zelvaine::solver

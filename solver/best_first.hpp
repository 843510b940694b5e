#pragma once

#include "solver/search_limits.hpp"
#include "solver/solver_position.hpp"

#include <stop_token>

namespace zelvaine::solver {

// Always expands the most promising position seen so far, by evaluate() less a cost for every
// move made, so that it heads for a win without wandering. Good at finding wins quickly; its
// positions cost about 40 bytes each.
SearchOutcome bestFirst(const SolverPosition& start, MoveSet moves, const SearchLimits& limits,
                        std::stop_token stop);

} // namespace zelvaine::solver

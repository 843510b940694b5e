#pragma once

#include "solver/solver_position.hpp"

#include <vector>

namespace zelvaine::solver {

// A winning line from `start`, made shorter where one move reaches a position the line only
// reaches later: from each position it takes the move that skips furthest ahead. Positions are
// compared by key, so the line may pass a position again in another column order; the move is
// always one of the position at hand. A line that would not end won comes back as it was.
std::vector<Step> shortenLine(const SolverPosition& start, const std::vector<Step>& line);

} // namespace zelvaine::solver

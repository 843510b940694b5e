#pragma once

#include "engine/game_state.hpp"

#include <cstddef>
#include <optional>

namespace zelvaine::testing {

// The plainest possible answer to "can this be won?": every source and destination the board
// can name, tried through canMove and applyMove, over exact positions (hand slot order,
// foundation order and decks all kept). No symmetry, no ordering, no pruning. None when the
// position has more than `maxPositions` reachable positions.
struct ReferenceOptions {
    std::size_t maxPositions = 200'000;
    bool allowFromFoundation = true;
};
std::optional<bool> referenceWinnable(const GameState& state, const ReferenceOptions& options = {});

} // namespace zelvaine::testing

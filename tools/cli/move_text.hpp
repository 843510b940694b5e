#pragma once

#include "engine/move.hpp"

#include <optional>
#include <string_view>

namespace zelvaine::cli {

// "tableau:C:I", "hand:I", "foundation:I". Any integer is accepted, on the board or not, so
// that scripts can probe how the rules answer every index.
std::optional<MoveSource> parseMoveSource(std::string_view text);
// "tableau:C", "foundation:F", "hand" (any free slot) or "hand:S".
std::optional<MoveDestination> parseMoveDestination(std::string_view text);

} // namespace zelvaine::cli

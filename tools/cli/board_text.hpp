#pragma once

#include "engine/game_state.hpp"

#include <string>

namespace zelvaine::cli {

// A plain-text picture of a position for a terminal: hand and foundations on top, then the
// ten columns side by side, each card as rank and suit letters ("10♥", "Q♠").
std::string boardText(const GameState& state);

} // namespace zelvaine::cli

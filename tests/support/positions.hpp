#pragma once

#include "engine/game_state.hpp"

#include <initializer_list>
#include <string_view>

namespace zelvaine::testing {

// A card from short text: rank (A, 2–10, J, Q, K) then suit (C, D, H, S), with a fresh id.
PlayingCard card(std::string_view text, std::int64_t deck = 0);
// Cards separated by spaces, top (first) to lowest (last): "KS QH JC".
Pile cards(std::string_view texts);

// Ten empty columns, eight empty foundations and four empty hand slots.
GameState emptyBoard();

// The foundation built from ace up to `top` in one suit ("5H" gives A♥ … 5♥).
Pile foundationUpTo(std::string_view top);


} // namespace zelvaine::testing

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

// A deal with known moves, shaped like a real one (ten columns of ten, a full hand): column 0
// ends in 9♣ 8♥, column 3 in 10♦, column 4 in 9♠, every other column in a queen; the hand holds
// A♦ K♠ K♠ K♣; the foundations are empty.
GameState knownDeal();

// The foundation built from ace up to `top` in one suit ("5H" gives A♥ … 5♥).
Pile foundationUpTo(std::string_view top);

// Every suit built to the queen on both foundations, the matching king alone in column f for
// foundation f: eight moves from the win, and a finish that plays itself.
GameState kingsLeft();

} // namespace zelvaine::testing

#pragma once

#include "engine/game_state.hpp"
#include "engine/move.hpp"

#include <cstdint>
#include <optional>

namespace zelvaine {

// One step of the automatic finish: a hand card or a column's lowest card onto a foundation.
struct FoundationAutoMove {
    MoveSource source;
    std::int64_t foundationIndex = 0;
    PlayingCard card;

    friend bool operator==(const FoundationAutoMove&, const FoundationAutoMove&) = default;
};

// The cheap pre-filter: no king waiting in the hand or lying on other cards in a column.
bool hasNoBlockedKing(const GameState& state);

// Would repeating nextFoundationAutoMove empty the tableau and the hand?
bool canAutoComplete(const GameState& state);

// Hand slots before columns, lower slots and columns first, the lowest accepting foundation.
std::optional<FoundationAutoMove> nextFoundationAutoMove(const GameState& state);

} // namespace zelvaine

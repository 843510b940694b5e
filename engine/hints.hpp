#pragma once

#include "engine/game_state.hpp"
#include "engine/move.hpp"

#include <cstdint>
#include <optional>
#include <string>

namespace zelvaine {

// The sentence suggesting the best move for one source, or none when it has nothing worth doing.
std::optional<std::string> hintText(const GameState& state, const MoveSource& source);

// A board-wide hint: the source to highlight and its sentence, or no source and the fallback
// advice when nothing useful was found.
struct Hint {
    std::optional<MoveSource> source;
    std::string text;
};
Hint findHint(const GameState& state);

// The sentence for one given move, in the same forms as hintText; for moves chosen elsewhere
// (the solver's winning line). `source` must be movable.
std::string moveHintText(const GameState& state, const MoveSource& source, const MoveDestination& destination);

// Does this string already rest on a correct parent, so that moving it gains nothing?
bool isAlreadyBuilt(const GameState& state, const MoveSource& source);

// Where a double-tap sends the source: a foundation first, else the one accepting column.
std::optional<MoveDestination> automaticDestination(const GameState& state, const MoveSource& source);

// The first foundation that accepts the source's single card ("Move to Foundation").
std::optional<std::int64_t> foundationDestination(const GameState& state, const MoveSource& source);

// "No foundation can accept seven of hearts."
std::string noFoundationAcceptsText(const PlayingCard& card);

} // namespace zelvaine

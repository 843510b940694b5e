#pragma once

#include "engine/game_state.hpp"
#include "engine/move.hpp"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace zelvaine {

// The single authority on which moves are legal and what they do. Every operation is a pure
// function of the position it is given and answers any index, on the board or not.

// The cards `source` would move, in column order; none when nothing there can move.
std::optional<std::vector<PlayingCard>> movableCards(const GameState& state, const MoveSource& source);
// The same cards without copying them; the view lives as long as `state` is unchanged.
std::optional<std::span<const PlayingCard>> movableCardsView(const GameState& state, const MoveSource& source);

// Do the cards from `start` to the end of `column` descend one rank at a time in alternating colours?
bool isValidString(const GameState& state, std::int64_t column, std::int64_t start);

bool canPlaceOnTableau(const GameState& state, std::span<const PlayingCard> cards, std::int64_t column);
bool canPlaceOnFoundation(const GameState& state, const PlayingCard& card, std::int64_t foundation);

// The slot a card coming into the hand from a column or a foundation would fill.
std::optional<std::int64_t> freeHandSlot(const GameState& state, std::optional<std::int64_t> requested);
// The slot a hand card moving elsewhere in the hand would go to (a filled one is exchanged).
std::optional<std::int64_t> handRearrangementSlot(const GameState& state, std::optional<std::int64_t> requested,
                                                  std::int64_t from);

// Whether applyMove would move; computes no position and no text.
bool canMove(const GameState& state, const MoveSource& source, const MoveDestination& destination);
bool canMoveToAnyFoundation(const GameState& state, const MoveSource& source);

struct LegalMove {
    MoveSource source;
    MoveDestination destination;
};
// Every counted move the position allows, any free hand slot standing for all of them; for
// random play in tests and measurements. Rearrangements inside the hand are left out.
std::vector<LegalMove> legalMoves(const GameState& state);

// The taking-away half of a move, made on a copy of the position.
void removeMovedCards(GameState& state, const MoveSource& source);

std::string refusalReason(const GameState& state, std::span<const PlayingCard> cards, const MoveDestination& destination);

MoveOutcome applyMove(const GameState& state, const MoveSource& source, const MoveDestination& destination);

} // namespace zelvaine

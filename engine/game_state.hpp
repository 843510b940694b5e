#pragma once

#include "engine/card.hpp"
#include "engine/random_source.hpp"

#include <cstdint>
#include <optional>
#include <vector>

namespace zelvaine {

inline constexpr std::size_t tableauColumnCount = 10;
inline constexpr std::size_t foundationCount = 8;
inline constexpr std::size_t handSlotCount = 4;
inline constexpr std::size_t cardCount = 104;
// No game played by hand comes near this, and a count kept below it can always be raised by one.
inline constexpr std::int64_t moveCountLimit = 100'000'000;

using Pile = std::vector<PlayingCard>;
using HandSlot = std::optional<PlayingCard>;

// One position. A column runs from its top card (index 0, covered by the rest) to its lowest
// card (the last, fully visible); a foundation from its ace at index 0 to its top card.
struct GameState {
    std::vector<Pile> tableau;
    std::vector<Pile> foundations;
    std::vector<HandSlot> hand;
    std::int64_t moveCount = 0;

    friend bool operator==(const GameState&, const GameState&) = default;
};

// Shuffles a fresh two-deck set with the system's secure source and deals it.
GameState dealNewGame();
// The same deal with the draws taken from `random`.
GameState dealNewGame(RandomSource& random);

// The shape check applied to every position that is loaded: ten columns, eight foundations,
// four slots, 104 cards with 104 distinct ids. Card order and values are not judged.
bool isWellFormed(const GameState& state);

// The numbers a position read from outside may carry: a move count from 0 to moveCountLimit and
// deck numbers 0 or 1. Anything else came from a damaged or hostile file.
bool hasSaneNumbers(const GameState& state);

bool isWon(const GameState& state);

std::size_t filledHandSlots(const GameState& state);

} // namespace zelvaine

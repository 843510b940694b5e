#pragma once

#include "store/game_store.hpp"

#include <cstdint>

namespace zelvaine {

// Turns the player's taps on the board into store operations. A double tap reaches these as
// two single taps; the store's clock tells them apart.
namespace taps {

// A card of a column. One that starts no string that can move is never selected: with another
// card selected, the tap only names its column as the destination.
void onTableauCard(GameStore& store, std::int64_t column, std::int64_t cardIndex);
// A hand card, or a foundation's top card.
void onHandCard(GameStore& store, std::int64_t slot);
void onFoundationCard(GameStore& store, std::int64_t index);
// An empty column or the table below a column's cards, an empty hand slot, an empty foundation.
void onEmptyPlace(GameStore& store, const MoveDestination& destination);
// The bare table: forget the selection, the message and a pending double tap.
void onTable(GameStore& store);

} // namespace taps
} // namespace zelvaine

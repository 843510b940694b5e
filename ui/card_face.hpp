#pragma once

#include "engine/card.hpp"

#include <string>

namespace zelvaine {

// The picture of a card's face: "card_ace_clubs", "card_10_spades", "court_jack_hearts". Both
// decks share the pictures.
std::string facePictureName(const PlayingCard& card);

} // namespace zelvaine

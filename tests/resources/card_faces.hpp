#pragma once

#include "engine/card.hpp"

#include <filesystem>
#include <string>

namespace zelvaine::testing {

inline const std::filesystem::path cardFacesFolder = ZELVAINE_TEST_CARD_FACES;

// The name the card view looks a face up by: "card_10_spades", "court_jack_spades",
// "card_ace_spades".
inline std::string faceName(Rank rank, Suit suit)
{
    const bool court = rank == Rank::jack || rank == Rank::queen || rank == Rank::king;
    const bool numbered = rank != Rank::ace && !court;
    return std::string(court ? "court_" : "card_") +
           (numbered ? std::to_string(rawValue(rank)) : std::string(word(rank))) + "_" + std::string(rawValue(suit));
}

inline std::filesystem::path facePath(const PlayingCard& card)
{
    return cardFacesFolder / (faceName(card.rank, card.suit) + ".png");
}

} // namespace zelvaine::testing

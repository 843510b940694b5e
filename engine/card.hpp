#pragma once

#include "engine/uuid.hpp"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zelvaine {

enum class Suit : std::uint8_t { clubs, diamonds, hearts, spades };
inline constexpr std::array allSuits{Suit::clubs, Suit::diamonds, Suit::hearts, Suit::spades};

constexpr bool isRed(Suit suit) { return suit == Suit::diamonds || suit == Suit::hearts; }
// The raw text, also the English word.
std::string_view rawValue(Suit suit);
// Exact, case-sensitive match of a raw text.
std::optional<Suit> suitFromRaw(std::string_view text);
std::string localizedName(Suit suit);

enum class Rank : std::uint8_t { ace = 1, two, three, four, five, six, seven, eight, nine, ten, jack, queen, king };

constexpr int rawValue(Rank rank) { return static_cast<int>(rank); }
constexpr std::optional<Rank> rankFromRaw(std::int64_t value)
{
    if (value < 1 || value > 13) return std::nullopt;
    return static_cast<Rank>(value);
}
constexpr std::optional<Rank> nextHigher(Rank rank) { return rankFromRaw(rawValue(rank) + 1); }
std::string_view word(Rank rank);
std::string localizedName(Rank rank);

struct PlayingCard {
    Uuid id;
    Suit suit = Suit::clubs;
    Rank rank = Rank::ace;
    std::int64_t deck = 0;

    friend bool operator==(const PlayingCard&, const PlayingCard&) = default;
};

// "queen of hearts": the one way any text names a card.
std::string accessibleName(const PlayingCard& card);

// The 104 cards of two decks in their fixed order (deck, then suit, then rank), each with a
// fresh random id; the deal shuffles them.
std::vector<PlayingCard> makeTwoDeckSet();

constexpr bool isOneRankLower(const PlayingCard& lower, const PlayingCard& upper)
{
    return rawValue(lower.rank) + 1 == rawValue(upper.rank);
}
constexpr bool haveOppositeColours(const PlayingCard& a, const PlayingCard& b)
{
    return isRed(a.suit) != isRed(b.suit);
}
// May `lower` rest on `upper` in a column?
constexpr bool buildsDownOn(const PlayingCard& lower, const PlayingCard& upper)
{
    return isOneRankLower(lower, upper) && haveOppositeColours(lower, upper);
}

struct PlayingCardHash {
    std::size_t operator()(const PlayingCard& card) const noexcept;
};

} // namespace zelvaine

template <>
struct std::hash<zelvaine::PlayingCard> : zelvaine::PlayingCardHash {};

#include "engine/card.hpp"

#include "engine/localizer.hpp"

#include <functional>

namespace zelvaine {
namespace {

constexpr std::array<std::string_view, 4> suitTexts{
    QT_TRANSLATE_NOOP("Zelvaine", "clubs"),
    QT_TRANSLATE_NOOP("Zelvaine", "diamonds"),
    QT_TRANSLATE_NOOP("Zelvaine", "hearts"),
    QT_TRANSLATE_NOOP("Zelvaine", "spades"),
};

constexpr std::array<std::string_view, 13> rankWords{
    QT_TRANSLATE_NOOP("Zelvaine", "ace"),   QT_TRANSLATE_NOOP("Zelvaine", "two"),
    QT_TRANSLATE_NOOP("Zelvaine", "three"), QT_TRANSLATE_NOOP("Zelvaine", "four"),
    QT_TRANSLATE_NOOP("Zelvaine", "five"),  QT_TRANSLATE_NOOP("Zelvaine", "six"),
    QT_TRANSLATE_NOOP("Zelvaine", "seven"), QT_TRANSLATE_NOOP("Zelvaine", "eight"),
    QT_TRANSLATE_NOOP("Zelvaine", "nine"),  QT_TRANSLATE_NOOP("Zelvaine", "ten"),
    QT_TRANSLATE_NOOP("Zelvaine", "jack"),  QT_TRANSLATE_NOOP("Zelvaine", "queen"),
    QT_TRANSLATE_NOOP("Zelvaine", "king"),
};

void combine(std::size_t& seed, std::size_t value)
{
    seed ^= value + 0x9E3779B97F4A7C15ULL + (seed << 6) + (seed >> 2);
}

} // namespace

std::string_view rawValue(Suit suit) { return suitTexts[static_cast<std::size_t>(suit)]; }

std::optional<Suit> suitFromRaw(std::string_view text)
{
    for (Suit suit : allSuits) {
        if (rawValue(suit) == text) return suit;
    }
    return std::nullopt;
}

std::string localizedName(Suit suit) { return localized(rawValue(suit)); }

std::string_view word(Rank rank) { return rankWords[static_cast<std::size_t>(rawValue(rank) - 1)]; }

std::string localizedName(Rank rank) { return localized(word(rank)); }

std::string accessibleName(const PlayingCard& card)
{
    //: Accessible playing-card name, for example “queen of hearts”.
    const std::string pattern = localized(QT_TRANSLATE_NOOP("Zelvaine", "%1 of %2"));
    return formatText(pattern, {localizedName(card.rank), localizedName(card.suit)});
}

std::vector<PlayingCard> makeTwoDeckSet()
{
    std::vector<PlayingCard> cards;
    cards.reserve(104);
    for (std::int64_t deck = 0; deck < 2; ++deck) {
        for (Suit suit : allSuits) {
            for (int rank = 1; rank <= 13; ++rank) {
                cards.push_back(PlayingCard{Uuid::random(), suit, static_cast<Rank>(rank), deck});
            }
        }
    }
    return cards;
}

std::size_t PlayingCardHash::operator()(const PlayingCard& card) const noexcept
{
    std::size_t seed = UuidHash{}(card.id);
    combine(seed, std::hash<std::string_view>{}(rawValue(card.suit)));
    combine(seed, static_cast<std::size_t>(rawValue(card.rank)));
    combine(seed, std::hash<std::int64_t>{}(card.deck));
    return seed;
}

} // namespace zelvaine

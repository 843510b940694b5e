#include "engine/game_state.hpp"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace zelvaine {

GameState dealNewGame()
{
    SecureRandom random;
    return dealNewGame(random);
}

GameState dealNewGame(RandomSource& random)
{
    std::vector<PlayingCard> cards = makeTwoDeckSet();
    // Forward Fisher–Yates.
    for (std::size_t i = 0; i + 1 < cards.size(); ++i) {
        const std::size_t j = i + static_cast<std::size_t>(uniformBelow(random, cards.size() - i));
        if (j != i) std::swap(cards[i], cards[j]);
    }

    GameState state;
    state.tableau.resize(tableauColumnCount);
    for (std::size_t c = 0; c < tableauColumnCount; ++c) {
        const auto first = cards.begin() + static_cast<std::ptrdiff_t>(10 * c);
        state.tableau[c].assign(first, first + 10);
    }
    state.foundations.resize(foundationCount);
    for (std::size_t s = 0; s < handSlotCount; ++s) state.hand.emplace_back(cards[100 + s]);
    return state;
}

bool isWellFormed(const GameState& state)
{
    if (state.tableau.size() != tableauColumnCount || state.foundations.size() != foundationCount ||
        state.hand.size() != handSlotCount) {
        return false;
    }
    std::size_t count = 0;
    for (const Pile& column : state.tableau) count += column.size();
    for (const Pile& pile : state.foundations) count += pile.size();
    count += filledHandSlots(state);
    if (count != cardCount) return false;

    // Sorting a fixed array of the ids as integer pairs beats hashing: every position of a
    // restored history is checked at start.
    std::array<std::pair<std::uint64_t, std::uint64_t>, cardCount> ids;
    std::size_t next = 0;
    auto add = [&](const PlayingCard& card) {
        std::memcpy(&ids[next].first, card.id.bytes().data(), 8);
        std::memcpy(&ids[next].second, card.id.bytes().data() + 8, 8);
        ++next;
    };
    for (const Pile& column : state.tableau) std::ranges::for_each(column, add);
    for (const Pile& pile : state.foundations) std::ranges::for_each(pile, add);
    for (const HandSlot& slot : state.hand) {
        if (slot) add(*slot);
    }
    std::ranges::sort(ids);
    return std::ranges::adjacent_find(ids) == ids.end();
}

bool hasSaneNumbers(const GameState& state)
{
    if (state.moveCount < 0 || state.moveCount > moveCountLimit) return false;
    const auto saneDeck = [](const PlayingCard& card) { return card.deck == 0 || card.deck == 1; };
    for (const Pile& column : state.tableau) {
        if (!std::ranges::all_of(column, saneDeck)) return false;
    }
    for (const Pile& pile : state.foundations) {
        if (!std::ranges::all_of(pile, saneDeck)) return false;
    }
    return std::ranges::all_of(state.hand, [&](const HandSlot& slot) { return !slot || saneDeck(*slot); });
}

bool isWon(const GameState& state)
{
    const bool columnsEmpty = std::ranges::all_of(state.tableau, &Pile::empty);
    const bool handEmpty = std::ranges::none_of(state.hand, [](const HandSlot& slot) { return slot.has_value(); });
    const bool foundationsComplete = std::ranges::all_of(state.foundations, [](const Pile& pile) {
        return pile.size() == 13 && pile.back().rank == Rank::king;
    });
    return columnsEmpty && handEmpty && foundationsComplete;
}

std::size_t filledHandSlots(const GameState& state)
{
    return static_cast<std::size_t>(std::ranges::count_if(state.hand, [](const HandSlot& s) { return s.has_value(); }));
}

} // namespace zelvaine

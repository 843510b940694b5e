#include "engine/auto_complete.hpp"

#include "engine/move_rules.hpp"

#include <algorithm>
#include <array>

namespace zelvaine {
namespace {

// The top of a foundation as far as acceptance is concerned.
struct FoundationTop {
    bool empty = true;
    Suit suit = Suit::clubs;
    int rank = 0;

    bool accepts(const PlayingCard& card) const
    {
        if (empty) return card.rank == Rank::ace;
        return card.suit == suit && rawValue(card.rank) == rank + 1;
    }
};

std::optional<std::size_t> acceptingFoundation(std::span<const FoundationTop> tops, const PlayingCard& card)
{
    for (std::size_t f = 0; f < tops.size(); ++f) {
        if (tops[f].accepts(card)) return f;
    }
    return std::nullopt;
}

} // namespace

bool hasNoBlockedKing(const GameState& state)
{
    const bool kingInHand =
        std::ranges::any_of(state.hand, [](const HandSlot& slot) { return slot && slot->rank == Rank::king; });
    if (kingInHand) return false;
    for (const Pile& column : state.tableau) {
        for (std::size_t i = 1; i < column.size(); ++i) {
            if (column[i].rank == Rank::king) return false;
        }
    }
    return true;
}

std::optional<FoundationAutoMove> nextFoundationAutoMove(const GameState& state)
{
    for (std::size_t s = 0; s < state.hand.size(); ++s) {
        const HandSlot& slot = state.hand[s];
        if (!slot) continue;
        for (std::size_t f = 0; f < state.foundations.size(); ++f) {
            if (canPlaceOnFoundation(state, *slot, static_cast<std::int64_t>(f))) {
                return FoundationAutoMove{MoveSource::hand(static_cast<std::int64_t>(s)), static_cast<std::int64_t>(f),
                                          *slot};
            }
        }
    }
    for (std::size_t c = 0; c < state.tableau.size(); ++c) {
        const Pile& column = state.tableau[c];
        if (column.empty()) continue;
        for (std::size_t f = 0; f < state.foundations.size(); ++f) {
            if (canPlaceOnFoundation(state, column.back(), static_cast<std::int64_t>(f))) {
                const auto last = static_cast<std::int64_t>(column.size()) - 1;
                return FoundationAutoMove{MoveSource::tableau(static_cast<std::int64_t>(c), last),
                                          static_cast<std::int64_t>(f), column.back()};
            }
        }
    }
    return std::nullopt;
}

bool canAutoComplete(const GameState& state)
{
    // Simulates the same step order as nextFoundationAutoMove, on lightweight copies: only each
    // foundation's top, each column's remaining length and which hand slots are still full.
    std::vector<FoundationTop> tops(state.foundations.size());
    for (std::size_t f = 0; f < tops.size(); ++f) {
        if (const Pile& pile = state.foundations[f]; !pile.empty()) {
            tops[f] = {false, pile.back().suit, rawValue(pile.back().rank)};
        }
    }
    std::vector<std::size_t> remaining(state.tableau.size());
    std::size_t cardsLeft = 0;
    for (std::size_t c = 0; c < remaining.size(); ++c) {
        remaining[c] = state.tableau[c].size();
        cardsLeft += remaining[c];
    }
    std::vector<bool> inHand(state.hand.size());
    for (std::size_t s = 0; s < inHand.size(); ++s) {
        inHand[s] = state.hand[s].has_value();
        cardsLeft += inHand[s] ? 1 : 0;
    }

    auto play = [&](const PlayingCard& card) {
        const auto f = acceptingFoundation(tops, card);
        if (!f) return false;
        tops[*f] = {false, card.suit, rawValue(card.rank)};
        --cardsLeft;
        return true;
    };

    for (bool progressed = true; progressed && cardsLeft > 0;) {
        progressed = false;
        for (std::size_t s = 0; s < inHand.size() && !progressed; ++s) {
            if (inHand[s] && play(*state.hand[s])) {
                inHand[s] = false;
                progressed = true;
            }
        }
        for (std::size_t c = 0; c < remaining.size() && !progressed; ++c) {
            if (remaining[c] > 0 && play(state.tableau[c][remaining[c] - 1])) {
                --remaining[c];
                progressed = true;
            }
        }
    }
    return cardsLeft == 0;
}

} // namespace zelvaine

#include "engine/move_rules.hpp"

#include "engine/localizer.hpp"

#include <algorithm>

namespace zelvaine {
namespace {

template <class Container>
bool holdsIndex(const Container& items, std::int64_t index)
{
    return index >= 0 && static_cast<std::uint64_t>(index) < items.size();
}

template <class Container>
auto& at(Container& items, std::int64_t index)
{
    return items[static_cast<std::size_t>(index)];
}

bool isLowestOfColumn(const GameState& state, const MoveSource& source)
{
    return source.isTableau() && holdsIndex(state.tableau, source.index) &&
           source.cardIndex + 1 == static_cast<std::int64_t>(at(state.tableau, source.index).size());
}

std::optional<std::int64_t> lowestEmptySlot(const GameState& state, std::optional<std::int64_t> except)
{
    for (std::size_t s = 0; s < state.hand.size(); ++s) {
        const auto slot = static_cast<std::int64_t>(s);
        if (!state.hand[s] && slot != except) return slot;
    }
    return std::nullopt;
}

void extendHand(GameState& state, std::size_t slots)
{
    if (state.hand.size() < slots) state.hand.resize(slots);
}

MoveRefused refuse(const char* key) { return MoveRefused{localized(key)}; }

} // namespace

std::optional<std::span<const PlayingCard>> movableCardsView(const GameState& state, const MoveSource& source)
{
    switch (source.kind) {
    case MoveSource::Kind::tableau: {
        if (!isValidString(state, source.index, source.cardIndex)) return std::nullopt;
        const Pile& column = at(state.tableau, source.index);
        return std::span<const PlayingCard>(column).subspan(static_cast<std::size_t>(source.cardIndex));
    }
    case MoveSource::Kind::hand: {
        if (!holdsIndex(state.hand, source.index)) return std::nullopt;
        const HandSlot& slot = at(state.hand, source.index);
        if (!slot) return std::nullopt;
        return std::span<const PlayingCard>(&*slot, 1);
    }
    case MoveSource::Kind::foundation: {
        if (!holdsIndex(state.foundations, source.index)) return std::nullopt;
        const Pile& pile = at(state.foundations, source.index);
        if (pile.empty()) return std::nullopt;
        return std::span<const PlayingCard>(pile).last(1);
    }
    }
    return std::nullopt;
}

std::optional<std::vector<PlayingCard>> movableCards(const GameState& state, const MoveSource& source)
{
    auto view = movableCardsView(state, source);
    if (!view) return std::nullopt;
    return std::vector<PlayingCard>(view->begin(), view->end());
}

bool isValidString(const GameState& state, std::int64_t column, std::int64_t start)
{
    if (!holdsIndex(state.tableau, column)) return false;
    const Pile& cards = at(state.tableau, column);
    if (!holdsIndex(cards, start)) return false;
    for (std::size_t p = static_cast<std::size_t>(start); p + 1 < cards.size(); ++p) {
        if (!buildsDownOn(cards[p + 1], cards[p])) return false;
    }
    return true;
}

bool canPlaceOnTableau(const GameState& state, std::span<const PlayingCard> cards, std::int64_t column)
{
    if (!holdsIndex(state.tableau, column) || cards.empty()) return false;
    const Pile& target = at(state.tableau, column);
    if (target.empty()) return cards.front().rank == Rank::king;
    return buildsDownOn(cards.front(), target.back());
}

bool canPlaceOnFoundation(const GameState& state, const PlayingCard& card, std::int64_t foundation)
{
    if (!holdsIndex(state.foundations, foundation)) return false;
    const Pile& pile = at(state.foundations, foundation);
    if (pile.empty()) return card.rank == Rank::ace;
    return card.suit == pile.back().suit && isOneRankLower(pile.back(), card);
}

std::optional<std::int64_t> freeHandSlot(const GameState& state, std::optional<std::int64_t> requested)
{
    const auto existing = static_cast<std::int64_t>(state.hand.size());
    if (!requested) {
        if (auto empty = lowestEmptySlot(state, std::nullopt)) return empty;
        if (existing < static_cast<std::int64_t>(handSlotCount)) return existing;
        return std::nullopt;
    }
    const std::int64_t s = *requested;
    if (s < 0 || s >= static_cast<std::int64_t>(handSlotCount)) return std::nullopt;
    if (s >= existing || !at(state.hand, s)) return s;
    return std::nullopt;
}

std::optional<std::int64_t> handRearrangementSlot(const GameState& state, std::optional<std::int64_t> requested,
                                                  std::int64_t from)
{
    if (!holdsIndex(state.hand, from) || !at(state.hand, from)) return std::nullopt;
    if (!requested) return lowestEmptySlot(state, from);
    const std::int64_t s = *requested;
    if (s < 0 || s >= static_cast<std::int64_t>(handSlotCount) || s == from) return std::nullopt;
    return s;
}

bool canMove(const GameState& state, const MoveSource& source, const MoveDestination& destination)
{
    const auto cards = movableCardsView(state, source);
    if (!cards) return false;
    switch (destination.kind) {
    case MoveDestination::Kind::tableau: {
        const std::int64_t column = destination.index.value_or(-1);
        if (source.isTableau() && source.index == column) return false;
        return canPlaceOnTableau(state, *cards, column);
    }
    case MoveDestination::Kind::foundation:
        return !source.isFoundation() && cards->size() == 1 &&
               canPlaceOnFoundation(state, cards->front(), destination.index.value_or(-1));
    case MoveDestination::Kind::hand:
        if (source.isTableau()) return isLowestOfColumn(state, source) && freeHandSlot(state, destination.index);
        if (source.isHand()) return handRearrangementSlot(state, destination.index, source.index).has_value();
        return freeHandSlot(state, destination.index).has_value();
    }
    return false;
}

std::vector<LegalMove> legalMoves(const GameState& state)
{
    std::vector<MoveSource> sources;
    for (std::size_t c = 0; c < state.tableau.size(); ++c) {
        for (std::size_t i = 0; i < state.tableau[c].size(); ++i) {
            sources.push_back(MoveSource::tableau(static_cast<std::int64_t>(c), static_cast<std::int64_t>(i)));
        }
    }
    for (std::size_t h = 0; h < state.hand.size(); ++h)
        sources.push_back(MoveSource::hand(static_cast<std::int64_t>(h)));
    for (std::size_t f = 0; f < state.foundations.size(); ++f) {
        sources.push_back(MoveSource::foundation(static_cast<std::int64_t>(f)));
    }
    std::vector<MoveDestination> destinations{MoveDestination::hand()};
    for (std::size_t c = 0; c < state.tableau.size(); ++c)
        destinations.push_back(MoveDestination::tableau(static_cast<std::int64_t>(c)));
    for (std::size_t f = 0; f < state.foundations.size(); ++f) {
        destinations.push_back(MoveDestination::foundation(static_cast<std::int64_t>(f)));
    }
    std::vector<LegalMove> moves;
    for (const MoveSource& source : sources) {
        for (const MoveDestination& destination : destinations) {
            if (source.isHand() && destination.isHand()) continue;
            if (canMove(state, source, destination)) moves.push_back({source, destination});
        }
    }
    return moves;
}

bool canMoveToAnyFoundation(const GameState& state, const MoveSource& source)
{
    for (std::size_t f = 0; f < state.foundations.size(); ++f) {
        if (canMove(state, source, MoveDestination::foundation(static_cast<std::int64_t>(f)))) return true;
    }
    return false;
}

void removeMovedCards(GameState& state, const MoveSource& source)
{
    switch (source.kind) {
    case MoveSource::Kind::tableau:
        if (holdsIndex(state.tableau, source.index)) {
            Pile& column = at(state.tableau, source.index);
            if (holdsIndex(column, source.cardIndex)) column.resize(static_cast<std::size_t>(source.cardIndex));
        }
        break;
    case MoveSource::Kind::hand:
        if (holdsIndex(state.hand, source.index)) at(state.hand, source.index).reset();
        break;
    case MoveSource::Kind::foundation:
        if (holdsIndex(state.foundations, source.index) && !at(state.foundations, source.index).empty()) {
            at(state.foundations, source.index).pop_back();
        }
        break;
    }
}

std::string refusalReason(const GameState& state, std::span<const PlayingCard> cards, const MoveDestination& destination)
{
    if (cards.empty()) return localized(QT_TRANSLATE_NOOP("Zelvaine", "That move is not available."));
    const PlayingCard& moving = cards.front();
    switch (destination.kind) {
    case MoveDestination::Kind::tableau: {
        const std::int64_t column = destination.index.value_or(-1);
        // The board never names a column beyond the table; there is no column to describe.
        if (!holdsIndex(state.tableau, column)) {
            return localized(QT_TRANSLATE_NOOP("Zelvaine", "That move is not available."));
        }
        const Pile& target = at(state.tableau, column);
        if (target.empty()) {
            return localized(
                QT_TRANSLATE_NOOP("Zelvaine",
                                  "Only a king or a string beginning with a king can fill an empty column."));
        }
        const auto higher = nextHigher(moving.rank);
        const std::string needed =
            higher ? localizedName(*higher) : localized(QT_TRANSLATE_NOOP("Zelvaine", "next rank"));
        const std::string pattern =
            localized(QT_TRANSLATE_NOOP("Zelvaine", "%1 must land on an opposite-color %2. %3 cannot accept it."));
        return formatText(pattern, {localizedName(moving.rank), needed, accessibleName(target.back())});
    }
    case MoveDestination::Kind::foundation:
        if (moving.rank == Rank::ace) {
            return localized(QT_TRANSLATE_NOOP("Zelvaine", "That foundation already has a card."));
        }
        return localized(
            QT_TRANSLATE_NOOP("Zelvaine", "Foundations build upward in the same suit, beginning with an ace."));
    case MoveDestination::Kind::hand:
        return localized(QT_TRANSLATE_NOOP("Zelvaine", "Your hand can hold at most four cards."));
    }
    return localized(QT_TRANSLATE_NOOP("Zelvaine", "That move is not available."));
}

MoveOutcome applyMove(const GameState& state, const MoveSource& source, const MoveDestination& destination)
{
    const auto cards = movableCardsView(state, source);
    if (!cards) return refuse(QT_TRANSLATE_NOOP("Zelvaine", "That card is not available."));

    auto moved = [&](GameState next, bool counted) -> MoveOutcome {
        // Positions from outside are checked against the limit; one made here stops at it.
        if (counted) next.moveCount = state.moveCount < moveCountLimit ? state.moveCount + 1 : moveCountLimit;
        return MoveMoved{std::move(next), counted, source.isFoundation()};
    };

    switch (destination.kind) {
    case MoveDestination::Kind::tableau: {
        const std::int64_t column = destination.index.value_or(-1);
        if (source.isTableau() && source.index == column) return MoveIgnored{};
        if (!canPlaceOnTableau(state, *cards, column)) return MoveRefused{refusalReason(state, *cards, destination)};
        GameState next = state;
        Pile& target = at(next.tableau, column);
        target.insert(target.end(), cards->begin(), cards->end());
        removeMovedCards(next, source);
        return moved(std::move(next), true);
    }
    case MoveDestination::Kind::foundation: {
        const std::int64_t foundation = destination.index.value_or(-1);
        if (source.isFoundation()) return MoveRefused{refusalReason(state, *cards, destination)};
        if (cards->size() > 1) {
            return refuse(QT_TRANSLATE_NOOP("Zelvaine", "Only one card at a time can move to a foundation."));
        }
        if (!canPlaceOnFoundation(state, cards->front(), foundation)) {
            return MoveRefused{refusalReason(state, *cards, destination)};
        }
        GameState next = state;
        at(next.foundations, foundation).push_back(cards->front());
        removeMovedCards(next, source);
        return moved(std::move(next), true);
    }
    case MoveDestination::Kind::hand: {
        if (source.isTableau() && !isLowestOfColumn(state, source)) {
            return refuse(QT_TRANSLATE_NOOP(
                "Zelvaine", "Only the lowest card of a column or the top card of a foundation can move to your hand."));
        }
        if (source.isHand()) {
            if (destination.index == source.index) return MoveIgnored{};
            const auto target = handRearrangementSlot(state, destination.index, source.index);
            if (!target) return MoveRefused{refusalReason(state, *cards, destination)};
            GameState next = state;
            extendHand(next, handSlotCount);
            std::swap(at(next.hand, source.index), at(next.hand, *target));
            return moved(std::move(next), false);
        }
        const auto target = freeHandSlot(state, destination.index);
        if (!target) return MoveRefused{refusalReason(state, *cards, destination)};
        GameState next = state;
        const PlayingCard card = cards->front();
        removeMovedCards(next, source);
        extendHand(next, static_cast<std::size_t>(*target) + 1);
        at(next.hand, *target) = card;
        return moved(std::move(next), true);
    }
    }
    return refuse(QT_TRANSLATE_NOOP("Zelvaine", "That move is not available."));
}

} // namespace zelvaine

#include "engine/hints.hpp"

#include "engine/localizer.hpp"
#include "engine/move_rules.hpp"

#include <string>

namespace zelvaine {
namespace {

std::optional<std::int64_t> firstAcceptingFoundation(const GameState& state, const PlayingCard& card)
{
    for (std::size_t f = 0; f < state.foundations.size(); ++f) {
        if (canPlaceOnFoundation(state, card, static_cast<std::int64_t>(f))) return static_cast<std::int64_t>(f);
    }
    return std::nullopt;
}

bool isOwnColumn(const MoveSource& source, std::size_t column)
{
    return source.isTableau() && source.index == static_cast<std::int64_t>(column);
}

std::string number(std::int64_t zeroBased) { return std::to_string(zeroBased + 1); }

} // namespace

std::optional<std::string> hintText(const GameState& state, const MoveSource& source)
{
    const auto cards = movableCardsView(state, source);
    if (!cards) return std::nullopt;
    const PlayingCard& first = cards->front();

    if (cards->size() == 1 && !source.isFoundation()) {
        if (auto f = firstAcceptingFoundation(state, first)) {
            return formatText(localized(QT_TRANSLATE_NOOP("Zelvaine", "Move %1 to foundation %2.")),
                              {accessibleName(first), number(*f)});
        }
    }
    if (isAlreadyBuilt(state, source)) return std::nullopt;

    for (std::size_t c = 0; c < state.tableau.size(); ++c) {
        if (isOwnColumn(source, c) || !canPlaceOnTableau(state, *cards, static_cast<std::int64_t>(c))) continue;
        const std::string column = number(static_cast<std::int64_t>(c));
        if (cards->size() == 1) {
            return formatText(localized(QT_TRANSLATE_NOOP("Zelvaine", "Move %1 to column %2.")),
                              {accessibleName(first), column});
        }
        return formatText(localized(QT_TRANSLATE_NOOP("Zelvaine", "Move %1 and its string to column %2.")),
                          {accessibleName(first), column});
    }

    if (source.isFoundation() && freeHandSlot(state, std::nullopt)) {
        return formatText(localized(QT_TRANSLATE_NOOP("Zelvaine", "Move %1 to your hand.")), {accessibleName(first)});
    }
    return std::nullopt;
}

std::string moveHintText(const GameState& state, const MoveSource& source, const MoveDestination& destination)
{
    const auto cards = movableCardsView(state, source);
    if (!cards || cards->empty()) return {};
    const PlayingCard& first = cards->front();
    switch (destination.kind) {
    case MoveDestination::Kind::foundation:
        return formatText(localized(QT_TRANSLATE_NOOP("Zelvaine", "Move %1 to foundation %2.")),
                          {accessibleName(first), number(destination.index.value_or(0))});
    case MoveDestination::Kind::hand:
        return formatText(localized(QT_TRANSLATE_NOOP("Zelvaine", "Move %1 to your hand.")), {accessibleName(first)});
    case MoveDestination::Kind::tableau: break;
    }
    const std::string column = number(destination.index.value_or(0));
    if (cards->size() == 1) {
        return formatText(localized(QT_TRANSLATE_NOOP("Zelvaine", "Move %1 to column %2.")),
                          {accessibleName(first), column});
    }
    return formatText(localized(QT_TRANSLATE_NOOP("Zelvaine", "Move %1 and its string to column %2.")),
                      {accessibleName(first), column});
}

Hint findHint(const GameState& state)
{
    auto offer = [&](const MoveSource& source) -> std::optional<Hint> {
        if (auto text = hintText(state, source)) return Hint{source, std::move(*text)};
        return std::nullopt;
    };

    for (std::size_t s = 0; s < state.hand.size(); ++s) {
        if (!state.hand[s]) continue;
        if (auto hint = offer(MoveSource::hand(static_cast<std::int64_t>(s)))) return *hint;
    }
    for (std::size_t c = 0; c < state.tableau.size(); ++c) {
        const auto column = static_cast<std::int64_t>(c);
        // Shortest string first: from the lowest card up, while the cards still form a string.
        for (auto start = static_cast<std::int64_t>(state.tableau[c].size()) - 1; start >= 0; --start) {
            if (!isValidString(state, column, start)) break;
            if (auto hint = offer(MoveSource::tableau(column, start))) return *hint;
        }
    }
    for (std::size_t f = 0; f < state.foundations.size(); ++f) {
        const Pile& pile = state.foundations[f];
        if (pile.empty() || pile.back().rank == Rank::ace) continue;
        if (auto hint = offer(MoveSource::foundation(static_cast<std::int64_t>(f)))) return *hint;
    }

    if (filledHandSlots(state) >= handSlotCount) {
        return {std::nullopt,
                localized(QT_TRANSLATE_NOOP("Zelvaine", "No immediate move found. Undo or start a new deal."))};
    }
    return {std::nullopt, localized(QT_TRANSLATE_NOOP("Zelvaine", "Try moving a lowest tableau card into your hand."))};
}

bool isAlreadyBuilt(const GameState& state, const MoveSource& source)
{
    if (!source.isTableau() || source.index < 0 || static_cast<std::size_t>(source.index) >= state.tableau.size()) {
        return false;
    }
    const Pile& column = state.tableau[static_cast<std::size_t>(source.index)];
    if (source.cardIndex <= 0 || static_cast<std::size_t>(source.cardIndex) >= column.size()) return false;
    const auto i = static_cast<std::size_t>(source.cardIndex);
    return buildsDownOn(column[i], column[i - 1]);
}

std::optional<MoveDestination> automaticDestination(const GameState& state, const MoveSource& source)
{
    const auto cards = movableCardsView(state, source);
    if (!cards) return std::nullopt;
    if (!source.isFoundation() && cards->size() == 1) {
        if (auto f = firstAcceptingFoundation(state, cards->front())) return MoveDestination::foundation(*f);
    }
    std::optional<MoveDestination> only;
    for (std::size_t c = 0; c < state.tableau.size(); ++c) {
        const auto column = static_cast<std::int64_t>(c);
        if (isOwnColumn(source, c) || !canPlaceOnTableau(state, *cards, column)) continue;
        if (only) return std::nullopt; // more than one column: the player must choose
        only = MoveDestination::tableau(column);
    }
    return only;
}

std::optional<std::int64_t> foundationDestination(const GameState& state, const MoveSource& source)
{
    const auto cards = movableCardsView(state, source);
    if (!cards || cards->size() != 1) return std::nullopt;
    return firstAcceptingFoundation(state, cards->front());
}

std::string noFoundationAcceptsText(const PlayingCard& card)
{
    return formatText(localized(QT_TRANSLATE_NOOP("Zelvaine", "No foundation can accept %1.")), {accessibleName(card)});
}

} // namespace zelvaine

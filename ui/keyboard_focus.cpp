#include "ui/keyboard_focus.hpp"

#include "engine/move_rules.hpp"
#include "ui/tap_router.hpp"

#include <algorithm>

namespace zelvaine {
namespace {

using Row = KeyboardFocus::Row;
using Direction = KeyboardFocus::Direction;

std::int64_t rowLength(Row row)
{
    switch (row) {
    case Row::foundations: return static_cast<std::int64_t>(foundationCount);
    case Row::tableau: return static_cast<std::int64_t>(tableauColumnCount);
    case Row::hand: return static_cast<std::int64_t>(handSlotCount);
    }
    return 1;
}

std::int64_t columnLength(const GameState& state, std::int64_t column)
{
    if (column < 0 || static_cast<std::size_t>(column) >= state.tableau.size()) return 0;
    return static_cast<std::int64_t>(state.tableau[static_cast<std::size_t>(column)].size());
}

// Entering a column lands on its lowest card, the one most often played.
KeyboardFocus enterColumn(std::int64_t column, const GameState& state)
{
    column = std::clamp<std::int64_t>(column, 0, static_cast<std::int64_t>(tableauColumnCount) - 1);
    return {Row::tableau, column, std::max<std::int64_t>(columnLength(state, column) - 1, 0)};
}

// The foundation row (8 places) and the portrait hand row (4) are centred over the ten columns,
// so foundation f stands over column f + 1 and hand slot s under column s + 3.
constexpr std::int64_t foundationColumnOffset = 1;
constexpr std::int64_t handColumnOffset = 3;

std::int64_t clampTo(Row row, std::int64_t index) { return std::clamp<std::int64_t>(index, 0, rowLength(row) - 1); }

// The wide arrangement's hand panel: its first slot is level with the foundations, the others
// with the tableau.
constexpr std::int64_t firstTableauLevelSlot = 1;

KeyboardFocus movePortrait(const KeyboardFocus& current, Direction direction, const GameState& state)
{
    switch (direction) {
    case Direction::left:
    case Direction::right: {
        const std::int64_t index = clampTo(current.row, current.index + (direction == Direction::left ? -1 : 1));
        if (current.row == Row::tableau) return enterColumn(index, state);
        return {current.row, index, 0};
    }
    case Direction::up:
        if (current.row == Row::hand) return enterColumn(current.index + handColumnOffset, state);
        if (current.row == Row::tableau) {
            const std::int64_t above = current.cardIndex - 1;
            if (above >= 0 && isValidString(state, current.index, above)) return {Row::tableau, current.index, above};
            return {Row::foundations, clampTo(Row::foundations, current.index - foundationColumnOffset), 0};
        }
        return current;
    case Direction::down:
        if (current.row == Row::foundations) return enterColumn(current.index + foundationColumnOffset, state);
        if (current.row == Row::tableau) {
            if (current.cardIndex + 1 < columnLength(state, current.index)) {
                return {Row::tableau, current.index, current.cardIndex + 1};
            }
            return {Row::hand, clampTo(Row::hand, current.index - handColumnOffset), 0};
        }
        return current;
    }
    return current;
}

KeyboardFocus moveLandscape(const KeyboardFocus& current, Direction direction, const GameState& state, bool handOnLeft)
{
    // Towards the hand panel, or away from it into the main column.
    const Direction towardsHand = handOnLeft ? Direction::left : Direction::right;
    const std::int64_t sideColumn = handOnLeft ? 0 : rowLength(Row::tableau) - 1;
    const std::int64_t sideFoundation = handOnLeft ? 0 : rowLength(Row::foundations) - 1;
    switch (current.row) {
    case Row::hand:
        if (direction == Direction::up || direction == Direction::down) {
            return {Row::hand, clampTo(Row::hand, current.index + (direction == Direction::up ? -1 : 1)), 0};
        }
        if (direction == towardsHand) return current;
        if (current.index < firstTableauLevelSlot) return {Row::foundations, sideFoundation, 0};
        return enterColumn(sideColumn, state);
    case Row::foundations:
        if (direction == Direction::down) return enterColumn(current.index + foundationColumnOffset, state);
        if (direction == Direction::up) return current;
        if (direction == towardsHand && current.index == sideFoundation) return {Row::hand, 0, 0};
        return {Row::foundations, clampTo(Row::foundations, current.index + (direction == Direction::left ? -1 : 1)), 0};
    case Row::tableau:
        if (direction == Direction::left || direction == Direction::right) {
            if (direction == towardsHand && current.index == sideColumn) return {Row::hand, firstTableauLevelSlot, 0};
            return enterColumn(clampTo(Row::tableau, current.index + (direction == Direction::left ? -1 : 1)), state);
        }
        if (direction == Direction::up) {
            const std::int64_t above = current.cardIndex - 1;
            if (above >= 0 && isValidString(state, current.index, above)) return {Row::tableau, current.index, above};
            return {Row::foundations, clampTo(Row::foundations, current.index - foundationColumnOffset), 0};
        }
        if (current.cardIndex + 1 < columnLength(state, current.index)) {
            return {Row::tableau, current.index, current.cardIndex + 1};
        }
        return current;
    }
    return current;
}

} // namespace

KeyboardFocus moveFocus(const KeyboardFocus& focus, Direction direction, const GameState& state,
                        FocusArrangement arrangement)
{
    const KeyboardFocus current = settleFocus(focus, state);
    if (arrangement == FocusArrangement::portrait) return movePortrait(current, direction, state);
    return moveLandscape(current, direction, state, arrangement == FocusArrangement::landscapeHandLeft);
}

KeyboardFocus settleFocus(const KeyboardFocus& focus, const GameState& state)
{
    KeyboardFocus settled = focus;
    settled.index = std::clamp<std::int64_t>(focus.index, 0, rowLength(focus.row) - 1);
    if (settled.row == Row::tableau) {
        const std::int64_t length = columnLength(state, settled.index);
        settled.cardIndex = std::clamp<std::int64_t>(focus.cardIndex, 0, std::max<std::int64_t>(length - 1, 0));
    } else {
        settled.cardIndex = 0;
    }
    return settled;
}

KeyboardFocus activateFocus(GameStore& store, const KeyboardFocus& focus)
{
    const KeyboardFocus place = settleFocus(focus, store.state());
    const std::int64_t lengthBefore = place.row == Row::tableau ? columnLength(store.state(), place.index) : 0;
    switch (place.row) {
    case Row::tableau:
        if (columnLength(store.state(), place.index) == 0) {
            taps::onEmptyPlace(store, MoveDestination::tableau(place.index));
        } else {
            taps::onTableauCard(store, place.index, place.cardIndex);
        }
        break;
    case Row::foundations: {
        const auto& pile = store.state().foundations[static_cast<std::size_t>(place.index)];
        if (pile.empty()) {
            taps::onEmptyPlace(store, MoveDestination::foundation(place.index));
        } else {
            taps::onFoundationCard(store, place.index);
        }
        break;
    }
    case Row::hand:
        if (store.state().hand[static_cast<std::size_t>(place.index)]) {
            taps::onHandCard(store, place.index);
        } else {
            taps::onEmptyPlace(store, MoveDestination::hand(place.index));
        }
        break;
    }
    if (place.row == Row::tableau) {
        const std::int64_t length = columnLength(store.state(), place.index);
        if (length > lengthBefore) return {Row::tableau, place.index, length - 1};
    }
    return settleFocus(place, store.state());
}

KeyboardFocus focusOnArrival(const KeyboardFocus& focus, const GameState& before, const GameState& after)
{
    for (std::size_t c = 0; c < after.tableau.size(); ++c) {
        if (after.tableau[c].size() > before.tableau[c].size())
            return {Row::tableau, static_cast<std::int64_t>(c), static_cast<std::int64_t>(after.tableau[c].size()) - 1};
    }
    for (std::size_t h = 0; h < after.hand.size(); ++h) {
        if (after.hand[h] && !before.hand[h]) return {Row::hand, static_cast<std::int64_t>(h), 0};
    }
    for (std::size_t f = 0; f < after.foundations.size(); ++f) {
        if (after.foundations[f].size() > before.foundations[f].size())
            return {Row::foundations, static_cast<std::int64_t>(f), 0};
    }
    return settleFocus(focus, after);
}

} // namespace zelvaine

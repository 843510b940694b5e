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
    return {Row::tableau, column, std::max<std::int64_t>(columnLength(state, column) - 1, 0)};
}

// Rows of different lengths line up end to end: column 9 sits under foundation 7 and over hand
// slot 3, the places between in proportion, rounded.
std::int64_t mapIndex(std::int64_t index, Row from, Row to)
{
    const std::int64_t fromLast = rowLength(from) - 1;
    const std::int64_t toLast = rowLength(to) - 1;
    return std::clamp<std::int64_t>((2 * index * toLast + fromLast) / (2 * fromLast), 0, toLast);
}

} // namespace

KeyboardFocus moveFocus(const KeyboardFocus& focus, Direction direction, const GameState& state)
{
    const KeyboardFocus current = settleFocus(focus, state);
    switch (direction) {
    case Direction::left:
    case Direction::right: {
        const std::int64_t step = direction == Direction::left ? -1 : 1;
        const std::int64_t index = std::clamp<std::int64_t>(current.index + step, 0, rowLength(current.row) - 1);
        if (current.row == Row::tableau) return enterColumn(index, state);
        return {current.row, index, 0};
    }
    case Direction::up:
        if (current.row == Row::hand) return enterColumn(mapIndex(current.index, Row::hand, Row::tableau), state);
        if (current.row == Row::tableau) {
            const std::int64_t above = current.cardIndex - 1;
            if (above >= 0 && isValidString(state, current.index, above)) {
                return {Row::tableau, current.index, above};
            }
            return {Row::foundations, mapIndex(current.index, Row::tableau, Row::foundations), 0};
        }
        return current;
    case Direction::down:
        if (current.row == Row::foundations) {
            return enterColumn(mapIndex(current.index, Row::foundations, Row::tableau), state);
        }
        if (current.row == Row::tableau) {
            if (current.cardIndex + 1 < columnLength(state, current.index)) {
                return {Row::tableau, current.index, current.cardIndex + 1};
            }
            return {Row::hand, mapIndex(current.index, Row::tableau, Row::hand), 0};
        }
        return current;
    }
    return current;
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

void activateFocus(GameStore& store, const KeyboardFocus& focus)
{
    const KeyboardFocus place = settleFocus(focus, store.state());
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
}

} // namespace zelvaine

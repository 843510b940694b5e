#pragma once

#include "engine/game_state.hpp"
#include "store/game_store.hpp"

#include <cstdint>

namespace zelvaine {

// The place the keyboard points at: a foundation, a card (or the empty place) of a column, or a
// hand slot. Arrow keys move it, Return or Space taps it, as the mouse would.
struct KeyboardFocus {
    enum class Row : std::uint8_t { foundations, tableau, hand };
    enum class Direction : std::uint8_t { left, right, up, down };

    Row row = Row::tableau;
    std::int64_t index = 0;
    // Within a column: the focused card; the column's last card when it was entered.
    std::int64_t cardIndex = 0;

    friend bool operator==(const KeyboardFocus&, const KeyboardFocus&) = default;
};

// How the places are drawn, which decides where an arrow key leads: in a tall window the hand
// is a row under the tableau; in a wide one its slots are stacked in a panel at one side.
enum class FocusArrangement : std::uint8_t { portrait, landscapeHandLeft, landscapeHandRight };

// Where an arrow key takes the focus: to the place drawn next in that direction. Within a
// column, up and down walk the cards that can be picked up; past them the focus leaves for the
// foundations above (or, in portrait, the hand below).
KeyboardFocus moveFocus(const KeyboardFocus& focus, KeyboardFocus::Direction direction, const GameState& state,
                        FocusArrangement arrangement = FocusArrangement::portrait);

// Keeps a focus valid after the position changed (a column got shorter, say).
KeyboardFocus settleFocus(const KeyboardFocus& focus, const GameState& state);

// Return or Space on the focused place, played as a tap. Returns where the focus goes then: onto
// the lowest of the cards the tap brought to its column, so that a screen reader reads what
// arrived; otherwise where it was, kept valid.
KeyboardFocus activateFocus(GameStore& store, const KeyboardFocus& focus);

// Where a shown focus goes after an undo or a redo: onto the place that received cards (the
// lowest card of a column, a hand slot, a foundation), so that a screen reader reads what came
// back; otherwise where it was, kept valid.
KeyboardFocus focusOnArrival(const KeyboardFocus& focus, const GameState& before, const GameState& after);

} // namespace zelvaine

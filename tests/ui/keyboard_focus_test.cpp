#include "ui/keyboard_focus.hpp"

#include "store/in_memory_defaults_store.hpp"
#include "tests/support/positions.hpp"

#include <gtest/gtest.h>

namespace zelvaine {
namespace {

using testing::card;
using testing::cards;
using Row = KeyboardFocus::Row;
using Direction = KeyboardFocus::Direction;

GameState board()
{
    GameState s = testing::emptyBoard();
    s.tableau[0] = cards("KS 2D 9H 8S"); // 9H 8S can be picked up; 2D and KS cannot
    s.tableau[1] = cards("10C");
    s.tableau[9] = cards("4C");
    s.hand[0] = card("AH");
    return s;
}

TEST(KeyboardFocus, ArrowsWalkTheBoard)
{
    const GameState s = board();
    KeyboardFocus focus{Row::tableau, 0, 3};
    focus = moveFocus(focus, Direction::up, s);
    EXPECT_EQ(focus, (KeyboardFocus{Row::tableau, 0, 2}));
    focus = moveFocus(focus, Direction::up, s); // 2D starts no string: on to the foundations
    EXPECT_EQ(focus, (KeyboardFocus{Row::foundations, 0, 0}));
    focus = moveFocus(focus, Direction::left, s);
    EXPECT_EQ(focus.index, 0);
    focus = moveFocus(focus, Direction::down, s); // the foundations are centred: the first stands over column 2
    EXPECT_EQ(focus, (KeyboardFocus{Row::tableau, 1, 0}));
    focus = moveFocus(focus, Direction::left, s);
    EXPECT_EQ(focus, (KeyboardFocus{Row::tableau, 0, 3})); // back on the lowest card
    focus = moveFocus(focus, Direction::right, s);
    EXPECT_EQ(focus, (KeyboardFocus{Row::tableau, 1, 0}));
    focus = moveFocus(focus, Direction::right, s);
    EXPECT_EQ(focus, (KeyboardFocus{Row::tableau, 2, 0})); // an empty column
    focus = moveFocus(focus, Direction::down, s);
    EXPECT_EQ(focus.row, Row::hand);
    focus = moveFocus(focus, Direction::down, s);
    EXPECT_EQ(focus.row, Row::hand);

    // The centred rows: foundation f over column f + 1, hand slot s under column s + 3; the
    // columns beyond a row's ends lead to its nearest place.
    EXPECT_EQ(moveFocus({Row::tableau, 9, 0}, Direction::up, s), (KeyboardFocus{Row::foundations, 7, 0}));
    EXPECT_EQ(moveFocus({Row::tableau, 9, 0}, Direction::down, s), (KeyboardFocus{Row::hand, 3, 0}));
    EXPECT_EQ(moveFocus({Row::tableau, 4, 0}, Direction::down, s), (KeyboardFocus{Row::hand, 1, 0}));
    EXPECT_EQ(moveFocus({Row::hand, 3, 0}, Direction::up, s), (KeyboardFocus{Row::tableau, 6, 0}));
    EXPECT_EQ(moveFocus({Row::foundations, 7, 0}, Direction::right, s), (KeyboardFocus{Row::foundations, 7, 0}));
}

// In a wide window the hand is a stacked panel at one side: the arrows reach it sideways from
// the nearest column or foundation, and walk its slots up and down.
TEST(KeyboardFocus, ArrowsFollowTheSideHandPanel)
{
    const GameState s = board();
    const auto left = FocusArrangement::landscapeHandLeft;
    const auto right = FocusArrangement::landscapeHandRight;
    EXPECT_EQ(moveFocus({Row::tableau, 0, 3}, Direction::left, s, left), (KeyboardFocus{Row::hand, 1, 0}));
    EXPECT_EQ(moveFocus({Row::tableau, 0, 3}, Direction::left, s, right), (KeyboardFocus{Row::tableau, 0, 3}));
    EXPECT_EQ(moveFocus({Row::tableau, 9, 0}, Direction::right, s, right), (KeyboardFocus{Row::hand, 1, 0}));
    EXPECT_EQ(moveFocus({Row::foundations, 0, 0}, Direction::left, s, left), (KeyboardFocus{Row::hand, 0, 0}));
    EXPECT_EQ(moveFocus({Row::foundations, 7, 0}, Direction::right, s, right), (KeyboardFocus{Row::hand, 0, 0}));

    KeyboardFocus focus{Row::hand, 0, 0};
    focus = moveFocus(focus, Direction::down, s, left);
    EXPECT_EQ(focus, (KeyboardFocus{Row::hand, 1, 0}));
    focus = moveFocus(focus, Direction::right, s, left); // back to the first column's lowest card
    EXPECT_EQ(focus, (KeyboardFocus{Row::tableau, 0, 3}));
    EXPECT_EQ(moveFocus({Row::hand, 0, 0}, Direction::right, s, left), (KeyboardFocus{Row::foundations, 0, 0}));
    EXPECT_EQ(moveFocus({Row::hand, 3, 0}, Direction::down, s, left), (KeyboardFocus{Row::hand, 3, 0}));
    EXPECT_EQ(moveFocus({Row::hand, 2, 0}, Direction::left, s, left), (KeyboardFocus{Row::hand, 2, 0}));
    // No hand below the columns: down stops at the lowest card.
    EXPECT_EQ(moveFocus({Row::tableau, 0, 3}, Direction::down, s, left), (KeyboardFocus{Row::tableau, 0, 3}));
}

TEST(KeyboardFocus, SettlesOnWhatIsThere)
{
    const GameState s = board();
    EXPECT_EQ(settleFocus({Row::tableau, 1, 5}, s), (KeyboardFocus{Row::tableau, 1, 0}));
    EXPECT_EQ(settleFocus({Row::hand, 9, 2}, s), (KeyboardFocus{Row::hand, 3, 0}));
    EXPECT_EQ(settleFocus({Row::tableau, 4, 3}, s), (KeyboardFocus{Row::tableau, 4, 0}));
}

TEST(KeyboardFocus, ReturnPlaysLikeATap)
{
    InMemoryDefaultsStore defaults;
    SilentSoundCues sound;
    GameStore store(board(), defaults, sound);
    EXPECT_EQ(activateFocus(store, {Row::tableau, 0, 2}), (KeyboardFocus{Row::tableau, 0, 2}));
    EXPECT_EQ(store.selection(), MoveSource::tableau(0, 2));
    // The focus follows the card to its new column, onto its lowest card.
    EXPECT_EQ(activateFocus(store, {Row::tableau, 1, 0}), (KeyboardFocus{Row::tableau, 1, 2}));
    EXPECT_EQ(store.state().tableau[1].size(), 3U);

    activateFocus(store, {Row::hand, 0, 0});
    EXPECT_EQ(activateFocus(store, {Row::foundations, 3, 0}), (KeyboardFocus{Row::foundations, 3, 0}));
    EXPECT_EQ(store.state().foundations[3].size(), 1U);
}

// After an undo or a redo the focus goes where cards came back: a column, the hand, a foundation.
TEST(KeyboardFocus, FollowsWhatComesBack)
{
    const GameState before = board();
    const KeyboardFocus focus{Row::tableau, 1, 0};

    GameState back = before; // 9H 8S back onto the 10C
    back.tableau[1] = cards("10C 9H 8S");
    back.tableau[0] = cards("KS 2D");
    EXPECT_EQ(focusOnArrival(focus, before, back), (KeyboardFocus{Row::tableau, 1, 2}));

    GameState toHand = before;
    toHand.hand[2] = card("4C");
    toHand.tableau[9].clear();
    EXPECT_EQ(focusOnArrival(focus, before, toHand), (KeyboardFocus{Row::hand, 2, 0}));

    GameState home = before;
    home.foundations[5] = cards("AH");
    home.hand[0].reset();
    EXPECT_EQ(focusOnArrival(focus, before, home), (KeyboardFocus{Row::foundations, 5, 0}));

    // Nothing arrived anywhere (a column only shrank): the focus stays, kept on a card that is there.
    GameState shrunk = before;
    shrunk.tableau[1].clear();
    EXPECT_EQ(focusOnArrival({Row::tableau, 0, 3}, before, shrunk), (KeyboardFocus{Row::tableau, 0, 3}));
}

} // namespace
} // namespace zelvaine

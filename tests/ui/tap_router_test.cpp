#include "store/in_memory_defaults_store.hpp"
#include "tests/support/positions.hpp"
#include "ui/card_face.hpp"
#include "ui/tap_router.hpp"

#include <gtest/gtest.h>

namespace zelvaine {
namespace {

using testing::card;
using testing::cards;

class Taps : public ::testing::Test {
protected:
    GameStore storeWith(const GameState& state)
    {
        return GameStore(state, defaults, sound, [this] { return now; });
    }
    InMemoryDefaultsStore defaults;
    SilentSoundCues sound;
    double now = 0;
};

GameState board()
{
    GameState s = testing::emptyBoard();
    s.tableau[0] = cards("KS 9H 8S"); // 9H 8S moves; KS is blocked
    s.tableau[1] = cards("10C");
    s.tableau[2] = cards("QD 9C"); // 9C fits nowhere but a red ten
    s.tableau[3] = cards("10S");
    s.hand[0] = card("AH");
    s.foundations[1] = testing::foundationUpTo("AS");
    return s;
}

TEST_F(Taps, QuickSecondTapPlaysTheObviousMove)
{
    GameStore store = storeWith(board());
    taps::onTableauCard(store, 0, 1);
    EXPECT_EQ(store.selection(), MoveSource::tableau(0, 1));
    now = 0.3;
    taps::onTableauCard(store, 0, 1); // two black tens: no single destination
    EXPECT_EQ(store.state().moveCount, 0);
    EXPECT_EQ(store.selection(), MoveSource::tableau(0, 1));

    GameState single = board();
    single.tableau[3].clear();
    GameStore other = storeWith(single);
    now = 5;
    taps::onTableauCard(other, 0, 1);
    now = 5.3;
    taps::onTableauCard(other, 0, 1);
    EXPECT_EQ(other.state().tableau[1].size(), 3U);
}

TEST_F(Taps, SlowSecondTapDeselects)
{
    GameStore store = storeWith(board());
    taps::onTableauCard(store, 0, 2);
    now = 0.5;
    taps::onTableauCard(store, 0, 2);
    EXPECT_FALSE(store.selection());
}

TEST_F(Taps, BlockedCardsAreNeverSelected)
{
    GameStore store = storeWith(board());
    taps::onTableauCard(store, 0, 0);
    EXPECT_FALSE(store.selection());
    now = 0.1;
    taps::onTableauCard(store, 0, 0); // a double tap the rules give nothing for
    EXPECT_EQ(store.state().moveCount, 0);

    // With a selection, a blocked card names its column as the destination.
    now = 10;
    taps::onTableauCard(store, 2, 1); // 9C selected
    taps::onTableauCard(store, 0, 0); // 9C cannot go onto 8S: the selection is dropped
    EXPECT_FALSE(store.selection());
    EXPECT_FALSE(store.message());

    now = 20;
    taps::onHandCard(store, 0);       // A♥ selected
    taps::onTableauCard(store, 2, 0); // QD is blocked: tries column 2, refused
    EXPECT_FALSE(store.selection());
}

TEST_F(Taps, SelectionMovesToTheTappedPlace)
{
    GameStore store = storeWith(board());
    taps::onTableauCard(store, 0, 1); // 9H 8S
    taps::onTableauCard(store, 1, 0); // onto 10C
    EXPECT_EQ(store.state().tableau[1].size(), 3U);

    now = 10;
    taps::onHandCard(store, 0); // A♥
    taps::onEmptyPlace(store, MoveDestination::foundation(4));
    EXPECT_EQ(store.state().foundations[4].size(), 1U);

    now = 20;
    taps::onTableauCard(store, 3, 0); // 10S
    taps::onTableauCard(store, 2, 1); // 9C can't take it: 9C becomes the selection
    EXPECT_EQ(store.selection(), MoveSource::tableau(2, 1));

    taps::onFoundationCard(store, 4); // 9C onto A♥? refused, A♥ is selected instead
    EXPECT_EQ(store.selection(), MoveSource::foundation(4));
}

TEST_F(Taps, BareTableClearsEverything)
{
    GameStore store = storeWith(board());
    taps::onTableauCard(store, 0, 1);
    store.refuseKeepingSelection("x");
    taps::onTable(store);
    EXPECT_FALSE(store.selection());
    EXPECT_FALSE(store.message());
    EXPECT_FALSE(store.lastTap());
}

TEST(CardFace, PictureNames)
{
    EXPECT_EQ(facePictureName(card("10S")), "card_10_spades");
    EXPECT_EQ(facePictureName(card("JS")), "court_jack_spades");
    EXPECT_EQ(facePictureName(card("AD")), "card_ace_diamonds");
    EXPECT_EQ(facePictureName(card("KH", 1)), facePictureName(card("KH", 0)));
    EXPECT_EQ(facePictureName(card("2C")), "card_2_clubs");
}

} // namespace
} // namespace zelvaine

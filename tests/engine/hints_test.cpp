#include "engine/hints.hpp"
#include "tests/support/positions.hpp"

#include <gtest/gtest.h>

namespace zelvaine {
namespace {

using testing::card;
using testing::cards;
using testing::emptyBoard;
using testing::foundationUpTo;

TEST(FindHint, HandSlotsComeBeforeColumns)
{
    GameState s = emptyBoard();
    s.foundations[2] = foundationUpTo("4S");
    s.tableau[3] = cards("9D 5S"); // 5S could go to foundation 3
    s.tableau[5] = cards("8C");
    s.hand[1] = card("7H"); // fits column 6
    const Hint hint = findHint(s);
    EXPECT_EQ(hint.source, MoveSource::hand(1));
    EXPECT_EQ(hint.text, "Move seven of hearts to column 6.");

    s.hand[3] = card("5S", 1); // a hand card for a foundation wins within the hand's own order
    s.hand[1].reset();
    EXPECT_EQ(findHint(s).text, "Move five of spades to foundation 3.");
}

TEST(FindHint, ShortestStringOfAColumnFirst)
{
    GameState s = emptyBoard();
    s.tableau[0] = cards("2D 10C 9H 8S");
    s.tableau[1] = cards("9D");
    s.tableau[4] = cards("JH");
    const Hint hint = findHint(s);
    // 8S fits nothing, 9H 8S rests on 10C already, the whole string fits the jack.
    EXPECT_EQ(hint.source, MoveSource::tableau(0, 1));
    EXPECT_EQ(hint.text, "Move ten of clubs and its string to column 5.");
}

TEST(HintText, AlreadyBuiltStringsOnlyGoToFoundations)
{
    GameState s = emptyBoard();
    s.tableau[0] = cards("3C 2D");
    s.tableau[1] = cards("3S");
    EXPECT_TRUE(isAlreadyBuilt(s, MoveSource::tableau(0, 1)));
    EXPECT_EQ(hintText(s, MoveSource::tableau(0, 1)), std::nullopt);
    s.foundations[4] = foundationUpTo("AD");
    EXPECT_EQ(hintText(s, MoveSource::tableau(0, 1)), "Move two of diamonds to foundation 5.");

    EXPECT_FALSE(isAlreadyBuilt(s, MoveSource::tableau(0, 0))); // top of its column
    EXPECT_FALSE(isAlreadyBuilt(s, MoveSource::tableau(1, 0)));
    EXPECT_FALSE(isAlreadyBuilt(s, MoveSource::tableau(0, 2)));
    EXPECT_FALSE(isAlreadyBuilt(s, MoveSource::hand(0)));
}

// A move chosen by the solver reads like a hint, whichever destination the hint would prefer.
TEST(MoveHintText, EachDestinationInTheHintsOwnWords)
{
    GameState s = emptyBoard();
    s.tableau[0] = cards("KS QD JC");
    s.tableau[2] = cards("QH");
    s.foundations[1] = foundationUpTo("10C");
    EXPECT_EQ(moveHintText(s, MoveSource::tableau(0, 2), MoveDestination::tableau(2)),
              "Move jack of clubs to column 3.");
    EXPECT_EQ(moveHintText(s, MoveSource::tableau(0, 2), MoveDestination::foundation(1)),
              "Move jack of clubs to foundation 2.");
    EXPECT_EQ(moveHintText(s, MoveSource::tableau(0, 2), MoveDestination::hand()), "Move jack of clubs to your hand.");
    EXPECT_EQ(moveHintText(s, MoveSource::tableau(0, 0), MoveDestination::tableau(5)),
              "Move king of spades and its string to column 6.");
}

TEST(HintText, KingStringOnTopOfItsColumnIsStillSuggestedForAnEmptyColumn)
{
    GameState s = emptyBoard();
    s.tableau[9] = cards("KS QD");
    EXPECT_EQ(hintText(s, MoveSource::tableau(9, 0)), "Move king of spades and its string to column 1.");
}

TEST(FindHint, FoundationTopsAreLastAndAcesNever)
{
    GameState s = emptyBoard();
    s.foundations[0] = foundationUpTo("AH");
    s.foundations[1] = foundationUpTo("2C");
    s.tableau[3] = cards("3H");
    EXPECT_EQ(findHint(s).text, "Move two of clubs to column 4.");
    EXPECT_EQ(findHint(s).source, MoveSource::foundation(1));

    s.tableau[3] = cards("3S");
    EXPECT_EQ(findHint(s).text, "Move two of clubs to your hand.");

    s.hand = {card("9S"), card("9S"), card("9S"), card("9S")};
    const Hint stuck = findHint(s);
    EXPECT_EQ(stuck.source, std::nullopt);
    EXPECT_EQ(stuck.text, "No immediate move found. Undo or start a new deal.");
}

TEST(FindHint, FallbackDependsOnTheHand)
{
    GameState s = emptyBoard();
    s.tableau[0] = cards("9S");
    s.hand = {card("9C"), card("9C"), std::nullopt, card("9C")};
    EXPECT_EQ(findHint(s).text, "Try moving a lowest tableau card into your hand.");
    s.hand[2] = card("9C");
    EXPECT_EQ(findHint(s).text, "No immediate move found. Undo or start a new deal.");
}

TEST(AutomaticDestination, PrefersFoundationsThenTheOnlyColumn)
{
    GameState s = emptyBoard();
    s.tableau[0] = cards("8S");
    s.tableau[1] = cards("8C");
    s.tableau[2] = cards("7H");
    EXPECT_EQ(automaticDestination(s, MoveSource::tableau(2, 0)), std::nullopt); // two black eights

    s.tableau[1] = cards("8D");
    EXPECT_EQ(automaticDestination(s, MoveSource::tableau(2, 0)), MoveDestination::tableau(0));

    s.foundations[6] = foundationUpTo("6H");
    EXPECT_EQ(automaticDestination(s, MoveSource::tableau(2, 0)), MoveDestination::foundation(6));

    // The hand is never a double-tap destination.
    s.tableau[3] = cards("2C");
    EXPECT_EQ(automaticDestination(s, MoveSource::tableau(3, 0)), std::nullopt);
}

TEST(AutomaticDestination, KingStringNeedsExactlyOneEmptyColumn)
{
    GameState s = emptyBoard();
    for (auto& column : s.tableau) column = cards("2C");
    s.tableau[0] = cards("3D KH QS");
    s.tableau[4].clear();
    s.tableau[7].clear();
    EXPECT_EQ(automaticDestination(s, MoveSource::tableau(0, 1)), std::nullopt);
    s.tableau[7] = cards("5D");
    EXPECT_EQ(automaticDestination(s, MoveSource::tableau(0, 1)), MoveDestination::tableau(4));
}

TEST(AutomaticDestination, FoundationCardsOnlyReturnToASingleColumn)
{
    GameState s = emptyBoard();
    s.foundations[0] = foundationUpTo("5D");
    s.tableau[2] = cards("6S");
    EXPECT_EQ(automaticDestination(s, MoveSource::foundation(0)), MoveDestination::tableau(2));
    s.tableau[8] = cards("6C");
    EXPECT_EQ(automaticDestination(s, MoveSource::foundation(0)), std::nullopt);
}

TEST(FoundationDestination, FirstAcceptingFoundationForASingleCard)
{
    GameState s = emptyBoard();
    s.foundations[3] = foundationUpTo("6H");
    s.foundations[5] = foundationUpTo("6H");
    s.tableau[0] = cards("7H");
    s.tableau[1] = cards("8S 7H");
    s.tableau[2] = cards("AS");
    EXPECT_EQ(foundationDestination(s, MoveSource::tableau(0, 0)), 3);
    EXPECT_EQ(foundationDestination(s, MoveSource::tableau(1, 0)), std::nullopt); // two cards
    EXPECT_EQ(foundationDestination(s, MoveSource::tableau(2, 0)), 0);
    EXPECT_EQ(foundationDestination(s, MoveSource::hand(0)), std::nullopt);
    EXPECT_EQ(noFoundationAcceptsText(card("7H")), "No foundation can accept seven of hearts.");
}

} // namespace
} // namespace zelvaine

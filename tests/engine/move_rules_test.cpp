#include "engine/move_rules.hpp"
#include "tests/support/positions.hpp"

#include <gtest/gtest.h>

#include <algorithm>

namespace zelvaine {
namespace {

using testing::card;
using testing::cards;
using testing::emptyBoard;
using testing::foundationUpTo;

MoveMoved expectMoved(MoveOutcome outcome)
{
    if (const auto* refused = std::get_if<MoveRefused>(&outcome)) {
        ADD_FAILURE() << "refused: " << refused->reason;
        return {};
    }
    auto* moved = std::get_if<MoveMoved>(&outcome);
    if (!moved) {
        ADD_FAILURE() << "ignored";
        return {};
    }
    return std::move(*moved);
}

std::string reason(const MoveOutcome& outcome)
{
    const auto* refused = std::get_if<MoveRefused>(&outcome);
    return refused ? refused->reason : std::string("<not refused>");
}

// A board with something of every kind: strings, a broken string, a foundation, a hand.
GameState sampleBoard()
{
    GameState s = emptyBoard();
    s.tableau[0] = cards("4C 9H 8S 7D"); // 9H 8S 7D is a string
    s.tableau[1] = cards("KD 2C 6C");    // 2C 6C is not
    s.tableau[2] = cards("8C");
    s.tableau[3] = cards("3S 8H");
    s.tableau[5] = cards("KS QH JC 10D 9S 8D 7C 6H 5S");
    s.tableau[6] = cards("5H");
    s.foundations[0] = foundationUpTo("2C");
    s.foundations[1] = foundationUpTo("AD");
    s.hand[0] = card("6S");
    s.hand[2] = card("KH");
    s.moveCount = 20;
    return s;
}

TEST(MovableCards, NamesWhatEachSourceCanLift)
{
    const GameState s = sampleBoard();
    EXPECT_EQ(movableCards(s, MoveSource::tableau(0, 1))->size(), 3U);
    EXPECT_EQ(movableCards(s, MoveSource::tableau(0, 3))->size(), 1U);
    EXPECT_FALSE(movableCards(s, MoveSource::tableau(0, 0))); // 4C does not carry 9H
    EXPECT_FALSE(movableCards(s, MoveSource::tableau(1, 1)));
    EXPECT_FALSE(movableCards(s, MoveSource::tableau(4, 0))); // empty column
    EXPECT_FALSE(movableCards(s, MoveSource::tableau(0, 4)));
    EXPECT_FALSE(movableCards(s, MoveSource::tableau(0, -1)));
    EXPECT_FALSE(movableCards(s, MoveSource::tableau(10, 0)));
    EXPECT_FALSE(movableCards(s, MoveSource::tableau(-1, 0)));
    EXPECT_EQ(movableCards(s, MoveSource::hand(0))->front(), s.hand[0]);
    EXPECT_FALSE(movableCards(s, MoveSource::hand(1)));
    EXPECT_FALSE(movableCards(s, MoveSource::hand(4)));
    EXPECT_EQ(movableCards(s, MoveSource::foundation(0))->front(), s.foundations[0].back());
    EXPECT_FALSE(movableCards(s, MoveSource::foundation(2)));
    EXPECT_FALSE(movableCards(s, MoveSource::foundation(8)));
    EXPECT_FALSE(movableCards(s, MoveSource::foundation(std::numeric_limits<std::int64_t>::min())));
}

// Every move listed is one applyMove makes, and none of the few this position allows is missing.
TEST(LegalMoves, ListsExactlyTheMovesThePositionAllows)
{
    GameState s = testing::emptyBoard();
    s.tableau[0] = testing::cards("KS QD JC");
    s.tableau[1] = testing::cards("QH");
    s.foundations[0] = testing::foundationUpTo("10C");
    s.hand = {testing::card("5D"), std::nullopt, std::nullopt, std::nullopt};
    const auto moves = legalMoves(s);
    for (const LegalMove& move : moves) {
        EXPECT_TRUE(std::holds_alternative<MoveMoved>(applyMove(s, move.source, move.destination)))
            << toString(move.source) << " -> " << toString(move.destination);
    }
    auto has = [&](MoveSource source, MoveDestination destination) {
        return std::ranges::any_of(moves, [&](const LegalMove& m) {
            return m.source == source && m.destination == destination;
        });
    };
    EXPECT_TRUE(has(MoveSource::tableau(0, 2), MoveDestination::foundation(0)));
    EXPECT_TRUE(has(MoveSource::tableau(0, 2), MoveDestination::tableau(1)));
    EXPECT_TRUE(has(MoveSource::tableau(0, 2), MoveDestination::hand()));
    EXPECT_TRUE(has(MoveSource::tableau(0, 0), MoveDestination::tableau(2)));
    EXPECT_TRUE(has(MoveSource::foundation(0), MoveDestination::hand()));
    EXPECT_FALSE(has(MoveSource::hand(0), MoveDestination::hand()));
    EXPECT_FALSE(has(MoveSource::tableau(0, 1), MoveDestination::hand()));
}

TEST(HandSlots, FreeSlotForCardsComingIn)
{
    GameState s = sampleBoard(); // slots 0 and 2 filled
    EXPECT_EQ(freeHandSlot(s, std::nullopt), 1);
    EXPECT_EQ(freeHandSlot(s, 3), 3);
    EXPECT_EQ(freeHandSlot(s, 2), std::nullopt); // a filled slot is never swapped for another
    EXPECT_EQ(freeHandSlot(s, 4), std::nullopt);
    EXPECT_EQ(freeHandSlot(s, -1), std::nullopt);

    s.hand = {card("2H"), card("3H")}; // a short hand only a decoded position can have
    EXPECT_EQ(freeHandSlot(s, std::nullopt), 2);
    EXPECT_EQ(freeHandSlot(s, 3), 3);
    s.hand = {card("2H"), card("3H"), card("4H"), card("5H")};
    EXPECT_EQ(freeHandSlot(s, std::nullopt), std::nullopt);
}

TEST(HandSlots, RearrangementSlot)
{
    const GameState s = sampleBoard();
    EXPECT_EQ(handRearrangementSlot(s, std::nullopt, 0), 1);
    EXPECT_EQ(handRearrangementSlot(s, 2, 0), 2); // filled: exchange
    EXPECT_EQ(handRearrangementSlot(s, 0, 0), std::nullopt);
    EXPECT_EQ(handRearrangementSlot(s, 4, 0), std::nullopt);
    EXPECT_EQ(handRearrangementSlot(s, 1, 1), std::nullopt); // empty source slot
    EXPECT_EQ(handRearrangementSlot(s, 1, 9), std::nullopt);

    GameState full = s;
    full.hand = {card("2H"), card("3H"), card("4H"), card("5H")};
    EXPECT_EQ(handRearrangementSlot(full, std::nullopt, 1), std::nullopt);
}

struct Refusal {
    MoveSource source;
    MoveDestination destination;
    const char* reason;
};

class RefusedMove : public ::testing::TestWithParam<Refusal> {};

TEST_P(RefusedMove, SaysWhyAndChangesNothing)
{
    const GameState s = sampleBoard();
    const auto& [source, destination, expected] = GetParam();
    const MoveOutcome outcome = applyMove(s, source, destination);
    EXPECT_EQ(reason(outcome), expected);
    EXPECT_FALSE(canMove(s, source, destination));
}

INSTANTIATE_TEST_SUITE_P(
    Cases, RefusedMove,
    ::testing::Values(
        Refusal{MoveSource::hand(1), MoveDestination::tableau(4), "That card is not available."},
        Refusal{MoveSource::tableau(1, 1), MoveDestination::tableau(4), "That card is not available."},
        Refusal{MoveSource::tableau(1, 1), MoveDestination::hand(), "That card is not available."},
        Refusal{MoveSource::foundation(5), MoveDestination::hand(), "That card is not available."},
        Refusal{MoveSource::tableau(42, 0), MoveDestination::foundation(0), "That card is not available."},
        Refusal{MoveSource::tableau(0, 1), MoveDestination::foundation(3),
                "Only one card at a time can move to a foundation."},
        Refusal{MoveSource::tableau(0, 2), MoveDestination::hand(1),
                "Only the lowest card of a column or the top card of a foundation can move to your hand."},
        Refusal{MoveSource::tableau(2, 0), MoveDestination::tableau(4),
                "Only a king or a string beginning with a king can fill an empty column."},
        Refusal{MoveSource::tableau(6, 0), MoveDestination::tableau(2),
                "five must land on an opposite-color six. eight of clubs cannot accept it."},
        Refusal{MoveSource::hand(0), MoveDestination::tableau(3),
                "six must land on an opposite-color seven. eight of hearts cannot accept it."},
        Refusal{MoveSource::hand(2), MoveDestination::tableau(2),
                "king must land on an opposite-color next rank. eight of clubs cannot accept it."},
        Refusal{MoveSource::foundation(1), MoveDestination::foundation(2), "That foundation already has a card."},
        Refusal{MoveSource::foundation(0), MoveDestination::foundation(1),
                "Foundations build upward in the same suit, beginning with an ace."},
        Refusal{MoveSource::tableau(6, 0), MoveDestination::foundation(2),
                "Foundations build upward in the same suit, beginning with an ace."},
        Refusal{MoveSource::tableau(2, 0), MoveDestination::hand(2), "Your hand can hold at most four cards."},
        Refusal{MoveSource::tableau(2, 0), MoveDestination::hand(7), "Your hand can hold at most four cards."},
        Refusal{MoveSource::hand(0), MoveDestination::hand(-1), "Your hand can hold at most four cards."},
        // Indices off the board are answered, never read.
        Refusal{MoveSource::tableau(2, 0), MoveDestination::tableau(10), "That move is not available."},
        Refusal{MoveSource::tableau(2, 0), MoveDestination::tableau(-3), "That move is not available."},
        Refusal{MoveSource::hand(0), MoveDestination::foundation(8),
                "Foundations build upward in the same suit, beginning with an ace."}));

TEST(RefusalReason, FallsBackWhenNothingMoves)
{
    EXPECT_EQ(refusalReason(sampleBoard(), {}, MoveDestination::tableau(0)), "That move is not available.");
}

TEST(RefusalReason, SameSentenceForWrongColourAndWrongRank)
{
    GameState s = emptyBoard();
    s.tableau[0] = cards("9H");
    s.tableau[1] = cards("6C");
    s.tableau[2] = cards("8D");
    EXPECT_EQ(reason(applyMove(s, MoveSource::tableau(1, 0), MoveDestination::tableau(0))),
              "six must land on an opposite-color seven. nine of hearts cannot accept it.");
    EXPECT_EQ(reason(applyMove(s, MoveSource::tableau(0, 0), MoveDestination::tableau(2))),
              "nine must land on an opposite-color ten. eight of diamonds cannot accept it.");
}

// What a move leaves untouched, how it counts and whether it came from a foundation are the
// random play test's to check on every step; these say where the cards go.
TEST(ApplyMove, MovesAStringOfAnyLengthOntoItsParent)
{
    GameState s = sampleBoard();
    s.tableau[4] = cards("10C");
    const auto moved = expectMoved(applyMove(s, MoveSource::tableau(0, 1), MoveDestination::tableau(4)));
    EXPECT_EQ(moved.state.tableau[0], Pile{s.tableau[0][0]});
    EXPECT_EQ(moved.state.tableau[4], (Pile{s.tableau[4][0], s.tableau[0][1], s.tableau[0][2], s.tableau[0][3]}));
}

TEST(ApplyMove, KingStringFillsAnEmptyColumnEvenWithAFullHand)
{
    GameState s = sampleBoard();
    s.tableau[5] = cards("3D KS QH JC 10D 9S 8D 7C 6H 5S");
    s.hand = {card("2H"), card("3H"), card("4H"), card("5D")};
    const auto moved = expectMoved(applyMove(s, MoveSource::tableau(5, 1), MoveDestination::tableau(4)));
    EXPECT_EQ(moved.state.tableau[4].size(), 9U);
    EXPECT_EQ(moved.state.tableau[5].size(), 1U);
}

TEST(ApplyMove, DecksMixFreely)
{
    GameState s = emptyBoard();
    s.tableau[0] = {card("8S", 1)};
    s.tableau[1] = {card("7H", 0)};
    expectMoved(applyMove(s, MoveSource::tableau(1, 0), MoveDestination::tableau(0)));

    s.foundations[3] = foundationUpTo("4H");
    s.foundations[6] = foundationUpTo("4H");
    s.tableau[2] = {card("5H", 1)};
    const auto moved = expectMoved(applyMove(s, MoveSource::tableau(2, 0), MoveDestination::foundation(6)));
    EXPECT_EQ(moved.state.foundations[6].size(), 5U);
}

TEST(ApplyMove, AcesStartAnyEmptyFoundation)
{
    GameState s = emptyBoard();
    s.hand[0] = card("AH");
    s.hand[1] = card("AH", 1);
    for (std::int64_t f = 0; f < 8; ++f) EXPECT_TRUE(canMove(s, MoveSource::hand(0), MoveDestination::foundation(f)));
    const auto first = expectMoved(applyMove(s, MoveSource::hand(0), MoveDestination::foundation(5)));
    const auto second = expectMoved(applyMove(first.state, MoveSource::hand(1), MoveDestination::foundation(2)));
    EXPECT_EQ(second.state.foundations[5].size(), 1U);
    EXPECT_EQ(second.state.foundations[2].size(), 1U);
}

TEST(ApplyMove, MovingOntoItsOwnPlaceIsIgnored)
{
    const GameState s = sampleBoard();
    EXPECT_TRUE(std::holds_alternative<MoveIgnored>(applyMove(s, MoveSource::tableau(0, 1), MoveDestination::tableau(0))));
    EXPECT_TRUE(std::holds_alternative<MoveIgnored>(applyMove(s, MoveSource::hand(2), MoveDestination::hand(2))));
    // A source that cannot move is refused before it could be ignored.
    EXPECT_EQ(reason(applyMove(s, MoveSource::tableau(1, 1), MoveDestination::tableau(1))),
              "That card is not available.");
}

TEST(ApplyMove, HandRearrangementExchangesSlots)
{
    const GameState s = sampleBoard();
    const auto swapped = expectMoved(applyMove(s, MoveSource::hand(0), MoveDestination::hand(2)));
    EXPECT_EQ(swapped.state.hand[0], s.hand[2]);
    EXPECT_EQ(swapped.state.hand[2], s.hand[0]);

    const auto anywhere = expectMoved(applyMove(s, MoveSource::hand(2), MoveDestination::hand()));
    EXPECT_EQ(anywhere.state.hand[1], s.hand[2]); // lowest empty slot other than its own
    EXPECT_FALSE(anywhere.state.hand[2]);

    GameState full = s;
    full.hand = {card("2H"), card("3H"), card("4H"), card("5D")};
    EXPECT_EQ(reason(applyMove(full, MoveSource::hand(1), MoveDestination::hand())),
              "Your hand can hold at most four cards.");
}

TEST(ApplyMove, ShortHandGrowsToFourSlotsAndNoFurther)
{
    GameState s = sampleBoard();
    s.hand = {card("2H")};
    const auto rearranged = expectMoved(applyMove(s, MoveSource::hand(0), MoveDestination::hand(3)));
    ASSERT_EQ(rearranged.state.hand.size(), 4U);
    EXPECT_EQ(rearranged.state.hand[3], s.hand[0]);

    const auto arrived = expectMoved(applyMove(s, MoveSource::tableau(2, 0), MoveDestination::hand()));
    ASSERT_EQ(arrived.state.hand.size(), 2U);
    EXPECT_EQ(arrived.state.hand[1], s.tableau[2][0]);
}

TEST(ApplyMove, FoundationCardsComeBackButNeverToAnotherFoundation)
{
    GameState s = sampleBoard();
    s.tableau[4] = cards("3H");
    const auto toColumn = expectMoved(applyMove(s, MoveSource::foundation(0), MoveDestination::tableau(4)));
    EXPECT_EQ(toColumn.state.foundations[0].size(), 1U);

    const auto toHand = expectMoved(applyMove(s, MoveSource::foundation(0), MoveDestination::hand()));
    EXPECT_EQ(toHand.state.hand[1], s.foundations[0].back());

    GameState aceOnly = emptyBoard();
    aceOnly.foundations[0] = foundationUpTo("AS");
    EXPECT_EQ(reason(applyMove(aceOnly, MoveSource::foundation(0), MoveDestination::foundation(1))),
              "That foundation already has a card.");
}

TEST(ApplyMove, CountStopsAtItsLimit)
{
    GameState s = sampleBoard();
    s.moveCount = moveCountLimit - 1;
    auto once = applyMove(s, MoveSource::tableau(2, 0), MoveDestination::hand());
    ASSERT_TRUE(std::holds_alternative<MoveMoved>(once));
    const GameState& next = std::get<MoveMoved>(once).state;
    EXPECT_EQ(next.moveCount, moveCountLimit);
    auto again = applyMove(next, MoveSource::tableau(6, 0), MoveDestination::hand());
    ASSERT_TRUE(std::holds_alternative<MoveMoved>(again));
    EXPECT_EQ(std::get<MoveMoved>(again).state.moveCount, moveCountLimit);
}

TEST(CanMoveToAnyFoundation, LooksAtEveryFoundation)
{
    GameState s = emptyBoard();
    s.foundations[7] = foundationUpTo("6D");
    s.tableau[0] = cards("7D");
    s.tableau[1] = cards("7H");
    EXPECT_TRUE(canMoveToAnyFoundation(s, MoveSource::tableau(0, 0)));
    EXPECT_FALSE(canMoveToAnyFoundation(s, MoveSource::tableau(1, 0)));
    EXPECT_FALSE(canMoveToAnyFoundation(s, MoveSource::foundation(7)));
}

TEST(RemoveMovedCards, IgnoresIndicesOffTheBoard)
{
    GameState s = sampleBoard();
    const GameState copy = s;
    removeMovedCards(s, MoveSource::tableau(12, 0));
    removeMovedCards(s, MoveSource::tableau(0, 9));
    removeMovedCards(s, MoveSource::hand(-2));
    removeMovedCards(s, MoveSource::foundation(3));
    EXPECT_EQ(s, copy);
}

} // namespace
} // namespace zelvaine

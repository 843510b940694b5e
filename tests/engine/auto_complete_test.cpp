#include "engine/auto_complete.hpp"
#include "engine/move_rules.hpp"
#include "tests/support/positions.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace zelvaine {
namespace {

using testing::card;
using testing::cards;
using testing::emptyBoard;
using testing::foundationUpTo;

// Every suit's two foundations built to `top` except where a test changes them.
GameState nearlyFinished()
{
    GameState s = emptyBoard();
    s.foundations = {foundationUpTo("QC"), foundationUpTo("QC"), foundationUpTo("QD"), foundationUpTo("QD"),
                     foundationUpTo("QH"), foundationUpTo("QH"), foundationUpTo("QS"), foundationUpTo("QS")};
    return s;
}

TEST(AutoComplete, AKingInTheHandOrOnOtherCardsHoldsTheOfferBack)
{
    GameState s = nearlyFinished();
    s.hand[0] = card("KC");
    const char* kings[] = {"KC", "KD", "KD", "KH", "KH", "KS", "KS"};
    for (std::size_t k = 0; k < 7; ++k) s.tableau[k] = {card(kings[k])};
    EXPECT_TRUE(canAutoComplete(s));
    EXPECT_FALSE(hasNoBlockedKing(s));

    s.hand[0].reset();
    s.tableau[7] = cards("QC KC");
    EXPECT_FALSE(hasNoBlockedKing(s));
    s.tableau[7] = cards("KC");
    EXPECT_TRUE(hasNoBlockedKing(s));
}

TEST(AutoComplete, KingOnTopOfItsColumnDoesNotBlock)
{
    GameState s = nearlyFinished();
    s.foundations[0] = foundationUpTo("10C");
    s.tableau[0] = cards("KC QC");
    s.tableau[1] = cards("JC");
    const char* kings[] = {"KC", "KD", "KD", "KH", "KH", "KS", "KS"};
    for (std::size_t k = 0; k < 7; ++k) s.tableau[k + 2] = {card(kings[k])};
    EXPECT_TRUE(hasNoBlockedKing(s));
    EXPECT_TRUE(canAutoComplete(s));
}

TEST(AutoComplete, StopsWhenACardCoversTheOneNeeded)
{
    GameState s = emptyBoard();
    for (std::size_t f = 0; f < 8; ++f) s.foundations[f] = foundationUpTo(f == 4 ? "4H" : "KS");
    s.foundations[0] = foundationUpTo("KC");
    s.tableau[2] = cards("5H 6H");
    EXPECT_TRUE(hasNoBlockedKing(s));
    EXPECT_FALSE(canAutoComplete(s));
    EXPECT_EQ(nextFoundationAutoMove(s), std::nullopt);

    s.tableau[2] = cards("6H 5H");
    EXPECT_TRUE(canAutoComplete(s)); // only the cards still in play are judged
}

TEST(AutoComplete, HandFirstThenColumnsThenLowestFoundation)
{
    GameState s = emptyBoard();
    s.tableau[0] = cards("AS");
    s.hand[2] = card("AD");
    const auto first = nextFoundationAutoMove(s);
    ASSERT_TRUE(first);
    EXPECT_EQ(*first, (FoundationAutoMove{MoveSource::hand(2), 0, *s.hand[2]}));

    s.hand[2].reset();
    s.foundations[0] = foundationUpTo("AC");
    const auto second = nextFoundationAutoMove(s);
    ASSERT_TRUE(second);
    EXPECT_EQ(*second, (FoundationAutoMove{MoveSource::tableau(0, 0), 1, s.tableau[0][0]}));
}

TEST(AutoComplete, PerformingEveryStepWinsWithOneMoveEach)
{
    GameState s = nearlyFinished();
    s.foundations[2] = foundationUpTo("9D");
    s.hand = {card("KS"), std::nullopt, card("10D"), std::nullopt};
    s.tableau[0] = cards("KD QD JD");
    s.tableau[1] = cards("KC");
    s.tableau[2] = cards("KC");
    s.tableau[4] = cards("KH");
    s.tableau[5] = cards("KH");
    s.tableau[6] = cards("KD");
    s.tableau[7] = cards("KS");
    s.moveCount = 100;
    EXPECT_FALSE(hasNoBlockedKing(s)); // the offer waits, though the finish itself would work
    ASSERT_TRUE(canAutoComplete(s));

    std::size_t steps = 0;
    while (auto step = nextFoundationAutoMove(s)) {
        const auto outcome = applyMove(s, step->source, MoveDestination::foundation(step->foundationIndex));
        ASSERT_TRUE(std::holds_alternative<MoveMoved>(outcome));
        s = std::get<MoveMoved>(outcome).state;
        ++steps;
    }
    EXPECT_TRUE(isWon(s));
    EXPECT_EQ(steps, 11U);
    EXPECT_EQ(s.moveCount, 111);
}

TEST(AutoComplete, AgreesWithPlayingTheStepsOnRandomEndgames)
{
    // Deal, put a random part of every suit on the foundations, scatter the rest, then compare
    // the fast simulation with actually playing the steps through the rules.
    std::mt19937_64 random(7);
    for (int round = 0; round < 300; ++round) {
        GameState s = emptyBoard();
        std::vector<PlayingCard> loose;
        for (std::size_t f = 0; f < 8; ++f) {
            const int built = static_cast<int>(random() % 14);
            const Suit suit = allSuits[f / 2];
            for (int r = 1; r <= 13; ++r) {
                PlayingCard c{Uuid::random(), suit, static_cast<Rank>(r), static_cast<std::int64_t>(f % 2)};
                (r <= built ? s.foundations[f] : loose).push_back(c);
            }
        }
        std::shuffle(loose.begin(), loose.end(), random);
        for (const auto& c : loose) {
            const auto place = random() % 12;
            if (place < 10) {
                s.tableau[place].push_back(c);
            } else if (auto slot = std::ranges::find(s.hand, HandSlot{}); slot != s.hand.end()) {
                *slot = c;
            } else {
                s.tableau[0].push_back(c);
            }
        }
        GameState played = s;
        while (auto step = nextFoundationAutoMove(played)) {
            played =
                std::get<MoveMoved>(applyMove(played, step->source, MoveDestination::foundation(step->foundationIndex))).state;
        }
        EXPECT_EQ(canAutoComplete(s), isWon(played)) << "round " << round;
    }
}

} // namespace
} // namespace zelvaine

#include "engine/game_state.hpp"
#include "engine/random_source.hpp"
#include "tests/support/positions.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <random>
#include <unordered_set>
#include <vector>

namespace zelvaine {
namespace {

using testing::card;
using testing::emptyBoard;

// Replays a list of words, then repeats the last one forever; counts what it was asked for.
class ScriptedRandom final : public RandomSource {
public:
    explicit ScriptedRandom(std::vector<std::uint64_t> words) : words_(std::move(words)) {}
    std::uint64_t next64() override
    {
        const std::uint64_t word = words_[std::min(draws_, words_.size() - 1)];
        ++draws_;
        return word;
    }
    std::size_t draws() const { return draws_; }

private:
    std::vector<std::uint64_t> words_;
    std::size_t draws_ = 0;
};

void expectCard(const PlayingCard& card, Suit suit, Rank rank, std::int64_t deck)
{
    EXPECT_EQ(card.suit, suit);
    EXPECT_EQ(card.rank, rank);
    EXPECT_EQ(card.deck, deck);
}

TEST(Deal, TwoDealsShareNoCardId)
{
    std::unordered_set<Uuid> first;
    for (const auto& column : dealNewGame().tableau) {
        for (const auto& c : column) first.insert(c.id);
    }
    for (const auto& column : dealNewGame().tableau) {
        for (const auto& c : column) EXPECT_FALSE(first.contains(c.id));
    }
}

// With every draw at its maximum, step i exchanges card i with card 103: the set rotates by
// one, so the king of spades of the second deck comes first and everything else moves down.
TEST(Deal, ShufflesForwardWithOneDrawPerPosition)
{
    ScriptedRandom random({std::numeric_limits<std::uint64_t>::max()});
    const GameState state = dealNewGame(random);
    EXPECT_EQ(random.draws(), 103U);
    expectCard(state.tableau[0][0], Suit::spades, Rank::king, 1);
    expectCard(state.tableau[0][1], Suit::clubs, Rank::ace, 0);
    expectCard(state.tableau[0][9], Suit::clubs, Rank::nine, 0);
    expectCard(state.tableau[5][2], Suit::spades, Rank::king, 0);
    expectCard(state.tableau[5][3], Suit::clubs, Rank::ace, 1);
    expectCard(state.hand[3].value(), Suit::spades, Rank::queen, 1);
}

TEST(Deal, DiscardsDrawsThatWouldBiasTheShuffle)
{
    // For a range of 104 the first 16 words of the low half are refused: word 0 is drawn again.
    ScriptedRandom random({0, std::numeric_limits<std::uint64_t>::max()});
    const GameState state = dealNewGame(random);
    EXPECT_EQ(random.draws(), 104U);
    expectCard(state.tableau[0][0], Suit::spades, Rank::king, 1);
}

// On 8- and 16-bit words every word can be tried: each result must come from exactly the same
// number of words, and exactly (2^bits mod size) words must be refused.
TEST(BoundedDraw, IsExactlyUniformOnSmallWords)
{
    for (unsigned size = 1; size <= 255; ++size) {
        std::vector<int> hits(size);
        int refused = 0;
        for (unsigned word = 0; word <= 255; ++word) {
            const auto drawn = boundedDraw<std::uint8_t, std::uint16_t>(static_cast<std::uint8_t>(word),
                                                                        static_cast<std::uint8_t>(size));
            if (!drawn) {
                ++refused;
                continue;
            }
            ASSERT_LT(*drawn, size);
            ++hits[*drawn];
        }
        EXPECT_EQ(refused, static_cast<int>(256 % size)) << "size " << size;
        for (unsigned r = 0; r < size; ++r) ASSERT_EQ(hits[r], hits[0]) << "size " << size << " result " << r;
    }
    for (unsigned size : {3U, 100U, 104U, 1000U, 40000U}) {
        std::vector<int> hits(size);
        for (unsigned word = 0; word <= 0xFFFF; ++word) {
            if (auto drawn = boundedDraw<std::uint16_t, std::uint32_t>(static_cast<std::uint16_t>(word),
                                                                       static_cast<std::uint16_t>(size))) {
                ++hits[*drawn];
            }
        }
        for (unsigned r = 0; r < size; ++r) ASSERT_EQ(hits[r], hits[0]) << "size " << size;
    }
}

TEST(BoundedDraw, UniformBelowStaysInRange)
{
    class Mersenne final : public RandomSource {
    public:
        std::uint64_t next64() override { return engine(); }
        std::mt19937_64 engine{42};
    } random;
    std::vector<int> hits(7);
    for (int i = 0; i < 70000; ++i) ++hits[uniformBelow(random, 7)];
    for (int count : hits) EXPECT_NEAR(count, 10000, 500);
    EXPECT_EQ(uniformBelow(random, 1), 0U);
}

GameState wellFormedBoard() { return dealNewGame(); }

TEST(WellFormed, RequiresTheBoardShape)
{
    EXPECT_TRUE(isWellFormed(wellFormedBoard()));

    auto shaped = [](auto change) {
        GameState state = wellFormedBoard();
        change(state);
        return isWellFormed(state);
    };
    EXPECT_FALSE(shaped([](GameState& s) { s.hand.pop_back(); }));
    EXPECT_FALSE(shaped([](GameState& s) { s.hand.emplace_back(); }));
    EXPECT_FALSE(shaped([](GameState& s) { s.tableau.emplace_back(); }));
    EXPECT_FALSE(shaped([](GameState& s) {
        s.tableau[8].insert(s.tableau[8].end(), s.tableau[9].begin(), s.tableau[9].end());
        s.tableau.pop_back();
    }));
    EXPECT_FALSE(shaped([](GameState& s) { s.foundations.pop_back(); }));
    EXPECT_FALSE(shaped([](GameState& s) { s.tableau[0].pop_back(); }));                 // 103 cards
    EXPECT_FALSE(shaped([](GameState& s) { s.tableau[0].push_back(card("AH")); }));      // 105 cards
    EXPECT_FALSE(shaped([](GameState& s) { s.tableau[0][0].id = s.tableau[1][0].id; })); // shared id
    // Order, values and the move count are not its business.
    EXPECT_TRUE(shaped([](GameState& s) {
        s.foundations[0].push_back(*s.hand[0]);
        s.hand[0].reset();
        s.moveCount = -5;
    }));
}

TEST(Won, NeedsEmptyTableauAndHandAndEightKingTopped)
{
    GameState won = emptyBoard();
    for (auto& pile : won.foundations) {
        pile = testing::foundationUpTo("KS");
        std::swap(pile[3], pile[7]); // order inside a pile is not judged
    }
    EXPECT_TRUE(isWon(won));

    GameState handCard = won;
    handCard.hand[2] = card("AH");
    EXPECT_FALSE(isWon(handCard));

    GameState columnCard = won;
    columnCard.tableau[9].push_back(card("AH"));
    EXPECT_FALSE(isWon(columnCard));

    GameState queenOnTop = won;
    std::swap(queenOnTop.foundations[4][11], queenOnTop.foundations[4][12]);
    EXPECT_FALSE(isWon(queenOnTop));

    GameState shortPile = won;
    shortPile.foundations[1].pop_back();
    shortPile.foundations[1].back().rank = Rank::king;
    EXPECT_FALSE(isWon(shortPile));
}

} // namespace
} // namespace zelvaine

#include "engine/card.hpp"
#include "engine/localizer.hpp"

#include <gtest/gtest.h>

#include <map>

namespace zelvaine {
namespace {

TEST(Rank, ExistsOnlyFromOneToThirteen)
{
    EXPECT_EQ(rankFromRaw(0), std::nullopt);
    EXPECT_EQ(rankFromRaw(14), std::nullopt);
    EXPECT_EQ(rankFromRaw(-1), std::nullopt);
    EXPECT_EQ(rankFromRaw(1), Rank::ace);
    EXPECT_EQ(rankFromRaw(13), Rank::king);
}

TEST(Rank, NextHigherStopsAtKing)
{
    EXPECT_EQ(nextHigher(Rank::king), std::nullopt);
    EXPECT_EQ(nextHigher(Rank::queen), Rank::king);
    EXPECT_EQ(nextHigher(Rank::ace), Rank::two);
}

TEST(Suit, RawTextIsExactAndColourFollowsSuit)
{
    EXPECT_EQ(suitFromRaw("hearts"), Suit::hearts);
    EXPECT_EQ(suitFromRaw("Hearts"), std::nullopt);
    EXPECT_EQ(suitFromRaw("heart"), std::nullopt);
    EXPECT_EQ(suitFromRaw(""), std::nullopt);
    for (Suit suit : allSuits) EXPECT_EQ(suitFromRaw(rawValue(suit)), suit);
    EXPECT_TRUE(isRed(Suit::diamonds));
    EXPECT_TRUE(isRed(Suit::hearts));
    EXPECT_FALSE(isRed(Suit::clubs));
    EXPECT_FALSE(isRed(Suit::spades));
}

TEST(PlayingCard, IdentityIsAllFourFields)
{
    const Uuid id = Uuid::random();
    const PlayingCard card{id, Suit::hearts, Rank::seven, 0};
    EXPECT_EQ(card, (PlayingCard{id, Suit::hearts, Rank::seven, 0}));
    EXPECT_EQ(std::hash<PlayingCard>{}(card), std::hash<PlayingCard>{}(PlayingCard{id, Suit::hearts, Rank::seven, 0}));
    EXPECT_NE(card, (PlayingCard{Uuid::random(), Suit::hearts, Rank::seven, 0}));
    EXPECT_NE(card, (PlayingCard{id, Suit::hearts, Rank::seven, 1}));
    EXPECT_NE(card, (PlayingCard{id, Suit::diamonds, Rank::seven, 0}));
}

TEST(PlayingCard, AccessibleNameReadsRankOfSuit)
{
    EXPECT_EQ(accessibleName({Uuid::random(), Suit::diamonds, Rank::ten, 0}), "ten of diamonds");
    EXPECT_EQ(accessibleName({Uuid::random(), Suit::hearts, Rank::queen, 1}), "queen of hearts");
}

// A translation that reorders the pieces proves the name is one template, not a concatenation.
class ReversingLocalizer final : public Localizer {
public:
    std::string translate(std::string_view context, std::string_view key) const override
    {
        EXPECT_EQ(context, engineTextContext);
        static const std::map<std::string_view, std::string> table{{"%1 of %2", "%2: %1"},
                                                                   {"hearts", "cœurs"},
                                                                   {"queen", "dame"}};
        auto found = table.find(key);
        return found == table.end() ? std::string(key) : found->second;
    }
};

TEST(PlayingCard, AccessibleNameGoesThroughTheInstalledLocalizer)
{
    const ReversingLocalizer localizer;
    installLocalizer(&localizer);
    const std::string name = accessibleName({Uuid::random(), Suit::hearts, Rank::queen, 0});
    installLocalizer(nullptr);
    EXPECT_EQ(name, "cœurs: dame");
    EXPECT_EQ(accessibleName({Uuid::random(), Suit::hearts, Rank::queen, 0}), "queen of hearts");
}

TEST(FormatText, FillsNumberedPlaceholdersInAnyOrder)
{
    EXPECT_EQ(formatText("%2 then %1", {"a", "b"}), "b then a");
    EXPECT_EQ(formatText("100% of %1", {"x"}), "100% of x");
    EXPECT_EQ(formatText("%3 missing", {"x"}), "%3 missing");
}

TEST(Uuid, TextIsUpperCaseAndParsesEitherCase)
{
    const Uuid id = Uuid::random();
    const std::string text = id.text();
    ASSERT_EQ(text.size(), 36U);
    for (char c : text) EXPECT_TRUE((c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || c == '-') << text;
    EXPECT_EQ(Uuid::parse(text), id);
    std::string lower = text;
    for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    EXPECT_EQ(Uuid::parse(lower), id);
    EXPECT_EQ(Uuid::parse(""), std::nullopt);
    EXPECT_EQ(Uuid::parse(text.substr(1)), std::nullopt);
    EXPECT_EQ(Uuid::parse(text + "0"), std::nullopt);
    EXPECT_EQ(Uuid::parse("G0000000-0000-0000-0000-000000000000"), std::nullopt);
    EXPECT_EQ(Uuid::parse("0000000000000000000000000000000000000"), std::nullopt);
}

} // namespace
} // namespace zelvaine

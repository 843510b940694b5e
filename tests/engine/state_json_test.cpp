#include "engine/json_writer.hpp"
#include "engine/state_json.hpp"
#include "tests/support/positions.hpp"

#include <gtest/gtest.h>

namespace zelvaine {
namespace {

constexpr std::string_view aceId = "0A1B2C3D-4E5F-4071-8293-A4B5C6D7E8F9";

TEST(CardJson, AcceptsAnyDeckAndEitherCaseOfId)
{
    auto card =
        playingCardFromJson(R"({"suit":"spades","rank":13,"deck":7,"id":"0a1b2c3d-4e5f-4071-8293-a4b5c6d7e8f9"})");
    ASSERT_TRUE(card) << card.error().describe();
    EXPECT_EQ(card->deck, 7);
    EXPECT_EQ(card->rank, Rank::king);
    EXPECT_EQ(card->id.text(), aceId);
}

struct BadCard {
    const char* json;
    const char* error;
};

class CardJsonRefuses : public ::testing::TestWithParam<BadCard> {};

TEST_P(CardJsonRefuses, NamingWhatAndWhere)
{
    auto card = playingCardFromJson(GetParam().json);
    ASSERT_FALSE(card);
    EXPECT_EQ(card.error().describe(), GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, CardJsonRefuses,
    ::testing::Values(
        BadCard{R"({"suit":"hearts","rank":1,"deck":0})", R"(missing key "id")"},
        BadCard{R"({"id":"0A1B2C3D-4E5F-4071-8293-A4B5C6D7E8F9","rank":1,"deck":0})", R"(missing key "suit")"},
        BadCard{R"({"id":"0A1B2C3D-4E5F-4071-8293-A4B5C6D7E8F9","suit":"hearts","deck":0})", R"(missing key "rank")"},
        BadCard{R"({"id":"0A1B2C3D-4E5F-4071-8293-A4B5C6D7E8F9","suit":"hearts","rank":1})", R"(missing key "deck")"},
        BadCard{R"({"id":"0A1B2C3D-4E5F-4071-8293-A4B5C6D7E8F9","suit":"Hearts","rank":1,"deck":0})",
                R"(suit: "Hearts" is not a suit)"},
        BadCard{R"({"id":"0A1B2C3D-4E5F-4071-8293-A4B5C6D7E8F9","suit":"hearts","rank":14,"deck":0})",
                "rank: 14 is not a rank from 1 to 13"},
        BadCard{R"({"id":"0A1B2C3D-4E5F-4071-8293-A4B5C6D7E8F9","suit":"hearts","rank":0,"deck":0})",
                "rank: 0 is not a rank from 1 to 13"},
        BadCard{R"({"id":"0A1B2C3D-4E5F-4071-8293-A4B5C6D7E8F9","suit":"hearts","rank":"1","deck":0})",
                "rank: expected an integer, found a string"},
        BadCard{R"({"id":"0A1B2C3D-4E5F-4071-8293-A4B5C6D7E8F9","suit":"hearts","rank":1.5,"deck":0})",
                "rank: expected an integer, found a fractional number"},
        BadCard{R"({"id":"0A1B2C3D-4E5F-4071-8293-A4B5C6D7E8F9","suit":"hearts","rank":1,"deck":null})",
                "deck: expected an integer, found null"},
        BadCard{R"({"id":"not-a-uuid","suit":"hearts","rank":1,"deck":0})", R"(id: "not-a-uuid" is not a UUID)"},
        BadCard{R"({"id":17,"suit":"hearts","rank":1,"deck":0})", "id: expected a string, found an integer"},
        BadCard{R"([1,2])", "expected a card object, found an array"},
        BadCard{R"({"id":)", "not valid JSON (The JSON document has an improper structure: missing or superfluous "
                             "commas, braces, missing keys, etc.)"}));

// The bytes themselves are the golden encoding test's; here a whole deal comes back, empty hand
// slots as null included.
TEST(StateJson, RoundTripsADealWithEmptyHandSlotsAsNull)
{
    GameState state = dealNewGame();
    state.hand[0].reset();
    state.hand[2].reset();
    state.moveCount = 12;
    const std::string json = toJson(state);
    EXPECT_NE(json.find(R"("hand":[null,{)"), std::string::npos) << json;
    auto back = gameStateFromJson(json);
    ASSERT_TRUE(back) << back.error().describe();
    EXPECT_EQ(*back, state);
    EXPECT_EQ(toJson(*back), json);
}

TEST(StateJson, DoesNotJudgeTheShape)
{
    auto state = gameStateFromJson(R"({"tableau":[[]],"foundations":[],"hand":[null],"moveCount":-3})");
    ASSERT_TRUE(state) << state.error().describe();
    EXPECT_EQ(state->tableau.size(), 1U);
    EXPECT_EQ(state->hand.size(), 1U);
    EXPECT_FALSE(isWellFormed(*state));
}

TEST(StateJson, OneBadCardFailsTheWholePosition)
{
    GameState state = dealNewGame();
    std::string json = toJson(state);
    const std::string id = state.tableau[3][2].id.text();
    json.replace(json.find(id), id.size(), "XX");
    auto broken = gameStateFromJson(json);
    ASSERT_FALSE(broken);
    EXPECT_EQ(broken.error().describe(), R"(tableau[3][2].id: "XX" is not a UUID)");

    auto missing = gameStateFromJson(R"({"tableau":[],"foundations":[],"hand":[]})");
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error().describe(), R"(missing key "moveCount")");

    auto wrongHand = gameStateFromJson(R"({"tableau":[],"foundations":[],"hand":[1],"moveCount":0})");
    ASSERT_FALSE(wrongHand);
    EXPECT_EQ(wrongHand.error().describe(), "hand[0]: expected a card object, found an integer");

    auto flatPiles = gameStateFromJson(R"({"tableau":[],"foundations":[null],"hand":[],"moveCount":0})");
    ASSERT_FALSE(flatPiles);
    EXPECT_EQ(flatPiles.error().describe(), "foundations[0]: expected an array of cards, found null");
}

TEST(JsonString, EscapesWhatJsonRequires)
{
    std::string out;
    appendJsonString(out, "a\"b\\c\nd\x01"
                          "é");
    EXPECT_EQ(out, "\"a\\\"b\\\\c\\nd\\u0001é\"");
}

} // namespace
} // namespace zelvaine

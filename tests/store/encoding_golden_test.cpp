// The exact bytes of the saved game and of the shared file. Both are read back by older and newer
// builds (and the shared file by other players), so a change of writer must not move one byte.

#include "store/game_document.hpp"
#include "store/saved_game.hpp"

#include <gtest/gtest.h>

namespace zelvaine {
namespace {

Uuid id(int n)
{
    return *Uuid::parse("00000000-0000-4000-8000-0000000000" + std::string(n < 10 ? "0" : "") + std::to_string(n));
}

// Small, but with every shape a position has: a column of one and of two cards, a foundation,
// an empty foundation, a card in the hand and an empty hand slot.
GameState position(std::int64_t moveCount)
{
    GameState state;
    state.tableau = {{PlayingCard{id(1), Suit::spades, Rank::king, 0}},
                     {PlayingCard{id(2), Suit::hearts, Rank::queen, 1}, PlayingCard{id(3), Suit::diamonds, Rank::ten, 0}}};
    state.foundations = {{PlayingCard{id(4), Suit::clubs, Rank::ace, 1}}, {}};
    state.hand = {PlayingCard{id(5), Suit::hearts, Rank::jack, 0}, std::nullopt};
    state.moveCount = moveCount;
    return state;
}

constexpr std::string_view positionBytes =
    R"({"foundations":[[{"deck":1,"id":"00000000-0000-4000-8000-000000000004","rank":1,"suit":"clubs"}],[]],)"
    R"("hand":[{"deck":0,"id":"00000000-0000-4000-8000-000000000005","rank":11,"suit":"hearts"},null],)"
    R"("moveCount":12,"tableau":[[{"deck":0,"id":"00000000-0000-4000-8000-000000000001","rank":13,"suit":"spades"}],)"
    R"([{"deck":1,"id":"00000000-0000-4000-8000-000000000002","rank":12,"suit":"hearts"},)"
    R"({"deck":0,"id":"00000000-0000-4000-8000-000000000003","rank":10,"suit":"diamonds"}]]})";

std::string withMoveCount(std::string_view bytes, std::string_view count)
{
    std::string out(bytes);
    out.replace(out.find("\"moveCount\":12"), 14, "\"moveCount\":" + std::string(count));
    return out;
}

TEST(EncodingGolden, Position)
{
    EXPECT_EQ(toJson(position(12)), positionBytes);
    EXPECT_EQ(*encodePosition(position(12)), positionBytes);
}

TEST(EncodingGolden, SavedGameInWriteOrder)
{
    SavedGame game;
    game.currentState = position(12);
    game.initialState = position(0);
    game.history = {position(0), position(7)};
    game.redoHistory = {position(13)};
    game.challenge.usedUndo = true;
    const std::string zero = withMoveCount(positionBytes, "0");
    const std::string expected =
        R"({"currentState":)" + std::string(positionBytes) + R"(,"initialState":)" + zero + R"(,"history":[)" + zero +
        "," + withMoveCount(positionBytes, "7") + R"(],"redoHistory":[)" + withMoveCount(positionBytes, "13") +
        R"(],"challenge":{"usedHint":false,"usedUndo":true,"usedRestart":false,"usedAutoComplete":false,)"
        R"("movedCardFromFoundation":false,"wasImported":false}})";
    EXPECT_EQ(encodeSavedGame(game), expected);

    SavedGame empty = game;
    empty.history.clear();
    empty.redoHistory.clear();
    const std::string emptyExpected = R"({"currentState":)" + std::string(positionBytes) + R"(,"initialState":)" + zero +
                                      R"(,"history":[],"redoHistory":[],"challenge":{"usedHint":false,"usedUndo":true,)"
                                      R"("usedRestart":false,"usedAutoComplete":false,"movedCardFromFoundation":false,)"
                                      R"("wasImported":false}})";
    EXPECT_EQ(encodeSavedGame(empty), emptyExpected);
}

TEST(EncodingGolden, SharedFileWithKeysSortedAtEveryLevel)
{
    const auto document = ZelvaineGameDocument::fromStates(position(12), position(0));
    EXPECT_EQ(document.encode(), R"({"currentPosition":)" + std::string(positionBytes) +
                                     R"(,"formatVersion":1,"restartPosition":)" + withMoveCount(positionBytes, "0") +
                                     "}");
}

// A file's card is kept as it was read until the game is made from it, so a suit that needs
// escaping, a rank out of range and any deck number are written back as they came.
TEST(EncodingGolden, SharedFileKeepsUncheckedCardTexts)
{
    ZelvaineGameDocument document;
    document.formatVersion = -2;
    document.currentPosition.tableau = {{DocumentCard{id(9), "H\u00e9\"\\\n\x01", 14, -1}}};
    document.currentPosition.hand = {std::nullopt};
    document.currentPosition.moveCount = -5;
    document.restartPosition.foundations = {{DocumentCard{id(10), "", 0, 9223372036854775807}}};
    EXPECT_EQ(document.encode(),
              R"({"currentPosition":{"foundations":[],"hand":[null],"moveCount":-5,"tableau":[[{"deck":-1,)"
              R"("id":"00000000-0000-4000-8000-000000000009","rank":14,"suit":"H)"
              "\u00e9"
              R"(\"\\\n\u0001"}]]},"formatVersion":-2,"restartPosition":{"foundations":[[{"deck":9223372036854775807,)"
              R"("id":"00000000-0000-4000-8000-000000000010","rank":0,"suit":""}]],"hand":[],"moveCount":0,"tableau":[]}})");
    auto decoded = ZelvaineGameDocument::decode(document.encode());
    ASSERT_TRUE(decoded) << decoded.error().detail;
    EXPECT_EQ(*decoded, document);
}

} // namespace
} // namespace zelvaine

#include "store/saved_game.hpp"
#include "tests/support/positions.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace zelvaine {
namespace {

SavedGame sampleGame()
{
    SavedGame game;
    game.initialState = dealNewGame();
    game.history = {game.initialState, dealNewGame()};
    game.currentState = dealNewGame();
    game.currentState.moveCount = 2;
    game.redoHistory = {dealNewGame()};
    game.challenge.usedUndo = true;
    game.challenge.wasImported = true;
    return game;
}

// Replaces the first occurrence of `from` in the encoded game.
std::string edited(const std::string& json, const std::string& from, const std::string& to)
{
    std::string out = json;
    const auto at = out.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    if (at != std::string::npos) out.replace(at, from.size(), to);
    return out;
}

TEST(SavedGame, RoundTripsWithEverything)
{
    const SavedGame game = sampleGame();
    const std::string json = encodeSavedGame(game);
    EXPECT_TRUE(json.starts_with(R"({"currentState":{)"));
    EXPECT_NE(
        json.find(
            R"(,"challenge":{"usedHint":false,"usedUndo":true,"usedRestart":false,"usedAutoComplete":false,"movedCardFromFoundation":false,"wasImported":true}})"),
        std::string::npos);
    const RestoredGame restored = restoreSavedGame(json);
    EXPECT_EQ(restored.from, RestoredFrom::savedGame);
    EXPECT_EQ(restored.game, game);
}

TEST(SavedGame, OptionalPartsMayBeMissingOrNull)
{
    const SavedGame game = sampleGame();
    const std::string json = "{\"initialState\":" + toJson(game.initialState) +
                             ",\"currentState\":" + toJson(game.currentState) + ",\"history\":null,\"unknown\":[1,2]}";
    const RestoredGame restored = restoreSavedGame(json);
    ASSERT_EQ(restored.from, RestoredFrom::savedGame);
    EXPECT_TRUE(restored.game->history.empty());
    EXPECT_TRUE(restored.game->redoHistory.empty());
    EXPECT_EQ(restored.game->challenge, GameChallengeRecord{});
}

TEST(SavedGame, BarePositionOfTheOlderFormIsRestoredWithoutHistory)
{
    GameState position = dealNewGame();
    position.moveCount = 17;
    const RestoredGame restored = restoreSavedGame(toJson(position));
    ASSERT_EQ(restored.from, RestoredFrom::position);
    EXPECT_EQ(restored.game->currentState, position);
    EXPECT_EQ(restored.game->initialState, position);
    EXPECT_TRUE(restored.game->history.empty());
    EXPECT_EQ(restored.game->challenge, GameChallengeRecord{});
}

TEST(SavedGame, AnythingDoubtfulGivesNothing)
{
    const SavedGame game = sampleGame();
    const std::string json = encodeSavedGame(game);

    SavedGame deepBad = game;
    deepBad.history[1].tableau[4].pop_back(); // 103 cards, deep in the history
    SavedGame won = game;
    won.currentState = testing::emptyBoard();
    for (auto& pile : won.currentState.foundations) pile = testing::foundationUpTo("KH");
    SavedGame badInitial = game;
    badInitial.initialState.hand.pop_back();
    SavedGame hugeCount = game;
    hugeCount.currentState.moveCount = std::numeric_limits<std::int64_t>::max();
    SavedGame negativeInHistory = game;
    negativeInHistory.history[0].moveCount = -1;
    SavedGame thirdDeck = game;
    thirdDeck.redoHistory[0].tableau[3][2].deck = 2;
    GameState hugeBare = game.currentState;
    hugeBare.moveCount = moveCountLimit + 1;

    const std::string cases[] = {
        "",
        "not json",
        "[]",
        edited(json, R"("usedRestart":false,)", ""), // challenge lacks a key
        edited(json, R"("usedRestart":false)", R"("usedRestart":0)"),
        edited(json, R"("currentState":)", R"("currentState":null,"x":)"),
        edited(json, R"("history":[)", R"("history":{"a":[)"),
        encodeSavedGame(deepBad),
        encodeSavedGame(won),
        encodeSavedGame(badInitial),
        encodeSavedGame(hugeCount),
        encodeSavedGame(negativeInHistory),
        encodeSavedGame(thirdDeck),
        toJson(hugeBare),
        toJson(won.currentState), // a won bare position
        R"({"tableau":[],"foundations":[],"hand":[],"moveCount":0})",
    };
    for (const auto& blob : cases) {
        const RestoredGame restored = restoreSavedGame(blob);
        EXPECT_EQ(restored.from, RestoredFrom::none) << blob.substr(0, 120);
        EXPECT_FALSE(restored.game);
        // Only a whole game that was simply over is no sign of damage.
        const bool over = blob == encodeSavedGame(won) || blob == toJson(won.currentState);
        EXPECT_EQ(restored.finished, over) << blob.substr(0, 120);
    }
}

TEST(SavedGame, AssembledFromCachedPiecesEqualsAFreshEncoding)
{
    const SavedGame game = sampleGame();
    std::vector<EncodedPosition> history;
    for (const auto& p : game.history) history.push_back(encodePosition(p));
    std::vector<EncodedPosition> redo;
    for (const auto& p : game.redoHistory) redo.push_back(encodePosition(p));
    const DefaultsData joined =
        joinPieces(flattenRuns(savedGameRuns(encodePosition(game.currentState), encodePosition(game.initialState),
                                             history, redo, game.challenge)));
    EXPECT_EQ(std::string(joined.begin(), joined.end()), encodeSavedGame(game));
    // An empty history still reads as an array.
    const DefaultsData bare = joinPieces(
        flattenRuns(savedGameRuns(encodePosition(game.currentState), encodePosition(game.initialState), {}, {}, {})));
    EXPECT_EQ(restoreSavedGame(std::string(bare.begin(), bare.end())).from, RestoredFrom::savedGame);
}

TEST(SavedGame, PositionsAreFoundInTheirOwnRunsAndOnlyThere)
{
    const SavedGame game = sampleGame();
    std::vector<EncodedPosition> history;
    for (const auto& p : game.history) history.push_back(encodePosition(p));
    const EncodedPosition current = encodePosition(game.currentState);
    const DataRuns runs = savedGameRuns(current, encodePosition(game.initialState), history, {}, game.challenge);

    const auto found = savedGamePositions(runs, history.size(), 0);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->currentState, current); // the same piece, not a copy
    EXPECT_EQ(found->history, history);
    EXPECT_TRUE(found->redoHistory.empty());

    EXPECT_FALSE(savedGamePositions(runs, history.size() + 1, 0)); // counts disagree with the decoded game
    EXPECT_FALSE(savedGamePositions(runs, history.size(), 1));
    DataRuns merged = runs;
    merged[1] = {std::make_shared<const std::string>(*history[0] + "," + *history[1])};
    // One piece holding both positions: the joined bytes still decode to two.
    EXPECT_FALSE(savedGamePositions(merged, history.size(), 0));
    DataRuns flat = {flattenRuns(runs)};
    EXPECT_FALSE(savedGamePositions(flat, history.size(), 0));
}

} // namespace
} // namespace zelvaine

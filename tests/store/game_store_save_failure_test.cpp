// What the player is told when the game cannot reach the disk, and how often.
#include "store/game_store.hpp"
#include "tests/store/store_fakes.hpp"

#include <gtest/gtest.h>

namespace zelvaine {
namespace {

using testing::FailingDefaultsStore;
using testing::RecordingSoundCues;

class SaveFailureTest : public ::testing::Test {
protected:
    FailingDefaultsStore defaults;
    RecordingSoundCues sound;
};

TEST_F(SaveFailureTest, EachKindIsToldOncePerRunOfFailuresAndAgainAfterARecovery)
{
    const std::vector<std::pair<DefaultsWriteFailure, std::string>> kinds = {
        {DefaultsWriteFailure::noPlace, "cannot be created or opened"}, {DefaultsWriteFailure::readOnly, "read-only"},
        {DefaultsWriteFailure::diskFull, "the disk is full"},           {DefaultsWriteFailure::busy, "another program"},
        {DefaultsWriteFailure::ioError, "the disk reported an error"},
    };
    GameStore store(std::nullopt, defaults, sound);
    EXPECT_FALSE(store.message());
    for (const auto& [kind, words] : kinds) {
        SCOPED_TRACE(words);
        defaults.failure = kind;
        store.persistNow();
        ASSERT_TRUE(store.message());
        EXPECT_EQ(store.messageKind(), GameMessageKind::notice);
        EXPECT_TRUE(store.message()->starts_with("Zelvaine cannot save your game: "));
        EXPECT_NE(store.message()->find(words), std::string::npos) << *store.message();

        store.clearMessage(); // the toast went
        store.persistNow();
        EXPECT_FALSE(store.message()) << "told again in the same run of failures";

        defaults.failure.reset(); // a save got through
        store.persistNow();
        EXPECT_FALSE(store.message());
    }
}

TEST_F(SaveFailureTest, TheGameGoesOnAndKeepsHandingOverItsSaves)
{
    GameStore store(std::nullopt, defaults, sound);
    defaults.failure = DefaultsWriteFailure::diskFull;
    store.newGame();
    const GameState dealt = store.state();
    store.persistNow();
    // The store retries by writing each change as usual; the newest game is what it holds.
    const auto saved = defaults.inner.data(savedGameKey);
    ASSERT_TRUE(saved);
    EXPECT_NE(std::string(saved->begin(), saved->end()).find(dealt.tableau[0][0].id.text()), std::string::npos);
}

TEST_F(SaveFailureTest, AFailureKnownAtStartIsWaitingWhenTheBoardAppears)
{
    defaults.failure = DefaultsWriteFailure::busy;
    GameStore store(std::nullopt, defaults, sound);
    ASSERT_TRUE(store.message());
    EXPECT_EQ(store.messageKind(), GameMessageKind::notice);
    EXPECT_NE(store.message()->find("another program"), std::string::npos);
    store.clearMessage();
    store.persistNow();
    EXPECT_FALSE(store.message()); // the same run of failures
}

TEST_F(SaveFailureTest, ADamagedFileKeptAsideIsNamedToThePlayer)
{
    defaults.keptAside = "/home/p/.local/share/zelvaine/defaults.sqlite3.damaged-20240101T000000Z";
    GameStore store(std::nullopt, defaults, sound);
    ASSERT_TRUE(store.message());
    EXPECT_EQ(store.messageKind(), GameMessageKind::notice);
    EXPECT_NE(store.message()->find(*defaults.keptAside), std::string::npos);
}

TEST_F(SaveFailureTest, AStoreWithItsOwnGameGuardsNothingAndSaysNothingOfTheDisk)
{
    defaults.failure = DefaultsWriteFailure::diskFull;
    defaults.keptAside = "/somewhere";
    GameStore store(dealNewGame(), defaults, sound);
    EXPECT_FALSE(defaults.guarded);
    store.persistNow();
    EXPECT_FALSE(store.message());
}

TEST_F(SaveFailureTest, AGameAnotherWindowSavedIsNotOverwrittenUntilThePlayerDealsAgain)
{
    GameStore store(std::nullopt, defaults, sound);
    EXPECT_EQ(defaults.guarded, std::string(savedGameKey));
    defaults.isOvertaken = true; // the other window's save was seen by the last commit
    defaults.failure = DefaultsWriteFailure::busy;
    store.persistNow();
    ASSERT_TRUE(store.message());
    EXPECT_TRUE(store.message()->starts_with("Another Zelvaine window saved its game")) << *store.message();
    store.clearMessage();
    store.persistNow();
    EXPECT_FALSE(store.message()) << "told twice";
    EXPECT_EQ(defaults.retakes, 0) << "undo, moves and restarts must not take the file back";
    store.restartGame();
    EXPECT_EQ(defaults.retakes, 0);

    store.newGame();
    EXPECT_EQ(defaults.retakes, 1);
    defaults.isOvertaken = true; // overtaken once more, later on
    store.persistNow();
    EXPECT_TRUE(store.message() && store.message()->starts_with("Another Zelvaine window"));
}

TEST_F(SaveFailureTest, ADamagedSavedGameIsKeptAsideBeforeTheNewDealReplacesIt)
{
    const std::string damaged = R"({"currentState":{"tableau":[[)";
    defaults.inner.set(savedGameKey, DefaultsData(damaged.begin(), damaged.end()));
    GameStore store(std::nullopt, defaults, sound);
    ASSERT_TRUE(store.message());
    EXPECT_NE(store.message()->find("kept it as zelvaine.saved-game.v1.damaged"), std::string::npos) << *store.message();
    store.newGame();
    EXPECT_EQ(defaults.inner.data("zelvaine.saved-game.v1.damaged"), DefaultsData(damaged.begin(), damaged.end()));
    EXPECT_NE(defaults.inner.data(savedGameKey), DefaultsData(damaged.begin(), damaged.end()));
}

} // namespace
} // namespace zelvaine

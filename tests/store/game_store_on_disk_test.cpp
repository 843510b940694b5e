// The game store on a real defaults file shared with others: a second game on it (two displays,
// a game that lost track of the other), another program holding it, a damaged saved game in it.
// None of them loses a game without the player being told.

#include "engine/move_rules.hpp"
#include "store/game_store.hpp"
#include "store/sqlite_defaults_store.hpp"
#include "tests/store/file_holder.hpp"
#include "tests/store/sqlite_defaults_test_support.hpp"
#include "tests/store/store_fakes.hpp"
#include "tests/support/positions.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace zelvaine {
namespace {

std::optional<SavedGame> savedIn(const testing::DefaultsScratchFolder& folder)
{
    SqliteDefaultsStore reader(folder.file());
    testing::RecordingSoundCues sound;
    const GameStore restored(std::nullopt, reader, sound);
    return SavedGame{restored.state(), restored.initialState(), restored.history(), restored.redoHistory(),
                     restored.challenge()};
}

// Any counted move: the stand-in deal of a held file is random, and a random deal may offer no
// move between columns.
void playOneMove(GameStore& store)
{
    const auto moves = legalMoves(store.state());
    ASSERT_FALSE(moves.empty()) << "no move found";
    ASSERT_TRUE(store.move(moves.front().source, moves.front().destination));
}

void storeSavedGame(const testing::DefaultsScratchFolder& folder, const std::string& saved)
{
    SqliteDefaultsStore defaults(folder.file());
    defaults.set(savedGameKey, DefaultsData(saved.begin(), saved.end()));
}

std::string unplayed(const GameState& deal) { return encodeSavedGame({deal, deal, {}, {}, {}}); }

// Two windows opened on one saved game, as two displays of one player might open them.
class TwoWindows : public ::testing::Test {
protected:
    testing::DefaultsScratchFolder folder;
    testing::RecordingSoundCues sound;
    // Written before either window opens the file.
    bool savedGameStored = (storeSavedGame(folder, unplayed(testing::knownDeal())), true);
    SqliteDefaultsStore firstDefaults{folder.file()};
    SqliteDefaultsStore secondDefaults{folder.file()};
    GameStore first{std::nullopt, firstDefaults, sound};
    GameStore second{std::nullopt, secondDefaults, sound};
};

TEST_F(TwoWindows, TheOneThatSavedSecondIsToldAndKeepsItsHandsOff)
{
    ASSERT_EQ(first.state(), second.state());

    playOneMove(second);
    secondDefaults.flush();
    const GameState secondsGame = second.state();

    first.undo(); // nothing to undo: no save
    first.requestNewGame();
    first.dismissConfirmation();
    first.showHint(); // saves, and is refused
    firstDefaults.flush();
    EXPECT_EQ(savedIn(folder)->currentState, secondsGame);
    first.persistNow(); // the refusal is known once the commit after it has run
    ASSERT_TRUE(first.message());
    EXPECT_TRUE(first.message()->starts_with("Another Zelvaine window")) << *first.message();

    // A new deal in the first window is the player's choice after being told.
    first.newGame();
    firstDefaults.flush();
    EXPECT_EQ(savedIn(folder)->currentState, first.state());
    // And now the second is the one that must not overwrite.
    playOneMove(second);
    secondDefaults.flush();
    EXPECT_EQ(savedIn(folder)->currentState, first.state());
    second.persistNow();
    EXPECT_TRUE(second.message() && second.message()->starts_with("Another Zelvaine window"));
}

// The word that this window no longer saves comes with the save that finds it out; a hint asked
// for at that moment once replaced it before it was ever shown.
TEST_F(TwoWindows, AHintDoesNotHideTheWordThatThisWindowNoLongerSaves)
{
    playOneMove(second);
    secondDefaults.flush();

    playOneMove(first); // refused by the file, and known once its commit has run
    firstDefaults.flush();
    // A quick commit tells it with the move itself, already said; otherwise the hint's save finds
    // it out, and the hint must not take its place.
    if (!first.message() || !first.message()->starts_with("Another Zelvaine window")) first.showHint();
    ASSERT_TRUE(first.message());
    EXPECT_TRUE(first.message()->starts_with("Another Zelvaine window")) << *first.message();
}

TEST(HeldFile, AGameStartedWhileAnotherProgramHoldsTheFileNeverReplacesTheSavedOne)
{
    testing::DefaultsScratchFolder folder;
    testing::RecordingSoundCues sound;
    const GameState deal = testing::knownDeal();
    storeSavedGame(folder, unplayed(deal));
    testing::FileHolder holder(folder.file());
    ASSERT_TRUE(holder.held());

    SqliteDefaultsStore defaults(folder.file());
    GameStore store(std::nullopt, defaults, sound);
    ASSERT_TRUE(store.message());
    EXPECT_TRUE(store.message()->starts_with("Zelvaine cannot open its saved game yet")) << *store.message();
    store.clearMessage();
    playOneMove(store); // on the stand-in deal, which must not reach the file
    holder.release();
    for (int tries = 0; tries < 200 && defaults.waitingForFile(); ++tries)
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    ASSERT_FALSE(defaults.waitingForFile());

    store.undo(); // a save after the file opened: refused, and the player told
    defaults.flush();
    store.persistNow();
    EXPECT_TRUE(store.message() && store.message()->starts_with("Another Zelvaine window"))
        << store.message().value_or("");
    EXPECT_EQ(savedIn(folder)->currentState, deal);
}

class DamagedSavedGame : public ::testing::TestWithParam<std::string> {};

TEST_P(DamagedSavedGame, IsKeptInAFileNextToTheDatabaseAndNamed)
{
    testing::DefaultsScratchFolder folder;
    testing::RecordingSoundCues sound;
    storeSavedGame(folder, GetParam());
    std::string keptAs;
    {
        SqliteDefaultsStore defaults(folder.file());
        GameStore store(std::nullopt, defaults, sound);
        ASSERT_TRUE(store.message());
        const std::string prefix = "Zelvaine found its saved data damaged and kept it as ";
        ASSERT_TRUE(store.message()->starts_with(prefix)) << *store.message();
        keptAs = store.message()->substr(prefix.size(), store.message()->size() - prefix.size() - 1);
        store.newGame(); // replaces the damaged value in the file
    }
    EXPECT_EQ(std::filesystem::path(keptAs).parent_path(), folder.path());
    const auto kept = testing::readBytes(keptAs);
    EXPECT_EQ(std::string(kept.begin(), kept.end()), GetParam());
    EXPECT_TRUE(savedIn(folder)) << "the new deal was not saved";
}

INSTANTIATE_TEST_SUITE_P(Kinds, DamagedSavedGame,
                         ::testing::Values(std::string("{\"currentState\":{\"tableau\":[[{\"id\""), // cut short
                                           unplayed(testing::knownDeal()).replace(20, 6, "XXXXXX"), // bytes changed
                                           std::string("\x00\x01 not a game at all", 21)));

TEST(DamagedSavedGame, AGameThatWasOverIsNoDamage)
{
    testing::DefaultsScratchFolder folder;
    testing::RecordingSoundCues sound;
    GameState won = testing::emptyBoard();
    for (auto& pile : won.foundations) pile = testing::foundationUpTo("KH");
    storeSavedGame(folder, encodeSavedGame({won, testing::knownDeal(), {}, {}, {}}));
    SqliteDefaultsStore defaults(folder.file());
    const GameStore store(std::nullopt, defaults, sound);
    EXPECT_FALSE(store.message());
}

} // namespace
} // namespace zelvaine

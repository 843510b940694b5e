// Two games on one defaults file, as two displays or a game that lost track of the other run
// them: neither overwrites a game the other saved after it loaded, and the player is told.

#include "engine/move_rules.hpp"
#include "store/game_store.hpp"
#include "store/sqlite_defaults_store.hpp"
#include "tests/store/sqlite_defaults_test_support.hpp"
#include "tests/support/positions.hpp"
#include "tests/store/store_fakes.hpp"

#include <gtest/gtest.h>

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

// Some column's lowest card onto another column; the known deal has two such moves in a row.
void playOneMove(GameStore& store)
{
    for (std::int64_t from = 0; from < 10; ++from) {
        const auto cardIndex = static_cast<std::int64_t>(store.state().tableau[static_cast<std::size_t>(from)].size()) - 1;
        for (std::int64_t to = 0; to < 10; ++to) {
            if (store.move(MoveSource::tableau(from, cardIndex), MoveDestination::tableau(to))) return;
        }
    }
    FAIL() << "no move found";
}

TEST(TwoWindows, TheOneThatSavedSecondIsToldAndKeepsItsHandsOff)
{
    testing::DefaultsScratchFolder folder;
    testing::RecordingSoundCues sound;
    {
        SqliteDefaultsStore defaults(folder.file());
        const GameState deal = testing::knownDeal();
        const std::string saved = encodeSavedGame({deal, deal, {}, {}, {}});
        defaults.set(savedGameKey, DefaultsData(saved.begin(), saved.end()));
    }
    SqliteDefaultsStore firstDefaults(folder.file());
    SqliteDefaultsStore secondDefaults(folder.file());
    GameStore first(std::nullopt, firstDefaults, sound);
    GameStore second(std::nullopt, secondDefaults, sound);
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

} // namespace
} // namespace zelvaine

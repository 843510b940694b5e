// Two processes on one defaults file, each guarding the saved game: whichever saved last since
// the other loaded wins, and the other is told instead of overwriting it.

#include "store/sqlite_defaults_store.hpp"
#include "tests/store/sqlite_defaults_test_support.hpp"

#include <gtest/gtest.h>

#include <string>

namespace zelvaine {
namespace {

using testing::DefaultsScratchFolder;

constexpr std::string_view game = "zelvaine.test.game";
constexpr std::string_view generation = "zelvaine.test.game-generation";

DefaultsData bytes(std::string_view text) { return DefaultsData(text.begin(), text.end()); }

std::optional<DefaultsData> onDisk(const DefaultsScratchFolder& folder)
{
    const SqliteDefaultsStore reader(folder.file());
    return reader.data(game);
}

void save(SqliteDefaultsStore& store, std::string_view text, bool asRuns = false)
{
    if (asRuns) {
        store.setRuns(game, {{std::make_shared<const std::string>(text)}});
    } else {
        store.set(game, bytes(text));
    }
    store.flush();
}

// Two stores that loaded the same file; the second saves first, then the first tries.
class GuardTest : public ::testing::TestWithParam<bool> {
protected:
    void bothLoadThenSecondSavesFirst()
    {
        first.guard(game, generation);
        second.guard(game, generation);
        save(second, "second's game", runs);
        save(first, "first's game", runs);
    }

    DefaultsScratchFolder folder;
    const bool runs = GetParam();
    SqliteDefaultsStore first{folder.file()};
    SqliteDefaultsStore second{folder.file()};
};

TEST_P(GuardTest, TheFirstToSaveAfterBothLoadedWinsAndTheOtherIsTold)
{
    bothLoadThenSecondSavesFirst();
    EXPECT_TRUE(first.overtaken());
    EXPECT_FALSE(second.overtaken());
    EXPECT_EQ(onDisk(folder), bytes("second's game"));

    // Other keys still reach the disk; only the guarded one stands back.
    first.set("zelvaine.test.other", std::int64_t{7});
    first.flush();
    EXPECT_EQ(SqliteDefaultsStore(folder.file()).integer("zelvaine.test.other"), 7);

    // The one that won goes on saving as before.
    save(second, "second's next move", runs);
    EXPECT_FALSE(second.overtaken());
    EXPECT_EQ(onDisk(folder), bytes("second's next move"));
    save(first, "first again", runs);
    EXPECT_TRUE(first.overtaken());
    EXPECT_EQ(onDisk(folder), bytes("second's next move"));
}

TEST_P(GuardTest, RetakingAdoptsTheFileAndTheOtherBecomesTheOneTold)
{
    bothLoadThenSecondSavesFirst();
    ASSERT_TRUE(first.overtaken());

    first.retake();
    EXPECT_FALSE(first.overtaken());
    save(first, "first's new deal", runs);
    EXPECT_FALSE(first.overtaken());
    EXPECT_EQ(onDisk(folder), bytes("first's new deal"));

    save(second, "second's move", runs);
    EXPECT_TRUE(second.overtaken());
    EXPECT_EQ(onDisk(folder), bytes("first's new deal"));
}

TEST_P(GuardTest, AStoreOpenedAfterAnotherSavedGoesOnFromItsSave)
{
    first.guard(game, generation);
    save(first, "earlier game", runs);
    save(first, "earlier game, a move on", runs);
    SqliteDefaultsStore later(folder.file());
    later.guard(game, generation);
    save(later, "later game", runs);
    EXPECT_FALSE(later.overtaken());
    EXPECT_EQ(onDisk(folder), bytes("later game"));
    EXPECT_EQ(SqliteDefaultsStore(folder.file()).integer(generation), 3);
}

INSTANTIATE_TEST_SUITE_P(WholeAndAsRuns, GuardTest, ::testing::Bool(),
                         [](const auto& valueCase) { return valueCase.param ? "runs" : "whole"; });

TEST(GuardTest, AnUnguardedStoreWritesOverAsItAlwaysDid)
{
    DefaultsScratchFolder folder;
    SqliteDefaultsStore guarded(folder.file());
    SqliteDefaultsStore plain(folder.file());
    guarded.guard(game, generation);
    save(guarded, "guarded");
    save(plain, "plain");
    EXPECT_FALSE(plain.overtaken());
    EXPECT_EQ(onDisk(folder), bytes("plain"));
}

} // namespace
} // namespace zelvaine

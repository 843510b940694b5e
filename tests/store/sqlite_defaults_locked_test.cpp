// A defaults file another program holds locked when the game starts: waited for briefly, then
// reported, and never taken for an empty one; once it is free, what it holds wins over what the
// game wrote meanwhile, and saving goes on.

#include "store/sqlite_defaults_store.hpp"
#include "tests/store/file_holder.hpp"
#include "tests/store/sqlite_defaults_test_support.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace zelvaine {
namespace {

using testing::DefaultsScratchFolder;
using testing::FileHolder;

constexpr std::string_view game = "zelvaine.test.game";
constexpr std::string_view generation = "zelvaine.test.game-generation";

DefaultsData bytes(std::string_view text) { return DefaultsData(text.begin(), text.end()); }

bool waitUntilOpened(const SqliteDefaultsStore& store)
{
    for (int tries = 0; tries < 200 && store.waitingForFile(); ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return !store.waitingForFile();
}

class LockedAtStartTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        SqliteDefaultsStore earlier(folder.file());
        earlier.guard(game, generation);
        earlier.set(game, bytes("the saved game"));
        earlier.set("zelvaine.test.games-played", std::int64_t{57});
    }

    DefaultsScratchFolder folder;
};

TEST_F(LockedAtStartTest, WhatTheFileHoldsWinsOverWhatWasWrittenMeanwhile)
{
    FileHolder holder(folder.file());
    ASSERT_TRUE(holder.held());
    SqliteDefaultsStore store(folder.file());
    EXPECT_TRUE(store.waitingForFile());
    EXPECT_EQ(store.writeFailure(), DefaultsWriteFailure::busy);
    EXPECT_FALSE(store.data(game)); // a stand-in, not the file's word

    // Made without the file: a count from nothing and a key the file never had.
    store.set("zelvaine.test.games-played", std::int64_t{1});
    store.set("zelvaine.test.new-key", std::int64_t{5});
    store.flush(); // must not hang on the lock
    EXPECT_TRUE(store.waitingForFile());

    holder.release();
    ASSERT_TRUE(waitUntilOpened(store));
    EXPECT_FALSE(store.writeFailure());
    EXPECT_EQ(store.integer("zelvaine.test.games-played"), 57);
    EXPECT_EQ(store.data(game), bytes("the saved game"));
    store.flush();

    const SqliteDefaultsStore after(folder.file());
    EXPECT_EQ(after.integer("zelvaine.test.games-played"), 57);
    EXPECT_EQ(after.integer("zelvaine.test.new-key"), 5);
    EXPECT_EQ(after.data(game), bytes("the saved game"));
}

TEST_F(LockedAtStartTest, AGuardedValueTheFileHoldsIsNotOverwrittenOnceItOpens)
{
    FileHolder holder(folder.file());
    SqliteDefaultsStore store(folder.file());
    store.guard(game, generation);
    store.set(game, bytes("a deal made without the file"));
    store.flush();
    holder.release();
    ASSERT_TRUE(waitUntilOpened(store));

    store.set(game, bytes("a move on that deal"));
    store.flush();
    EXPECT_TRUE(store.overtaken());
    EXPECT_EQ(SqliteDefaultsStore(folder.file()).data(game), bytes("the saved game"));

    store.retake(); // the player dealt again, knowing
    store.set(game, bytes("a new deal"));
    store.flush();
    EXPECT_EQ(SqliteDefaultsStore(folder.file()).data(game), bytes("a new deal"));
}

} // namespace
} // namespace zelvaine

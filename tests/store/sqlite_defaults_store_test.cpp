#include "store/defaults_location.hpp"
#include "store/sqlite_defaults_store.hpp"
#include "tests/store/sqlite_defaults_test_support.hpp"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace zelvaine {
namespace {

using testing::DefaultsScratchFolder;
namespace fs = std::filesystem;

struct StoredCase {
    std::string key;
    DefaultsValue value;
};

std::vector<StoredCase> valuesOfEveryKind()
{
    std::vector<std::uint8_t> binary(256);
    for (std::size_t i = 0; i < binary.size(); ++i) binary[i] = static_cast<std::uint8_t>(i);
    return {
        {"zelvaine.test.true", true},
        {"zelvaine.test.false", false},
        {"zelvaine.test.zero", std::int64_t{0}},
        {"zelvaine.test.one", std::int64_t{1}},
        {"zelvaine.test.lowest", std::numeric_limits<std::int64_t>::min()},
        {"zelvaine.test.highest", std::numeric_limits<std::int64_t>::max()},
        {"zelvaine.test.text", std::string("Persistence wins the deal.")},
        {"zelvaine.test.empty-text", std::string()},
        {"zelvaine.test.accents", std::string("Réussite ♠♥ 二")},
        {"zelvaine.test.inner-zero", std::string("a\0b", 3)},
        {"zelvaine.test.not-utf8", std::string("\xff\xfe\xc3")},
        {"zelvaine.test.empty-data", DefaultsData()},
        {"zelvaine.test.binary", binary},
        {std::string("zelvaine.test.key\0with-zero", 27), std::int64_t{27}},
    };
}

// Each kind answers only its own accessor: booleans are not integers, nor empty data empty text.
void expectReadsOnlyAsItsKind(const DefaultsStore& store, const StoredCase& stored)
{
    SCOPED_TRACE(stored.key);
    ASSERT_EQ(store.value(stored.key), stored.value);
    const auto kind = stored.value.index();
    EXPECT_EQ(store.boolean(stored.key).has_value(), kind == 0);
    EXPECT_EQ(store.integer(stored.key).has_value(), kind == 1);
    EXPECT_EQ(store.text(stored.key).has_value(), kind == 2);
    EXPECT_EQ(store.data(stored.key).has_value(), kind == 3);
}

TEST(SqliteDefaultsStore, KeepsEachValueAndItsKindAcrossARestart)
{
    DefaultsScratchFolder folder;
    {
        SqliteDefaultsStore store(folder.file());
        // Every key held a value of another kind before: the newest kind must replace it.
        for (const auto& stored : valuesOfEveryKind()) {
            store.set(stored.key, stored.value.index() == 2 ? DefaultsValue(true) : DefaultsValue(std::string("x")));
        }
        store.flush();
        for (const auto& stored : valuesOfEveryKind()) store.set(stored.key, stored.value);
        for (const auto& stored : valuesOfEveryKind()) expectReadsOnlyAsItsKind(store, stored);
    }
    SqliteDefaultsStore reopened(folder.file());
    EXPECT_FALSE(reopened.recoveredFromDamage());
    for (const auto& stored : valuesOfEveryKind()) expectReadsOnlyAsItsKind(reopened, stored);
    EXPECT_FALSE(reopened.value("zelvaine.test.never-written"));
}

DefaultsData bytesOf(std::string_view text) { return DefaultsData(text.begin(), text.end()); }

TEST(SqliteDefaultsStore, DataGivenInPiecesIsKeptJoined)
{
    DefaultsScratchFolder folder;
    auto piece = [](const char* text) { return std::make_shared<const std::string>(text); };
    const DataPieces pieces{piece("{\"history\":["), piece(""), piece("1,2"), piece("]}")};
    {
        SqliteDefaultsStore store(folder.file());
        store.setData("zelvaine.test.pieces", pieces);
        store.setData("zelvaine.test.no-pieces", {});
        EXPECT_EQ(store.data("zelvaine.test.pieces"), bytesOf("{\"history\":[1,2]}"));
        store.flush();

        // The same pieces again are the same value: nothing to write.
        const auto before = store.writerCounts();
        store.setData("zelvaine.test.pieces", DataPieces(pieces));
        store.flush();
        EXPECT_EQ(store.writerCounts().rows, before.rows);
    }
    SqliteDefaultsStore reopened(folder.file());
    EXPECT_EQ(reopened.data("zelvaine.test.pieces"), bytesOf("{\"history\":[1,2]}"));
    EXPECT_FALSE(reopened.text("zelvaine.test.pieces"));
    EXPECT_EQ(reopened.data("zelvaine.test.no-pieces"), DefaultsData());
}

TEST(SqliteDefaultsStore, ARemovedKeyStaysAbsentAfterARestart)
{
    DefaultsScratchFolder folder;
    {
        SqliteDefaultsStore store(folder.file());
        store.set("zelvaine.test.kept", true);
        store.set("zelvaine.test.removed", true);
        store.flush();
        store.remove("zelvaine.test.removed");
        store.remove("zelvaine.test.never-written");
        EXPECT_FALSE(store.value("zelvaine.test.removed"));
    }
    SqliteDefaultsStore reopened(folder.file());
    EXPECT_EQ(reopened.boolean("zelvaine.test.kept"), true);
    EXPECT_FALSE(reopened.value("zelvaine.test.removed"));
}

TEST(SqliteDefaultsStore, LargeValuesSurviveARestartWhole)
{
    DefaultsScratchFolder folder;
    DefaultsData first(10 * 1024 * 1024);
    for (std::size_t i = 0; i < first.size(); ++i) first[i] = static_cast<std::uint8_t>(i * 2654435761U >> 13);
    DefaultsData second(first.rbegin(), first.rend());
    second.resize(second.size() - 12345);
    {
        SqliteDefaultsStore store(folder.file());
        store.set("zelvaine.saved-game.v1", first);
        store.flush();
        store.set("zelvaine.saved-game.v1", second);
    }
    SqliteDefaultsStore reopened(folder.file());
    EXPECT_TRUE(reopened.data("zelvaine.saved-game.v1") == second);
}

// Holding the write lock from a connection of our own stalls the writer at a known point, so
// everything set meanwhile must be coalesced, whatever the speed of the machine.
class WriteLock {
public:
    explicit WriteLock(const fs::path& file)
    {
        sqlite3_open(file.c_str(), &connection_);
        sqlite3_busy_timeout(connection_, 5000);
        locked_ = sqlite3_exec(connection_, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr) == SQLITE_OK;
    }
    ~WriteLock() { sqlite3_close_v2(connection_); }
    bool locked() const { return locked_; }
    void release() { sqlite3_exec(connection_, "ROLLBACK", nullptr, nullptr, nullptr); }

private:
    sqlite3* connection_ = nullptr;
    bool locked_ = false;
};

TEST(SqliteDefaultsStore, WritesToOneKeyAreCoalescedAndTheNewestReachesTheFile)
{
    DefaultsScratchFolder folder;
    {
        SqliteDefaultsStore store(folder.file());
        WriteLock lock(folder.file());
        ASSERT_TRUE(lock.locked());
        for (std::int64_t i = 1; i <= 1000; ++i) store.set("zelvaine.test.counter", i);
        lock.release();
        store.flush();
        // At most one batch was taken before the writer stalled on the lock; the rest is one row.
        EXPECT_LE(store.writerCounts().rows, 2U);
        EXPECT_LE(store.writerCounts().transactions, 2U);
    }
    SqliteDefaultsStore reopened(folder.file());
    EXPECT_EQ(reopened.integer("zelvaine.test.counter"), 1000);
}

TEST(SqliteDefaultsStore, OnlyChangedKeysAreWritten)
{
    DefaultsScratchFolder folder;
    SqliteDefaultsStore store(folder.file());
    store.set("zelvaine.test.a", std::int64_t{1});
    store.set("zelvaine.test.b", DefaultsData(1024 * 1024, 7));
    store.set("zelvaine.test.c", std::string("c"));
    store.flush();
    const auto afterFirst = store.writerCounts();
    EXPECT_EQ(afterFirst.rows, 3U);

    store.set("zelvaine.test.a", std::int64_t{2});
    store.flush();
    EXPECT_EQ(store.writerCounts().rows, afterFirst.rows + 1);

    // Equal values, whether the same object or a new one, and removing what is not there,
    // leave the file alone.
    const auto beforeEqual = store.writerCounts();
    store.set("zelvaine.test.b", DefaultsData(1024 * 1024, 7));
    store.set("zelvaine.test.c", std::string("c"));
    store.remove("zelvaine.test.never-written");
    store.flush();
    EXPECT_EQ(store.writerCounts().rows, beforeEqual.rows);
    EXPECT_EQ(store.writerCounts().transactions, beforeEqual.transactions);
}

TEST(SqliteDefaultsStore, BetweenTwoInstancesOnOneFileTheLaterWriteWins)
{
    DefaultsScratchFolder folder;
    SqliteDefaultsStore first(folder.file());
    SqliteDefaultsStore second(folder.file());

    first.set("zelvaine.test.shared", std::int64_t{1});
    first.flush();
    second.set("zelvaine.test.shared", std::int64_t{2});
    second.flush();
    EXPECT_EQ(SqliteDefaultsStore(folder.file()).integer("zelvaine.test.shared"), 2);

    // The first one last wrote 1 itself; writing 1 again must still reach the file.
    first.set("zelvaine.test.shared", std::int64_t{1});
    first.flush();
    EXPECT_EQ(SqliteDefaultsStore(folder.file()).integer("zelvaine.test.shared"), 1);

    second.remove("zelvaine.test.shared");
    second.flush();
    EXPECT_FALSE(SqliteDefaultsStore(folder.file()).value("zelvaine.test.shared"));

    // Each instance keeps reading its own copy.
    EXPECT_EQ(first.integer("zelvaine.test.shared"), 1);
}

TEST(SqliteDefaultsStore, TwoInstancesWritingAtOnceLeaveAWholeFile)
{
    DefaultsScratchFolder folder;
    constexpr std::int64_t rounds = 300;
    auto writeFrom = [&](const std::string& name) {
        SqliteDefaultsStore store(folder.file());
        for (std::int64_t i = 1; i <= rounds; ++i) {
            store.set("zelvaine.test." + name, i);
            store.set("zelvaine.test.shared", DefaultsData(static_cast<std::size_t>(i) * 997, 1));
            if (i % 10 == 0) store.flush();
        }
    };
    std::thread left(writeFrom, "left");
    std::thread right(writeFrom, "right");
    left.join();
    right.join();

    SqliteDefaultsStore reopened(folder.file());
    EXPECT_FALSE(reopened.recoveredFromDamage());
    EXPECT_EQ(reopened.integer("zelvaine.test.left"), rounds);
    EXPECT_EQ(reopened.integer("zelvaine.test.right"), rounds);
    EXPECT_EQ(reopened.data("zelvaine.test.shared"), DefaultsData(rounds * 997, 1));
}

// Places the store cannot write must neither crash it nor hang flush(); it runs from memory.
void expectWorksFromMemory(SqliteDefaultsStore& store)
{
    store.set("zelvaine.test.in-memory", std::string("still here"));
    store.remove("zelvaine.test.gone");
    store.flush();
    EXPECT_EQ(store.text("zelvaine.test.in-memory"), "still here");
    EXPECT_FALSE(store.recoveredFromDamage());
}

TEST(SqliteDefaultsStore, AFolderThatCannotBeMadeLeavesTheStoreInMemory)
{
    DefaultsScratchFolder folder;
    testing::writeBytes(folder.path() / "a-file", {1, 2, 3});
    SqliteDefaultsStore store(folder.path() / "a-file" / "zelvaine" / "defaults.sqlite3");
    EXPECT_EQ(store.writeFailure(), DefaultsWriteFailure::noPlace); // known from the start
    expectWorksFromMemory(store);
    EXPECT_EQ(testing::readBytes(folder.path() / "a-file"), (std::vector<std::uint8_t>{1, 2, 3}));
}

TEST(SqliteDefaultsStore, AFolderThatVanishesWhileRunningIsNoCrash)
{
    DefaultsScratchFolder folder;
    const fs::path file = folder.path() / "zelvaine" / "defaults.sqlite3";
    SqliteDefaultsStore store(file);
    store.set("zelvaine.test.before", true);
    store.flush();
    fs::remove_all(file.parent_path());
    expectWorksFromMemory(store);
    store.set("zelvaine.test.large", DefaultsData(4 * 1024 * 1024, 9));
    store.flush();
    EXPECT_EQ(store.boolean("zelvaine.test.before"), true);
}

TEST(SqliteDefaultsStore, AFolderAtTheFilesPlaceIsAFailureToWriteNotDamage)
{
    DefaultsScratchFolder folder;
    fs::create_directories(folder.file());
    SqliteDefaultsStore store(folder.file());
    EXPECT_FALSE(store.recoveredFromDamage());
    EXPECT_EQ(store.writeFailure(), DefaultsWriteFailure::noPlace);
    store.set("zelvaine.test.kept", true);
    store.flush();
    EXPECT_EQ(store.writeFailure(), DefaultsWriteFailure::noPlace);
    EXPECT_TRUE(fs::is_directory(folder.file()));
}

// Root writes wherever it likes, so the read-only case runs in a child that gives up root.
bool runWithoutWritePermission(const std::function<bool()>& check)
{
    if (geteuid() != 0) return check();
    const pid_t child = fork();
    if (child == 0) {
        constexpr uid_t nobody = 65534;
        if (setgid(nobody) != 0 || setuid(nobody) != 0) _exit(2);
        _exit(check() ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

TEST(SqliteDefaultsStore, AReadOnlyFolderIsReadButNotWrittenAndNotTakenForDamage)
{
    DefaultsScratchFolder folder;
    const fs::path directory = folder.path() / "zelvaine";
    const fs::path file = directory / "defaults.sqlite3";
    {
        SqliteDefaultsStore store(file);
        store.set("zelvaine.test.kept", std::string("readable"));
    }
    const auto before = testing::readBytes(file);
    fs::permissions(folder.path(), fs::perms(0711));
    fs::permissions(directory, fs::perms(0555));
    fs::permissions(file, fs::perms(0444));

    const bool worked = runWithoutWritePermission([&] {
        SqliteDefaultsStore store(file);
        const bool read = store.text("zelvaine.test.kept") == "readable";
        store.set("zelvaine.test.kept", std::string("changed"));
        store.set("zelvaine.test.new", DefaultsData(100000, 1));
        store.flush();
        return read && store.text("zelvaine.test.kept") == "changed" && !store.recoveredFromDamage() &&
               store.writeFailure() == DefaultsWriteFailure::readOnly;
    });
    EXPECT_TRUE(worked);

    fs::permissions(directory, fs::perms(0755));
    EXPECT_EQ(testing::readBytes(file), before);
    EXPECT_EQ(std::distance(fs::directory_iterator(directory), fs::directory_iterator()), 1);
}

TEST(DefaultsLocation, FollowsXdgDataHomeAndFallsBackToTheHomeFolder)
{
    struct Case {
        const char* xdgDataHome;
        const char* home;
        const char* expected;
    };
    const Case cases[] = {
        {"/data", "/home/ann", "/data/zelvaine/defaults.sqlite3"},
        {nullptr, "/home/ann", "/home/ann/.local/share/zelvaine/defaults.sqlite3"},
        {"", "/home/ann", "/home/ann/.local/share/zelvaine/defaults.sqlite3"},
        // A relative value is to be ignored, not taken from the current folder.
        {"relative/data", "/home/ann", "/home/ann/.local/share/zelvaine/defaults.sqlite3"},
    };
    for (const auto& tested : cases) {
        SCOPED_TRACE(tested.xdgDataHome ? tested.xdgDataHome : "(unset)");
        EXPECT_EQ(defaultsDatabasePath(tested.xdgDataHome, tested.home), fs::path(tested.expected));
    }
}

} // namespace
} // namespace zelvaine

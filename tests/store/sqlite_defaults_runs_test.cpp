// Data values kept as runs of shared pieces: what a long saved game costs on disk per save, and
// that nothing is lost or left behind on the way.
#include "store/sqlite_defaults_store.hpp"
#include "tests/store/sqlite_defaults_test_support.hpp"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace zelvaine {
namespace {

using testing::DefaultsScratchFolder;
using testing::runSql;
namespace fs = std::filesystem;

constexpr const char* kKey = "zelvaine.saved-game.v1";

std::shared_ptr<const std::string> piece(std::string text)
{
    return std::make_shared<const std::string>(std::move(text));
}

// A position-sized piece that differs from every other one.
std::shared_ptr<const std::string> position(int n)
{
    return piece("{" + std::string(8000, char('a' + n % 26)) + std::to_string(n) + "}");
}

std::string joined(const DataRuns& runs)
{
    const DefaultsData bytes = joinPieces(flattenRuns(runs));
    return {bytes.begin(), bytes.end()};
}

std::string storedText(const DefaultsStore& store)
{
    const auto data = store.data(kKey);
    return data ? std::string(data->begin(), data->end()) : std::string("<absent>");
}

std::int64_t count(const fs::path& file, const char* sql)
{
    sqlite3* connection = nullptr;
    sqlite3_open_v2(file.c_str(), &connection, SQLITE_OPEN_READONLY, nullptr);
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(connection, sql, -1, &statement, nullptr);
    const std::int64_t result = sqlite3_step(statement) == SQLITE_ROW ? sqlite3_column_int64(statement, 0) : -1;
    sqlite3_finalize(statement);
    sqlite3_close(connection);
    return result;
}

// A game-like value: a head that changes, a history that grows, a tail.
struct Game {
    std::shared_ptr<const std::string> current = position(-1);
    std::vector<std::shared_ptr<const std::string>> history;
    std::vector<std::shared_ptr<const std::string>> redo;

    DataRuns runs() const
    {
        static const auto comma = piece(",");
        auto list = [](const auto& positions) {
            DataPieces run;
            for (std::size_t i = 0; i < positions.size(); ++i) {
                if (i > 0) run.push_back(comma);
                run.push_back(positions[i]);
            }
            return run;
        };
        return {{piece("{\"current\":"), current, piece(",\"history\":[")},
                list(history),
                {piece("],\"redo\":[")},
                list(redo),
                {piece("]}")}};
    }
    void move(int n)
    {
        history.push_back(current);
        redo.clear();
        current = position(n);
    }
    void undo()
    {
        redo.push_back(current);
        current = history.back();
        history.pop_back();
    }
};

TEST(DefaultsRuns, AreReadBackJoinedAndAsTheSameRunsAfterARestart)
{
    DefaultsScratchFolder folder;
    Game game;
    for (int n = 0; n < 5; ++n) game.move(n);
    game.undo();
    {
        SqliteDefaultsStore store(folder.file());
        store.setRuns(kKey, game.runs());
        EXPECT_EQ(storedText(store), joined(game.runs())); // at once, before the writer is done
    }
    SqliteDefaultsStore reopened(folder.file());
    EXPECT_EQ(storedText(reopened), joined(game.runs()));
    const auto runs = reopened.dataRuns(kKey);
    ASSERT_TRUE(runs);
    ASSERT_EQ(runs->size(), 5U);
    for (std::size_t r = 0; r < runs->size(); ++r) EXPECT_EQ(joined({(*runs)[r]}), joined({game.runs()[r]})) << r;
}

TEST(DefaultsRuns, AMoveAtTheEndOfALongHistoryWritesOnlyWhatIsNew)
{
    DefaultsScratchFolder folder;
    const fs::path wal = folder.file().native() + "-wal";
    Game game;
    for (int n = 0; n < 600; ++n) game.move(n);
    {
        SqliteDefaultsStore store(folder.file());
        store.setRuns(kKey, game.runs());
    }
    ASSERT_FALSE(fs::exists(wal)); // the last connection folded the log into the file
    const auto pieces = count(folder.file(), "SELECT count(*) FROM pieces");

    // A restarted game hands over pieces equal to the stored ones, but not the same objects.
    SqliteDefaultsStore store(folder.file());
    game.move(1000);
    store.setRuns(kKey, game.runs());
    store.flush();
    EXPECT_EQ(count(folder.file(), "SELECT count(*) FROM pieces"), pieces + 1); // the new position only
    EXPECT_LT(fs::file_size(wal), 64U * 1024U);                                 // a few pages, not the history
    EXPECT_EQ(storedText(store), joined(game.runs()));
}

TEST(DefaultsRuns, PiecesNoValueRefersToAreReclaimedButMovedOnesKept)
{
    DefaultsScratchFolder folder;
    Game game;
    for (int n = 0; n < 10; ++n) game.move(n);
    {
        SqliteDefaultsStore store(folder.file());
        store.setRuns(kKey, game.runs());
        store.flush();
        // Undo moves positions from the history to the head and the redo run: none may go.
        game.undo();
        game.undo();
        store.setRuns(kKey, game.runs());
        store.flush();
        game.move(99); // drops the redo run
        store.setRuns(kKey, game.runs());
    }
    {
        SqliteDefaultsStore reopened(folder.file());
        EXPECT_EQ(storedText(reopened), joined(game.runs()));
        // Nine positions of history and the current one, plus four literals and the comma; the
        // two undone positions went with the redo run.
        EXPECT_EQ(count(folder.file(), "SELECT count(*) FROM pieces"), 10 + 5);

        Game fresh;
        reopened.setRuns(kKey, fresh.runs());
        reopened.flush();
        EXPECT_EQ(count(folder.file(), "SELECT count(*) FROM pieces"), 1 + 4); // no history, no comma
        reopened.set(kKey, true);                                              // another kind takes the key over
    }
    EXPECT_EQ(count(folder.file(), "SELECT count(*) FROM pieces"), 0);
    EXPECT_EQ(count(folder.file(), "SELECT count(*) FROM runs"), 0);
    SqliteDefaultsStore last(folder.file());
    EXPECT_EQ(last.boolean(kKey), true);
}

TEST(DefaultsRuns, AFileOfTheFirstLayoutIsUpgradedWithItsValues)
{
    DefaultsScratchFolder folder;
    runSql(folder.file(),
           "PRAGMA application_id=1514952260; PRAGMA user_version=1;"
           "CREATE TABLE defaults (key TEXT PRIMARY KEY NOT NULL, kind INTEGER NOT NULL, value ANY) STRICT;"
           "INSERT INTO defaults VALUES ('zelvaine.saved-game.v1', 4, x'7B7D');"
           "INSERT INTO defaults VALUES ('zelvaine.preferences.sounds-enabled', 1, 0)");
    Game game;
    game.move(1);
    {
        SqliteDefaultsStore store(folder.file());
        EXPECT_FALSE(store.recoveredFromDamage());
        EXPECT_EQ(storedText(store), "{}");
        EXPECT_EQ(store.boolean("zelvaine.preferences.sounds-enabled"), false);
        store.setRuns(kKey, game.runs());
    }
    EXPECT_EQ(count(folder.file(), "PRAGMA user_version"), 2);
    SqliteDefaultsStore reopened(folder.file());
    EXPECT_EQ(storedText(reopened), joined(game.runs()));
    EXPECT_EQ(reopened.boolean("zelvaine.preferences.sounds-enabled"), false);
}

TEST(DefaultsRuns, AValueWithRowsOrPiecesMissingReadsAsAbsentAndIsReplacedWhole)
{
    const std::vector<std::pair<const char*, const char*>> damages = {
        {"a piece gone", "DELETE FROM pieces WHERE id = (SELECT max(id) FROM pieces)"},
        {"a row gone", "DELETE FROM runs WHERE run = 1 AND position = 2"},
        {"a run past the count", "INSERT INTO runs VALUES ('zelvaine.saved-game.v1', 7, 0, 1)"},
        {"an absurd run number", "INSERT INTO runs VALUES ('zelvaine.saved-game.v1', 9223372036854775807, 0, 1)"},
        {"an absurd run count", "UPDATE defaults SET value = 9223372036854775807 WHERE kind = 5"},
    };
    for (const auto& [name, sql] : damages) {
        SCOPED_TRACE(name);
        DefaultsScratchFolder folder;
        Game game;
        for (int n = 0; n < 4; ++n) game.move(n);
        {
            SqliteDefaultsStore store(folder.file());
            store.setRuns(kKey, game.runs());
        }
        runSql(folder.file(), sql);
        Game next;
        next.move(50);
        {
            SqliteDefaultsStore store(folder.file());
            EXPECT_FALSE(store.data(kKey));
            store.setRuns(kKey, next.runs());
        }
        SqliteDefaultsStore reopened(folder.file());
        EXPECT_EQ(storedText(reopened), joined(next.runs()));
    }
}

TEST(DefaultsRuns, TwoInstancesTakingTurnsOnOneKeyLeaveTheLastWhole)
{
    DefaultsScratchFolder folder;
    SqliteDefaultsStore first(folder.file());
    SqliteDefaultsStore second(folder.file());
    Game a;
    Game b;
    for (int n = 0; n < 3; ++n) {
        a.move(n);
        b.move(100 + n);
    }
    first.setRuns(kKey, a.runs());
    first.flush();
    second.setRuns(kKey, b.runs()); // frees the pieces of the first game
    second.flush();
    a.move(10);
    first.setRuns(kKey, a.runs()); // must store its pieces again, not refer to freed ones
    first.flush();
    SqliteDefaultsStore reopened(folder.file());
    EXPECT_EQ(storedText(reopened), joined(a.runs()));
}

} // namespace
} // namespace zelvaine

#pragma once

#include "store/defaults_runs.hpp"
#include "store/defaults_store.hpp"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <string>

struct sqlite3;
struct sqlite3_stmt;

namespace zelvaine {

// A value as the store keeps it: whole, or as the pieces of a data value, joined the first time
// the whole is needed. That is normally on the writer thread, so the caller's thread never
// copies the megabytes of a saved game.
class DefaultsEntry {
public:
    explicit DefaultsEntry(DefaultsValue value);
    explicit DefaultsEntry(DataPieces pieces);
    explicit DefaultsEntry(DataRuns runs);

    // Safe from any thread; the first call joins the pieces, later ones wait for it or find it done.
    const DefaultsValue& value() const;
    // The runs of a value stored as runs; they stay after joining, as the writer compares the
    // next value's runs with them.
    const DataRuns* runs() const { return runs_ ? &*runs_ : nullptr; }

private:
    mutable std::once_flag joined_;
    mutable DefaultsValue value_;
    mutable DataPieces pieces_;
    std::optional<DataRuns> runs_;
};

// Entries are shared by the in-memory copy, the writer's queue and the record of what the file
// holds, so a value of several megabytes is never copied on its way to the disk.
using SharedDefaultsValue = std::shared_ptr<const DefaultsEntry>;
using DefaultsValues = std::map<std::string, SharedDefaultsValue, std::less<>>;
// Changes waiting to be written, by key; an empty pointer removes the key.
using DefaultsChanges = std::map<std::string, SharedDefaultsValue, std::less<>>;

namespace sqlite {
struct ConnectionCloser {
    void operator()(sqlite3* connection) const;
};
struct StatementFinalizer {
    void operator()(sqlite3_stmt* statement) const;
};
using Connection = std::unique_ptr<sqlite3, ConnectionCloser>;
using Statement = std::unique_ptr<sqlite3_stmt, StatementFinalizer>;
} // namespace sqlite

// The guard of one key (DefaultsStore::guard), as the writer keeps it.
struct DefaultsGuard {
    std::string key;
    std::string generationKey;
    std::int64_t expected = 0; // the number the file held when this process last read or wrote it
    bool retaking = false;     // the next write adopts whatever number the file holds
    bool overtaken = false;    // another process raised the number: the key's writes are dropped
};

// The connection through which the background writer commits. One thread at a time uses it.
class DefaultsDatabase {
public:
    struct WriteOutcome {
        bool committed = false;
        std::size_t rows = 0; // rows changed; 0 when the file held every value already
        int failure = 0;      // SQLite's result code when not committed
    };

    // Gives nothing when the statements cannot be prepared.
    static std::unique_ptr<DefaultsDatabase> create(sqlite::Connection connection, const DefaultsValues& contents,
                                                    std::int64_t dataVersion, RunsSnapshot runs);

    // Writes the changes in one transaction, leaving out those the file already holds. Waits up
    // to the busy timeout for another instance that is writing. A guarded key is checked against
    // its generation inside the same transaction, and the guard told what came of it.
    WriteOutcome write(const DefaultsChanges& changes, DefaultsGuard* guard = nullptr);

private:
    DefaultsDatabase() = default;

    bool holds(const std::string& key, const SharedDefaultsValue& value) const;
    bool store(const std::string& key, const DefaultsValue& value);
    bool storeRuns(const std::string& key, const DataRuns& runs);
    bool erase(const std::string& key);
    bool readGeneration(const std::string& key, std::int64_t& generation);
    int abandon();

    sqlite::Connection connection_;
    sqlite::Statement upsert_;
    sqlite::Statement delete_;
    sqlite::Statement dataVersion_;
    sqlite::Statement generation_;
    std::unique_ptr<RunsTable> runs_;
    // What the file holds, as far as this connection knows: an empty pointer is a key known to be
    // absent, and every key not listed is known to be absent while knowsEveryKey_ holds. Another
    // instance's commit changes the data version and makes all of it unknown.
    DefaultsValues known_;
    bool knowsEveryKey_ = true;
    std::int64_t knownDataVersion_ = 0;
};

enum class DefaultsFileState {
    usable,      // read; values holds its contents
    damaged,     // not a database, corrupt, or someone else's database
    unavailable, // could not be opened or read (missing folder, no permission, locked)
};

struct OpenedDefaults {
    DefaultsFileState state = DefaultsFileState::unavailable;
    DefaultsValues values;
    // Present when writes can be committed; a file that could only be read has none.
    std::unique_ptr<DefaultsDatabase> database;
    // SQLite's result code of what kept it from being opened for writing, when it was.
    int failure = 0;
};

// What a SQLite result code means for the player's saves.
DefaultsWriteFailure writeFailureOf(int result);

// Opens the file, creating it and its table when missing, and reads everything in it, waiting up
// to `lockWait` for another instance that holds it locked. A damaged file is left as it was
// found: nothing is written to it and no checkpoint runs on closing.
OpenedDefaults openDefaultsDatabase(const std::filesystem::path& file,
                                    std::chrono::milliseconds lockWait = std::chrono::seconds(2));

} // namespace zelvaine

#include "store/defaults_database.hpp"

#include <sqlite3.h>

#include <chrono>
#include <optional>
#include <string>
#include <system_error>
#include <thread>
#include <type_traits>
#include <utility>
#include <variant>

namespace zelvaine {

DefaultsEntry::DefaultsEntry(DefaultsValue value) : value_(std::move(value)) {}

DefaultsEntry::DefaultsEntry(DataPieces pieces) : value_(DefaultsData()), pieces_(std::move(pieces)) {}

DefaultsEntry::DefaultsEntry(DataRuns runs) : value_(DefaultsData()), runs_(std::move(runs)) {}

const DefaultsValue& DefaultsEntry::value() const
{
    std::call_once(joined_, [this] {
        if (runs_) {
            value_ = joinPieces(flattenRuns(*runs_));
            return;
        }
        if (pieces_.empty()) return; // whole from the start, or no pieces at all
        value_ = joinPieces(pieces_);
        pieces_ = {};
    });
    return value_;
}

namespace sqlite {
void ConnectionCloser::operator()(sqlite3* connection) const { sqlite3_close_v2(connection); }
void StatementFinalizer::operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
} // namespace sqlite

namespace {

namespace fs = std::filesystem;

// Another instance holds the write lock for one transaction at a time, some tens of
// milliseconds for the largest saved games; far longer than that means it is stuck.
constexpr int kBusyTimeoutMilliseconds = 5000;
// Marks the file as ours, so that someone else's database found at our path counts as damaged.
constexpr std::int64_t kApplicationId = 0x5A4C5644;
// 2 added the runs tables; a file of version 1 is brought up to 2 when it is first opened for writing.
constexpr std::int64_t kSchemaVersion = 2;
constexpr std::int64_t kFirstSchemaVersion = 1;

// STRICT keeps each value exactly as it was bound, so a kind and its value cannot drift apart
// through SQLite's type conversions.
constexpr const char* kCreateTable = "CREATE TABLE IF NOT EXISTS defaults ("
                                     "key TEXT PRIMARY KEY NOT NULL, kind INTEGER NOT NULL, value ANY) STRICT";

// A value of kind `runs` holds the number of its runs; its bytes are in the runs tables.
enum class Kind : std::int64_t { boolean = 1, integer = 2, text = 3, data = 4, runs = 5 };

bool meansDamage(int result)
{
    const int primary = result & 0xff;
    return primary == SQLITE_CORRUPT || primary == SQLITE_NOTADB;
}

DefaultsFileState failureState(int result)
{
    return meansDamage(result) ? DefaultsFileState::damaged : DefaultsFileState::unavailable;
}

int execute(sqlite3* connection, const char* sql) { return sqlite3_exec(connection, sql, nullptr, nullptr, nullptr); }

sqlite::Statement prepare(sqlite3* connection, const char* sql, int& result)
{
    sqlite3_stmt* statement = nullptr;
    result = sqlite3_prepare_v3(connection, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    return sqlite::Statement(statement);
}

// The first column of the first row, for pragmas and counts.
template <class T>
std::optional<T> queryOne(sqlite3* connection, const char* sql, int& result)
{
    auto statement = prepare(connection, sql, result);
    if (result != SQLITE_OK) return std::nullopt;
    result = sqlite3_step(statement.get());
    if (result != SQLITE_ROW) return std::nullopt;
    result = SQLITE_OK;
    if constexpr (std::is_same_v<T, std::string>) {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0));
        return std::string(text != nullptr ? text : "");
    } else {
        return static_cast<std::int64_t>(sqlite3_column_int64(statement.get(), 0));
    }
}

// A row whose kind and value disagree reads as absent, like a wrong-type read.
std::optional<DefaultsValue> decode(sqlite3_stmt* row)
{
    const int type = sqlite3_column_type(row, 2);
    switch (static_cast<Kind>(sqlite3_column_int64(row, 1))) {
    case Kind::boolean:
        if (type != SQLITE_INTEGER) break;
        return DefaultsValue(sqlite3_column_int64(row, 2) != 0);
    case Kind::integer:
        if (type != SQLITE_INTEGER) break;
        return DefaultsValue(static_cast<std::int64_t>(sqlite3_column_int64(row, 2)));
    case Kind::text: {
        if (type != SQLITE_TEXT) break;
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, 2));
        const auto size = static_cast<std::size_t>(sqlite3_column_bytes(row, 2));
        if (text == nullptr) return DefaultsValue(std::string());
        return DefaultsValue(std::string(text, size));
    }
    case Kind::data: {
        if (type != SQLITE_BLOB) break;
        const auto* bytes = static_cast<const std::uint8_t*>(sqlite3_column_blob(row, 2));
        const auto size = static_cast<std::size_t>(sqlite3_column_bytes(row, 2));
        if (bytes == nullptr) return DefaultsValue(DefaultsData()); // SQLite's empty blob
        return DefaultsValue(DefaultsData(bytes, bytes + size));
    }
    case Kind::runs: break;
    }
    return std::nullopt;
}

struct Contents {
    DefaultsFileState state = DefaultsFileState::unavailable;
    bool fresh = false; // no tables at all: a new or zero-length file
    DefaultsValues values;
    std::int64_t dataVersion = 0;
    int failure = SQLITE_OK;
    std::int64_t schemaVersion = 0;
    RunsSnapshot runs;
};

Contents failed(int result) { return Contents{failureState(result), false, {}, 0, result, 0, {}}; }
Contents damaged() { return Contents{DefaultsFileState::damaged, false, {}, 0, SQLITE_CORRUPT, 0, {}}; }

Contents readInTransaction(sqlite3* connection)
{
    int result = SQLITE_OK;
    const auto tables = queryOne<std::int64_t>(connection, "SELECT count(*) FROM sqlite_schema", result);
    if (!tables) return failed(result);
    const auto applicationId = queryOne<std::int64_t>(connection, "PRAGMA application_id", result);
    if (!applicationId) return failed(result);
    const auto schemaVersion = queryOne<std::int64_t>(connection, "PRAGMA user_version", result);
    if (!schemaVersion) return failed(result);
    const auto dataVersion = queryOne<std::int64_t>(connection, "PRAGMA data_version", result);
    if (!dataVersion) return failed(result);

    Contents contents{DefaultsFileState::usable, *tables == 0, {}, *dataVersion, SQLITE_OK, *schemaVersion, {}};
    if (contents.fresh) return contents;
    if (*applicationId != kApplicationId || *schemaVersion < kFirstSchemaVersion || *schemaVersion > kSchemaVersion) {
        return damaged();
    }

    // Reading every row would miss a broken index or free list, which would then fail every
    // later write without a word; the quick check reads each page once more.
    const auto check = queryOne<std::string>(connection, "PRAGMA quick_check", result);
    if (!check) return failed(result);
    if (*check != "ok") return damaged();

    auto rows = prepare(connection, "SELECT key, kind, value FROM defaults", result);
    if ((result & 0xff) == SQLITE_ERROR) return damaged(); // our mark, but not our table
    if (result != SQLITE_OK) return failed(result);
    std::vector<std::pair<std::string, std::int64_t>> runValues;
    while ((result = sqlite3_step(rows.get())) == SQLITE_ROW) {
        const auto* key = reinterpret_cast<const char*>(sqlite3_column_text(rows.get(), 0));
        if (key == nullptr) continue;
        const auto keySize = static_cast<std::size_t>(sqlite3_column_bytes(rows.get(), 0));
        if (auto value = decode(rows.get())) {
            contents.values.insert_or_assign(std::string(key, keySize),
                                             std::make_shared<const DefaultsEntry>(std::move(*value)));
        } else if (sqlite3_column_int64(rows.get(), 1) == static_cast<std::int64_t>(Kind::runs) &&
                   sqlite3_column_type(rows.get(), 2) == SQLITE_INTEGER) {
            runValues.emplace_back(std::string(key, keySize), sqlite3_column_int64(rows.get(), 2));
        }
    }
    if (result != SQLITE_DONE) return failed(result);
    if (*schemaVersion < 2) return contents;

    auto runs = readRuns(connection, result);
    if ((result & 0xff) == SQLITE_ERROR) return damaged(); // our mark, but not our tables
    if (!runs) return failed(result);
    for (const auto& [key, count] : runValues) {
        // A value whose rows or pieces are missing reads as absent, like a row of the wrong kind.
        if (auto whole = intactRuns(*runs, key, count)) {
            contents.values.insert_or_assign(key, std::make_shared<const DefaultsEntry>(std::move(*whole)));
        }
    }
    contents.runs = std::move(*runs);
    return contents;
}

// One read transaction, so that the values and the data version describe the same moment.
Contents readContents(sqlite3* connection)
{
    const int result = execute(connection, "BEGIN");
    if (result != SQLITE_OK) return failed(result);
    Contents contents = readInTransaction(connection);
    execute(connection, "ROLLBACK");
    return contents;
}

sqlite::Connection connect(const std::string& name, int flags, int lockWaitMilliseconds, int& result)
{
    sqlite3* handle = nullptr;
    result = sqlite3_open_v2(name.c_str(), &handle, flags, nullptr);
    sqlite::Connection connection(handle); // a failed open still allocates a handle
    if (result != SQLITE_OK) return nullptr;
    sqlite3_busy_timeout(handle, lockWaitMilliseconds);
    // Turns more kinds of page damage into SQLITE_CORRUPT at the moment the page is read.
    execute(handle, "PRAGMA cell_size_check=ON");
    return connection;
}

std::string immutableUri(const fs::path& file)
{
    static constexpr char hex[] = "0123456789ABCDEF";
    std::error_code failed;
    const fs::path absolute = fs::absolute(file, failed);
    std::string uri = "file:";
    for (const unsigned char c : (failed ? file : absolute).string()) {
        const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        if (plain || c == '/' || c == '.' || c == '-' || c == '_' || c == '~') {
            uri += static_cast<char>(c);
        } else {
            uri += '%';
            uri += hex[c >> 4];
            uri += hex[c & 15];
        }
    }
    return uri + "?immutable=1";
}

// Closing the last connection would checkpoint the write-ahead log into the file; a damaged file
// is kept as it was found.
void closeWithoutCheckpoint(sqlite::Connection connection)
{
    if (connection) sqlite3_db_config(connection.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
}

// Switching to the write-ahead log needs the file to itself for a moment, and SQLite does not
// wait for that as it waits for locks: another instance starting at the same time is waited
// for here. Should the switch never come, the rollback journal is just as atomic, only slower.
bool useWriteAheadLog(sqlite3* connection, int lockWaitMilliseconds)
{
    constexpr int stepMilliseconds = 5;
    for (int waited = 0;; waited += stepMilliseconds) {
        int result = SQLITE_OK;
        const auto mode = queryOne<std::string>(connection, "PRAGMA journal_mode=WAL", result);
        if (mode && *mode == "wal") return true;
        if (!mode && (result & 0xff) != SQLITE_BUSY) return false;
        if (waited >= lockWaitMilliseconds) return mode.has_value();
        std::this_thread::sleep_for(std::chrono::milliseconds(stepMilliseconds));
    }
}

bool createTable(sqlite3* connection)
{
    const std::string sql = "BEGIN IMMEDIATE;" + std::string(kCreateTable) + ";" + kCreateRunsTables +
                            ";PRAGMA application_id=" + std::to_string(kApplicationId) +
                            ";PRAGMA user_version=" + std::to_string(kSchemaVersion) + ";COMMIT";
    if (execute(connection, sql.c_str()) == SQLITE_OK) return true;
    execute(connection, "ROLLBACK");
    return false;
}

bool upgradeSchema(sqlite3* connection)
{
    const std::string sql = "BEGIN IMMEDIATE;" + std::string(kCreateRunsTables) +
                            ";PRAGMA user_version=" + std::to_string(kSchemaVersion) + ";COMMIT";
    if (execute(connection, sql.c_str()) == SQLITE_OK) return true;
    execute(connection, "ROLLBACK");
    return false;
}

std::unique_ptr<DefaultsDatabase> prepareForWriting(sqlite::Connection connection, Contents& contents,
                                                    int lockWaitMilliseconds)
{
    sqlite3* handle = connection.get();
    if (sqlite3_db_readonly(handle, "main") != 0) return nullptr;
    // A save writes one position of a few kilobytes and a few small rows; every page it touches
    // is written whole, so small pages keep a save small. Only a new file can take them.
    if (contents.fresh) execute(handle, "PRAGMA page_size=4096");
    // A new deal frees the pages of a long game at once; incremental vacuuming gives them back
    // to the file system instead of keeping the file at its largest.
    if (contents.fresh) execute(handle, "PRAGMA auto_vacuum=INCREMENTAL");
    // A commit in the write-ahead log counts only once its commit frame, checksummed together
    // with the frames before it, is complete; a crash at any moment leaves the file at the last
    // whole commit. FULL also syncs the log at every commit, so a flush survives a power loss
    // too, not just a crash of the program; the price is paid on the writer thread.
    if (!useWriteAheadLog(handle, lockWaitMilliseconds)) return nullptr;
    if (execute(handle, "PRAGMA synchronous=FULL") != SQLITE_OK) return nullptr;
    if (contents.fresh) {
        if (!createTable(handle)) return nullptr;
        // Another instance may have made the table and written to it in the meantime.
        Contents created = readContents(handle);
        if (created.state != DefaultsFileState::usable || created.fresh) return nullptr;
        contents = std::move(created);
    } else if (contents.schemaVersion < kSchemaVersion) {
        if (!upgradeSchema(handle)) return nullptr;
        Contents upgraded = readContents(handle);
        if (upgraded.state != DefaultsFileState::usable) return nullptr;
        contents = std::move(upgraded);
    }
    // From now on the connection writes, and waits for another instance's commits as long as
    // they may take.
    sqlite3_busy_timeout(handle, kBusyTimeoutMilliseconds);
    return DefaultsDatabase::create(std::move(connection), contents.values, contents.dataVersion,
                                    std::move(contents.runs));
}

int bindValue(sqlite3_stmt* statement, bool value)
{
    const int result = sqlite3_bind_int64(statement, 2, static_cast<sqlite3_int64>(Kind::boolean));
    return result != SQLITE_OK ? result : sqlite3_bind_int64(statement, 3, value ? 1 : 0);
}

int bindValue(sqlite3_stmt* statement, std::int64_t value)
{
    const int result = sqlite3_bind_int64(statement, 2, static_cast<sqlite3_int64>(Kind::integer));
    return result != SQLITE_OK ? result : sqlite3_bind_int64(statement, 3, value);
}

// The statement is reset right after its step, so the bytes need not be copied by SQLite.
int bindValue(sqlite3_stmt* statement, const std::string& value)
{
    const int result = sqlite3_bind_int64(statement, 2, static_cast<sqlite3_int64>(Kind::text));
    if (result != SQLITE_OK) return result;
    return sqlite3_bind_text64(statement, 3, value.data(), value.size(), SQLITE_STATIC, SQLITE_UTF8);
}

int bindValue(sqlite3_stmt* statement, const DefaultsData& value)
{
    const int result = sqlite3_bind_int64(statement, 2, static_cast<sqlite3_int64>(Kind::data));
    if (result != SQLITE_OK) return result;
    // A null pointer would bind NULL, not an empty blob.
    if (value.empty()) return sqlite3_bind_zeroblob(statement, 3, 0);
    return sqlite3_bind_blob64(statement, 3, value.data(), value.size(), SQLITE_STATIC);
}

int bindKey(sqlite3_stmt* statement, const std::string& key)
{
    return sqlite3_bind_text64(statement, 1, key.data(), key.size(), SQLITE_STATIC, SQLITE_UTF8);
}

bool runOnce(sqlite3_stmt* statement)
{
    const bool done = sqlite3_step(statement) == SQLITE_DONE;
    sqlite3_reset(statement);
    sqlite3_clear_bindings(statement);
    return done;
}

} // namespace

std::unique_ptr<DefaultsDatabase> DefaultsDatabase::create(sqlite::Connection connection, const DefaultsValues& contents,
                                                           std::int64_t dataVersion, RunsSnapshot runs)
{
    std::unique_ptr<DefaultsDatabase> database(new DefaultsDatabase());
    sqlite3* handle = connection.get();
    int result = SQLITE_OK;
    database->upsert_ = prepare(handle,
                                "INSERT INTO defaults (key, kind, value) VALUES (?1, ?2, ?3) "
                                "ON CONFLICT (key) DO UPDATE SET kind = excluded.kind, value = excluded.value",
                                result);
    if (result != SQLITE_OK) return nullptr;
    database->delete_ = prepare(handle, "DELETE FROM defaults WHERE key = ?1", result);
    if (result != SQLITE_OK) return nullptr;
    database->dataVersion_ = prepare(handle, "PRAGMA data_version", result);
    if (result != SQLITE_OK) return nullptr;
    database->generation_ = prepare(handle, "SELECT kind, value FROM defaults WHERE key = ?1", result);
    if (result != SQLITE_OK) return nullptr;
    database->runs_ = std::make_unique<RunsTable>(handle, std::move(runs));
    database->connection_ = std::move(connection);
    database->known_ = contents;
    database->knownDataVersion_ = dataVersion;
    return database;
}

DefaultsDatabase::WriteOutcome DefaultsDatabase::write(const DefaultsChanges& changes, DefaultsGuard* guard)
{
    sqlite3* handle = connection_.get();
    // Taking the write lock first means a busy file is waited for here, never half-way through.
    if (const int begun = execute(handle, "BEGIN IMMEDIATE"); begun != SQLITE_OK) return {false, 0, begun};

    sqlite3_stmt* version = dataVersion_.get();
    const bool versionRead = sqlite3_step(version) == SQLITE_ROW;
    const std::int64_t dataVersion = versionRead ? sqlite3_column_int64(version, 0) : 0;
    sqlite3_reset(version);
    if (!versionRead) return {false, 0, abandon()};
    if (dataVersion != knownDataVersion_) {
        // Another instance committed: what we knew may be stale, and a value equal to our
        // last one must be written again so that the later write wins.
        known_.clear();
        knowsEveryKey_ = false;
        knownDataVersion_ = dataVersion;
        runs_->forget();
    }

    // Read under the write lock, so that no other process can raise it between the check and
    // the commit.
    const std::string* held = nullptr; // the guarded key, when the file holds a newer one than ours
    std::optional<std::int64_t> nextGeneration;
    if (guard && changes.contains(guard->key)) {
        std::int64_t generation = 0;
        if (!readGeneration(guard->generationKey, generation)) return {false, 0, abandon()};
        if (guard->retaking || generation == guard->expected) {
            nextGeneration = generation + 1;
        } else {
            guard->overtaken = true;
            held = &guard->key;
        }
    }

    std::size_t rows = 0;
    for (const auto& [key, value] : changes) {
        if ((held && key == *held) || holds(key, value)) continue;
        bool written = false;
        if (!value) {
            written = erase(key);
        } else if (const DataRuns* runs = value->runs()) {
            written = storeRuns(key, *runs);
        } else {
            written = store(key, value->value());
        }
        if (!written) return {false, 0, abandon()};
        ++rows;
    }
    if (nextGeneration) {
        if (!store(guard->generationKey, DefaultsValue(*nextGeneration))) return {false, 0, abandon()};
        ++rows;
    }
    if (rows > 0 && !runs_->reclaim()) return {false, 0, abandon()};
    if (rows == 0) {
        execute(handle, "ROLLBACK");
        return {true, 0};
    }
    if (const int committed = execute(handle, "COMMIT"); committed != SQLITE_OK) {
        abandon();
        return {false, 0, committed};
    }
    for (const auto& [key, value] : changes) {
        if (!held || key != *held) known_.insert_or_assign(key, value);
    }
    if (nextGeneration) {
        guard->expected = *nextGeneration;
        guard->retaking = false;
        guard->overtaken = false;
        known_.insert_or_assign(guard->generationKey,
                                std::make_shared<const DefaultsEntry>(DefaultsValue(*nextGeneration)));
    }
    // Only worth it once a long game's worth of pages is free; a few free pages are reused by
    // the next saves anyway.
    int result = SQLITE_OK;
    constexpr std::int64_t kFreePagesWorthReturning = 256;
    if (queryOne<std::int64_t>(handle, "PRAGMA freelist_count", result).value_or(0) >= kFreePagesWorthReturning) {
        execute(handle, "PRAGMA incremental_vacuum");
    }
    return {true, rows};
}

// A missing number, or one of another kind, counts as 0: no process has saved with a guard yet.
bool DefaultsDatabase::readGeneration(const std::string& key, std::int64_t& generation)
{
    sqlite3_stmt* statement = generation_.get();
    if (bindKey(statement, key) != SQLITE_OK) return false;
    const int stepped = sqlite3_step(statement);
    generation = 0;
    if (stepped == SQLITE_ROW && sqlite3_column_int64(statement, 0) == static_cast<std::int64_t>(Kind::integer) &&
        sqlite3_column_type(statement, 1) == SQLITE_INTEGER) {
        generation = sqlite3_column_int64(statement, 1);
    }
    sqlite3_reset(statement);
    sqlite3_clear_bindings(statement);
    return stepped == SQLITE_ROW || stepped == SQLITE_DONE;
}

bool DefaultsDatabase::holds(const std::string& key, const SharedDefaultsValue& value) const
{
    const auto found = known_.find(key);
    if (found == known_.end()) return knowsEveryKey_ && !value;
    const SharedDefaultsValue& held = found->second;
    if (!held || !value) return held == value;
    // Runs are compared by identity only: joining them to compare would cost more than writing
    // the few rows that changed.
    if (held->runs() || value->runs()) return held == value;
    return held == value || held->value() == value->value();
}

bool DefaultsDatabase::store(const std::string& key, const DefaultsValue& value)
{
    if (!runs_->erase(key)) return false;
    sqlite3_stmt* statement = upsert_.get();
    const int bound = bindKey(statement, key);
    if (bound != SQLITE_OK ||
        std::visit([statement](const auto& typed) { return bindValue(statement, typed); }, value) != SQLITE_OK) {
        sqlite3_clear_bindings(statement);
        return false;
    }
    return runOnce(statement);
}

bool DefaultsDatabase::storeRuns(const std::string& key, const DataRuns& runs)
{
    if (!runs_->write(key, runs)) return false;
    // The row that names the value changes only with the number of runs.
    const auto found = known_.find(key);
    if (found != known_.end() && found->second && found->second->runs() && found->second->runs()->size() == runs.size()) {
        return true;
    }
    sqlite3_stmt* statement = upsert_.get();
    if (bindKey(statement, key) != SQLITE_OK ||
        sqlite3_bind_int64(statement, 2, static_cast<sqlite3_int64>(Kind::runs)) != SQLITE_OK ||
        sqlite3_bind_int64(statement, 3, static_cast<sqlite3_int64>(runs.size())) != SQLITE_OK) {
        sqlite3_clear_bindings(statement);
        return false;
    }
    return runOnce(statement);
}

bool DefaultsDatabase::erase(const std::string& key)
{
    if (!runs_->erase(key)) return false;
    sqlite3_stmt* statement = delete_.get();
    if (bindKey(statement, key) != SQLITE_OK) return false;
    return runOnce(statement);
}

int DefaultsDatabase::abandon()
{
    // The error of the statement that failed, before the rollback replaces it.
    const int failure = sqlite3_extended_errcode(connection_.get());
    // After a failed commit the file may hold either side; assume nothing about it.
    execute(connection_.get(), "ROLLBACK");
    known_.clear();
    knowsEveryKey_ = false;
    runs_->forget();
    return failure;
}

DefaultsWriteFailure writeFailureOf(int result)
{
    switch (result & 0xff) {
    case SQLITE_FULL: return DefaultsWriteFailure::diskFull;
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_AUTH: return DefaultsWriteFailure::readOnly;
    case SQLITE_BUSY:
    case SQLITE_LOCKED: return DefaultsWriteFailure::busy;
    case SQLITE_IOERR: return DefaultsWriteFailure::ioError;
    default: return DefaultsWriteFailure::noPlace;
    }
}

OpenedDefaults openDefaultsDatabase(const fs::path& file, std::chrono::milliseconds lockWait)
{
    OpenedDefaults opened;
    int result = SQLITE_OK;
    const int wait = static_cast<int>(lockWait.count());
    auto connection = connect(file.string(), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, wait, result);
    Contents contents = connection ? readContents(connection.get()) : failed(result);

    // A folder we may not write to can still hold a file we can read. Without its "-shm"
    // companion, which cannot be made there, SQLite reads it only when told that the file cannot
    // change, as good as true where not even that companion can be made. A file another instance
    // holds locked is not one of those: it must not be read past the lock.
    if (contents.state == DefaultsFileState::unavailable && (contents.failure & 0xff) != SQLITE_BUSY) {
        for (const auto& [name, flags] : {std::pair{file.string(), SQLITE_OPEN_READONLY},
                                          std::pair{immutableUri(file), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI}}) {
            connection.reset();
            connection = connect(name, flags, wait, result);
            contents = connection ? readContents(connection.get()) : failed(result);
            if (contents.state != DefaultsFileState::unavailable || (contents.failure & 0xff) == SQLITE_BUSY) break;
        }
        if (contents.state == DefaultsFileState::usable) {
            opened.state = DefaultsFileState::usable;
            opened.values = std::move(contents.values);
            opened.failure = SQLITE_READONLY;
            return opened;
        }
    }
    if (contents.state != DefaultsFileState::usable) {
        if (contents.state == DefaultsFileState::damaged) closeWithoutCheckpoint(std::move(connection));
        opened.state = contents.state;
        // Reading errors at opening (a folder at the file's place reads as one) mean the same to
        // the player as a file that cannot be opened; only a lock or a full disk say more.
        const int primary = contents.failure & 0xff;
        opened.failure = primary == SQLITE_BUSY || primary == SQLITE_FULL ? contents.failure : SQLITE_CANTOPEN;
        return opened;
    }

    opened.state = DefaultsFileState::usable;
    sqlite3* handle = connection.get();
    const bool readOnly = sqlite3_db_readonly(handle, "main") != 0;
    opened.database = prepareForWriting(std::move(connection), contents, wait);
    if (!opened.database) opened.failure = readOnly ? SQLITE_READONLY : SQLITE_CANTOPEN;
    opened.values = std::move(contents.values);
    return opened;
}

} // namespace zelvaine

#include "store/defaults_runs.hpp"

#include <sqlite3.h>

#include <algorithm>
#include <utility>

namespace zelvaine {

const char* const kCreateRunsTables =
    "CREATE TABLE IF NOT EXISTS pieces (id INTEGER PRIMARY KEY, hash INTEGER NOT NULL, bytes BLOB NOT NULL) STRICT;"
    "CREATE TABLE IF NOT EXISTS runs (key TEXT NOT NULL, run INTEGER NOT NULL, position INTEGER NOT NULL, "
    "piece INTEGER NOT NULL, PRIMARY KEY (key, run, position)) STRICT, WITHOUT ROWID";

namespace {

struct Finalizer {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, Finalizer>;

Statement prepare(sqlite3* connection, const char* sql, int& result)
{
    sqlite3_stmt* statement = nullptr;
    result = sqlite3_prepare_v2(connection, sql, -1, &statement, nullptr);
    return Statement(statement);
}

int bindText(sqlite3_stmt* statement, int index, const std::string& text)
{
    return sqlite3_bind_text64(statement, index, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8);
}

// Steps a statement that returns no rows.
bool finish(sqlite3_stmt* statement) { return sqlite3_step(statement) == SQLITE_DONE; }

} // namespace

std::uint64_t pieceHash(std::string_view bytes)
{
    // FNV-1a: simple, and only new pieces are hashed, a few kilobytes per save.
    std::uint64_t hash = 14695981039346656037ULL;
    for (const unsigned char c : bytes) {
        hash ^= c;
        hash *= 1099511628211ULL;
    }
    return hash;
}

std::optional<RunsSnapshot> readRuns(sqlite3* connection, int& result)
{
    RunsSnapshot snapshot;
    auto pieces = prepare(connection, "SELECT id, hash, bytes FROM pieces", result);
    if (result != SQLITE_OK) return std::nullopt;
    while ((result = sqlite3_step(pieces.get())) == SQLITE_ROW) {
        const auto* bytes = static_cast<const char*>(sqlite3_column_blob(pieces.get(), 2));
        const auto size = static_cast<std::size_t>(sqlite3_column_bytes(pieces.get(), 2));
        snapshot.pieces.emplace(sqlite3_column_int64(pieces.get(), 0),
                                StoredPiece{std::make_shared<const std::string>(bytes != nullptr ? bytes : "", size),
                                            static_cast<std::uint64_t>(sqlite3_column_int64(pieces.get(), 1))});
    }
    if (result != SQLITE_DONE) return std::nullopt;

    auto rows = prepare(connection, "SELECT key, run, position, piece FROM runs ORDER BY key, run, position", result);
    if (result != SQLITE_OK) return std::nullopt;
    while ((result = sqlite3_step(rows.get())) == SQLITE_ROW) {
        const auto* key = reinterpret_cast<const char*>(sqlite3_column_text(rows.get(), 0));
        const auto run = sqlite3_column_int64(rows.get(), 1);
        const auto position = sqlite3_column_int64(rows.get(), 2);
        const auto id = sqlite3_column_int64(rows.get(), 3);
        // A row numbered far past any sane value would make us allocate for it; such a row, like
        // one out of sequence, just marks the value broken.
        constexpr std::int64_t kMostRuns = 64;
        StoredRuns& value = snapshot.values[key != nullptr ? key : ""];
        if (run < 0 || run >= kMostRuns || position < 0) {
            value.strays.push_back(id);
            value.broken = true;
            continue;
        }
        const auto r = static_cast<std::size_t>(run);
        if (value.ids.size() <= r) {
            value.ids.resize(r + 1);
            value.pieces.resize(r + 1);
        }
        if (static_cast<std::size_t>(position) != value.ids[r].size()) {
            value.strays.push_back(id);
            value.broken = true;
            continue;
        }
        const auto found = snapshot.pieces.find(id);
        if (found == snapshot.pieces.end()) value.broken = true;
        value.ids[r].push_back(id);
        value.pieces[r].push_back(found != snapshot.pieces.end() ? found->second.bytes : nullptr);
    }
    if (result != SQLITE_DONE) return std::nullopt;
    result = SQLITE_OK;
    return snapshot;
}

std::optional<DataRuns> intactRuns(const RunsSnapshot& snapshot, const std::string& key, std::int64_t runCount)
{
    const auto found = snapshot.values.find(key);
    if (found == snapshot.values.end()) {
        // Every run empty, or none at all.
        if (runCount < 0 || runCount > 64) return std::nullopt;
        return DataRuns(static_cast<std::size_t>(runCount));
    }
    const DataRuns& runs = found->second.pieces;
    if (found->second.broken || runCount < 0 || static_cast<std::size_t>(runCount) < runs.size() || runCount > 64) {
        return std::nullopt;
    }
    DataRuns whole = runs;
    whole.resize(static_cast<std::size_t>(runCount));
    return whole;
}

RunsTable::RunsTable(sqlite3* connection, RunsSnapshot snapshot) : connection_(connection)
{
    adopt(std::move(snapshot));
}

void RunsTable::adopt(RunsSnapshot snapshot)
{
    values_.clear();
    pieces_.clear();
    byPointer_.clear();
    byHash_.clear();
    unreferenced_.clear();
    for (auto& [id, stored] : snapshot.pieces) {
        byPointer_.emplace(stored.bytes.get(), Known{stored.bytes, id});
        byHash_.emplace(stored.hash, id);
        pieces_.emplace(id, Piece{std::move(stored.bytes), stored.hash, 0, {}});
    }
    const auto count = [&](std::int64_t id) {
        if (auto piece = pieces_.find(id); piece != pieces_.end()) ++piece->second.references;
    };
    for (const auto& [key, value] : snapshot.values) {
        for (const auto& run : value.ids) std::ranges::for_each(run, count);
        std::ranges::for_each(value.strays, count);
    }
    for (const auto& [id, piece] : pieces_) {
        if (piece.references == 0) unreferenced_.push_back(id);
    }
    values_ = std::move(snapshot.values);
    loaded_ = true;
}

void RunsTable::forget() { loaded_ = false; }

bool RunsTable::ensureLoaded()
{
    if (loaded_) return true;
    int result = SQLITE_OK;
    auto snapshot = readRuns(connection_, result);
    if (!snapshot) return false;
    adopt(std::move(*snapshot));
    return true;
}

std::optional<std::int64_t> RunsTable::idOf(const std::shared_ptr<const std::string>& piece)
{
    if (auto known = byPointer_.find(piece.get()); known != byPointer_.end()) return known->second.id;

    const std::uint64_t hash = pieceHash(*piece);
    auto [first, last] = byHash_.equal_range(hash);
    for (auto candidate = first; candidate != last; ++candidate) {
        Piece& stored = pieces_.at(candidate->second);
        if (*stored.bytes == *piece) {
            stored.aliases.push_back(piece.get());
            byPointer_.emplace(piece.get(), Known{piece, candidate->second});
            return candidate->second;
        }
    }

    int result = SQLITE_OK;
    auto insert = prepare(connection_, "INSERT INTO pieces (hash, bytes) VALUES (?1, ?2)", result);
    if (result != SQLITE_OK) return std::nullopt;
    sqlite3_bind_int64(insert.get(), 1, static_cast<sqlite3_int64>(hash));
    // A null pointer would bind NULL, not an empty blob.
    if (piece->empty()) {
        sqlite3_bind_zeroblob(insert.get(), 2, 0);
    } else {
        sqlite3_bind_blob64(insert.get(), 2, piece->data(), piece->size(), SQLITE_STATIC);
    }
    if (!finish(insert.get())) return std::nullopt;
    const std::int64_t id = sqlite3_last_insert_rowid(connection_);
    pieces_.emplace(id, Piece{piece, hash, 0, {}});
    byPointer_.emplace(piece.get(), Known{piece, id});
    byHash_.emplace(hash, id);
    // Counted as unreferenced until a row takes it, so that a failed write leaves nothing behind.
    unreferenced_.push_back(id);
    return id;
}

void RunsTable::release(std::int64_t id)
{
    auto piece = pieces_.find(id);
    if (piece == pieces_.end()) return; // a row whose piece was already missing
    if (--piece->second.references == 0) unreferenced_.push_back(id);
}

bool RunsTable::putRow(const std::string& key, std::size_t run, std::size_t position, std::int64_t id)
{
    int result = SQLITE_OK;
    auto put = prepare(connection_,
                       "INSERT INTO runs (key, run, position, piece) VALUES (?1, ?2, ?3, ?4) "
                       "ON CONFLICT (key, run, position) DO UPDATE SET piece = excluded.piece",
                       result);
    if (result != SQLITE_OK || bindText(put.get(), 1, key) != SQLITE_OK) return false;
    sqlite3_bind_int64(put.get(), 2, static_cast<sqlite3_int64>(run));
    sqlite3_bind_int64(put.get(), 3, static_cast<sqlite3_int64>(position));
    sqlite3_bind_int64(put.get(), 4, id);
    return finish(put.get());
}

bool RunsTable::deleteRowsFrom(const std::string& key, std::size_t run, std::size_t position)
{
    int result = SQLITE_OK;
    auto remove = prepare(connection_, "DELETE FROM runs WHERE key = ?1 AND run = ?2 AND position >= ?3", result);
    if (result != SQLITE_OK || bindText(remove.get(), 1, key) != SQLITE_OK) return false;
    sqlite3_bind_int64(remove.get(), 2, static_cast<sqlite3_int64>(run));
    sqlite3_bind_int64(remove.get(), 3, static_cast<sqlite3_int64>(position));
    return finish(remove.get());
}

bool RunsTable::deleteRunsFrom(const std::string& key, std::size_t run)
{
    int result = SQLITE_OK;
    auto remove = prepare(connection_, "DELETE FROM runs WHERE key = ?1 AND run >= ?2", result);
    if (result != SQLITE_OK || bindText(remove.get(), 1, key) != SQLITE_OK) return false;
    sqlite3_bind_int64(remove.get(), 2, static_cast<sqlite3_int64>(run));
    return finish(remove.get());
}

bool RunsTable::write(const std::string& key, const DataRuns& runs)
{
    if (!ensureLoaded()) return false;
    StoredRuns& old = values_[key];
    if (old.broken) {
        // Nothing of a broken value is worth keeping: all of it goes, and the runs are written whole.
        if (!erase(key)) return false;
        return write(key, runs);
    }
    StoredRuns next;
    next.pieces = runs;
    next.ids.resize(runs.size());
    std::vector<std::int64_t> released;

    for (std::size_t r = 0; r < runs.size(); ++r) {
        const DataPieces& run = runs[r];
        static const DataPieces noPieces;
        static const std::vector<std::int64_t> noIds;
        const DataPieces& oldPieces = r < old.pieces.size() ? old.pieces[r] : noPieces;
        const std::vector<std::int64_t>& oldIds = r < old.ids.size() ? old.ids[r] : noIds;

        // The history moves at its end: everything before the first difference stays as it is.
        std::size_t same = 0;
        while (same < run.size() && same < oldPieces.size() && run[same] != nullptr && run[same] == oldPieces[same]) {
            ++same;
        }
        next.ids[r].assign(oldIds.begin(), oldIds.begin() + static_cast<std::ptrdiff_t>(same));
        for (std::size_t i = same; i < run.size(); ++i) {
            const auto id = idOf(run[i]);
            if (!id) return false;
            next.ids[r].push_back(*id);
            ++pieces_.at(*id).references;
            if (i < oldIds.size() && oldIds[i] == *id) continue;
            if (!putRow(key, r, i, *id)) return false;
        }
        for (std::size_t i = same; i < oldIds.size(); ++i) released.push_back(oldIds[i]);
        if (oldIds.size() > run.size() && !deleteRowsFrom(key, r, run.size())) return false;
    }
    for (std::size_t r = runs.size(); r < old.ids.size(); ++r)
        released.insert(released.end(), old.ids[r].begin(), old.ids[r].end());
    if (old.ids.size() > runs.size() && !deleteRunsFrom(key, runs.size())) return false;

    // Released only now: a piece that moved from one run to another keeps its count above zero.
    for (const std::int64_t id : released) release(id);
    old = std::move(next);
    return true;
}

bool RunsTable::erase(const std::string& key)
{
    if (!ensureLoaded()) return false;
    const auto found = values_.find(key);
    if (found == values_.end()) return true;
    if (!deleteRunsFrom(key, 0)) return false;
    for (const auto& run : found->second.ids) {
        for (const std::int64_t id : run) release(id);
    }
    for (const std::int64_t id : found->second.strays) release(id);
    values_.erase(found);
    return true;
}

bool RunsTable::reclaim()
{
    if (!loaded_) return true;
    int result = SQLITE_OK;
    auto remove = prepare(connection_, "DELETE FROM pieces WHERE id = ?1", result);
    if (result != SQLITE_OK) return false;
    std::ranges::sort(unreferenced_);
    // std::unique rather than the ranges one, whose subrange clang 14 cannot use with this library.
    unreferenced_.erase(std::unique(unreferenced_.begin(), unreferenced_.end()), unreferenced_.end());
    for (const std::int64_t id : unreferenced_) {
        const auto piece = pieces_.find(id);
        if (piece == pieces_.end() || piece->second.references > 0) continue;
        sqlite3_bind_int64(remove.get(), 1, id);
        const bool deleted = finish(remove.get());
        sqlite3_reset(remove.get());
        if (!deleted) return false;
        byPointer_.erase(piece->second.bytes.get());
        for (const std::string* alias : piece->second.aliases) byPointer_.erase(alias);
        auto [first, lastHash] = byHash_.equal_range(piece->second.hash);
        for (auto entry = first; entry != lastHash; ++entry) {
            if (entry->second == id) {
                byHash_.erase(entry);
                break;
            }
        }
        pieces_.erase(piece);
    }
    unreferenced_.clear();
    return true;
}

} // namespace zelvaine

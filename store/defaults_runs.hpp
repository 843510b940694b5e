#pragma once

#include "store/defaults_store.hpp"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace zelvaine {

// A value kept as runs: for each run, the ids of its pieces in order, with the pieces themselves
// (an empty pointer where the file lacks the piece).
struct StoredRuns {
    DataRuns pieces;
    std::vector<std::vector<std::int64_t>> ids;
    // Rows out of sequence or past any sane run number: still counted as references, and the
    // value reads as broken until it is written whole again.
    std::vector<std::int64_t> strays;
    bool broken = false;
};

struct StoredPiece {
    std::shared_ptr<const std::string> bytes;
    std::uint64_t hash = 0;
};

// Everything the two tables hold, as read in one transaction.
struct RunsSnapshot {
    std::map<std::string, StoredRuns, std::less<>> values;
    std::unordered_map<std::int64_t, StoredPiece> pieces;
};

// The tables behind data values kept as runs. A piece is stored once under an id; a run is rows
// (key, run, position) → piece id.
extern const char* const kCreateRunsTables;

// Reads both tables; nothing when they cannot be read.
std::optional<RunsSnapshot> readRuns(sqlite3* connection, int& result);

// Whether the snapshot holds the whole of a value stored with `runCount` runs: every row
// numbered without gaps and every piece present.
std::optional<DataRuns> intactRuns(const RunsSnapshot& snapshot, const std::string& key, std::int64_t runCount);

// Stable across builds, since it is kept in the file to find a piece by its content.
std::uint64_t pieceHash(std::string_view bytes);

// The writer's side: keeps the runs of each key written as the change from the rows the file
// holds, and the pieces as shared, counted and reclaimed once no row refers to them. All calls
// happen inside the caller's write transaction; after a failed one, forget() makes the next
// call read the file again.
class RunsTable {
public:
    RunsTable(sqlite3* connection, RunsSnapshot snapshot);

    bool write(const std::string& key, const DataRuns& runs);
    bool erase(const std::string& key);
    // Deletes the pieces that no row refers to any more; last step before the commit.
    bool reclaim();
    void forget();

    bool holdsRuns(const std::string& key) const { return values_.contains(key); }

private:
    struct Piece {
        std::shared_ptr<const std::string> bytes;
        std::uint64_t hash = 0;
        std::int64_t references = 0;
        // Other strings with the same bytes that were matched to this piece.
        std::vector<const std::string*> aliases;
    };
    struct Known {
        std::shared_ptr<const std::string> owner;
        std::int64_t id = 0;
    };

    bool ensureLoaded();
    void adopt(RunsSnapshot snapshot);
    std::optional<std::int64_t> idOf(const std::shared_ptr<const std::string>& piece);
    void release(std::int64_t id);
    bool putRow(const std::string& key, std::size_t run, std::size_t position, std::int64_t id);
    bool deleteRowsFrom(const std::string& key, std::size_t run, std::size_t position);
    bool deleteRunsFrom(const std::string& key, std::size_t run);

    sqlite3* connection_;
    bool loaded_ = false;
    std::map<std::string, StoredRuns, std::less<>> values_;
    std::unordered_map<std::int64_t, Piece> pieces_;
    std::unordered_map<const std::string*, Known> byPointer_;
    std::unordered_multimap<std::uint64_t, std::int64_t> byHash_;
    std::vector<std::int64_t> unreferenced_;
};

} // namespace zelvaine

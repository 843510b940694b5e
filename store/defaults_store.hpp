#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace zelvaine {

// A persistent key-value store of the four value kinds the game keeps between runs.
// Reading a key with the wrong accessor gives nothing, as if the key were absent, so a
// value of an unexpected type never breaks the reader.
using DefaultsData = std::vector<std::uint8_t>;
using DefaultsValue = std::variant<bool, std::int64_t, std::string, DefaultsData>;

// A data value handed over as immutable shared pieces whose concatenation is the value. Each save
// of the game repeats most of the one before; pieces spare the caller's thread from copying
// megabytes, and a store may join them wherever it likes.
using DataPieces = std::vector<std::shared_ptr<const std::string>>;

DefaultsData joinPieces(const DataPieces& pieces);

// A data value as consecutive runs of pieces. A store may keep every piece once and each run as a
// list that refers to them; then a run that only grew or shrank at its end since the last write
// costs just the pieces it gained, whatever its length. The saved game is such a value: each
// position is a piece that never changes, and the histories are runs that move at their ends.
using DataRuns = std::vector<DataPieces>;

DataPieces flattenRuns(const DataRuns& runs);

// Why writes are not reaching the disk.
enum class DefaultsWriteFailure : std::uint8_t {
    noPlace,  // the file or its folder cannot be made or opened for writing
    readOnly, // the file, its folder or the disk refuses writes
    diskFull,
    busy,    // another program holds the file locked
    ioError, // the disk reported an error
};

class DefaultsStore {
public:
    virtual ~DefaultsStore() = default;

    virtual std::optional<DefaultsValue> value(std::string_view key) const = 0;
    virtual void set(std::string_view key, DefaultsValue value) = 0;
    // Stores the joined pieces as a data value; joins them at once unless a store knows better.
    virtual void setData(std::string_view key, DataPieces pieces) { set(key, joinPieces(pieces)); }
    // Stores the runs' joined pieces as a data value; reading the key gives the joined bytes.
    virtual void setRuns(std::string_view key, DataRuns runs) { setData(key, flattenRuns(runs)); }
    // The runs of a data value stored by setRuns, when the store kept them; lets a reader reuse
    // the pieces (and their identity) instead of splitting the joined bytes again.
    virtual std::optional<DataRuns> dataRuns(std::string_view) const { return std::nullopt; }
    virtual void remove(std::string_view key) = 0;
    // Blocks until every earlier write is durable.
    virtual void flush() = 0;
    // Why the latest attempt to make writes durable failed; nothing once one succeeds again. A
    // store that cannot fail says nothing.
    virtual std::optional<DefaultsWriteFailure> writeFailure() const { return std::nullopt; }
    // Where the store set aside a damaged file it found at start, for the player to be told.
    virtual std::optional<std::string> keptAsideFile() const { return std::nullopt; }

    // Another program held the file at start, beyond a short wait: nothing could be read, every
    // value read so far stands in for one the file may hold, and nothing is written until the
    // file opens. Then what it holds wins over what this run wrote meanwhile.
    virtual bool waitingForFile() const { return false; }

    // Keeps a value its reader found damaged where no later write can reach it, before the key is
    // written again; gives where, for the player to be told. A store without files of its own
    // keeps it under a key of its own.
    virtual std::optional<std::string> keepAside(std::string_view key, const DefaultsData& value)
    {
        const std::string aside = std::string(key) + ".damaged";
        set(aside, value);
        return aside;
    }

    // A key that another process on the same file may write too (a second display, a game that
    // started beside another). Once guarded, the key is written only while the number stored
    // under generationKey is still the one this store read at start or wrote last; each such
    // write raises it in the same transaction. When another process raised it first, the writes
    // of the key are dropped and overtaken() says so, until retake() adopts the file's number.
    // A store only one process can use ignores this.
    virtual void guard(std::string_view /*key*/, std::string_view /*generationKey*/) {}
    virtual bool overtaken() const { return false; }
    virtual void retake() {}

    std::optional<bool> boolean(std::string_view key) const { return as<bool>(key); }
    std::optional<std::int64_t> integer(std::string_view key) const { return as<std::int64_t>(key); }
    std::optional<std::string> text(std::string_view key) const { return as<std::string>(key); }
    std::optional<DefaultsData> data(std::string_view key) const { return as<DefaultsData>(key); }

private:
    template <class T>
    std::optional<T> as(std::string_view key) const
    {
        auto stored = value(key);
        if (!stored) return std::nullopt;
        if (auto* typed = std::get_if<T>(&*stored)) return std::move(*typed);
        return std::nullopt;
    }
};

inline DefaultsData joinPieces(const DataPieces& pieces)
{
    std::size_t size = 0;
    for (const auto& piece : pieces) size += piece->size();
    DefaultsData joined;
    joined.reserve(size);
    for (const auto& piece : pieces) joined.insert(joined.end(), piece->begin(), piece->end());
    return joined;
}

inline DataPieces flattenRuns(const DataRuns& runs)
{
    DataPieces pieces;
    for (const auto& run : runs) pieces.insert(pieces.end(), run.begin(), run.end());
    return pieces;
}

} // namespace zelvaine

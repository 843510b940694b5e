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

class DefaultsStore {
public:
    virtual ~DefaultsStore() = default;

    virtual std::optional<DefaultsValue> value(std::string_view key) const = 0;
    virtual void set(std::string_view key, DefaultsValue value) = 0;
    // Stores the joined pieces as a data value; joins them at once unless a store knows better.
    virtual void setData(std::string_view key, DataPieces pieces) { set(key, joinPieces(pieces)); }
    virtual void remove(std::string_view key) = 0;
    // Blocks until every earlier write is durable.
    virtual void flush() = 0;

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

} // namespace zelvaine

#pragma once

#include "engine/state_json.hpp"
#include "store/game_store.hpp"

#include <functional>

namespace zelvaine::testing {

// Names one saved game: its position and the lengths of its histories. The high bit is kept
// clear so that the crash writer can tell these words from its "flushed" marks.
inline std::uint64_t gameDigest(const GameState& state, std::size_t history, std::size_t redo)
{
    const std::uint64_t hash = std::hash<std::string>{}(toJson(state));
    return (hash ^ (history * 0x9E3779B97F4A7C15ULL) ^ (redo << 40)) & ~(std::uint64_t{1} << 63);
}

inline std::uint64_t gameDigest(const GameStore& store)
{
    return gameDigest(store.state(), store.history().size(), store.redoHistory().size());
}

inline constexpr std::uint64_t flushedMark = std::uint64_t{1} << 63;

} // namespace zelvaine::testing

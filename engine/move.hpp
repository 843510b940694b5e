#pragma once

#include "engine/game_state.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

namespace zelvaine {

// Where a move starts. `index` is the column, the hand slot or the foundation; `cardIndex`
// is used by tableau sources only and is 0 otherwise, so equality compares just what names
// the source.
struct MoveSource {
    enum class Kind : std::uint8_t { tableau, hand, foundation };

    Kind kind = Kind::tableau;
    std::int64_t index = 0;
    std::int64_t cardIndex = 0;

    static constexpr MoveSource tableau(std::int64_t column, std::int64_t cardIndex)
    {
        return {Kind::tableau, column, cardIndex};
    }
    static constexpr MoveSource hand(std::int64_t index) { return {Kind::hand, index, 0}; }
    static constexpr MoveSource foundation(std::int64_t index) { return {Kind::foundation, index, 0}; }

    constexpr bool isTableau() const { return kind == Kind::tableau; }
    constexpr bool isHand() const { return kind == Kind::hand; }
    constexpr bool isFoundation() const { return kind == Kind::foundation; }
    constexpr std::int64_t column() const { return index; }

    friend constexpr bool operator==(const MoveSource&, const MoveSource&) = default;
};

// Where a move ends. A hand destination may leave its slot open ("any free slot").
struct MoveDestination {
    enum class Kind : std::uint8_t { tableau, foundation, hand };

    Kind kind = Kind::tableau;
    std::optional<std::int64_t> index;

    static constexpr MoveDestination tableau(std::int64_t column) { return {Kind::tableau, column}; }
    static constexpr MoveDestination foundation(std::int64_t index) { return {Kind::foundation, index}; }
    static constexpr MoveDestination hand(std::optional<std::int64_t> slot = std::nullopt)
    {
        return {Kind::hand, slot};
    }

    constexpr bool isTableau() const { return kind == Kind::tableau; }
    constexpr bool isFoundation() const { return kind == Kind::foundation; }
    constexpr bool isHand() const { return kind == Kind::hand; }

    friend constexpr bool operator==(const MoveDestination&, const MoveDestination&) = default;
};

struct MoveMoved {
    GameState state;
    // False only for a rearrangement inside the hand.
    bool counted = true;
    bool fromFoundation = false;
};
struct MoveIgnored {};
struct MoveRefused {
    std::string reason;
};
using MoveOutcome = std::variant<MoveMoved, MoveIgnored, MoveRefused>;

struct MoveSourceHash {
    std::size_t operator()(const MoveSource& source) const noexcept;
};
struct MoveDestinationHash {
    std::size_t operator()(const MoveDestination& destination) const noexcept;
};

// Compact text forms ("tableau:3:9", "hand:1", "foundation:0"; "tableau:3", "foundation:2",
// "hand", "hand:0") for tools, logs and test names.
std::string toString(const MoveSource& source);
std::string toString(const MoveDestination& destination);

} // namespace zelvaine

template <>
struct std::hash<zelvaine::MoveSource> : zelvaine::MoveSourceHash {};
template <>
struct std::hash<zelvaine::MoveDestination> : zelvaine::MoveDestinationHash {};

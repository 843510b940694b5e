#pragma once

#include "engine/expected.hpp"
#include "engine/game_state.hpp"

#include <string>
#include <string_view>

namespace simdjson::dom {
class element;
}

namespace zelvaine {

// Why a JSON value could not be read, and where: `path` is like "tableau[3][2].rank".
struct JsonError {
    std::string path;
    std::string message;

    std::string describe() const { return path.empty() ? message : path + ": " + message; }
};

template <class T>
using JsonResult = Expected<T, JsonError>;

// Where a value sits in a document. Readers pass these down by reference and spell one out only
// when an error names it, so that reading a long game allocates nothing for its paths.
class JsonPath {
public:
    JsonPath() = default;
    explicit JsonPath(std::string_view name) : key_(name) {}
    JsonPath(const JsonPath& parent, std::string_view key) : parent_(&parent), key_(key) {}
    JsonPath(const JsonPath& parent, std::size_t index) : parent_(&parent), index_(index), isIndex_(true) {}

    std::string text() const;

private:
    const JsonPath* parent_ = nullptr;
    std::string_view key_;
    std::size_t index_ = 0;
    bool isIndex_ = false;
};

// Compact JSON with the keys of every object in sorted order.
void appendJson(std::string& out, const PlayingCard& card);
void appendJson(std::string& out, const GameState& state);
std::string toJson(const PlayingCard& card);
std::string toJson(const GameState& state);

// Strict reading: a missing key, a wrong type, an unknown suit, a rank outside 1–13 or a
// malformed id fails the whole value. The deck number is not judged, nor is the position's
// shape (callers that load a position apply isWellFormed).
JsonResult<PlayingCard> playingCardFromJson(std::string_view json);
JsonResult<GameState> gameStateFromJson(std::string_view json);

// The same readers for a value inside a larger document; `path` names where it sits.
JsonResult<PlayingCard> decodePlayingCard(const simdjson::dom::element& value, const JsonPath& path);
JsonResult<GameState> decodeGameState(const simdjson::dom::element& value, const JsonPath& path);

} // namespace zelvaine

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
JsonResult<PlayingCard> decodePlayingCard(const simdjson::dom::element& value, const std::string& path);
JsonResult<GameState> decodeGameState(const simdjson::dom::element& value, const std::string& path);

} // namespace zelvaine

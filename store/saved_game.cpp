#include "store/saved_game.hpp"

#include <simdjson.h>

#include <algorithm>

namespace zelvaine {
namespace {

using simdjson::dom::element;

// A key that is absent or null reads as "not there".
std::optional<element> optionalMember(const simdjson::dom::object& object, std::string_view key)
{
    element value;
    if (object.at_key(key).get(value) != simdjson::SUCCESS || value.is_null()) return std::nullopt;
    return value;
}

JsonResult<std::vector<GameState>> decodePositions(const element& value, const JsonPath& path)
{
    simdjson::dom::array array;
    if (value.get_array().get(array) != simdjson::SUCCESS) return Unexpected{JsonError{path.text(), "expected an array"}};
    std::vector<GameState> positions;
    positions.reserve(array.size());
    std::size_t index = 0;
    for (element item : array) {
        auto position = decodeGameState(item, JsonPath(path, index++));
        if (!position) return Unexpected{position.error()};
        positions.push_back(std::move(*position));
    }
    return positions;
}

JsonResult<SavedGame> decodeSavedGame(const element& root)
{
    simdjson::dom::object object;
    if (root.get_object().get(object) != simdjson::SUCCESS) return Unexpected{JsonError{"", "expected an object"}};

    SavedGame game;
    for (auto [key, target] : {std::pair{"currentState", &game.currentState}, std::pair{"initialState", &game.initialState}}) {
        auto value = optionalMember(object, key);
        if (!value) return Unexpected{JsonError{"", "missing key \"" + std::string(key) + "\""}};
        auto position = decodeGameState(*value, JsonPath(key));
        if (!position) return Unexpected{position.error()};
        *target = std::move(*position);
    }
    for (auto [key, target] : {std::pair{"history", &game.history}, std::pair{"redoHistory", &game.redoHistory}}) {
        if (auto value = optionalMember(object, key)) {
            auto positions = decodePositions(*value, JsonPath(key));
            if (!positions) return Unexpected{positions.error()};
            *target = std::move(*positions);
        }
    }
    if (auto value = optionalMember(object, "challenge")) {
        auto record = decodeChallengeRecord(*value, JsonPath("challenge"));
        if (!record) return Unexpected{record.error()};
        game.challenge = *record;
    }
    return game;
}

bool isRestorable(const SavedGame& game)
{
    // In order, stopping at the first failure: the cheap checks of the two main positions first.
    const auto sound = [](const GameState& state) { return isWellFormed(state) && hasSaneNumbers(state); };
    return sound(game.currentState) && sound(game.initialState) && std::ranges::all_of(game.history, sound) &&
           std::ranges::all_of(game.redoHistory, sound) && !isWon(game.currentState);
}

EncodedPosition piece(std::string_view text) { return std::make_shared<const std::string>(text); }

void appendPositions(DataPieces& pieces, std::span<const EncodedPosition> positions)
{
    static const EncodedPosition comma = piece(",");
    for (std::size_t i = 0; i < positions.size(); ++i) {
        if (i > 0) pieces.push_back(comma);
        pieces.push_back(positions[i]);
    }
}

} // namespace

EncodedPosition encodePosition(const GameState& state) { return std::make_shared<const std::string>(toJson(state)); }

DataPieces savedGamePieces(const EncodedPosition& currentState, const EncodedPosition& initialState,
                           std::span<const EncodedPosition> history, std::span<const EncodedPosition> redoHistory,
                           const GameChallengeRecord& challenge)
{
    static const EncodedPosition start = piece("{\"currentState\":");
    static const EncodedPosition initial = piece(",\"initialState\":");
    static const EncodedPosition historyStart = piece(",\"history\":[");
    static const EncodedPosition redoStart = piece("],\"redoHistory\":[");
    static const EncodedPosition challengeStart = piece("],\"challenge\":");

    DataPieces pieces;
    pieces.reserve(2 * (history.size() + redoHistory.size()) + 10);
    pieces.insert(pieces.end(), {start, currentState, initial, initialState, historyStart});
    appendPositions(pieces, history);
    pieces.push_back(redoStart);
    appendPositions(pieces, redoHistory);
    pieces.push_back(challengeStart);
    std::string tail;
    appendJson(tail, challenge);
    tail += '}';
    pieces.push_back(std::make_shared<const std::string>(std::move(tail)));
    return pieces;
}

std::string encodeSavedGame(const SavedGame& game)
{
    auto encodeAll = [](const std::vector<GameState>& positions) {
        std::vector<EncodedPosition> encoded;
        encoded.reserve(positions.size());
        for (const auto& p : positions) encoded.push_back(encodePosition(p));
        return encoded;
    };
    const DefaultsData joined =
        joinPieces(savedGamePieces(encodePosition(game.currentState), encodePosition(game.initialState),
                                   encodeAll(game.history), encodeAll(game.redoHistory), game.challenge));
    return std::string(joined.begin(), joined.end());
}

JsonResult<SavedGame> decodeSavedGame(std::string_view json)
{
    simdjson::dom::parser parser;
    element root;
    if (auto error = parser.parse(simdjson::padded_string(json)).get(root); error != simdjson::SUCCESS) {
        return Unexpected{JsonError{"", std::string("not valid JSON (") + simdjson::error_message(error) + ")"}};
    }
    return decodeSavedGame(root);
}

RestoredGame restoreSavedGame(std::string_view blob)
{
    simdjson::dom::parser parser;
    element root;
    if (parser.parse(simdjson::padded_string(blob)).get(root) != simdjson::SUCCESS) return {};

    if (auto game = decodeSavedGame(root); game && isRestorable(*game)) {
        return {RestoredFrom::savedGame, std::move(*game)};
    }
    // An older version kept only the bare position under the same key.
    if (auto position = decodeGameState(root, JsonPath()); position && isWellFormed(*position) && hasSaneNumbers(*position) &&
                    !isWon(*position)) {
        SavedGame game;
        game.currentState = *position;
        game.initialState = std::move(*position);
        return {RestoredFrom::position, std::move(game)};
    }
    return {};
}

} // namespace zelvaine

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
    if (value.get_array().get(array) != simdjson::SUCCESS)
        return Unexpected{JsonError{path.text(), "expected an array"}};
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
    for (auto [key, target] :
         {std::pair{"currentState", &game.currentState}, std::pair{"initialState", &game.initialState}}) {
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

} // namespace

EncodedPosition encodePosition(const GameState& state) { return std::make_shared<const std::string>(toJson(state)); }

namespace {

const EncodedPosition& literal(int which)
{
    static const EncodedPosition pieces[] = {
        piece("{\"currentState\":"),  piece(",\"initialState\":"), piece(",\"history\":["),
        piece("],\"redoHistory\":["), piece("],\"challenge\":"),   piece(","),
    };
    return pieces[which];
}
enum Literal { start, initial, historyStart, redoStart, challengeStart, comma };

DataPieces positionRun(std::span<const EncodedPosition> positions)
{
    DataPieces run;
    run.reserve(positions.empty() ? 0 : 2 * positions.size() - 1);
    for (std::size_t i = 0; i < positions.size(); ++i) {
        if (i > 0) run.push_back(literal(comma));
        run.push_back(positions[i]);
    }
    return run;
}

bool isPosition(const EncodedPosition& piece)
{
    return piece && piece->size() >= 2 && piece->front() == '{' && piece->back() == '}';
}

std::optional<std::vector<EncodedPosition>> positionsOf(const DataPieces& run, std::size_t count)
{
    if (run.size() != (count == 0 ? 0 : 2 * count - 1)) return std::nullopt;
    std::vector<EncodedPosition> positions;
    positions.reserve(count);
    for (std::size_t i = 0; i < run.size(); ++i) {
        if (i % 2 == 1) {
            if (!run[i] || *run[i] != ",") return std::nullopt;
        } else {
            if (!isPosition(run[i])) return std::nullopt;
            positions.push_back(run[i]);
        }
    }
    return positions;
}

bool isLiteral(const EncodedPosition& piece, Literal which) { return piece && *piece == *literal(which); }

} // namespace

DataRuns savedGameRuns(const EncodedPosition& currentState, const EncodedPosition& initialState,
                       std::span<const EncodedPosition> history, std::span<const EncodedPosition> redoHistory,
                       const GameChallengeRecord& challenge)
{
    std::string tail;
    appendJson(tail, challenge);
    tail += '}';
    return {
        {literal(start), currentState, literal(initial), initialState, literal(historyStart)},
        positionRun(history),
        {literal(redoStart)},
        positionRun(redoHistory),
        {literal(challengeStart), std::make_shared<const std::string>(std::move(tail))},
    };
}

std::optional<SavedGamePositions> savedGamePositions(const DataRuns& runs, std::size_t historySize, std::size_t redoSize)
{
    if (runs.size() != 5 || runs[0].size() != 5 || runs[2].size() != 1 || runs[4].size() != 2) return std::nullopt;
    const DataPieces& head = runs[0];
    if (!isLiteral(head[0], start) || !isLiteral(head[2], initial) || !isLiteral(head[4], historyStart) ||
        !isLiteral(runs[2][0], redoStart) || !isLiteral(runs[4][0], challengeStart) || !isPosition(head[1]) ||
        !isPosition(head[3])) {
        return std::nullopt;
    }
    auto history = positionsOf(runs[1], historySize);
    auto redo = positionsOf(runs[3], redoSize);
    if (!history || !redo) return std::nullopt;
    return SavedGamePositions{head[1], head[3], std::move(*history), std::move(*redo)};
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
        joinPieces(flattenRuns(savedGameRuns(encodePosition(game.currentState), encodePosition(game.initialState),
                                             encodeAll(game.history), encodeAll(game.redoHistory), game.challenge)));
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

    auto game = decodeSavedGame(root);
    if (game && isRestorable(*game)) return {RestoredFrom::savedGame, std::move(*game), false};
    // An older version kept only the bare position under the same key.
    const auto sound = [](const GameState& state) { return isWellFormed(state) && hasSaneNumbers(state); };
    auto position = decodeGameState(root, JsonPath());
    if (position && sound(*position) && !isWon(*position)) {
        SavedGame bare;
        bare.currentState = *position;
        bare.initialState = std::move(*position);
        return {RestoredFrom::position, std::move(bare), false};
    }
    if (game && isWon(game->currentState)) {
        const bool whole = sound(game->initialState) && std::ranges::all_of(game->history, sound) &&
                           std::ranges::all_of(game->redoHistory, sound);
        return {RestoredFrom::none, std::nullopt, whole && sound(game->currentState)};
    }
    return {RestoredFrom::none, std::nullopt, position && sound(*position) && isWon(*position)};
}

} // namespace zelvaine

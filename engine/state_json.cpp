#include "engine/state_json.hpp"

#include "engine/json_writer.hpp"

#include <simdjson.h>

#include <optional>

namespace zelvaine {
namespace {

using simdjson::dom::element;
using simdjson::dom::element_type;

Unexpected<JsonError> failure(const JsonPath& path, std::string message)
{
    return Unexpected{JsonError{path.text(), std::move(message)}};
}

std::string typeName(element_type type)
{
    switch (type) {
    case element_type::ARRAY: return "an array";
    case element_type::OBJECT: return "an object";
    case element_type::INT64:
    case element_type::UINT64: return "an integer";
    case element_type::DOUBLE: return "a fractional number";
    case element_type::STRING: return "a string";
    case element_type::BOOL: return "a boolean";
    case element_type::NULL_VALUE: return "null";
    }
    return "an unknown value";
}

Unexpected<JsonError> wrongType(const JsonPath& path, const element& value, std::string_view expected)
{
    return failure(path, "expected " + std::string(expected) + ", found " + typeName(value.type()));
}

// Reads a required member of an object; the error names the key that is missing.
JsonResult<element> required(const simdjson::dom::object& object, const JsonPath& path, std::string_view key)
{
    element value;
    if (object.at_key(key).get(value) != simdjson::SUCCESS) {
        return failure(path, "missing key \"" + std::string(key) + "\"");
    }
    return value;
}

JsonResult<std::int64_t> integer(const element& value, const JsonPath& path)
{
    std::int64_t number = 0;
    if (value.get_int64().get(number) != simdjson::SUCCESS) return wrongType(path, value, "an integer");
    return number;
}

JsonResult<Pile> decodePile(const element& value, const JsonPath& path)
{
    simdjson::dom::array array;
    if (value.get_array().get(array) != simdjson::SUCCESS) return wrongType(path, value, "an array of cards");
    Pile pile;
    pile.reserve(array.size());
    std::size_t index = 0;
    for (element card : array) {
        auto decoded = decodePlayingCard(card, JsonPath(path, index++));
        if (!decoded) return Unexpected{decoded.error()};
        pile.push_back(*decoded);
    }
    return pile;
}

JsonResult<std::vector<Pile>> decodePiles(const element& value, const JsonPath& path)
{
    simdjson::dom::array array;
    if (value.get_array().get(array) != simdjson::SUCCESS) return wrongType(path, value, "an array of arrays");
    std::vector<Pile> piles;
    piles.reserve(array.size());
    std::size_t index = 0;
    for (element pile : array) {
        auto decoded = decodePile(pile, JsonPath(path, index++));
        if (!decoded) return Unexpected{decoded.error()};
        piles.push_back(std::move(*decoded));
    }
    return piles;
}

JsonResult<std::vector<HandSlot>> decodeHand(const element& value, const JsonPath& path)
{
    simdjson::dom::array array;
    if (value.get_array().get(array) != simdjson::SUCCESS) return wrongType(path, value, "an array");
    std::vector<HandSlot> hand;
    std::size_t index = 0;
    for (element slot : array) {
        const JsonPath slotPath(path, index++);
        if (slot.is_null()) {
            hand.emplace_back();
            continue;
        }
        auto decoded = decodePlayingCard(slot, slotPath);
        if (!decoded) return Unexpected{decoded.error()};
        hand.emplace_back(*decoded);
    }
    return hand;
}

template <class T>
JsonResult<T> parseWith(std::string_view json, JsonResult<T> (*decode)(const element&, const JsonPath&))
{
    simdjson::dom::parser parser;
    element root;
    const simdjson::padded_string padded(json);
    if (auto error = parser.parse(padded).get(root); error != simdjson::SUCCESS) {
        return failure(JsonPath(), std::string("not valid JSON (") + simdjson::error_message(error) + ")");
    }
    return decode(root, JsonPath());
}

} // namespace

std::string JsonPath::text() const
{
    if (!parent_) return std::string(key_);
    std::string out = parent_->text();
    if (isIndex_) return out + "[" + std::to_string(index_) + "]";
    if (!out.empty()) out += '.';
    out += key_;
    return out;
}

void appendJson(std::string& out, const PlayingCard& card)
{
    out += "{\"deck\":";
    if (card.deck == 0 || card.deck == 1) {
        out += static_cast<char>('0' + card.deck);
    } else {
        out += std::to_string(card.deck);
    }
    out += ",\"id\":\"";
    card.id.appendText(out);
    out += "\",\"rank\":";
    const int rank = rawValue(card.rank);
    if (rank >= 10) out += '1';
    out += static_cast<char>('0' + rank % 10);
    out += ",\"suit\":\"";
    out += rawValue(card.suit);
    out += "\"}";
}

void appendJson(std::string& out, const GameState& state)
{
    auto appendPiles = [&out](const std::vector<Pile>& piles) {
        out += '[';
        for (std::size_t p = 0; p < piles.size(); ++p) {
            if (p > 0) out += ',';
            out += '[';
            for (std::size_t c = 0; c < piles[p].size(); ++c) {
                if (c > 0) out += ',';
                appendJson(out, piles[p][c]);
            }
            out += ']';
        }
        out += ']';
    };
    out += "{\"foundations\":";
    appendPiles(state.foundations);
    out += ",\"hand\":[";
    for (std::size_t s = 0; s < state.hand.size(); ++s) {
        if (s > 0) out += ',';
        if (state.hand[s]) {
            appendJson(out, *state.hand[s]);
        } else {
            out += "null";
        }
    }
    out += "],\"moveCount\":";
    out += std::to_string(state.moveCount);
    out += ",\"tableau\":";
    appendPiles(state.tableau);
    out += '}';
}

std::string toJson(const PlayingCard& card)
{
    std::string out;
    appendJson(out, card);
    return out;
}

std::string toJson(const GameState& state)
{
    std::string out;
    out.reserve(12000);
    appendJson(out, state);
    return out;
}

JsonResult<PlayingCard> decodePlayingCard(const element& value, const JsonPath& path)
{
    simdjson::dom::object object;
    if (value.get_object().get(object) != simdjson::SUCCESS) return wrongType(path, value, "a card object");

    // One pass over the fields instead of a search per key: a long saved game holds a hundred
    // thousand cards. The first occurrence of a key counts, as with a lookup by name.
    std::optional<element> id, suit, rank, deck;
    for (auto field : object) {
        std::optional<element>* slot = nullptr;
        if (field.key == "id") slot = &id;
        else if (field.key == "suit") slot = &suit;
        else if (field.key == "rank") slot = &rank;
        else if (field.key == "deck") slot = &deck;
        if (slot && !*slot) *slot = field.value;
    }
    for (auto [found, key] : {std::pair{&id, "id"}, std::pair{&suit, "suit"}, std::pair{&rank, "rank"}, std::pair{&deck, "deck"}}) {
        if (!*found) return failure(path, "missing key \"" + std::string(key) + "\"");
    }

    std::string_view idText;
    if (id->get_string().get(idText) != simdjson::SUCCESS) return wrongType(JsonPath(path, std::string_view("id")), *id, "a string");
    const auto uuid = Uuid::parse(idText);
    if (!uuid) return failure(JsonPath(path, std::string_view("id")), "\"" + std::string(idText) + "\" is not a UUID");

    std::string_view suitText;
    if (suit->get_string().get(suitText) != simdjson::SUCCESS) {
        return wrongType(JsonPath(path, std::string_view("suit")), *suit, "a string");
    }
    const auto parsedSuit = suitFromRaw(suitText);
    if (!parsedSuit) return failure(JsonPath(path, std::string_view("suit")), "\"" + std::string(suitText) + "\" is not a suit");

    auto rankNumber = integer(*rank, JsonPath(path, std::string_view("rank")));
    if (!rankNumber) return Unexpected{rankNumber.error()};
    const auto parsedRank = rankFromRaw(*rankNumber);
    if (!parsedRank) {
        return failure(JsonPath(path, std::string_view("rank")), std::to_string(*rankNumber) + " is not a rank from 1 to 13");
    }

    auto deckNumber = integer(*deck, JsonPath(path, std::string_view("deck")));
    if (!deckNumber) return Unexpected{deckNumber.error()};

    return PlayingCard{*uuid, *parsedSuit, *parsedRank, *deckNumber};
}

JsonResult<GameState> decodeGameState(const element& value, const JsonPath& path)
{
    simdjson::dom::object object;
    if (value.get_object().get(object) != simdjson::SUCCESS) return wrongType(path, value, "a position object");

    GameState state;
    auto tableau = required(object, path, "tableau");
    if (!tableau) return Unexpected{tableau.error()};
    auto columns = decodePiles(*tableau, JsonPath(path, std::string_view("tableau")));
    if (!columns) return Unexpected{columns.error()};
    state.tableau = std::move(*columns);

    auto foundations = required(object, path, "foundations");
    if (!foundations) return Unexpected{foundations.error()};
    auto piles = decodePiles(*foundations, JsonPath(path, std::string_view("foundations")));
    if (!piles) return Unexpected{piles.error()};
    state.foundations = std::move(*piles);

    auto hand = required(object, path, "hand");
    if (!hand) return Unexpected{hand.error()};
    auto slots = decodeHand(*hand, JsonPath(path, std::string_view("hand")));
    if (!slots) return Unexpected{slots.error()};
    state.hand = std::move(*slots);

    auto moveCount = required(object, path, "moveCount");
    if (!moveCount) return Unexpected{moveCount.error()};
    auto count = integer(*moveCount, JsonPath(path, std::string_view("moveCount")));
    if (!count) return Unexpected{count.error()};
    state.moveCount = *count;

    return state;
}

JsonResult<PlayingCard> playingCardFromJson(std::string_view json) { return parseWith<PlayingCard>(json, decodePlayingCard); }

JsonResult<GameState> gameStateFromJson(std::string_view json) { return parseWith<GameState>(json, decodeGameState); }

} // namespace zelvaine

#include "engine/state_json.hpp"

#include "engine/json_writer.hpp"
#include "engine/position_json.hpp"

#include <simdjson.h>

#include <optional>

namespace zelvaine {
namespace {

using simdjson::dom::element;
using simdjson::dom::element_type;

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

[[gnu::noinline]] void appendLongInteger(std::string& out, std::int64_t number) { out += std::to_string(number); }

// Ranks and decks, written for every card: one or two digits, kept inline and free of allocation.
inline void appendInteger(std::string& out, std::int64_t number)
{
    if (number >= 0 && number < 10) {
        out += static_cast<char>('0' + number);
    } else if (number >= 10 && number < 100) {
        out += static_cast<char>('0' + number / 10);
        out += static_cast<char>('0' + number % 10);
    } else {
        appendLongInteger(out, number);
    }
}

template <class T>
JsonResult<T> parseWith(std::string_view json, JsonResult<T> (*decode)(const element&, const JsonPath&))
{
    simdjson::dom::parser parser;
    element root;
    const simdjson::padded_string padded(json);
    if (auto error = parser.parse(padded).get(root); error != simdjson::SUCCESS) {
        return jsonFailure(JsonPath(), std::string("not valid JSON (") + simdjson::error_message(error) + ")");
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

Unexpected<JsonError> jsonFailure(const JsonPath& path, std::string message)
{
    return Unexpected{JsonError{path.text(), std::move(message)}};
}

Unexpected<JsonError> jsonWrongType(const JsonPath& path, const element& value, std::string_view expected)
{
    return jsonFailure(path, "expected " + std::string(expected) + ", found " + typeName(value.type()));
}

JsonResult<element> requiredMember(const simdjson::dom::object& object, const JsonPath& path, std::string_view key)
{
    element value;
    if (object.at_key(key).get(value) != simdjson::SUCCESS) {
        return jsonFailure(path, "missing key \"" + std::string(key) + "\"");
    }
    return value;
}

JsonResult<std::int64_t> decodeInteger(const element& value, const JsonPath& path)
{
    std::int64_t number = 0;
    if (value.get_int64().get(number) != simdjson::SUCCESS) return jsonWrongType(path, value, "an integer");
    return number;
}

void appendCardJson(std::string& out, const Uuid& id, std::string_view suit, std::int64_t rank, std::int64_t deck)
{
    out += "{\"deck\":";
    appendInteger(out, deck);
    out += ",\"id\":\"";
    id.appendText(out);
    out += "\",\"rank\":";
    appendInteger(out, rank);
    out += ",\"suit\":";
    appendJsonString(out, suit);
    out += '}';
}

JsonResult<CardFields> decodeCardFields(const element& value, const JsonPath& path)
{
    simdjson::dom::object object;
    if (value.get_object().get(object) != simdjson::SUCCESS) return jsonWrongType(path, value, "a card object");

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
    for (auto [found, key] :
         {std::pair{&id, "id"}, std::pair{&suit, "suit"}, std::pair{&rank, "rank"}, std::pair{&deck, "deck"}}) {
        if (!*found) return jsonFailure(path, "missing key \"" + std::string(key) + "\"");
    }

    CardFields fields;
    std::string_view idText;
    if (id->get_string().get(idText) != simdjson::SUCCESS)
        return jsonWrongType(JsonPath(path, std::string_view("id")), *id, "a string");
    const auto uuid = Uuid::parse(idText);
    if (!uuid)
        return jsonFailure(JsonPath(path, std::string_view("id")), "\"" + std::string(idText) + "\" is not a UUID");
    fields.id = *uuid;

    if (suit->get_string().get(fields.suit) != simdjson::SUCCESS) {
        return jsonWrongType(JsonPath(path, std::string_view("suit")), *suit, "a string");
    }
    auto rankNumber = decodeInteger(*rank, JsonPath(path, std::string_view("rank")));
    if (!rankNumber) return Unexpected{rankNumber.error()};
    fields.rank = *rankNumber;
    auto deckNumber = decodeInteger(*deck, JsonPath(path, std::string_view("deck")));
    if (!deckNumber) return Unexpected{deckNumber.error()};
    fields.deck = *deckNumber;
    return fields;
}

void appendJson(std::string& out, const PlayingCard& card)
{
    appendCardJson(out, card.id, rawValue(card.suit), rawValue(card.rank), card.deck);
}

void appendJson(std::string& out, const GameState& state)
{
    appendPositionJson(out, state, [](std::string& text, const PlayingCard& card) { appendJson(text, card); });
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
    auto fields = decodeCardFields(value, path);
    if (!fields) return Unexpected{fields.error()};
    const auto suit = suitFromRaw(fields->suit);
    if (!suit)
        return jsonFailure(JsonPath(path, std::string_view("suit")),
                           "\"" + std::string(fields->suit) + "\" is not a suit");
    const auto rank = rankFromRaw(fields->rank);
    if (!rank) {
        return jsonFailure(JsonPath(path, std::string_view("rank")),
                           std::to_string(fields->rank) + " is not a rank from 1 to 13");
    }
    return PlayingCard{fields->id, *suit, *rank, fields->deck};
}

JsonResult<GameState> decodeGameState(const element& value, const JsonPath& path)
{
    return decodePositionJson<GameState>(value, path, decodePlayingCard);
}

JsonResult<PlayingCard> playingCardFromJson(std::string_view json)
{
    return parseWith<PlayingCard>(json, decodePlayingCard);
}

JsonResult<GameState> gameStateFromJson(std::string_view json) { return parseWith<GameState>(json, decodeGameState); }

} // namespace zelvaine

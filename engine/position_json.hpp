#pragma once

// The one writer and the one reader of a position's JSON and of its cards. The saved game uses
// them with the game's own cards; the shared file with a file's cards, whose suit and rank stay
// unchecked until the game is made from them. Included only where JSON is written or read, as
// it brings in the JSON parser.

#include "engine/state_json.hpp"
#include "engine/uuid.hpp"

#include <simdjson.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zelvaine {

// A card's four fields as the JSON has them. `suit` points into the parsed document.
struct CardFields {
    Uuid id;
    std::string_view suit;
    std::int64_t rank = 0;
    std::int64_t deck = 0;
};

// Keys in sorted order, which the shared file requires and the saved game does not mind.
void appendCardJson(std::string& out, const Uuid& id, std::string_view suit, std::int64_t rank, std::int64_t deck);
JsonResult<CardFields> decodeCardFields(const simdjson::dom::element& value, const JsonPath& path);

Unexpected<JsonError> jsonFailure(const JsonPath& path, std::string message);
Unexpected<JsonError> jsonWrongType(const JsonPath& path, const simdjson::dom::element& value, std::string_view expected);
JsonResult<simdjson::dom::element> requiredMember(const simdjson::dom::object& object, const JsonPath& path,
                                                  std::string_view key);
JsonResult<std::int64_t> decodeInteger(const simdjson::dom::element& value, const JsonPath& path);

// `Position` has `tableau` and `foundations` (vectors of vectors of cards), `hand` (a vector of
// optional cards) and `moveCount`; GameState and the shared file's position both do.
template <class Position, class AppendCard>
void appendPositionJson(std::string& out, const Position& position, AppendCard&& appendCard)
{
    auto appendPiles = [&](const auto& piles) {
        out += '[';
        for (std::size_t p = 0; p < piles.size(); ++p) {
            if (p > 0) out += ',';
            out += '[';
            for (std::size_t c = 0; c < piles[p].size(); ++c) {
                if (c > 0) out += ',';
                appendCard(out, piles[p][c]);
            }
            out += ']';
        }
        out += ']';
    };
    out += "{\"foundations\":";
    appendPiles(position.foundations);
    out += ",\"hand\":[";
    for (std::size_t s = 0; s < position.hand.size(); ++s) {
        if (s > 0) out += ',';
        if (position.hand[s]) {
            appendCard(out, *position.hand[s]);
        } else {
            out += "null";
        }
    }
    out += "],\"moveCount\":";
    out += std::to_string(position.moveCount);
    out += ",\"tableau\":";
    appendPiles(position.tableau);
    out += '}';
}

// Strict about the shape: every key required, every value of its type. What a card is made of
// is `decodeCard`'s to judge: `JsonResult<Card> decodeCard(const element&, const JsonPath&)`.
template <class Position, class DecodeCard>
JsonResult<Position> decodePositionJson(const simdjson::dom::element& value, const JsonPath& path, DecodeCard&& decodeCard)
{
    using Card = typename decltype(Position::tableau)::value_type::value_type;
    using simdjson::dom::element;

    auto decodePiles = [&](const element& pilesValue,
                           const JsonPath& pilesPath) -> JsonResult<decltype(Position::tableau)> {
        simdjson::dom::array piles;
        if (pilesValue.get_array().get(piles) != simdjson::SUCCESS) {
            return jsonWrongType(pilesPath, pilesValue, "an array of arrays");
        }
        decltype(Position::tableau) result;
        result.reserve(piles.size());
        std::size_t pileIndex = 0;
        for (element pileValue : piles) {
            const JsonPath pilePath(pilesPath, pileIndex++);
            simdjson::dom::array cards;
            if (pileValue.get_array().get(cards) != simdjson::SUCCESS) {
                return jsonWrongType(pilePath, pileValue, "an array of cards");
            }
            auto& pile = result.emplace_back();
            pile.reserve(cards.size());
            std::size_t cardIndex = 0;
            for (element cardValue : cards) {
                JsonResult<Card> card = decodeCard(cardValue, JsonPath(pilePath, cardIndex++));
                if (!card) return Unexpected{card.error()};
                pile.push_back(std::move(*card));
            }
        }
        return result;
    };

    simdjson::dom::object object;
    if (value.get_object().get(object) != simdjson::SUCCESS) return jsonWrongType(path, value, "a position object");

    Position position;
    for (auto [key, target] : {std::pair{std::string_view("tableau"), &position.tableau},
                               std::pair{std::string_view("foundations"), &position.foundations}}) {
        auto member = requiredMember(object, path, key);
        if (!member) return Unexpected{member.error()};
        auto piles = decodePiles(*member, JsonPath(path, key));
        if (!piles) return Unexpected{piles.error()};
        *target = std::move(*piles);
    }

    auto hand = requiredMember(object, path, "hand");
    if (!hand) return Unexpected{hand.error()};
    const JsonPath handPath(path, std::string_view("hand"));
    simdjson::dom::array slots;
    if (hand->get_array().get(slots) != simdjson::SUCCESS) return jsonWrongType(handPath, *hand, "an array");
    std::size_t slotIndex = 0;
    for (element slot : slots) {
        const JsonPath slotPath(handPath, slotIndex++);
        if (slot.is_null()) {
            position.hand.emplace_back();
            continue;
        }
        JsonResult<Card> card = decodeCard(slot, slotPath);
        if (!card) return Unexpected{card.error()};
        position.hand.emplace_back(std::move(*card));
    }

    auto moveCount = requiredMember(object, path, "moveCount");
    if (!moveCount) return Unexpected{moveCount.error()};
    auto count = decodeInteger(*moveCount, JsonPath(path, std::string_view("moveCount")));
    if (!count) return Unexpected{count.error()};
    position.moveCount = *count;
    return position;
}

} // namespace zelvaine

#include "store/game_document.hpp"

#include "engine/json_writer.hpp"
#include "engine/localizer.hpp"

#include <simdjson.h>

#include <fstream>
#include <set>
#include <unordered_map>
#include <unordered_set>

namespace zelvaine {
namespace {

using simdjson::dom::element;
using Failure = Unexpected<DocumentReadFailure>;

Failure readFailure(std::string detail) { return Failure{DocumentReadFailure{std::nullopt, std::move(detail)}}; }

// Strict reading of the file's own shapes; any failure is the generic kind.
class Reader {
public:
    std::optional<std::string> error;

    std::optional<element> member(const element& value, std::string_view key)
    {
        simdjson::dom::object object;
        element found;
        if (value.get_object().get(object) != simdjson::SUCCESS) return fail("expected an object");
        if (object.at_key(key).get(found) != simdjson::SUCCESS) return fail("missing key \"" + std::string(key) + "\"");
        return found;
    }

    std::optional<std::int64_t> integer(const element& value)
    {
        std::int64_t number = 0;
        if (value.get_int64().get(number) != simdjson::SUCCESS) return fail("expected an integer");
        return number;
    }

    std::optional<DocumentCard> card(const element& value)
    {
        const auto id = member(value, "id");
        const auto suit = member(value, "suit");
        const auto rank = member(value, "rank");
        const auto deck = member(value, "deck");
        if (!id || !suit || !rank || !deck) return std::nullopt;
        std::string_view idText;
        std::string_view suitText;
        if (id->get_string().get(idText) != simdjson::SUCCESS) return fail("card id is not a string");
        const auto uuid = Uuid::parse(idText);
        if (!uuid) return fail("card id is not a UUID");
        if (suit->get_string().get(suitText) != simdjson::SUCCESS) return fail("card suit is not a string");
        const auto rankNumber = integer(*rank);
        const auto deckNumber = integer(*deck);
        if (!rankNumber || !deckNumber) return std::nullopt;
        return DocumentCard{*uuid, std::string(suitText), *rankNumber, *deckNumber};
    }

    std::optional<std::vector<std::vector<DocumentCard>>> piles(const element& value)
    {
        simdjson::dom::array outer;
        if (value.get_array().get(outer) != simdjson::SUCCESS) return fail("expected an array of arrays");
        std::vector<std::vector<DocumentCard>> result;
        for (element pileValue : outer) {
            simdjson::dom::array inner;
            if (pileValue.get_array().get(inner) != simdjson::SUCCESS) return fail("expected an array of cards");
            auto& pile = result.emplace_back();
            for (element cardValue : inner) {
                auto c = card(cardValue);
                if (!c) return std::nullopt;
                pile.push_back(std::move(*c));
            }
        }
        return result;
    }

    std::optional<DocumentPosition> position(const element& value)
    {
        const auto tableau = member(value, "tableau");
        const auto foundations = member(value, "foundations");
        const auto hand = member(value, "hand");
        const auto moveCount = member(value, "moveCount");
        if (!tableau || !foundations || !hand || !moveCount) return std::nullopt;
        DocumentPosition result;
        auto columns = piles(*tableau);
        auto bases = piles(*foundations);
        if (!columns || !bases) return std::nullopt;
        result.tableau = std::move(*columns);
        result.foundations = std::move(*bases);
        simdjson::dom::array slots;
        if (hand->get_array().get(slots) != simdjson::SUCCESS) return fail("hand is not an array");
        for (element slot : slots) {
            if (slot.is_null()) {
                result.hand.emplace_back();
                continue;
            }
            auto c = card(slot);
            if (!c) return std::nullopt;
            result.hand.emplace_back(std::move(*c));
        }
        const auto count = integer(*moveCount);
        if (!count) return std::nullopt;
        result.moveCount = *count;
        return result;
    }

private:
    std::nullopt_t fail(std::string message)
    {
        if (!error) error = std::move(message);
        return std::nullopt;
    }
};

void appendCard(std::string& out, const DocumentCard& card)
{
    out += "{\"deck\":" + std::to_string(card.deck) + ",\"id\":\"" + card.id.text() + "\",\"rank\":" +
           std::to_string(card.rank) + ",\"suit\":";
    appendJsonString(out, card.suit);
    out += '}';
}

void appendPosition(std::string& out, const DocumentPosition& position)
{
    auto appendPiles = [&out](const std::vector<std::vector<DocumentCard>>& piles) {
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
    out += "],\"moveCount\":" + std::to_string(position.moveCount) + ",\"tableau\":";
    appendPiles(position.tableau);
    out += '}';
}

DocumentCard documentCard(const PlayingCard& card)
{
    return {card.id, std::string(rawValue(card.suit)), rawValue(card.rank), card.deck};
}

DocumentPosition documentPosition(const GameState& state)
{
    DocumentPosition position;
    auto convert = [](const std::vector<Pile>& piles) {
        std::vector<std::vector<DocumentCard>> result;
        for (const Pile& pile : piles) {
            auto& out = result.emplace_back();
            for (const PlayingCard& card : pile) out.push_back(documentCard(card));
        }
        return result;
    };
    position.tableau = convert(state.tableau);
    position.foundations = convert(state.foundations);
    for (const HandSlot& slot : state.hand) {
        position.hand.push_back(slot ? std::optional(documentCard(*slot)) : std::nullopt);
    }
    position.moveCount = state.moveCount;
    return position;
}

std::optional<PlayingCard> playingCard(const DocumentCard& card)
{
    const auto suit = suitFromRaw(card.suit);
    const auto rank = rankFromRaw(card.rank);
    if (!suit || !rank) return std::nullopt;
    return PlayingCard{card.id, *suit, *rank, card.deck};
}

std::optional<GameState> gameState(const DocumentPosition& position)
{
    GameState state;
    auto convert = [](const std::vector<std::vector<DocumentCard>>& piles, std::vector<Pile>& out) {
        for (const auto& pile : piles) {
            Pile& converted = out.emplace_back();
            for (const auto& card : pile) {
                auto c = playingCard(card);
                if (!c) return false;
                converted.push_back(*c);
            }
        }
        return true;
    };
    if (!convert(position.tableau, state.tableau) || !convert(position.foundations, state.foundations)) {
        return std::nullopt;
    }
    for (const auto& slot : position.hand) {
        if (!slot) {
            state.hand.emplace_back();
            continue;
        }
        auto c = playingCard(*slot);
        if (!c) return std::nullopt;
        state.hand.emplace_back(*c);
    }
    state.moveCount = position.moveCount;
    return state;
}

template <class F>
void forEachCard(const GameState& state, F&& visit)
{
    for (const Pile& column : state.tableau) for (const PlayingCard& c : column) visit(c);
    for (const Pile& pile : state.foundations) for (const PlayingCard& c : pile) visit(c);
    for (const HandSlot& slot : state.hand) if (slot) visit(*slot);
}

template <class F>
void forEachCard(GameState& state, F&& visit)
{
    for (Pile& column : state.tableau) for (PlayingCard& c : column) visit(c);
    for (Pile& pile : state.foundations) for (PlayingCard& c : pile) visit(c);
    for (HandSlot& slot : state.hand) if (slot) visit(*slot);
}

std::unordered_multiset<PlayingCard> cardSet(const GameState& state)
{
    std::unordered_multiset<PlayingCard> cards;
    forEachCard(state, [&](const PlayingCard& c) { cards.insert(c); });
    return cards;
}

bool isValidPair(const GameState& current, const GameState& restart)
{
    if (!isWellFormed(current) || !isWellFormed(restart)) return false;
    if (!hasSaneNumbers(current) || restart.moveCount != 0) return false;
    if (!std::ranges::all_of(restart.tableau, [](const Pile& c) { return c.size() == 10; })) return false;
    if (!std::ranges::all_of(restart.foundations, &Pile::empty)) return false;
    if (!std::ranges::all_of(restart.hand, [](const HandSlot& s) { return s.has_value(); })) return false;
    if (cardSet(current) != cardSet(restart)) return false;

    std::set<std::tuple<std::int64_t, Suit, Rank>> faces;
    bool decksValid = true;
    std::size_t count = 0;
    forEachCard(restart, [&](const PlayingCard& c) {
        ++count;
        decksValid = decksValid && (c.deck == 0 || c.deck == 1);
        faces.emplace(c.deck, c.suit, c.rank);
    });
    if (!decksValid || count != cardCount || faces.size() != cardCount) return false;

    return std::ranges::all_of(current.foundations, [](const Pile& pile) {
        for (std::size_t k = 0; k < pile.size(); ++k) {
            if (rawValue(pile[k].rank) != static_cast<int>(k) + 1 || pile[k].suit != pile[0].suit) return false;
        }
        return true;
    });
}

} // namespace

std::string sharedGameFailureText()
{
    return localized(QT_TRANSLATE_NOOP("Zelvaine", "Zelvaine could not open that game file."));
}

std::string ZelvaineGameDocumentError::description() const
{
    switch (kind_) {
    case Kind::unsupportedVersion:
        return formatText(
            localized(QT_TRANSLATE_NOOP("Zelvaine", "This game uses unsupported Zelvaine file format version %1.")),
            {std::to_string(version_)});
    case Kind::fileTooLarge:
        return localized(QT_TRANSLATE_NOOP("Zelvaine", "This Zelvaine game file is too large to open."));
    case Kind::invalidGame:
        return localized(QT_TRANSLATE_NOOP("Zelvaine", "This file does not contain a valid Zelvaine game."));
    }
    return {};
}

ZelvaineGameDocument ZelvaineGameDocument::fromStates(const GameState& current, const GameState& restart)
{
    return {1, documentPosition(current), documentPosition(restart)};
}

Expected<ZelvaineGameDocument, DocumentReadFailure> ZelvaineGameDocument::read(const std::filesystem::path& file)
{
    std::error_code error;
    const auto size = std::filesystem::file_size(file, error);
    if (error) return readFailure("cannot find the file's size: " + error.message());
    if (size > sharedGameSizeLimit) return Failure{DocumentReadFailure{ZelvaineGameDocumentError::fileTooLarge(), {}}};

    std::ifstream stream(file, std::ios::binary);
    if (!stream) return readFailure("cannot open the file");
    // Read one byte past the limit: the file may have grown since its size was asked.
    std::string bytes(static_cast<std::size_t>(sharedGameSizeLimit) + 1, '\0');
    stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (stream.bad()) return readFailure("cannot read the file");
    bytes.resize(static_cast<std::size_t>(stream.gcount()));
    if (bytes.size() > sharedGameSizeLimit) {
        return Failure{DocumentReadFailure{ZelvaineGameDocumentError::fileTooLarge(), {}}};
    }
    return decode(bytes);
}

Expected<ZelvaineGameDocument, DocumentReadFailure> ZelvaineGameDocument::decode(std::string_view bytes)
{
    if (bytes.size() > sharedGameSizeLimit) {
        return Failure{DocumentReadFailure{ZelvaineGameDocumentError::fileTooLarge(), {}}};
    }
    simdjson::dom::parser parser;
    element root;
    if (auto error = parser.parse(simdjson::padded_string(bytes)).get(root); error != simdjson::SUCCESS) {
        return readFailure(std::string("not valid JSON: ") + simdjson::error_message(error));
    }
    Reader reader;
    const auto version = reader.member(root, "formatVersion");
    const auto current = reader.member(root, "currentPosition");
    const auto restart = reader.member(root, "restartPosition");
    if (!version || !current || !restart) return readFailure(*reader.error);
    ZelvaineGameDocument document;
    const auto versionNumber = reader.integer(*version);
    auto currentPosition = reader.position(*current);
    auto restartPosition = currentPosition ? reader.position(*restart) : std::nullopt;
    if (!versionNumber || !currentPosition || !restartPosition) return readFailure(*reader.error);
    document.formatVersion = *versionNumber;
    document.currentPosition = std::move(*currentPosition);
    document.restartPosition = std::move(*restartPosition);
    return document;
}

std::string ZelvaineGameDocument::encode() const
{
    std::string out = "{\"currentPosition\":";
    appendPosition(out, currentPosition);
    out += ",\"formatVersion\":" + std::to_string(formatVersion) + ",\"restartPosition\":";
    appendPosition(out, restartPosition);
    out += '}';
    return out;
}

Expected<ZelvaineGameDocument::States, ZelvaineGameDocumentError> ZelvaineGameDocument::makeStates() const
{
    if (formatVersion != 1) return Unexpected{ZelvaineGameDocumentError::unsupportedVersion(formatVersion)};
    auto current = gameState(currentPosition);
    auto restart = current ? gameState(restartPosition) : std::nullopt;
    if (!current || !restart || !isValidPair(*current, *restart)) {
        return Unexpected{ZelvaineGameDocumentError::invalidGame()};
    }

    // New identities, one per card of the deal, shared by both positions.
    std::unordered_map<Uuid, Uuid> renamed;
    forEachCard(*restart, [&](PlayingCard& card) {
        auto [entry, added] = renamed.try_emplace(card.id, Uuid::random());
        card.id = entry->second;
    });
    forEachCard(*current, [&](PlayingCard& card) {
        auto [entry, added] = renamed.try_emplace(card.id, Uuid::random());
        card.id = entry->second;
    });
    return States{std::move(*current), std::move(*restart)};
}

} // namespace zelvaine

#include "store/game_document.hpp"

#include "engine/localizer.hpp"
#include "engine/position_json.hpp"

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

// A file's card is taken as it stands; its suit and rank are judged when the game is made.
JsonResult<DocumentCard> decodeDocumentCard(const element& value, const JsonPath& path)
{
    auto fields = decodeCardFields(value, path);
    if (!fields) return Unexpected{fields.error()};
    return DocumentCard{fields->id, std::string(fields->suit), fields->rank, fields->deck};
}

void appendDocumentCard(std::string& out, const DocumentCard& card)
{
    appendCardJson(out, card.id, card.suit, card.rank, card.deck);
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
    for (const Pile& column : state.tableau)
        for (const PlayingCard& c : column) visit(c);
    for (const Pile& pile : state.foundations)
        for (const PlayingCard& c : pile) visit(c);
    for (const HandSlot& slot : state.hand)
        if (slot) visit(*slot);
}

template <class F>
void forEachCard(GameState& state, F&& visit)
{
    for (Pile& column : state.tableau)
        for (PlayingCard& c : column) visit(c);
    for (Pile& pile : state.foundations)
        for (PlayingCard& c : pile) visit(c);
    for (HandSlot& slot : state.hand)
        if (slot) visit(*slot);
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

// Strict about the shape; what the values mean is judged by makeStates().
JsonResult<ZelvaineGameDocument> decodeDocument(const element& root)
{
    simdjson::dom::object object;
    if (root.get_object().get(object) != simdjson::SUCCESS) return jsonWrongType(JsonPath(), root, "an object");
    ZelvaineGameDocument document;
    auto version = requiredMember(object, JsonPath(), "formatVersion");
    if (!version) return Unexpected{version.error()};
    auto versionNumber = decodeInteger(*version, JsonPath("formatVersion"));
    if (!versionNumber) return Unexpected{versionNumber.error()};
    document.formatVersion = *versionNumber;
    for (auto [key, target] : {std::pair{std::string_view("currentPosition"), &document.currentPosition},
                               std::pair{std::string_view("restartPosition"), &document.restartPosition}}) {
        auto member = requiredMember(object, JsonPath(), key);
        if (!member) return Unexpected{member.error()};
        auto position = decodePositionJson<DocumentPosition>(*member, JsonPath(key), decodeDocumentCard);
        if (!position) return Unexpected{position.error()};
        *target = std::move(*position);
    }
    return document;
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
        return formatText(localized(QT_TRANSLATE_NOOP("Zelvaine",
                                                      "This game uses unsupported Zelvaine file format version %1.")),
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
    auto document = decodeDocument(root);
    if (!document) return readFailure(document.error().describe());
    return std::move(*document);
}

std::string ZelvaineGameDocument::encode() const
{
    std::string out = "{\"currentPosition\":";
    appendPositionJson(out, currentPosition, appendDocumentCard);
    out += ",\"formatVersion\":" + std::to_string(formatVersion) + ",\"restartPosition\":";
    appendPositionJson(out, restartPosition, appendDocumentCard);
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

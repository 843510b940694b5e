#pragma once

#include "engine/expected.hpp"
#include "engine/game_state.hpp"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zelvaine {

inline constexpr std::uintmax_t sharedGameSizeLimit = 1'000'000;
inline constexpr std::string_view sharedGameExtension = "zelvaine";
inline constexpr std::string_view sharedGameContentType = "nl.orvent.zelvaine.game";
inline constexpr std::string_view sharedGameDefaultFileName = "Zelvaine Game.zelvaine";

// A card as a file carries it: suit and rank unchecked until the game is made from it.
struct DocumentCard {
    Uuid id;
    std::string suit;
    std::int64_t rank = 0;
    std::int64_t deck = 0;
    friend bool operator==(const DocumentCard&, const DocumentCard&) = default;
};

struct DocumentPosition {
    std::vector<std::vector<DocumentCard>> tableau;
    std::vector<std::vector<DocumentCard>> foundations;
    std::vector<std::optional<DocumentCard>> hand;
    std::int64_t moveCount = 0;
    friend bool operator==(const DocumentPosition&, const DocumentPosition&) = default;
};

class ZelvaineGameDocumentError {
public:
    enum class Kind : std::uint8_t { unsupportedVersion, fileTooLarge, invalidGame };

    static ZelvaineGameDocumentError unsupportedVersion(std::int64_t version)
    {
        return {Kind::unsupportedVersion, version};
    }
    static ZelvaineGameDocumentError fileTooLarge() { return {Kind::fileTooLarge, 0}; }
    static ZelvaineGameDocumentError invalidGame() { return {Kind::invalidGame, 0}; }

    Kind kind() const { return kind_; }
    std::int64_t version() const { return version_; }
    // The sentence shown to the player, translated.
    std::string description() const;

    friend bool operator==(const ZelvaineGameDocumentError&, const ZelvaineGameDocumentError&) = default;

private:
    ZelvaineGameDocumentError(Kind kind, std::int64_t version) : kind_(kind), version_(version) {}
    Kind kind_;
    std::int64_t version_;
};

// Why a file could not be read: one of the document's own errors, which the player is told,
// or a failure of the file or its JSON, for which only the generic notice is shown.
struct DocumentReadFailure {
    std::optional<ZelvaineGameDocumentError> documentError;
    std::string detail;

    std::optional<std::string> playerDescription() const
    {
        if (documentError) return documentError->description();
        return std::nullopt;
    }
};

// What the player reads when a file fails for a reason the document cannot name.
std::string sharedGameFailureText();

// A game as it is shared between players: where it stands and where its deal began.
struct ZelvaineGameDocument {
    std::int64_t formatVersion = 1;
    DocumentPosition currentPosition;
    DocumentPosition restartPosition;

    static ZelvaineGameDocument fromStates(const GameState& current, const GameState& restart);

    // Size limit first, then strict JSON reading; nothing about the game is judged yet.
    static Expected<ZelvaineGameDocument, DocumentReadFailure> read(const std::filesystem::path& file);
    static Expected<ZelvaineGameDocument, DocumentReadFailure> decode(std::string_view bytes);

    // Compact JSON with every object's keys sorted.
    std::string encode() const;

    struct States {
        GameState current;
        GameState initial;
    };
    // Checks the version and the game, then gives every card a new identity.
    Expected<States, ZelvaineGameDocumentError> makeStates() const;

    friend bool operator==(const ZelvaineGameDocument&, const ZelvaineGameDocument&) = default;
};

} // namespace zelvaine

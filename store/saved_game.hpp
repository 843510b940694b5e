#pragma once

#include "engine/game_state.hpp"
#include "engine/state_json.hpp"
#include "store/defaults_store.hpp"
#include "store/game_challenge_record.hpp"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zelvaine {

inline constexpr std::string_view savedGameKey = "zelvaine.saved-game.v1";
// Raised by every save: a game that finds it higher than it left it knows another process saved.
inline constexpr std::string_view savedGameGenerationKey = "zelvaine.saved-game.generation";

// The whole game as it is kept between runs.
struct SavedGame {
    GameState currentState;
    GameState initialState;
    std::vector<GameState> history;
    std::vector<GameState> redoHistory;
    GameChallengeRecord challenge;

    friend bool operator==(const SavedGame&, const SavedGame&) = default;
};

std::string encodeSavedGame(const SavedGame& game);

using EncodedPosition = std::shared_ptr<const std::string>;
EncodedPosition encodePosition(const GameState& state);

// The same encoding as runs of pieces, from positions that are already encoded. Positions never
// change once recorded, so the store keeps their JSON and a save only lists it again; the two
// histories are runs of their own, which a move or an undo changes only at their ends.
DataRuns savedGameRuns(const EncodedPosition& currentState, const EncodedPosition& initialState,
                       std::span<const EncodedPosition> history, std::span<const EncodedPosition> redoHistory,
                       const GameChallengeRecord& challenge);

// The encoded positions inside runs that savedGameRuns made for a game with histories of these
// lengths; nothing when the runs have another shape. Lets a restored game go on with the very
// pieces the store holds, rather than encode every position again.
struct SavedGamePositions {
    EncodedPosition currentState;
    EncodedPosition initialState;
    std::vector<EncodedPosition> history;
    std::vector<EncodedPosition> redoHistory;
};
std::optional<SavedGamePositions> savedGamePositions(const DataRuns& runs, std::size_t historySize, std::size_t redoSize);

// Reading without judging: missing histories read as empty, a missing challenge as all false.
JsonResult<SavedGame> decodeSavedGame(std::string_view json);

enum class RestoredFrom { savedGame, position, none };
struct RestoredGame {
    RestoredFrom from = RestoredFrom::none;
    std::optional<SavedGame> game;
    // Nothing restored because the game was over, not because the value was damaged.
    bool finished = false;
};

// What a store makes of a stored value at start: the saved game when every position in it is
// well formed and the game is not already won; else an older bare position under the same
// rules (with empty histories); else nothing, and a new deal follows.
RestoredGame restoreSavedGame(std::string_view blob);

} // namespace zelvaine

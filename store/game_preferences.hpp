#pragma once

#include "store/defaults_store.hpp"
#include "store/observable.hpp"
#include "store/sound_cues.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace zelvaine {

enum class LandscapeHandSide : std::uint8_t { left, right };
std::string_view rawValue(LandscapeHandSide side);

enum class GamePreferencesProperty : std::uint8_t {
    showsHint,
    showsUndo,
    landscapeHandSide,
    showsMoveMessages,
    soundsEnabled,
    highScore,
    gamesPlayed,
    gamesWon,
    gamesLost,
    gameCenterEligibleWins,
    gameCenterBestMoveCount,
    showSettings,
    showsWinnability,
    winnableDealsOnly
};

namespace preferenceKeys {
inline constexpr std::string_view showsHint = "zelvaine.preferences.shows-hint";
inline constexpr std::string_view showsUndo = "zelvaine.preferences.shows-undo";
inline constexpr std::string_view landscapeHandSide = "zelvaine.preferences.landscape-hand-side";
inline constexpr std::string_view showsMoveMessages = "zelvaine.preferences.shows-move-messages";
inline constexpr std::string_view soundsEnabled = "zelvaine.preferences.sounds-enabled";
inline constexpr std::string_view showsWinnability = "zelvaine.preferences.shows-winnability";
inline constexpr std::string_view winnableDealsOnly = "zelvaine.preferences.winnable-deals-only";
inline constexpr std::string_view highScore = "zelvaine.statistics.high-score";
inline constexpr std::string_view gamesPlayed = "zelvaine.statistics.games-played";
inline constexpr std::string_view gamesWon = "zelvaine.statistics.games-won";
inline constexpr std::string_view gamesLost = "zelvaine.statistics.games-lost";
inline constexpr std::string_view eligibleWins = "zelvaine.game-center.eligible-wins";
inline constexpr std::string_view bestMoveCount = "zelvaine.game-center.best-move-count";
inline constexpr std::string_view activeGame = "zelvaine.statistics.active-game";
inline constexpr std::string_view lastCompletedGame = "zelvaine.statistics.last-completed-game";
} // namespace preferenceKeys

// The player's five preferences and the statistics, each mirrored under its own key.
class GamePreferences : public Observable<GamePreferencesProperty> {
public:
    GamePreferences(DefaultsStore& defaults, SoundCues& sound);

    bool showsHint() const { return showsHint_; }
    bool showsUndo() const { return showsUndo_; }
    LandscapeHandSide landscapeHandSide() const { return landscapeHandSide_; }
    bool showsMoveMessages() const { return showsMoveMessages_; }
    bool soundsEnabled() const { return soundsEnabled_; }
    // The solver's: a live verdict in the toolbar, and only deals it has proven winnable.
    bool showsWinnability() const { return showsWinnability_; }
    bool winnableDealsOnly() const { return winnableDealsOnly_; }
    std::optional<std::int64_t> highScore() const { return highScore_; }
    std::int64_t gamesPlayed() const { return gamesPlayed_; }
    std::int64_t gamesWon() const { return gamesWon_; }
    std::int64_t gamesLost() const { return gamesLost_; }
    std::int64_t gameCenterEligibleWins() const { return gameCenterEligibleWins_; }
    std::optional<std::int64_t> gameCenterBestMoveCount() const { return gameCenterBestMoveCount_; }
    bool showSettings() const { return showSettings_; }
    const std::optional<std::string>& activeGameIdentifier() const { return activeGameIdentifier_; }
    const std::optional<std::string>& lastCompletedGameIdentifier() const { return lastCompletedGameIdentifier_; }
    bool recordsStatistics() const { return true; }

    void setShowsHint(bool value);
    void setShowsUndo(bool value);
    void setLandscapeHandSide(LandscapeHandSide value);
    void setShowsMoveMessages(bool value);
    void setSoundsEnabled(bool value);
    void setShowsWinnability(bool value);
    void setWinnableDealsOnly(bool value);
    void setShowSettings(bool value);

    // A deal seen for the first time counts as played, and the unfinished one before it as lost.
    void recordGameStarted(const std::string& identifier);
    // True when the win was counted: only for the active deal, once.
    bool recordGameWon(std::int64_t moveCount, const std::string& identifier, bool eligible);

private:
    void storeCount(std::int64_t& field, std::int64_t value, GamePreferencesProperty property, std::string_view key);

    DefaultsStore& defaults_;
    SoundCues& sound_;

    bool showsHint_;
    bool showsUndo_;
    LandscapeHandSide landscapeHandSide_;
    bool showsMoveMessages_;
    bool soundsEnabled_;
    bool showsWinnability_;
    bool winnableDealsOnly_;
    std::optional<std::int64_t> highScore_;
    std::int64_t gamesPlayed_;
    std::int64_t gamesWon_;
    std::int64_t gamesLost_;
    std::int64_t gameCenterEligibleWins_;
    std::optional<std::int64_t> gameCenterBestMoveCount_;
    bool showSettings_ = false;
    std::optional<std::string> activeGameIdentifier_;
    std::optional<std::string> lastCompletedGameIdentifier_;
};

// Inert: no game service exists here; the board shows nothing of it while both stay false.
struct GameCenterService {
    bool isAuthenticated = false;
    bool showsDashboard = false;
};

} // namespace zelvaine

#include "store/game_preferences.hpp"

#include <limits>

namespace zelvaine {

namespace keys = preferenceKeys;

namespace {

// The counts come from a file the player can edit; a stored maximum must not overflow on the
// next game.
std::int64_t oneMore(std::int64_t count)
{
    return count < std::numeric_limits<std::int64_t>::max() ? count + 1 : count;
}

} // namespace

std::string_view rawValue(LandscapeHandSide side) { return side == LandscapeHandSide::right ? "right" : "left"; }

GamePreferences::GamePreferences(DefaultsStore& defaults, SoundCues& sound)
    : defaults_(defaults),
      sound_(sound),
      showsHint_(defaults.boolean(keys::showsHint).value_or(true)),
      showsUndo_(defaults.boolean(keys::showsUndo).value_or(true)),
      landscapeHandSide_(defaults.text(keys::landscapeHandSide) == "right" ? LandscapeHandSide::right
                                                                           : LandscapeHandSide::left),
      showsMoveMessages_(defaults.boolean(keys::showsMoveMessages).value_or(true)),
      soundsEnabled_(defaults.boolean(keys::soundsEnabled).value_or(true)),
      showsWinnability_(defaults.boolean(keys::showsWinnability).value_or(false)),
      winnableDealsOnly_(defaults.boolean(keys::winnableDealsOnly).value_or(false)),
      highScore_(defaults.integer(keys::highScore)),
      gamesPlayed_(defaults.integer(keys::gamesPlayed).value_or(0)),
      gamesWon_(defaults.integer(keys::gamesWon).value_or(0)),
      gamesLost_(defaults.integer(keys::gamesLost).value_or(0)),
      // Older statistics carry forward when these keys were never written.
      gameCenterEligibleWins_(defaults.integer(keys::eligibleWins).value_or(gamesWon_)),
      gameCenterBestMoveCount_(defaults.integer(keys::bestMoveCount) ? defaults.integer(keys::bestMoveCount)
                                                                     : highScore_),
      activeGameIdentifier_(defaults.text(keys::activeGame)),
      lastCompletedGameIdentifier_(defaults.text(keys::lastCompletedGame))
{
    sound_.setEnabled(soundsEnabled_);
}

void GamePreferences::setShowsHint(bool value)
{
    assign(showsHint_, value, GamePreferencesProperty::showsHint);
    defaults_.set(keys::showsHint, value);
}

void GamePreferences::setShowsUndo(bool value)
{
    assign(showsUndo_, value, GamePreferencesProperty::showsUndo);
    defaults_.set(keys::showsUndo, value);
}

void GamePreferences::setLandscapeHandSide(LandscapeHandSide value)
{
    assign(landscapeHandSide_, value, GamePreferencesProperty::landscapeHandSide);
    defaults_.set(keys::landscapeHandSide, std::string(rawValue(value)));
}

void GamePreferences::setShowsMoveMessages(bool value)
{
    assign(showsMoveMessages_, value, GamePreferencesProperty::showsMoveMessages);
    defaults_.set(keys::showsMoveMessages, value);
}

void GamePreferences::setSoundsEnabled(bool value)
{
    assign(soundsEnabled_, value, GamePreferencesProperty::soundsEnabled);
    defaults_.set(keys::soundsEnabled, value);
    sound_.setEnabled(value);
}

void GamePreferences::setShowsWinnability(bool value)
{
    assign(showsWinnability_, value, GamePreferencesProperty::showsWinnability);
    defaults_.set(keys::showsWinnability, value);
}

void GamePreferences::setWinnableDealsOnly(bool value)
{
    assign(winnableDealsOnly_, value, GamePreferencesProperty::winnableDealsOnly);
    defaults_.set(keys::winnableDealsOnly, value);
}

void GamePreferences::setShowSettings(bool value)
{
    assign(showSettings_, value, GamePreferencesProperty::showSettings);
}

void GamePreferences::storeCount(std::int64_t& field, std::int64_t value, GamePreferencesProperty property,
                                 std::string_view key)
{
    assign(field, value, property);
    defaults_.set(key, value);
}

void GamePreferences::recordGameStarted(const std::string& identifier)
{
    if (lastCompletedGameIdentifier_ == identifier || activeGameIdentifier_ == identifier) return;
    if (activeGameIdentifier_)
        storeCount(gamesLost_, oneMore(gamesLost_), GamePreferencesProperty::gamesLost, keys::gamesLost);
    storeCount(gamesPlayed_, oneMore(gamesPlayed_), GamePreferencesProperty::gamesPlayed, keys::gamesPlayed);
    activeGameIdentifier_ = identifier;
    defaults_.set(keys::activeGame, identifier);
}

bool GamePreferences::recordGameWon(std::int64_t moveCount, const std::string& identifier, bool eligible)
{
    if (moveCount < 0 || activeGameIdentifier_ != identifier) return false;
    assign(gamesWon_, oneMore(gamesWon_), GamePreferencesProperty::gamesWon);
    activeGameIdentifier_.reset();
    lastCompletedGameIdentifier_ = identifier;
    defaults_.set(keys::gamesWon, gamesWon_);
    defaults_.remove(keys::activeGame);
    defaults_.set(keys::lastCompletedGame, identifier);
    if (!highScore_ || *highScore_ > moveCount) {
        assign(highScore_, moveCount, GamePreferencesProperty::highScore);
        defaults_.set(keys::highScore, moveCount);
    }
    if (eligible) {
        storeCount(gameCenterEligibleWins_, oneMore(gameCenterEligibleWins_),
                   GamePreferencesProperty::gameCenterEligibleWins, keys::eligibleWins);
        if (!gameCenterBestMoveCount_ || *gameCenterBestMoveCount_ > moveCount) {
            assign(gameCenterBestMoveCount_, moveCount, GamePreferencesProperty::gameCenterBestMoveCount);
            defaults_.set(keys::bestMoveCount, moveCount);
        }
    }
    return true;
}

} // namespace zelvaine

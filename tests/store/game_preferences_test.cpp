#include "store/game_preferences.hpp"
#include "tests/store/store_fakes.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace zelvaine {
namespace {

namespace keys = preferenceKeys;
using P = GamePreferencesProperty;

TEST(GamePreferences, ValuesOfTheWrongTypeCountAsAbsent)
{
    InMemoryDefaultsStore defaults;
    defaults.set(keys::showsHint, std::string("false"));
    defaults.set(keys::showsUndo, std::int64_t{0});
    defaults.set(keys::soundsEnabled, false);
    defaults.set(keys::landscapeHandSide, std::string("Right"));
    defaults.set(keys::gamesPlayed, true);
    defaults.set(keys::highScore, std::string("120"));
    testing::RecordingSoundCues sound;
    const GamePreferences preferences(defaults, sound);
    EXPECT_TRUE(preferences.showsHint());
    EXPECT_TRUE(preferences.showsUndo());
    EXPECT_FALSE(preferences.soundsEnabled());
    EXPECT_EQ(preferences.landscapeHandSide(), LandscapeHandSide::left);
    EXPECT_EQ(preferences.gamesPlayed(), 0);
    EXPECT_FALSE(preferences.highScore());
    EXPECT_EQ(sound.cues, std::vector<std::string>{"enabled:0"});

    defaults.set(keys::landscapeHandSide, std::string("right"));
    EXPECT_EQ(GamePreferences(defaults, sound).landscapeHandSide(), LandscapeHandSide::right);
}

TEST(GamePreferences, OlderStatisticsCarryIntoTheEligibleRecords)
{
    InMemoryDefaultsStore defaults;
    defaults.set(keys::gamesWon, std::int64_t{7});
    defaults.set(keys::highScore, std::int64_t{150});
    testing::RecordingSoundCues sound;
    const GamePreferences preferences(defaults, sound);
    EXPECT_EQ(preferences.gameCenterEligibleWins(), 7);
    EXPECT_EQ(preferences.gameCenterBestMoveCount(), 150);
    EXPECT_FALSE(defaults.value(keys::eligibleWins)); // nothing written back
}

TEST(GamePreferences, SettingAPreferenceStoresItAndTellsTheSoundPlayer)
{
    InMemoryDefaultsStore defaults;
    testing::RecordingSoundCues sound;
    GamePreferences preferences(defaults, sound);
    std::vector<P> seen;
    preferences.observe([&](P p) { seen.push_back(p); });
    preferences.setSoundsEnabled(false);
    preferences.setLandscapeHandSide(LandscapeHandSide::right);
    preferences.setShowsMoveMessages(false);
    preferences.setShowsHint(false);
    preferences.setShowsUndo(false);
    preferences.setShowSettings(true);
    preferences.setShowsWinnability(true);
    preferences.setWinnableDealsOnly(true);
    EXPECT_EQ(seen, (std::vector{P::soundsEnabled, P::landscapeHandSide, P::showsMoveMessages, P::showsHint,
                                 P::showsUndo, P::showSettings, P::showsWinnability, P::winnableDealsOnly}));
    EXPECT_EQ(defaults.boolean("zelvaine.preferences.shows-winnability"), true);
    EXPECT_EQ(defaults.boolean("zelvaine.preferences.winnable-deals-only"), true);
    EXPECT_EQ(sound.cues.back(), "enabled:0");
    EXPECT_EQ(defaults.boolean(keys::soundsEnabled), false);
    EXPECT_EQ(defaults.text(keys::landscapeHandSide), "right");

    const GamePreferences reread(defaults, sound);
    EXPECT_FALSE(reread.soundsEnabled());
    EXPECT_FALSE(reread.showsMoveMessages());
    EXPECT_FALSE(reread.showsHint());
    EXPECT_FALSE(reread.showsUndo());
    EXPECT_EQ(reread.landscapeHandSide(), LandscapeHandSide::right);
    EXPECT_FALSE(reread.showSettings());
    EXPECT_TRUE(reread.showsWinnability());
    EXPECT_TRUE(reread.winnableDealsOnly());
}

class Statistics : public ::testing::Test {
protected:
    GamePreferences preferences() { return GamePreferences(defaults, sound); }
    InMemoryDefaultsStore defaults;
    testing::RecordingSoundCues sound;
};

TEST_F(Statistics, PlayedLostAndWonFollowTheDeals)
{
    GamePreferences p = preferences();
    p.recordGameStarted("A");
    EXPECT_EQ(p.gamesPlayed(), 1);
    EXPECT_EQ(p.gamesLost(), 0);
    p.recordGameStarted("A"); // same deal, seen again
    EXPECT_EQ(p.gamesPlayed(), 1);

    p.recordGameStarted("B"); // A abandoned
    EXPECT_EQ(p.gamesPlayed(), 2);
    EXPECT_EQ(p.gamesLost(), 1);

    EXPECT_FALSE(p.recordGameWon(140, "A", true)); // not the active deal
    EXPECT_TRUE(p.recordGameWon(140, "B", true));
    EXPECT_FALSE(p.recordGameWon(140, "B", true)); // counted once
    EXPECT_EQ(p.gamesWon(), 1);
    EXPECT_EQ(p.highScore(), 140);
    EXPECT_FALSE(defaults.value(keys::activeGame));
    EXPECT_EQ(defaults.text(keys::lastCompletedGame), "B");

    p.recordGameStarted("B"); // the won deal observed again
    EXPECT_EQ(p.gamesPlayed(), 2);
    p.recordGameStarted("C"); // right after a win: nothing lost
    EXPECT_EQ(p.gamesPlayed(), 3);
    EXPECT_EQ(p.gamesLost(), 1);

    // A restart of the program continues the deal.
    GamePreferences later = preferences();
    later.recordGameStarted("C");
    EXPECT_EQ(later.gamesPlayed(), 3);
    EXPECT_EQ(later.gamesLost(), 1);
    EXPECT_EQ(defaults.integer(keys::gamesPlayed), 3);
    EXPECT_EQ(defaults.integer(keys::gamesLost), 1);
}

TEST_F(Statistics, StoredMaximumCountsDoNotWrapAround)
{
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    defaults.set(keys::gamesPlayed, most);
    defaults.set(keys::gamesLost, most);
    defaults.set(keys::gamesWon, most);
    defaults.set(keys::eligibleWins, most);
    GamePreferences p = preferences();
    p.recordGameStarted("A");
    p.recordGameStarted("B");
    ASSERT_TRUE(p.recordGameWon(200, "B", true));
    EXPECT_EQ(p.gamesPlayed(), most);
    EXPECT_EQ(p.gamesLost(), most);
    EXPECT_EQ(p.gamesWon(), most);
    EXPECT_EQ(p.gameCenterEligibleWins(), most);
}

TEST_F(Statistics, HighScoresImproveOnlyWithFewerMoves)
{
    GamePreferences p = preferences();
    p.recordGameStarted("A");
    ASSERT_TRUE(p.recordGameWon(130, "A", true));
    p.recordGameStarted("B");
    std::vector<P> seen;
    p.observe([&](P property) { seen.push_back(property); });
    ASSERT_TRUE(p.recordGameWon(130, "B", true));
    EXPECT_EQ(seen, (std::vector{P::gamesWon, P::gameCenterEligibleWins}));
    p.recordGameStarted("C");
    ASSERT_TRUE(p.recordGameWon(129, "C", true));
    EXPECT_EQ(p.highScore(), 129);
    EXPECT_EQ(p.gameCenterBestMoveCount(), 129);
    EXPECT_EQ(defaults.integer(keys::highScore), 129);
    EXPECT_EQ(defaults.integer(keys::bestMoveCount), 129);

    p.recordGameStarted("D");
    EXPECT_FALSE(p.recordGameWon(-1, "D", true));
    EXPECT_EQ(p.gamesWon(), 3);
}

TEST_F(Statistics, ImportedWinsAreNotEligible)
{
    GamePreferences p = preferences();
    p.recordGameStarted("shared");
    ASSERT_TRUE(p.recordGameWon(120, "shared", false));
    EXPECT_EQ(p.gamesWon(), 1);
    EXPECT_EQ(p.highScore(), 120);
    EXPECT_EQ(p.gameCenterEligibleWins(), 0);
    EXPECT_FALSE(p.gameCenterBestMoveCount());
    EXPECT_FALSE(defaults.value(keys::eligibleWins));
}

} // namespace
} // namespace zelvaine

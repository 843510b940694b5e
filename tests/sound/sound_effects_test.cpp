#include "sound/sound_effects.hpp"
#include "sound/sound_effects_cues.hpp"

#include "store/game_preferences.hpp"
#include "store/game_store.hpp"
#include "store/in_memory_defaults_store.hpp"
#include "tests/sound/fake_players.hpp"
#include "tests/support/scratch_folder.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <thread>

namespace zelvaine {

// Reaches the queue-only steps directly, to prove they refuse to run elsewhere.
struct SoundEffectsTestAccess {
    static void preloadPlayers(SoundEffects& effects) { effects.preloadPlayers(); }
    static void playOnQueue(SoundEffects& effects, const std::string& name, float volume)
    {
        effects.playOnQueue(name, volume);
    }
};

namespace {

using namespace std::chrono_literals;
using testing::FakePlayers;
using testing::PlayerEvent;
using Action = PlayerEvent::Action;

const std::vector<std::string> allCues{"card-shuffle", "card-fan-1",   "card-shove-1", "card-place-1",
                                       "card-place-2", "card-place-3", "card-place-4"};

// Longer than the fan's delay, with room for a busy machine.
constexpr auto kPastFanDelay = 900ms;

class SoundEffectsTest : public ::testing::Test {
protected:
    SoundEffectsTest()
    {
        std::filesystem::create_directories(folder_.path() / "SoundEffects");
        for (const auto& cue : allCues) std::ofstream(soundFile(cue)) << "fake";
    }

    std::filesystem::path soundFile(const std::string& cue) const
    {
        return folder_.path() / "SoundEffects" / (cue + ".caf");
    }

    // Creates the sound player and waits until its pools are filled.
    SoundEffects& start(std::set<std::string> unplayableCues = {},
                        std::chrono::milliseconds restAfter = SoundEffects::outputRestsAfter)
    {
        players_ = std::make_shared<FakePlayers>(std::move(unplayableCues));
        effects_ = SoundEffects::create(defaults_, players_, folder_.path(), restAfter);
        effects_->waitUntilIdle();
        return *effects_;
    }

    std::vector<int> playersUsed(const std::string& cue) const
    {
        std::vector<int> used;
        for (const auto& event : players_->plays(cue)) used.push_back(event.player);
        return used;
    }

    testing::ScratchFolder folder_;
    InMemoryDefaultsStore defaults_;
    std::shared_ptr<FakePlayers> players_;
    std::shared_ptr<SoundEffects> effects_;
};

TEST_F(SoundEffectsTest, PreloadPreparesThreePlayersPerPlacementCueAndOneForEachOther)
{
    start();
    const std::map<std::string, int> expected{{"card-shuffle", 1}, {"card-fan-1", 1},   {"card-shove-1", 1},
                                              {"card-place-1", 3}, {"card-place-2", 3}, {"card-place-3", 3},
                                              {"card-place-4", 3}};
    EXPECT_EQ(players_->openedPerCue(), expected);
    const auto events = players_->events();
    EXPECT_EQ(events.size(), 15u);
    for (const auto& event : events) EXPECT_EQ(event.action, Action::prepare) << event.cue;
}

TEST_F(SoundEffectsTest, MissingUnplayableAndUnknownCuesAreSilentAndSpareTheOthers)
{
    std::filesystem::remove(soundFile("card-shove-1"));
    auto& effects = start({"card-place-3"});
    for (const char* name : {"card-shove-1", "card-place-3", "", "card-flip", "CARD-SHUFFLE", "card-shuffle.caf"})
        effects.play(name, 1);
    effects.play("card-place-1", 0.42f);
    effects.waitUntilIdle();

    EXPECT_FALSE(players_->openedPerCue().contains("card-shove-1"));
    const auto plays = players_->plays();
    ASSERT_EQ(plays.size(), 1u);
    EXPECT_EQ(plays[0].cue, "card-place-1");
}

TEST_F(SoundEffectsTest, EachCueRestartsItsPlayersInTurn)
{
    auto& effects = start();
    for (int i = 0; i < 4; ++i) effects.play("card-place-2", 0.42f);
    effects.play("card-shove-1", 0.32f);
    effects.play("card-shove-1", 0.25f);
    effects.waitUntilIdle();

    // The fourth sound takes over the first player, the oldest one still sounding.
    EXPECT_EQ(playersUsed("card-place-2"), (std::vector<int>{0, 1, 2, 0}));
    EXPECT_EQ(playersUsed("card-shove-1"), (std::vector<int>{0, 0}));

    // Every start rewinds and sets the requested level first.
    std::vector<std::pair<Action, double>> shove;
    for (const auto& event : players_->events())
        if (event.cue == "card-shove-1" && event.action != Action::prepare)
            shove.emplace_back(event.action, event.value);
    const std::vector<std::pair<Action, double>> expected{
        {Action::seek, 0}, {Action::volume, 0.32f}, {Action::play, 0},
        {Action::seek, 0}, {Action::volume, 0.25f}, {Action::play, 0},
    };
    EXPECT_EQ(shove, expected);
}

TEST_F(SoundEffectsTest, PlacementPicksAmongAllFourCuesAtTheirLevel)
{
    auto& effects = start();
    // The chance that 100 fair draws miss one of four cues is below 1e-12.
    for (int i = 0; i < 100; ++i) effects.playPlacement();
    effects.waitUntilIdle();

    std::set<std::string> cues;
    std::set<double> volumes;
    for (const auto& event : players_->events()) {
        if (event.action == Action::play) cues.insert(event.cue);
        if (event.action == Action::volume) volumes.insert(event.value);
    }
    EXPECT_EQ(cues, (std::set<std::string>{"card-place-1", "card-place-2", "card-place-3", "card-place-4"}));
    EXPECT_EQ(volumes, std::set<double>{0.42f});
}

TEST_F(SoundEffectsTest, ADealPlaysTheShuffleAndOnlyTheLatestDealsFan650msLater)
{
    auto& effects = start();
    effects.playDeal();
    std::this_thread::sleep_for(300ms);
    effects.playDeal();
    std::this_thread::sleep_for(kPastFanDelay);
    effects.waitUntilIdle();

    const auto shuffles = players_->plays("card-shuffle");
    const auto fans = players_->plays("card-fan-1");
    ASSERT_EQ(shuffles.size(), 2u);
    ASSERT_EQ(fans.size(), 1u);
    EXPECT_GE(fans[0].at - shuffles[1].at, 650ms);
    std::vector<double> volumes;
    for (const auto& event : players_->events())
        if (event.action == Action::volume) volumes.push_back(event.value);
    EXPECT_EQ(volumes, (std::vector<double>{0.5f, 0.5f, 0.45f}));
}

TEST_F(SoundEffectsTest, SwitchingOffCancelsThePendingFanAndStopsEveryPlayer)
{
    auto& effects = start();
    effects.playDeal();
    effects.playPlacement();
    effects.setEnabled(false);
    std::this_thread::sleep_for(kPastFanDelay);
    effects.waitUntilIdle();

    EXPECT_TRUE(players_->plays("card-fan-1").empty());
    // Each of the fifteen players is stopped and then rewound, the ones sounding included.
    std::map<std::pair<std::string, int>, std::vector<Action>> afterSwitchOff;
    bool switchedOff = false;
    for (const auto& event : players_->events()) {
        if (event.action == Action::stop) switchedOff = true;
        if (switchedOff) afterSwitchOff[{event.cue, event.player}].push_back(event.action);
    }
    EXPECT_EQ(afterSwitchOff.size(), 15u);
    for (const auto& [player, actions] : afterSwitchOff)
        EXPECT_EQ(actions, (std::vector<Action>{Action::stop, Action::seek})) << player.first << " " << player.second;
}

TEST_F(SoundEffectsTest, SwitchedOffNothingPlaysAndNothingIsReplayedWhenSwitchedOn)
{
    auto& effects = start();
    effects.playDeal();
    effects.setEnabled(false);
    effects.play("card-shove-1", 0.32f);
    effects.playDeal();
    effects.playPlacement();
    effects.setEnabled(true);
    std::this_thread::sleep_for(kPastFanDelay);
    effects.waitUntilIdle();

    const auto plays = players_->plays();
    ASSERT_EQ(plays.size(), 1u);
    EXPECT_EQ(plays[0].cue, "card-shuffle");
}

TEST_F(SoundEffectsTest, APendingFanDoesNotOutliveItsSoundPlayer)
{
    auto& effects = start();
    effects.playDeal();
    effects.waitUntilIdle();
    effects_.reset();
    std::this_thread::sleep_for(kPastFanDelay);
    EXPECT_TRUE(players_->plays("card-fan-1").empty());
}

// The output rests once nothing has sounded for a while, and wakes before the next sound
// rather than after it; a run of sounds keeps it awake.
TEST_F(SoundEffectsTest, TheOutputRestsInSilenceAndWakesBeforeTheNextSound)
{
    constexpr auto restAfter = 150ms;
    start({}, restAfter);
    auto outputEvents = [this] {
        std::vector<Action> found;
        for (const auto& event : players_->events())
            if (event.cue == "output" || event.action == Action::play) found.push_back(event.action);
        return found;
    };
    auto restsWithin = [&](std::chrono::milliseconds limit) {
        for (auto waited = 0ms; waited < limit; waited += 10ms) {
            const auto events = outputEvents();
            if (!events.empty() && events.back() == Action::rest) return true;
            std::this_thread::sleep_for(10ms);
        }
        return false;
    };
    std::this_thread::sleep_for(restAfter / 2);
    effects_->waitUntilIdle();
    EXPECT_TRUE(outputEvents().empty()) << "awake for a while after the start";
    ASSERT_TRUE(restsWithin(5s));
    EXPECT_EQ(outputEvents(), std::vector{Action::rest});

    for (int i = 0; i < 4; ++i) effects_->playPlacement();
    effects_->waitUntilIdle();
    EXPECT_EQ(outputEvents(),
              (std::vector{Action::rest, Action::wake, Action::play, Action::play, Action::play, Action::play}));
    ASSERT_TRUE(restsWithin(5s));

    // Switched off, nothing sounds and nothing wakes the output.
    effects_->setEnabled(false);
    effects_->playPlacement();
    effects_->waitUntilIdle();
    EXPECT_EQ(outputEvents().back(), Action::rest);
}

TEST_F(SoundEffectsTest, OnlyAStoredFalseStartsWithSoundsOff)
{
    const std::vector<std::pair<std::optional<DefaultsValue>, bool>> cases{
        {std::nullopt, true}, {true, true}, {false, false}, {std::int64_t{0}, true}, {std::string("false"), true}};
    for (std::size_t i = 0; i < cases.size(); ++i) {
        InMemoryDefaultsStore defaults;
        if (cases[i].first) defaults.set(preferenceKeys::soundsEnabled, *cases[i].first);
        auto players = std::make_shared<FakePlayers>();
        auto effects = SoundEffects::create(defaults, players, folder_.path());
        effects->play("card-shove-1", 0.32f);
        effects->waitUntilIdle();
        EXPECT_EQ(players->plays().size(), cases[i].second ? 1u : 0u) << "case " << i;
    }
}

using SoundEffectsDeathTest = SoundEffectsTest;

TEST_F(SoundEffectsDeathTest, QueueWorkRunElsewhereStopsTheProgram)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(SoundEffectsTestAccess::preloadPlayers(start()), "preloadPlayers called off its serial queue");
    EXPECT_DEATH(SoundEffectsTestAccess::playOnQueue(start(), "card-shuffle", 0.5f),
                 "play called off its serial queue");
}

TEST_F(SoundEffectsTest, TheGameStoreAndTheSoundsPreferenceReachThePlayers)
{
    auto& effects = start();
    SoundEffectsCues cues(effects);
    defaults_.set(preferenceKeys::soundsEnabled, false);
    GamePreferences preferences(defaults_, cues);
    GameStore store(std::nullopt, defaults_, cues);
    store.newGame();
    preferences.setSoundsEnabled(true);
    store.newGame();
    std::this_thread::sleep_for(kPastFanDelay);
    effects.waitUntilIdle();

    std::vector<std::string> played;
    for (const auto& event : players_->plays()) played.push_back(event.cue);
    EXPECT_EQ(played, (std::vector<std::string>{"card-shuffle", "card-fan-1"}));
}

} // namespace
} // namespace zelvaine

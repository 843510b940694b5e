#include "store/in_memory_defaults_store.hpp"
#include "store/saved_game.hpp"
#include "tests/store/store_fakes.hpp"
#include "tests/support/positions.hpp"
#include "tests/ui/recording_flights.hpp"
#include "ui/finish_playback.hpp"

#include <gtest/gtest.h>

#include <memory>

namespace zelvaine {
namespace {

// The first foundation's queen waits in the hand: the first of nine steps is a hand card,
// which flies nowhere.
GameState queenInHand()
{
    GameState s = testing::kingsLeft();
    s.hand[0] = s.foundations[0].back();
    s.foundations[0].pop_back();
    return s;
}

class FinishPlaybackTest : public ::testing::Test {
protected:
    // A store that saves, restored from `game` as after a restart.
    std::unique_ptr<GameStore> savingStore(const GameState& game)
    {
        defaults.setData(savedGameKey, {std::make_shared<const std::string>(encodeSavedGame({game, game, {}, {}, {}}))});
        return std::make_unique<GameStore>(std::nullopt, defaults, sound, [] { return 0.0; });
    }
    testing::CountingDefaultsStore defaults;
    SilentSoundCues sound;
    testing::RecordingFlights flights;
};

TEST_F(FinishPlaybackTest, PlaysToTheWinACardAtATimeAndSavesOnceAtTheEnd)
{
    const auto store = savingStore(queenInHand());
    FinishPlayback playback(*store, flights.hooks());
    int changes = 0;
    playback.observe([&](FinishPlaybackProperty) { ++changes; });

    EXPECT_EQ(playback.start(), 0);
    EXPECT_TRUE(playback.isPlaying());
    EXPECT_TRUE(store->challenge().usedAutoComplete);
    EXPECT_EQ(store->persistenceDeferralCount(), 1);
    const int savesBefore = defaults.saves;

    for (std::int64_t step = 0; step < 9; ++step) {
        // The hand card takes the board's own flight time; the columns' cards their flight's.
        EXPECT_EQ(playback.step(), step == 0 ? FinishPlayback::flightMilliseconds : flights.columnFlight);
        EXPECT_EQ(store->state().moveCount, step) << "the move waits for the card to land";
        const auto rest = playback.step();
        EXPECT_EQ(store->state().moveCount, step + 1);
        if (step < 8) {
            EXPECT_EQ(rest, FinishPlayback::restMilliseconds);
            EXPECT_EQ(defaults.saves, savesBefore) << "nothing is written during the playback";
        } else {
            EXPECT_EQ(rest, std::nullopt);
        }
    }
    EXPECT_TRUE(isWon(store->state()));
    EXPECT_FALSE(playback.isPlaying());
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(store->persistenceDeferralCount(), 0);
    EXPECT_EQ(defaults.saves - savesBefore, 1);
    ASSERT_EQ(flights.flown.size(), 9U);
    EXPECT_TRUE(flights.flown[0].source.isHand());
    EXPECT_GE(flights.landings, 9);
    EXPECT_EQ(playback.step(), std::nullopt) << "a late timer does nothing";
}

TEST_F(FinishPlaybackTest, OnlyAPositionItCanWinIsPlayed)
{
    GameState won = testing::kingsLeft();
    for (std::size_t f = 0; f < 8; ++f) {
        won.foundations[f].push_back(won.tableau[f][0]);
        won.tableau[f].clear();
    }
    for (const GameState& game : {testing::knownDeal(), won}) {
        GameStore store(game, defaults, sound);
        FinishPlayback playback(store, flights.hooks());
        EXPECT_EQ(playback.start(), std::nullopt);
        EXPECT_FALSE(playback.isPlaying());
        EXPECT_FALSE(store.challenge().usedAutoComplete);
        EXPECT_EQ(store.persistenceDeferralCount(), 0);
    }
}

TEST_F(FinishPlaybackTest, AFlightWhoseMoveNoLongerFitsEndsThePlayback)
{
    const auto store = savingStore(testing::kingsLeft());
    ASSERT_TRUE(store->move(MoveSource::tableau(0, 0), MoveDestination::foundation(0)));
    FinishPlayback playback(*store, flights.hooks());
    ASSERT_TRUE(playback.start());
    ASSERT_TRUE(playback.step()); // the king of column 1 is in the air
    store->undo();                // and column 0's king is back first in line
    const int landingsBefore = flights.landings;

    EXPECT_EQ(playback.step(), std::nullopt);
    EXPECT_FALSE(playback.isPlaying());
    EXPECT_EQ(store->state().moveCount, 0);
    EXPECT_GT(flights.landings, landingsBefore) << "no card is left in the air";
    EXPECT_EQ(store->persistenceDeferralCount(), 0);
}

} // namespace
} // namespace zelvaine

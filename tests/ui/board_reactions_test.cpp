#include "store/in_memory_defaults_store.hpp"
#include "tests/support/positions.hpp"
#include "tests/ui/recording_flights.hpp"
#include "ui/board_reactions.hpp"

#include <gtest/gtest.h>

namespace zelvaine {
namespace {

// Drives the reactions as the board does: told of each new position at once, reacting once the
// store's operation is over, at a time the test chooses.
class BoardReactionsTest : public ::testing::Test {
protected:
    BoardReactionsTest()
    {
        token = store.observe([this](GameStoreProperty property) {
            if (property == GameStoreProperty::state) reactions.positionChanged();
        });
    }
    ~BoardReactionsTest() override { store.unobserve(token); }

    void moveKing(std::int64_t column)
    {
        ASSERT_TRUE(store.move(MoveSource::tableau(column, 0), MoveDestination::foundation(column)));
    }
    void react() { reactions.react(now += 1000); }
    bool finishOffered() const { return store.confirmation() == GameConfirmation::autoComplete; }

    InMemoryDefaultsStore defaults;
    SilentSoundCues sound;
    GamePreferences statistics{defaults, sound};
    GameStore store{testing::kingsLeft(), defaults, sound, [] { return 0.0; }};
    testing::RecordingFlights flights;
    FinishPlayback finish{store, flights.hooks()};
    BoardReactions reactions{store, finish, &statistics};
    Observable<GameStoreProperty>::Token token = 0;
    double now = 0;
};

TEST_F(BoardReactionsTest, TheFinishIsOfferedOncePerDealAndNeverOverAnotherQuestion)
{
    EXPECT_EQ(statistics.gamesPlayed(), 1) << "the deal on show counts as played";

    moveKing(0);
    store.requestRestart();
    react();
    EXPECT_EQ(store.confirmation(), GameConfirmation::restartGame);
    store.dismissConfirmation();

    moveKing(1);
    react();
    EXPECT_TRUE(finishOffered());
    store.dismissConfirmation(); // declined
    moveKing(2);
    react();
    EXPECT_FALSE(store.confirmation()) << "a declined finish is not offered again";

    // Back through the deal's start, and on before the board reacts: a fresh deal for the offer.
    store.undo();
    store.undo();
    store.undo();
    moveKing(0);
    react();
    EXPECT_TRUE(finishOffered());
}

TEST_F(BoardReactionsTest, BackAtTheStartThePlaybackStopsBeforeItsNextStep)
{
    moveKing(0);
    react();
    ASSERT_TRUE(finishOffered());
    ASSERT_TRUE(finish.start());
    ASSERT_TRUE(finish.step());
    ASSERT_TRUE(finish.step());
    ASSERT_EQ(store.state().moveCount, 2);

    store.restartGame();
    EXPECT_FALSE(finish.isPlaying()) << "stopped during the restart, not at the reaction";
    EXPECT_EQ(store.persistenceDeferralCount(), 0);
    EXPECT_EQ(finish.step(), std::nullopt);
    EXPECT_EQ(store.state().moveCount, 0);
    react();
    EXPECT_TRUE(finishOffered()) << "the offer is made again for the restarted deal";
}

TEST_F(BoardReactionsTest, AWinDismissesTheQuestionAndIsCelebratedOncePerWonPosition)
{
    int celebrationChanges = 0;
    reactions.observe([&](BoardReactionsProperty) { ++celebrationChanges; });
    moveKing(0);
    react();
    ASSERT_TRUE(finishOffered());
    for (std::int64_t c = 1; c < 8; ++c) moveKing(c); // finished by hand under the question
    react();
    EXPECT_FALSE(store.confirmation());
    const double wonAt = now;
    EXPECT_EQ(reactions.celebrationStartedAt(), wonAt);
    EXPECT_EQ(statistics.gamesWon(), 1);
    EXPECT_EQ(statistics.highScore(), 8);

    // The same won position again: the confetti goes on, not anew.
    store.undo();
    react();
    moveKing(7);
    react();
    EXPECT_EQ(reactions.celebrationStartedAt(), wonAt);
    EXPECT_EQ(statistics.gamesWon(), 1);

    // Its time up, it stays over for this position.
    reactions.endCelebration();
    EXPECT_EQ(reactions.celebrationStartedAt(), 0);
    store.undo();
    moveKing(7);
    react();
    EXPECT_EQ(reactions.celebrationStartedAt(), 0);
    EXPECT_EQ(celebrationChanges, 2);

    // A restart makes the next win a new one.
    store.restartGame();
    react();
    store.dismissConfirmation();
    for (std::int64_t c = 0; c < 8; ++c) moveKing(c);
    react();
    EXPECT_EQ(reactions.celebrationStartedAt(), now);
    EXPECT_GT(now, wonAt);
    // Confetti still falling stops when the deal is back at its start.
    store.restartGame();
    react();
    EXPECT_EQ(reactions.celebrationStartedAt(), 0);
}

// The game ends (quit, logout) with a card in the air: the rest is played without flights.
TEST_F(BoardReactionsTest, CompletingAtOnceCountsTheWinWithoutAReaction)
{
    moveKing(0);
    react();
    reactions.completeFinishNow(); // nothing plays: nothing happens
    EXPECT_EQ(store.state().moveCount, 1);

    ASSERT_TRUE(finish.start());
    ASSERT_TRUE(finish.step());
    reactions.completeFinishNow();
    EXPECT_TRUE(isWon(store.state()));
    EXPECT_FALSE(finish.isPlaying());
    EXPECT_EQ(store.persistenceDeferralCount(), 0);
    EXPECT_EQ(flights.flown.size(), 1U);
    EXPECT_EQ(statistics.gamesWon(), 1);
    EXPECT_EQ(statistics.highScore(), 8);
}

} // namespace
} // namespace zelvaine

// The game stopped by a signal in the middle of its automatic finish, as a logout stops it: the
// finish the player accepted must end played out and saved, with the win counted.

#include "engine/game_state.hpp"
#include "store/game_preferences.hpp"
#include "tests/app/game_process.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <string>
#include <tuple>

namespace zelvaine {
namespace {

// Every foundation built up to its eight, the nines to kings of each one lying in a column of
// their own, king first: forty steps of the automatic finish, some seconds of playback.
GameState nearlyFinished(const GameState& deal)
{
    GameState position = deal;
    for (auto& pile : position.tableau) pile.clear();
    for (auto& pile : position.foundations) pile.clear();
    std::ranges::fill(position.hand, std::nullopt);
    position.moveCount = 180;
    std::vector<PlayingCard> cards;
    for (const auto& pile : deal.tableau) cards.insert(cards.end(), pile.begin(), pile.end());
    for (const auto& slot : deal.hand)
        if (slot) cards.push_back(*slot);
    std::ranges::sort(cards, [](const PlayingCard& a, const PlayingCard& b) {
        return std::tuple(a.deck, a.suit, a.rank) < std::tuple(b.deck, b.suit, b.rank);
    });
    for (std::size_t pile = 0; pile < foundationCount; ++pile) {
        for (std::size_t rank = 0; rank < 13; ++rank) {
            const PlayingCard& card = cards[pile * 13 + rank];
            if (rank < 8) position.foundations[pile].push_back(card);
            else position.tableau[pile].insert(position.tableau[pile].begin(), card);
        }
    }
    return position;
}

class QuitSignalTest : public ::testing::TestWithParam<int> {};

TEST_P(QuitSignalTest, AnAutomaticFinishUnderWayEndsPlayedOutAndSaved)
{
    testing::GameHome home;
    const GameState deal = dealNewGame();
    const GameState finishing = nearlyFinished(deal);
    ASSERT_TRUE(ZelvaineGameDocument::fromStates(finishing, deal).makeStates());
    const auto file = home.writeGame("finish.zelvaine", finishing, deal);
    // Answering yes opens the file, then accepts the automatic finish the game offers for it.
    const pid_t game = home.start(ZELVAINE_GAME, {"--answer-yes", file.string()});
    ASSERT_GT(game, 0);

    // Accepting the finish saves the game once, marked; the playback's own moves wait for its end.
    const bool started = testing::eventually([&] {
        const auto saved = home.savedGame();
        return saved && saved->challenge.usedAutoComplete;
    });
    if (!started) kill(game, SIGKILL);
    ASSERT_TRUE(started) << "the game never started its automatic finish; saved: "
                         << (home.savedGame() ? std::to_string(home.savedGame()->currentState.moveCount) + " moves"
                                              : std::string("nothing"));

    kill(game, GetParam());
    EXPECT_EQ(testing::waitForExit(game), 0);

    const auto saved = home.savedGame();
    ASSERT_TRUE(saved);
    EXPECT_TRUE(isWon(saved->currentState));
    EXPECT_EQ(saved->currentState.moveCount, 180 + 40);
    EXPECT_EQ(home.integer(preferenceKeys::gamesWon), 1);
}

INSTANTIATE_TEST_SUITE_P(Signals, QuitSignalTest, ::testing::Values(SIGTERM, SIGINT, SIGHUP),
                         [](const auto& signalCase) { return std::string(sigabbrev_np(signalCase.param)); });

} // namespace
} // namespace zelvaine

// The game asked to quit while its solver works on a position that takes it seconds: the solve
// stops at once, the game exits promptly, and the saved game is the one it was playing.

#include "engine/move_rules.hpp"
#include "engine/random_source.hpp"
#include "store/game_preferences.hpp"
#include "tests/app/game_process.hpp"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>

namespace zelvaine {
namespace {

// A thread of the game, found by the name it gave itself.
struct GameThread {
    std::filesystem::path folder;

    // Processor time so far, in clock ticks; none once the thread or the process is gone.
    std::optional<long> ticks() const
    {
        std::ifstream file(folder / "stat");
        std::string stat;
        if (!std::getline(file, stat)) return std::nullopt;
        // The fields after the name, which is in parentheses and may hold spaces.
        std::istringstream fields(stat.substr(stat.rfind(')') + 2));
        std::string field;
        long user = 0;
        long system = 0;
        for (int index = 3; fields >> field; ++index) {
            if (index == 14) user = std::stol(field);
            if (index == 15) {
                system = std::stol(field);
                break;
            }
        }
        return user + system;
    }
};

// The busiest thread of `pid` called `name`.
std::optional<GameThread> busiestThread(pid_t pid, const std::string& name)
{
    std::optional<GameThread> busiest;
    long most = -1;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/" + std::to_string(pid) + "/task", error)) {
        std::string comm;
        std::getline(std::ifstream(entry.path() / "comm"), comm);
        if (comm != name) continue;
        const GameThread thread{entry.path()};
        const long ticks = thread.ticks().value_or(-1);
        if (ticks > most) {
            most = ticks;
            busiest = thread;
        }
    }
    return busiest;
}

// Deal 638 of seed 1 cannot be won, and no solve settles it within seconds; a few moves into it,
// it still takes the solver its whole budget.
SavedGame hardGame()
{
    SeededRandom random(1);
    GameState deal = dealNewGame(random);
    for (int i = 0; i < 638; ++i) deal = dealNewGame(random);
    SavedGame game{deal, deal, {}, {}, {}};
    for (int i = 0; i < 3; ++i) {
        const auto moves = legalMoves(game.currentState);
        game.history.push_back(game.currentState);
        game.currentState =
            std::get<MoveMoved>(applyMove(game.currentState, moves.front().source, moves.front().destination)).state;
    }
    return game;
}

TEST(SolverQuitTest, AQuitDuringASolveStopsItAndExitsPromptlyWithTheGameSaved)
{
    testing::GameHome home;
    const SavedGame game = hardGame();
    {
        std::filesystem::create_directories(home.database().parent_path());
        SqliteDefaultsStore defaults(home.database());
        const std::string json = encodeSavedGame(game);
        defaults.set(savedGameKey, DefaultsData(json.begin(), json.end()));
        // The toolbar's verdict solves the table at start; the dealer proves deals beside it.
        defaults.set(preferenceKeys::showsWinnability, true);
        defaults.set(preferenceKeys::winnableDealsOnly, true);
        defaults.flush();
    }
    const pid_t pid = home.start(ZELVAINE_GAME, {});
    ASSERT_GT(pid, 0);

    // A solve is under way once the solver's thread has worked for a while (0.3 s of a solve
    // that takes seconds), and the game has started once its own thread idles, waiting for the
    // player: a quit asked sooner would wait for the start to finish.
    const GameThread mainThread{"/proc/" + std::to_string(pid) + "/task/" + std::to_string(pid)};
    std::optional<GameThread> solver;
    long mainTicks = -1;
    const bool solving = testing::eventually([&] {
        solver = busiestThread(pid, "solver");
        const long before = std::exchange(mainTicks, mainThread.ticks().value_or(-1));
        return solver && solver->ticks().value_or(0) >= 30 && mainTicks == before;
    });
    if (!solving) kill(pid, SIGKILL);
    ASSERT_TRUE(solving) << "the game never started a long solve";

    const long ticksAtQuit = solver->ticks().value_or(0);

    const auto quit = std::chrono::steady_clock::now();
    kill(pid, SIGTERM);
    // The solver's last reading before the process is gone tells how long it went on.
    long ticksAtEnd = ticksAtQuit;
    int status = 0;
    while (waitpid(pid, &status, WNOHANG) == 0) {
        if (const auto ticks = solver->ticks()) ticksAtEnd = *ticks;
        if (std::chrono::steady_clock::now() - quit > std::chrono::seconds(30)) {
            kill(pid, SIGKILL);
            waitpid(pid, &status, 0);
            FAIL() << "the game did not exit";
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    const auto exited = std::chrono::steady_clock::now() - quit;
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
    // A hang check, not a measure of speed: the exit takes a small part of this.
    EXPECT_LT(exited, std::chrono::seconds(2));
    // The solve stops as the game starts to quit rather than going on to its end: at most a
    // third of a second of processor time, where the rest of the solve would take over a second.
    EXPECT_LE(ticksAtEnd - ticksAtQuit, 30);

    const auto saved = home.savedGame();
    ASSERT_TRUE(saved);
    EXPECT_EQ(*saved, game);
}

} // namespace
} // namespace zelvaine

// Kills a program that is playing and saving a game at random moments, many times; after each
// kill a new store must restore one of the games that program saved, never a damaged one, and
// never an older one than it had made durable.

#include "store/game_store.hpp"
#include "store/sqlite_defaults_store.hpp"
#include "tests/store/child_process.hpp"
#include "tests/store/game_digest.hpp"
#include "tests/store/sqlite_defaults_test_support.hpp"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <thread>

namespace zelvaine {
namespace {

TEST(GameStoreCrash, AKilledGameRestoresAsOneItSaved)
{
    testing::DefaultsScratchFolder folder;
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    std::size_t saved = 0;

    for (int round = 0; round < 30; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        const auto child = testing::startReportingChild(ZELVAINE_STORE_CRASH_WRITER,
                                                        {folder.file().string(), std::to_string(random())});
        ASSERT_GT(child.pid, 0);
        const auto ready = testing::readReport(child.reports);
        ASSERT_TRUE(ready) << "the writer did not start";

        std::this_thread::sleep_for(std::chrono::microseconds(2000 + random() % 20000));
        kill(child.pid, SIGKILL);
        int status = 0;
        waitpid(child.pid, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << "the writer stopped by itself, status " << status;

        // Every game the child may have saved, in order; the last flush marks the oldest allowed.
        std::vector<std::uint64_t> games{*ready};
        std::size_t oldestAllowed = 0;
        while (const auto word = testing::readReport(child.reports)) {
            if (*word == testing::flushedMark) {
                oldestAllowed = games.size() - 1;
            } else {
                games.push_back(*word);
            }
        }
        close(child.reports);

        SqliteDefaultsStore defaults(folder.file());
        ASSERT_FALSE(defaults.recoveredFromDamage());
        SilentSoundCues sound;
        const GameStore restored(std::nullopt, defaults, sound);
        ASSERT_TRUE(isWellFormed(restored.state()));
        const auto found = std::find(games.begin() + static_cast<std::ptrdiff_t>(oldestAllowed), games.end(),
                                     testing::gameDigest(restored));
        ASSERT_NE(found, games.end()) << "restored a game that was not among the last saved ones (" << games.size()
                                      << " reported, " << oldestAllowed << " durable)";
        saved += games.size() - 1;
    }
    // The rounds saved many games between them, not just the first.
    EXPECT_GT(saved, 60U);
}

} // namespace
} // namespace zelvaine

// The game saving through a disk that loses power, fills up or fails at chosen moments, the way
// SQLite tests itself: after the power comes back, the restored game is always one the game
// saved, whole, and never older than the last save that was reported durable.

#include "store/game_store.hpp"
#include "store/sqlite_defaults_store.hpp"
#include "tests/store/game_digest.hpp"
#include "tests/store/power_cut_vfs.hpp"
#include "tests/store/random_moves.hpp"
#include "tests/store/sqlite_defaults_test_support.hpp"
#include "tests/store/store_fakes.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

namespace zelvaine {
namespace {

using testing::DiskFault;

struct Played {
    std::vector<std::uint64_t> saved;   // every game handed to the store, in order
    std::optional<std::size_t> durable; // the last of them a flush reported on the disk
    bool toldOfFailure = false;
};

// Plays and saves until the power goes, flushing now and then as leaving the window would.
Played playUntilThePowerGoes(const std::filesystem::path& file, testing::PowerCutVfs& disk, std::mt19937_64& random,
                             const std::vector<std::pair<DiskFault, std::uint64_t>>& faults)
{
    Played played;
    SqliteDefaultsStore defaults(file);
    testing::RecordingSoundCues sound;
    GameStore store(std::nullopt, defaults, sound);
    played.saved.push_back(testing::gameDigest(store));
    store.persistNow();
    defaults.flush();
    if (!defaults.writeFailure()) played.durable = 0;

    for (const auto& [fault, after] : faults) disk.strike(fault, after);
    for (int step = 1; step <= 200 && !disk.powerIsOut(); ++step) {
        testing::playRandomStep(store, random, [&](std::uint64_t saved) { played.saved.push_back(saved); });
        if (store.message() && store.message()->starts_with("Zelvaine cannot save your game"))
            played.toldOfFailure = true;
        if (step % 4 == 0) {
            defaults.flush();
            if (!defaults.writeFailure()) played.durable = played.saved.size() - 1;
        }
    }
    if (!disk.powerIsOut()) {
        disk.strike(DiskFault::powerCut, 1);
        defaults.flush();
    }
    return played; // closing fails against the dead disk, as it would
}

TEST(PowerCut, TheRestoredGameIsOneThatWasSavedAndNoOlderThanTheLastDurableOne)
{
    testing::PowerCutVfs disk;
    const unsigned seed = std::getenv("ZELVAINE_TEST_SEED")
                              ? static_cast<unsigned>(std::atoll(std::getenv("ZELVAINE_TEST_SEED")))
                              : std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937_64 random(seed);
    int cutsBeforeAnyDurableSave = 0;
    int failuresTold = 0;

    for (int round = 0; round < 40; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        std::string plan;
        testing::DefaultsScratchFolder folder;
        // A power cut somewhere in the first few hundred disk operations, half the time after a
        // write that failed with a full disk or an I/O error.
        std::vector<std::pair<DiskFault, std::uint64_t>> faults{{DiskFault::powerCut, 1 + random() % 400}};
        if (round % 2 == 1) {
            faults.emplace_back(round % 4 == 1 ? DiskFault::full : DiskFault::ioError, 1 + random() % faults[0].second);
        }
        for (const auto& [fault, at] : faults)
            plan += std::to_string(static_cast<int>(fault)) + "@" + std::to_string(at) + " ";
        SCOPED_TRACE("faults " + plan);
        const Played played = playUntilThePowerGoes(folder.file(), disk, random, faults);
        disk.restorePower();
        if (!played.durable) ++cutsBeforeAnyDurableSave;
        if (played.toldOfFailure) ++failuresTold;

        SqliteDefaultsStore defaults(folder.file());
        EXPECT_FALSE(defaults.keptAsideFile()) << "the database did not survive the power cut";
        testing::RecordingSoundCues sound;
        const GameStore restored(std::nullopt, defaults, sound);
        // A game can recur (cards shuffled between hand slots and back), so any save of it counts.
        const std::uint64_t digest = testing::gameDigest(restored);
        if (played.durable) {
            ASSERT_NE(std::find(played.saved.begin(), played.saved.end(), digest), played.saved.end())
                << "restored a game that was never saved";
            EXPECT_NE(std::find(played.saved.begin() + static_cast<std::ptrdiff_t>(*played.durable), played.saved.end(),
                                digest),
                      played.saved.end())
                << "restored a game older than one reported durable";
        }
    }
    // The faults must have struck where they matter, or the test proves nothing.
    EXPECT_LT(cutsBeforeAnyDurableSave, 40);
    EXPECT_GT(failuresTold, 0);
}

} // namespace
} // namespace zelvaine

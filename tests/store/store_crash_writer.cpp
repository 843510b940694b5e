// The store crash test's child: plays a game through the store, saving after every move, until
// it is killed. Before each move it reports the game the move will save, so the parent knows
// every game that may reach the disk; after each flush it reports the mark for "everything so
// far is durable".

#include "store/game_store.hpp"
#include "store/sqlite_defaults_store.hpp"
#include "tests/store/child_process.hpp"
#include "tests/store/game_digest.hpp"
#include "tests/store/random_moves.hpp"

#include <random>

int main(int argc, char** argv)
{
    using namespace zelvaine;
    if (argc != 4) return 2;
    const int pipe = std::atoi(argv[3]);
    std::mt19937_64 random(std::strtoull(argv[2], nullptr, 10));

    SqliteDefaultsStore defaults(argv[1]);
    SilentSoundCues sound;
    GameStore store(std::nullopt, defaults, sound);
    // A fresh deal is not saved until its first change; make it durable so that even a kill
    // before the first move leaves a game to restore.
    store.persistNow();
    defaults.flush();
    testing::report(pipe, testing::gameDigest(store)); // ready, with the game it restored

    for (std::uint64_t step = 1;; ++step) {
        testing::playRandomStep(store, random, [pipe](std::uint64_t saved) { testing::report(pipe, saved); });
        if (step % 3 == 0) {
            defaults.flush();
            testing::report(pipe, testing::flushedMark);
        }
    }
}

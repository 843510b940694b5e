// The store crash test's child: plays a game through the store, saving after every move, until
// it is killed. Before each move it reports the game the move will save, so the parent knows
// every game that may reach the disk; after each flush it reports the mark for "everything so
// far is durable".

#include "engine/move_rules.hpp"
#include "store/game_store.hpp"
#include "store/sqlite_defaults_store.hpp"
#include "tests/store/child_process.hpp"
#include "tests/store/game_digest.hpp"

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

    std::vector<MoveDestination> destinations{MoveDestination::hand()};
    for (std::int64_t i = 0; i < 10; ++i) destinations.push_back(MoveDestination::tableau(i));
    for (std::int64_t i = 0; i < 8; ++i) destinations.push_back(MoveDestination::foundation(i));

    for (std::uint64_t step = 1;; ++step) {
        const GameState& s = store.state();
        std::vector<std::pair<MoveSource, MoveDestination>> legal;
        for (std::int64_t c = 0; c < 10; ++c) {
            for (std::int64_t i = 0; i < static_cast<std::int64_t>(s.tableau[static_cast<std::size_t>(c)].size()); ++i) {
                for (const auto& d : destinations) {
                    if (canMove(s, MoveSource::tableau(c, i), d)) legal.emplace_back(MoveSource::tableau(c, i), d);
                }
            }
        }
        for (std::int64_t h = 0; h < 4; ++h) {
            for (const auto& d : destinations) {
                if (canMove(s, MoveSource::hand(h), d)) legal.emplace_back(MoveSource::hand(h), d);
            }
        }
        // Cards may come back from the foundations too, which keeps the game from running dry.
        for (std::int64_t f = 0; f < 8; ++f) {
            for (const auto& d : destinations) {
                if (canMove(s, MoveSource::foundation(f), d)) legal.emplace_back(MoveSource::foundation(f), d);
            }
        }
        if (legal.empty()) {
            // Stuck: step back, which saves too.
            const GameState& previous = store.history().back();
            testing::report(pipe, testing::gameDigest(previous, store.history().size() - 1, store.redoHistory().size() + 1));
            store.undo();
        } else {
            const auto& [source, destination] = legal[random() % legal.size()];
            const auto outcome = applyMove(s, source, destination);
            const auto& next = std::get<MoveMoved>(outcome);
            const std::size_t history = store.history().size() + (next.counted ? 1 : 0);
            testing::report(pipe, testing::gameDigest(next.state, history, 0));
            store.move(source, destination);
        }
        if (step % 3 == 0) {
            defaults.flush();
            testing::report(pipe, testing::flushedMark);
        }
    }
}

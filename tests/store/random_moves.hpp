#pragma once

#include "engine/move_rules.hpp"
#include "store/game_store.hpp"
#include "tests/store/game_digest.hpp"

#include <random>
#include <utility>
#include <vector>

namespace zelvaine::testing {

// Plays one random legal move, cards from the foundations included so that the game never runs
// dry, or steps back when none is left (and does nothing when it cannot). `announce` hears the digest of the game the step saves
// before the store is asked, so that a test knows every game that may reach the disk.
template <class Announce>
void playRandomStep(GameStore& store, std::mt19937_64& random, Announce&& announce)
{
    std::vector<MoveDestination> destinations{MoveDestination::hand()};
    for (std::int64_t i = 0; i < 10; ++i) destinations.push_back(MoveDestination::tableau(i));
    for (std::int64_t i = 0; i < 8; ++i) destinations.push_back(MoveDestination::foundation(i));

    const GameState& s = store.state();
    std::vector<std::pair<MoveSource, MoveDestination>> legal;
    const auto collect = [&](const MoveSource& source) {
        for (const auto& d : destinations) {
            if (canMove(s, source, d)) legal.emplace_back(source, d);
        }
    };
    for (std::int64_t c = 0; c < 10; ++c) {
        for (std::int64_t i = 0; i < static_cast<std::int64_t>(s.tableau[static_cast<std::size_t>(c)].size()); ++i) {
            collect(MoveSource::tableau(c, i));
        }
    }
    for (std::int64_t h = 0; h < 4; ++h) collect(MoveSource::hand(h));
    for (std::int64_t f = 0; f < 8; ++f) collect(MoveSource::foundation(f));

    if (legal.empty()) {
        if (store.history().empty()) return;
        announce(gameDigest(store.history().back(), store.history().size() - 1, store.redoHistory().size() + 1));
        store.undo();
        return;
    }
    const auto& [source, destination] = legal[random() % legal.size()];
    const auto outcome = applyMove(s, source, destination);
    const auto& next = std::get<MoveMoved>(outcome);
    announce(gameDigest(next.state, store.history().size() + (next.counted ? 1 : 0), 0));
    store.move(source, destination);
}

} // namespace zelvaine::testing

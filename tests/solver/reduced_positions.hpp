#pragma once

#include "engine/game_state.hpp"
#include "tests/support/positions.hpp"

#include <algorithm>
#include <cstdint>
#include <random>
#include <string_view>
#include <vector>

namespace zelvaine::testing {

// A full set of foundations (deck 0 on foundations 0–3, deck 1 on 4–7, suits in order), the
// starting point of positions with only a few cards left to play.
inline GameState finishedBoard()
{
    GameState state = emptyBoard();
    for (std::size_t f = 0; f < 8; ++f) {
        for (int rank = 1; rank <= 13; ++rank) {
            state.foundations[f].push_back(PlayingCard{Uuid::random(), allSuits[f % 4], static_cast<Rank>(rank),
                                                       static_cast<std::int64_t>(f / 4)});
        }
    }
    return state;
}

// Takes the top `count` cards of foundation `f` back off, highest first.
inline std::vector<PlayingCard> liftFromFoundation(GameState& state, std::size_t f, std::size_t count)
{
    std::vector<PlayingCard> lifted;
    for (std::size_t i = 0; i < count && !state.foundations[f].empty(); ++i) {
        lifted.push_back(state.foundations[f].back());
        state.foundations[f].pop_back();
    }
    return lifted;
}

// A random position with about `left` cards out of the foundations: two foundations of one colour
// lifted deep, their cards shuffled into four columns and a full hand so that cards block each
// other, and the king of every other foundation alone in a column. With no empty column at the
// start the positions stay few enough for a search without symmetries. Reproducible from `seed`.
inline GameState reducedPosition(std::uint32_t seed, std::size_t left)
{
    std::mt19937 random(seed);
    GameState state = finishedBoard();
    // Two piles of one colour: their cards cannot build on each other.
    static constexpr std::size_t sameColour[2][4] = {{0, 3, 4, 7}, {1, 2, 5, 6}};
    const auto& colour = sameColour[random() % 2];
    const std::size_t first = colour[random() % 4];
    std::size_t second = first;
    while (second == first) second = colour[random() % 4];
    std::vector<PlayingCard> deep;
    std::size_t column = 3;
    for (std::size_t f = 0; f < 8; ++f) {
        if (f == first || f == second) {
            const auto lifted = liftFromFoundation(state, f, (left - 6) / 2 + (f == first ? (left - 6) % 2 : 0));
            deep.insert(deep.end(), lifted.begin(), lifted.end());
        } else {
            state.tableau[column++] = liftFromFoundation(state, f, 1);
        }
    }
    std::shuffle(deep.begin(), deep.end(), random);
    for (std::size_t s = 0; s < handSlotCount && !deep.empty(); ++s) {
        state.hand[s] = deep.back();
        deep.pop_back();
    }
    static constexpr std::size_t piles[] = {0, 1, 2, 9};
    for (std::size_t i = 0; i < deep.size(); ++i) state.tableau[piles[i < 4 ? i : random() % 4]].push_back(deep[i]);
    return state;
}

} // namespace zelvaine::testing

// Long random games, mixing legal moves with arbitrary (often illegal or off-board) ones, checking
// after every step the properties that no single example can cover.

#include "engine/auto_complete.hpp"
#include "engine/hints.hpp"
#include "engine/move_rules.hpp"

#include <gtest/gtest.h>

#include <random>
#include <unordered_set>

namespace zelvaine {
namespace {

std::vector<MoveSource> everySource(const GameState& s)
{
    std::vector<MoveSource> sources;
    for (std::int64_t c = -1; c <= 10; ++c) {
        const auto length =
            c >= 0 && c < 10 ? static_cast<std::int64_t>(s.tableau[static_cast<std::size_t>(c)].size()) : 1;
        for (std::int64_t i = -1; i <= length; ++i) sources.push_back(MoveSource::tableau(c, i));
    }
    for (std::int64_t i = -1; i <= 4; ++i) sources.push_back(MoveSource::hand(i));
    for (std::int64_t i = -1; i <= 8; ++i) sources.push_back(MoveSource::foundation(i));
    return sources;
}

std::vector<MoveDestination> everyDestination()
{
    std::vector<MoveDestination> destinations{MoveDestination::hand()};
    for (std::int64_t i = -1; i <= 10; ++i) destinations.push_back(MoveDestination::tableau(i));
    for (std::int64_t i = -1; i <= 8; ++i) destinations.push_back(MoveDestination::foundation(i));
    for (std::int64_t i = -1; i <= 4; ++i) destinations.push_back(MoveDestination::hand(i));
    return destinations;
}

std::unordered_set<Uuid> ids(const GameState& s)
{
    std::unordered_set<Uuid> all;
    for (const auto& column : s.tableau)
        for (const auto& c : column) all.insert(c.id);
    for (const auto& pile : s.foundations)
        for (const auto& c : pile) all.insert(c.id);
    for (const auto& slot : s.hand)
        if (slot) all.insert(slot->id);
    return all;
}

// canMove must agree with applyMove, and applyMove must keep its promises about the count.
MoveOutcome checkMove(const GameState& s, const MoveSource& source, const MoveDestination& destination)
{
    const GameState before = s;
    MoveOutcome outcome = applyMove(s, source, destination);
    EXPECT_EQ(s, before);
    const auto* moved = std::get_if<MoveMoved>(&outcome);
    EXPECT_EQ(canMove(s, source, destination), moved != nullptr) << toString(source) << " -> " << toString(destination);
    if (moved) {
        EXPECT_EQ(moved->state.moveCount, s.moveCount + (moved->counted ? 1 : 0));
        EXPECT_EQ(moved->counted, !(source.isHand() && destination.isHand()));
        EXPECT_EQ(moved->fromFoundation, source.isFoundation());
        EXPECT_NE(moved->state, s);
    }
    if (const auto* refused = std::get_if<MoveRefused>(&outcome)) {
        EXPECT_FALSE(refused->reason.empty());
    }
    return outcome;
}

TEST(RandomPlay, RulesKeepTheirPromisesThroughLongGames)
{
    const auto destinations = everyDestination();
    for (std::uint64_t seed = 1; seed <= 12; ++seed) {
        SeededRandom dealRandom(seed);
        GameState s = dealNewGame(dealRandom);
        const auto startIds = ids(s);
        std::mt19937_64 random(seed * 7919);

        for (int step = 0; step < 250; ++step) {
            const auto sources = everySource(s);
            if (step % 50 == 0) {
                for (const auto& source : sources) {
                    for (const auto& destination : destinations) checkMove(s, source, destination);
                }
            }
            std::vector<std::pair<MoveSource, MoveDestination>> legal;
            for (const auto& source : sources) {
                for (const auto& destination : destinations) {
                    if (canMove(s, source, destination)) legal.emplace_back(source, destination);
                }
            }
            // Mostly legal moves so the game goes somewhere; sometimes anything at all.
            std::pair<MoveSource, MoveDestination> chosen;
            if (!legal.empty() && random() % 4 != 0) {
                chosen = legal[random() % legal.size()];
            } else {
                chosen = {sources[random() % sources.size()], destinations[random() % destinations.size()]};
            }
            MoveOutcome outcome = checkMove(s, chosen.first, chosen.second);
            if (auto* moved = std::get_if<MoveMoved>(&outcome)) s = std::move(moved->state);

            ASSERT_TRUE(isWellFormed(s)) << "seed " << seed << " step " << step;
            ASSERT_EQ(s.hand.size(), 4U);
            ASSERT_EQ(ids(s), startIds);

            // The helpers only ever suggest moves the rules allow.
            const Hint hint = findHint(s);
            if (hint.source) {
                ASSERT_TRUE(movableCards(s, *hint.source));
            }
            if (auto autoMove = nextFoundationAutoMove(s)) {
                ASSERT_TRUE(canMove(s, autoMove->source, MoveDestination::foundation(autoMove->foundationIndex)));
            }
            for (const auto& source : sources) {
                if (auto destination = automaticDestination(s, source)) {
                    ASSERT_TRUE(canMove(s, source, *destination));
                }
            }
        }
    }
}

} // namespace
} // namespace zelvaine

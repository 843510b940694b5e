#include "tests/solver/reference_search.hpp"

#include "engine/move_rules.hpp"

#include <string>
#include <unordered_set>
#include <vector>

namespace zelvaine::testing {
namespace {

void appendCard(std::string& key, const PlayingCard& card)
{
    key += static_cast<char>(static_cast<int>(card.suit) * 16 + rawValue(card.rank));
    key += static_cast<char>('0' + card.deck);
}

// Everything but the move count and the ids (suit, rank and deck already tell every card apart).
std::string exactKey(const GameState& state)
{
    std::string key;
    for (const auto& column : state.tableau) {
        for (const auto& card : column) appendCard(key, card);
        key += '|';
    }
    for (const auto& slot : state.hand) {
        if (slot) appendCard(key, *slot);
        key += '|';
    }
    for (const auto& pile : state.foundations) {
        for (const auto& card : pile) appendCard(key, card);
        key += '|';
    }
    return key;
}

std::vector<MoveSource> allSources(const GameState& state)
{
    std::vector<MoveSource> sources;
    for (std::size_t c = 0; c < state.tableau.size(); ++c) {
        for (std::size_t i = 0; i < state.tableau[c].size(); ++i) {
            sources.push_back(MoveSource::tableau(static_cast<std::int64_t>(c), static_cast<std::int64_t>(i)));
        }
    }
    for (std::int64_t s = 0; s < 4; ++s) sources.push_back(MoveSource::hand(s));
    for (std::int64_t f = 0; f < 8; ++f) sources.push_back(MoveSource::foundation(f));
    return sources;
}

// Foundations last, so that their positions are taken up first: a win, when there is one, is
// found sooner. Every position is still visited when there is none.
std::vector<MoveDestination> allDestinations()
{
    std::vector<MoveDestination> destinations;
    destinations.push_back(MoveDestination::hand());
    for (std::int64_t s = 0; s < 4; ++s) destinations.push_back(MoveDestination::hand(s));
    for (std::int64_t c = 0; c < 10; ++c) destinations.push_back(MoveDestination::tableau(c));
    for (std::int64_t f = 0; f < 8; ++f) destinations.push_back(MoveDestination::foundation(f));
    return destinations;
}

} // namespace

std::optional<bool> referenceWinnable(const GameState& start, const ReferenceOptions& options)
{
    static const std::vector<MoveDestination> destinations = allDestinations();
    std::unordered_set<std::string> seen{exactKey(start)};
    std::vector<GameState> pending{start};
    while (!pending.empty()) {
        const GameState state = std::move(pending.back());
        pending.pop_back();
        if (isWon(state)) return true;
        const auto sources = allSources(state);
        for (const MoveDestination& destination : destinations) {
            for (const MoveSource& source : sources) {
                if (source.isFoundation() && !options.allowFromFoundation) continue;
                if (!canMove(state, source, destination)) continue;
                const MoveOutcome outcome = applyMove(state, source, destination);
                const auto* moved = std::get_if<MoveMoved>(&outcome);
                if (moved == nullptr) continue;
                if (!seen.insert(exactKey(moved->state)).second) continue;
                if (seen.size() > options.maxPositions) return std::nullopt;
                pending.push_back(moved->state);
            }
        }
    }
    return false;
}

} // namespace zelvaine::testing

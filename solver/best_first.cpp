#include "solver/best_first.hpp"

#include "solver/position_table.hpp"

#include <algorithm>
#include <functional>
#include <queue>

namespace zelvaine::solver {
namespace {

// Each line costs this much per move, so that among equally promising positions the one reached
// sooner is taken first; it keeps the lines short and the search from wandering. Lower values
// make the search greedier and, with this evaluation, slower to find wins.
constexpr int costPerMove = 5;

struct Node {
    std::uint32_t parent;
    std::uint32_t depth;
    Step step;
};

struct Candidate {
    int score;
    std::uint32_t node;
    bool operator<(const Candidate& other) const { return score < other.score; }
};

constexpr std::size_t bytesPerPosition = sizeof(Node) + sizeof(Candidate) + 2 * sizeof(std::uint64_t);

} // namespace

// A position is kept as the move that reached it from its parent and rebuilt by replaying from
// the start, so it costs a few bytes rather than a copy of the board. Everything is allocated
// once, at the size the limits allow, so that nothing is copied or rehashed while it runs.
SearchOutcome bestFirst(const SolverPosition& start, MoveSet moveSet, const SearchLimits& limits,
                        std::stop_token stop)
{
    // Positions are numbered with 32 bits; memory runs out long before that matters.
    const std::uint64_t budget =
        std::min({limits.positions, std::uint64_t{UINT32_MAX}, std::uint64_t{limits.memoryBytes / bytesPerPosition}});
    SearchOutcome outcome;
    if (budget == 0) return outcome;
    SolverPosition position = start;
    PositionTable seen(budget);
    seen.insert(position.key());
    outcome.positions = 1;
    if (position.isWon()) {
        outcome.won = outcome.exhausted = true;
        return outcome;
    }

    std::vector<Node> nodes;
    nodes.reserve(budget + 1);
    nodes.push_back({0, 0, {}});
    std::vector<Candidate> queueStorage;
    queueStorage.reserve(budget + 1);
    std::priority_queue<Candidate> queue(std::less<Candidate>{}, std::move(queueStorage));
    queue.push({0, 0});
    std::vector<Step> path;
    std::vector<Step> moves;
    bool cut = false;
    auto pathTo = [&](std::uint32_t node) {
        path.clear();
        for (; node != 0; node = nodes[node].parent) path.push_back(nodes[node].step);
        std::ranges::reverse(path);
    };
    // The position stays where the last expansion left it; the next one is reached through
    // their last common ancestor, usually a few moves away, rather than from the start.
    std::uint32_t here = 0;
    auto moveTo = [&](std::uint32_t target) {
        path.clear();
        std::uint32_t from = here;
        std::uint32_t to = target;
        while (nodes[from].depth > nodes[to].depth) {
            position.undo(nodes[from].step);
            from = nodes[from].parent;
        }
        while (nodes[to].depth > nodes[from].depth) {
            path.push_back(nodes[to].step);
            to = nodes[to].parent;
        }
        while (from != to) {
            position.undo(nodes[from].step);
            from = nodes[from].parent;
            path.push_back(nodes[to].step);
            to = nodes[to].parent;
        }
        for (auto step = path.rbegin(); step != path.rend(); ++step) position.apply(*step);
        here = target;
    };

    while (!queue.empty()) {
        if (stop.stop_requested()) return outcome;
        const std::uint32_t current = queue.top().node;
        queue.pop();
        moveTo(current);
        position.generateMoves(moves, moveSet);
        for (const Step& step : moves) {
            position.apply(step);
            if (seen.insert(position.key()) == PositionTable::Insert::added) {
                ++outcome.positions;
                const std::uint32_t depth = nodes[current].depth + 1;
                nodes.push_back({current, depth, step});
                const auto node = static_cast<std::uint32_t>(nodes.size() - 1);
                if (position.isWon()) {
                    pathTo(node);
                    outcome.won = true;
                    outcome.line = path;
                    return outcome;
                }
                if (outcome.positions >= budget) return outcome;
                if (depth < limits.maxDepth) {
                    queue.push({position.evaluate() - costPerMove * static_cast<int>(depth), node});
                } else {
                    cut = true; // seen, but its successors will never be looked at
                }
            }
            position.undo(step);
        }
    }
    outcome.exhausted = !cut;
    return outcome;
}

} // namespace zelvaine::solver

#include "solver/solver.hpp"

#include "solver/position_table.hpp"
#include "solver/solver_position.hpp"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <queue>

namespace zelvaine::solver {

std::string_view toString(Verdict verdict)
{
    switch (verdict) {
    case Verdict::winnable: return "winnable";
    case Verdict::unwinnable: return "unwinnable";
    case Verdict::unknown: return "unknown";
    }
    return "unknown";
}

std::optional<std::string> unsolvableReason(const GameState& state)
{
    std::string problem;
    if (SolverPosition::from(state, &problem)) return std::nullopt;
    return problem;
}

namespace {

// Each line costs this much per move, so that among equally promising positions the one reached
// sooner is taken first; it keeps the lines short and the search from wandering.
constexpr int costPerMove = 4;

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

} // namespace

// Best-first: always expand the most promising position seen so far. A position is kept as the
// move that reached it from its parent and rebuilt by replaying from the start, so it costs a
// few bytes rather than a copy of the board. Every position reached is expanded unless the
// budget or the depth limit ends the search first, which makes an empty queue a proof.
SolveResult solve(const GameState& state, const SolverOptions& options, std::stop_token stop)
{
    auto start = SolverPosition::from(state);
    if (!start) return {};
    SolverPosition& position = *start;
    // Positions are numbered with 32 bits; memory runs out long before that matters.
    const std::uint64_t budget = std::min<std::uint64_t>(options.positionBudget, UINT32_MAX);

    // Small at first: most positions near the end of a game need only a few thousand entries.
    PositionTable seen(std::min<std::uint64_t>(budget, 1u << 14));
    seen.insert(position.key());
    std::uint64_t positions = 1;
    if (position.isWon()) return {Verdict::winnable, {}, positions};

    // Reserved up front for ordinary budgets, so that growing never holds two copies; pages that
    // are never touched cost nothing.
    const auto reserved = static_cast<std::size_t>(std::min<std::uint64_t>(budget, 1u << 21)) + 1;
    std::vector<Node> nodes;
    nodes.reserve(reserved);
    nodes.push_back({0, 0, {}});
    std::vector<Candidate> queueStorage;
    queueStorage.reserve(reserved);
    std::priority_queue<Candidate> queue(std::less<Candidate>{}, std::move(queueStorage));
    queue.push({0, 0});
    std::vector<Step> path;
    std::vector<Step> moves;
    bool complete = true;
    auto pathTo = [&](std::uint32_t node) {
        path.clear();
        for (; node != 0; node = nodes[node].parent) path.push_back(nodes[node].step);
        std::ranges::reverse(path);
    };

    while (!queue.empty()) {
        if (stop.stop_requested()) return {Verdict::unknown, {}, positions};
        const std::uint32_t current = queue.top().node;
        queue.pop();
        pathTo(current);
        for (const Step& step : path) position.apply(step);
        position.generateMoves(moves);
        for (const Step& step : moves) {
            position.apply(step);
            if (seen.insert(position.key())) {
                ++positions;
                const std::uint32_t depth = nodes[current].depth + 1;
                nodes.push_back({current, depth, step});
                const auto node = static_cast<std::uint32_t>(nodes.size() - 1);
                if (position.isWon()) {
                    pathTo(node);
                    SolveResult result{Verdict::winnable, {}, positions};
                    for (const Step& move : path) result.moves.push_back({move.source(), move.destination()});
                    return result;
                }
                if (positions >= budget) return {Verdict::unknown, {}, positions};
                if (depth < options.maxDepth) {
                    queue.push({position.evaluate() - costPerMove * static_cast<int>(depth), node});
                } else {
                    complete = false; // seen, but its successors will never be looked at
                }
            }
            position.undo(step);
        }
        for (auto step = path.rbegin(); step != path.rend(); ++step) position.undo(*step);
    }
    return {complete ? Verdict::unwinnable : Verdict::unknown, {}, positions};
}

} // namespace zelvaine::solver

#include "solver/best_first.hpp"

#include <algorithm>

namespace zelvaine::solver {
namespace {

// Each line costs this much per move, so that among equally promising positions the one reached
// sooner is taken first; it keeps the lines short and the search from wandering. Lower values
// make the search greedier and, with this evaluation, slower to find wins.
constexpr int costPerMove = 5;

// A node and its heap entry; the position table comes on top.
constexpr std::size_t bytesPerNode = 12 + 8;

std::uint64_t budgetFor(const SearchLimits& limits)
{
    // Positions are numbered with 32 bits; memory runs out long before that matters.
    std::uint64_t budget = std::min(limits.positions, std::uint64_t{UINT32_MAX});
    while (budget > 0 && budget * bytesPerNode + PositionTable::bytesFor(budget) > limits.memoryBytes) {
        budget = budget / 4 * 3;
    }
    return budget;
}

} // namespace

// A position is kept as the move that reached it from its parent and rebuilt by replaying from
// the start, so it costs a few bytes rather than a copy of the board. Everything is allocated
// once, at the size the limits allow, so that nothing is copied or rehashed while it runs.
BestFirstSearch::BestFirstSearch(const SolverPosition& start, Guide guide, const SearchLimits& limits)
    : guide_(guide),
      limits_(limits),
      budget_(budgetFor(limits)),
      position_(start),
      seen_(std::max<std::uint64_t>(budget_, 1))
{
    static_assert(sizeof(Node) + sizeof(Candidate) <= bytesPerNode);
    // Depths are kept in 16 bits; best-first lines run to a few hundred moves.
    limits_.maxDepth = std::min<std::size_t>(limits_.maxDepth, UINT16_MAX);
    if (budget_ == 0) {
        finished_ = true;
        return;
    }
    seen_.insert(position_.key());
    outcome_.positions = 1;
    if (position_.isWon()) {
        outcome_.won = outcome_.exhausted = finished_ = true;
        return;
    }
    nodes_.reserve(budget_ + 1);
    nodes_.push_back({0, 0, Step{}});
    queue_.reserve(budget_ + 1);
    queue_.push_back({0, 0});
}

// The position stays where the last expansion left it; the next one is reached through their
// last common ancestor, usually a few moves away, rather than from the start.
void BestFirstSearch::moveTo(std::uint32_t target)
{
    path_.clear();
    std::uint32_t from = here_;
    std::uint32_t to = target;
    while (nodes_[from].depth > nodes_[to].depth) {
        position_.undo(nodes_[from].step);
        from = nodes_[from].parent;
    }
    while (nodes_[to].depth > nodes_[from].depth) {
        path_.push_back(nodes_[to].step);
        to = nodes_[to].parent;
    }
    while (from != to) {
        position_.undo(nodes_[from].step);
        from = nodes_[from].parent;
        path_.push_back(nodes_[to].step);
        to = nodes_[to].parent;
    }
    for (auto step = path_.rbegin(); step != path_.rend(); ++step) position_.apply(*step);
    here_ = target;
}

void BestFirstSearch::finishWon(std::uint32_t node)
{
    for (; node != 0; node = nodes_[node].parent) outcome_.line.push_back(nodes_[node].step);
    std::ranges::reverse(outcome_.line);
    outcome_.won = finished_ = true;
}

void BestFirstSearch::runUntil(std::uint64_t positions, std::stop_token stop)
{
    const std::uint64_t limit = std::min(positions, budget_);
    while (!finished_ && outcome_.positions < limit) {
        if (stop.stop_requested()) return;
        if (queue_.empty()) {
            outcome_.exhausted = !cut_;
            finished_ = true;
            return;
        }
        std::pop_heap(queue_.begin(), queue_.end());
        const std::uint32_t current = queue_.back().node;
        queue_.pop_back();
        moveTo(current);
        position_.generateMoves(moves_, guide_.moves);
        // The table is far larger than the caches: fetch the slots of all children at once.
        moveKeys_.clear();
        for (const Step& step : moves_) {
            moveKeys_.push_back(position_.keyAfter(step));
            seen_.prefetch(moveKeys_.back());
        }
        for (std::size_t i = 0; i < moves_.size(); ++i) {
            const Step& step = moves_[i];
            if (seen_.insert(moveKeys_[i]) == PositionTable::Insert::added) {
                position_.apply(step);
                ++outcome_.positions;
                const std::uint32_t depth = nodes_[current].depth + 1u;
                nodes_.push_back({current, static_cast<std::uint16_t>(depth), step});
                const auto node = static_cast<std::uint32_t>(nodes_.size() - 1);
                if (position_.isWon()) {
                    position_.undo(step);
                    finishWon(node);
                    return;
                }
                if (outcome_.positions >= budget_) {
                    position_.undo(step);
                    finished_ = true;
                    return;
                }
                if (depth < limits_.maxDepth) {
                    queue_.push_back({position_.evaluate(guide_.lookahead) - costPerMove * static_cast<int>(depth), node});
                    std::push_heap(queue_.begin(), queue_.end());
                } else {
                    cut_ = true; // seen, but its successors will never be looked at
                }
                position_.undo(step);
            }
        }
    }
}

} // namespace zelvaine::solver

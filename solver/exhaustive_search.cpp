#include "solver/exhaustive_search.hpp"

#include "solver/position_table.hpp"

#include <algorithm>
#include <utility>

namespace zelvaine::solver {
namespace {

// The untried moves of one position of the current line, as a range of the shared move list.
struct Frame {
    std::uint32_t begin;
    std::uint32_t end;
    std::uint32_t next;
};

// The share of the memory budget kept for the current line; the table gets the rest.
constexpr std::size_t lineShare = 4;

} // namespace

SearchOutcome depthFirst(const SolverPosition& start, const SearchLimits& limits, ChildOrder order, std::stop_token stop)
{
    const std::size_t lineBytes = limits.memoryBytes / lineShare;
    SearchOutcome outcome;
    std::uint64_t budget = limits.positions;
    while (budget > 0 && PositionTable::bytesFor(budget) > limits.memoryBytes - lineBytes) budget = budget / 4 * 3;
    if (budget == 0) return outcome;

    SolverPosition position = start;
    PositionTable seen(budget);
    // It comes after the cheap searches, which most often settle a deal: what reaches it tends
    // to take long.
    seen.useLargePages();
    seen.insert(position.key());
    outcome.positions = 1;
    if (position.isWon()) {
        outcome.won = outcome.exhausted = true;
        return outcome;
    }

    std::vector<Step> steps;
    std::vector<Frame> frames;
    std::vector<Step> moves;
    std::vector<std::uint64_t> moveKeys;
    std::vector<std::pair<int, Step>> ranked;
    bool cut = false;
    // Children seen before are skipped before they are evaluated; the rest are put in order.
    // Most children were seen, and the table is far larger than the processor's caches, so the
    // slots of all children are fetched at once before any is looked at.
    auto expand = [&] {
        position.generateMoves(moves, MoveSet::all);
        moveKeys.clear();
        for (const Step& step : moves) {
            moveKeys.push_back(position.keyAfter(step));
            seen.prefetch(moveKeys.back());
        }
        ranked.clear();
        for (std::size_t i = 0; i < moves.size(); ++i) {
            if (seen.contains(moveKeys[i])) continue;
            if (order == ChildOrder::listed) {
                ranked.push_back({0, moves[i]});
                continue;
            }
            position.apply(moves[i]);
            ranked.push_back({position.evaluate(), moves[i]});
            position.undo(moves[i]);
        }
        if (order == ChildOrder::ranked) {
            std::ranges::stable_sort(ranked, [](const auto& a, const auto& b) { return a.first > b.first; });
        }
        const auto begin = static_cast<std::uint32_t>(steps.size());
        for (const auto& entry : ranked) steps.push_back(entry.second);
        frames.push_back({begin, static_cast<std::uint32_t>(steps.size()), begin});
    };

    expand();
    while (!frames.empty()) {
        if (stop.stop_requested()) return outcome;
        Frame& frame = frames.back();
        if (frame.next == frame.end) {
            steps.resize(frame.begin);
            frames.pop_back();
            if (!frames.empty()) position.undo(steps[frames.back().next - 1]);
            continue;
        }
        const Step step = steps[frame.next++];
        // The key is worked out again rather than kept beside the step: kept, it would more than
        // double the memory of a line, and lines of a complete search run to 1,000,000 moves.
        const auto inserted = seen.insert(position.keyAfter(step));
        if (inserted == PositionTable::Insert::full) return outcome;
        if (inserted == PositionTable::Insert::present) continue;
        position.apply(step);
        ++outcome.positions;
        if (position.isWon()) {
            outcome.won = true;
            for (const Frame& open : frames) outcome.line.push_back(steps[open.next - 1]);
            return outcome;
        }
        if (outcome.positions >= budget) return outcome;
        if (steps.capacity() * sizeof(Step) + frames.capacity() * sizeof(Frame) > lineBytes) return outcome;
        if (frames.size() >= limits.maxDepth) {
            cut = true; // seen, but its successors will never be looked at
            position.undo(step);
            continue;
        }
        expand();
    }
    outcome.exhausted = !cut;
    return outcome;
}

} // namespace zelvaine::solver

#pragma once

#include "solver/position_table.hpp"
#include "solver/search_limits.hpp"
#include "solver/solver_position.hpp"

#include <stop_token>
#include <vector>

namespace zelvaine::solver {

// Always expands the most promising position seen so far, by evaluate() less a cost for every
// move made, so that it heads for a win without wandering. Good at finding wins quickly; its
// positions cost about 40 bytes each. It runs in slices, so that searches led by different
// evaluations can take turns and the first to find a win ends them all.
class BestFirstSearch {
public:
    struct Guide {
        MoveSet moves = MoveSet::quick;
        Lookahead lookahead = Lookahead::everyFoundation;
    };

    BestFirstSearch(const SolverPosition& start, Guide guide, const SearchLimits& limits);

    // Goes on until `positions` distinct positions have been seen in all, or the search ends.
    void runUntil(std::uint64_t positions, std::stop_token stop);
    // Won, or out of positions to expand or of budget.
    bool finished() const { return finished_; }
    // `exhausted` only once every position reachable with the allowed moves was expanded.
    const SearchOutcome& outcome() const { return outcome_; }

private:
    struct Node {
        std::uint32_t parent;
        std::uint16_t depth;
        Step step;
    };
    struct Candidate {
        int score;
        std::uint32_t node;
        bool operator<(const Candidate& other) const { return score < other.score; }
    };

    void moveTo(std::uint32_t target);
    void pushCandidate(std::uint32_t node);
    void finishWon(std::uint32_t node);

    Guide guide_;
    SearchLimits limits_;
    std::uint64_t budget_ = 0;
    SolverPosition position_;
    PositionTable seen_;
    std::vector<Node> nodes_;
    std::vector<Candidate> queue_; // a heap, best on top
    std::vector<Step> path_;
    std::vector<Step> moves_;
    std::vector<std::uint64_t> moveKeys_;
    std::uint32_t here_ = 0; // the node `position_` stands on
    bool cut_ = false;
    bool finished_ = false;
    SearchOutcome outcome_;
};

} // namespace zelvaine::solver

#include "solver/solver.hpp"

#include "solver/best_first.hpp"
#include "solver/exhaustive_search.hpp"
#include "solver/line_shortening.hpp"

#include <algorithm>
#include <array>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <thread>

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

// The searches' lines wander: the best-first ones now and then, the depth-first one by nature.
std::vector<SolverMove> movesOf(const SolverPosition& start, const std::vector<Step>& line)
{
    const std::vector<Step> shorter = shortenLine(start, line);
    std::vector<SolverMove> moves;
    moves.reserve(shorter.size());
    for (const Step& step : shorter) moves.push_back({step.source(), step.destination()});
    return moves;
}

constexpr std::uint64_t everyMoveSearchCap = 4'000'000;

// Asks a search to stop once its time is up, or when its caller asks; gone with the search.
class Deadline {
public:
    Deadline(std::chrono::milliseconds limit, std::stop_token caller)
        : forward_(std::move(caller), [this] { source_.request_stop(); }), timer_([this, limit](std::stop_token ended) {
              std::mutex mutex;
              std::unique_lock lock(mutex);
              std::condition_variable_any().wait_for(lock, ended, limit, [] { return false; });
              source_.request_stop();
          })
    {}
    std::stop_token token() const { return source_.get_token(); }

private:
    std::stop_source source_;
    std::stop_callback<std::function<void()>> forward_;
    std::jthread timer_; // last: it stops and joins first
};

SolveResult solveWithin(const GameState& state, const SolverOptions& options, std::stop_token stop)
{
    const auto start = SolverPosition::from(state);
    if (!start) return {};
    std::uint64_t spent = 0;
    bool quickSpaceSeen = false;
    {
        // Most deals are won, so the quick searches get most of the budget. A search led by one
        // evaluation and move set now and then buries itself in a corner the other walks past,
        // so two take turns; a deal they cannot win in their smaller space is usually one they
        // run out of early, which leaves the rest to the searches that follow.
        const SearchLimits each{options.positionBudget / 8 * 3, options.memoryBudget / 2, options.maxDepth};
        std::array searches{BestFirstSearch(*start, {MoveSet::quick, Lookahead::everyFoundation}, each),
                            BestFirstSearch(*start, {MoveSet::keepRuns, Lookahead::startedFoundations}, each)};
        constexpr std::uint64_t slice = 4096;
        for (std::uint64_t until = slice;; until += slice) {
            for (BestFirstSearch& search : searches) {
                search.runUntil(until, stop);
                if (search.outcome().won) {
                    std::uint64_t positions = 0;
                    for (const BestFirstSearch& other : searches) positions += other.outcome().positions;
                    return {Verdict::winnable, movesOf(*start, search.outcome().line), positions};
                }
            }
            // The second walks part of the first one's space: only the first, having seen all of
            // it, shows that the quick space holds no win.
            const bool exhausted = searches[0].outcome().exhausted;
            const bool finished = std::ranges::all_of(searches, [](const auto& s) { return s.finished(); });
            if (exhausted || finished || stop.stop_requested()) {
                quickSpaceSeen = exhausted;
                break;
            }
        }
        for (const BestFirstSearch& search : searches) spent += search.outcome().positions;
    }
    if (stop.stop_requested()) return {Verdict::unknown, {}, spent};

    auto remaining = [&] { return options.positionBudget - std::min(spent, options.positionBudget); };
    if (quickSpaceSeen) {
        // A deal whose quick space holds no win is most often lost, and then its whole space is
        // most often small: a short complete search first settles most of them at once.
        const SearchLimits first{remaining() / 8, options.memoryBudget, options.maxDepth};
        const SearchOutcome proof = depthFirst(*start, first, ChildOrder::listed, stop);
        spent += proof.positions;
        if (proof.won) return {Verdict::winnable, movesOf(*start, proof.line), spent};
        if (proof.exhausted) return {Verdict::unwinnable, {}, spent};
        if (stop.stop_requested()) return {Verdict::unknown, {}, spent};
    }
    {
        // Some wins need what the quick set leaves out: part of a string moved onto an equal
        // card, a card back from a foundation, or a card kept out that the quick set sends home.
        // A best-first search over every move finds them far sooner than the complete search,
        // and seeing its whole space proves the deal lost just as well. It takes half of what is
        // left; its positions cost several times those of the complete search, so a large
        // budget stops it at everyMoveSearchCap and leaves the time to the proof.
        const SearchLimits half{std::min(remaining() / 2, everyMoveSearchCap), options.memoryBudget, options.maxDepth};
        BestFirstSearch every(*start, {MoveSet::all, Lookahead::everyFoundation}, half);
        every.runUntil(half.positions, stop);
        spent += every.outcome().positions;
        if (every.outcome().won) return {Verdict::winnable, movesOf(*start, every.outcome().line), spent};
        if (every.outcome().exhausted) return {Verdict::unwinnable, {}, spent};
        if (stop.stop_requested()) return {Verdict::unknown, {}, spent};
    }

    const SearchLimits limits{remaining(), options.memoryBudget, options.maxDepth};
    // A deal whose quick space holds no win is most often lost: then the complete search is a
    // proof, and ranking its moves would only slow it down.
    const SearchOutcome full = depthFirst(*start, limits, quickSpaceSeen ? ChildOrder::listed : ChildOrder::ranked, stop);
    const std::uint64_t positions = spent + full.positions;
    if (full.won) return {Verdict::winnable, movesOf(*start, full.line), positions};
    return {full.exhausted ? Verdict::unwinnable : Verdict::unknown, {}, positions};
}

} // namespace

SolveResult solve(const GameState& state, const SolverOptions& options, std::stop_token stop)
{
    if (options.timeLimit.count() <= 0) return solveWithin(state, options, std::move(stop));
    const Deadline deadline(options.timeLimit, std::move(stop));
    return solveWithin(state, options, deadline.token());
}

} // namespace zelvaine::solver

#pragma once

#include "solver/last_winnable_search.hpp"
#include "solver/solver.hpp"

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <stop_token>
#include <thread>
#include <vector>

namespace zelvaine::solver {

// Solves positions on one worker thread for a caller that must never wait, such as the game
// window. Each request gets a generation number; a newer request or a cancel stops the running
// solve through its stop token and makes its answer stale. Only the answer of the newest
// generation is delivered, on the worker thread: the caller brings it to its own thread and
// checks isCurrent() once more there, since it may have asked again in between.
class WinnabilityService {
public:
    struct Answer {
        std::uint64_t generation = 0;
        // A position's solve; for a line, nothing but the search's answer.
        SolveResult result;
        std::optional<LastWinnableAnswer> search;
    };
    using Delivery = std::function<void(Answer)>;
    // The search itself, given the budget; tests put a scripted one in its place.
    using SolveFunction = PositionSolve;

    explicit WinnabilityService(Delivery deliver, SolverOptions options = {});
    WinnabilityService(Delivery deliver, SolveFunction solveFunction, std::function<void()> releaseMemory,
                       SolverOptions options = {});
    WinnabilityService(const WinnabilityService&) = delete;
    WinnabilityService& operator=(const WinnabilityService&) = delete;
    // Stops the running solve and joins the worker; no answer is delivered after it returns.
    ~WinnabilityService();

    // Replaces whatever was asked before; returns the new generation.
    std::uint64_t request(GameState position);
    // The same for the search for the last winnable position of a line of play, from its start
    // to the table (see findLastWinnable), run as one request.
    std::uint64_t requestLastWinnable(std::vector<GameState> line);
    // Drops the pending request and stops the running one.
    void cancel();
    bool isCurrent(std::uint64_t generation) const;

private:
    struct Job {
        std::uint64_t generation = 0;
        // One position to solve, or else a line to search.
        GameState position;
        std::optional<std::vector<GameState>> line;
    };

    std::uint64_t enqueue(Job job);

    void run(std::stop_token quit);

    Delivery deliver_;
    SolveFunction solve_;
    SolverOptions options_;
    std::function<void()> releaseMemory_;

    mutable std::mutex mutex_;
    std::condition_variable_any wake_;
    std::uint64_t generation_ = 0;
    std::optional<Job> pending_;
    // The running solve's stop, while one runs.
    std::optional<std::stop_source> running_;
    // Declared last: the worker starts once everything it uses exists, and stops first.
    std::jthread worker_;
};

} // namespace zelvaine::solver

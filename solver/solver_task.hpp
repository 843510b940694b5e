#pragma once

#include "solver/solver.hpp"

#include <functional>
#include <future>
#include <thread>

namespace zelvaine::solver {

// One solve on a thread of its own, so that the caller never waits for it. Destroying the task
// cancels the search and joins its thread.
class SolverTask {
public:
    using Callback = std::function<void(const SolveResult&)>;

    // `onFinished`, when given, is called on the solver's thread with the result (also after a
    // cancel); the caller decides how to bring it back to its own thread.
    SolverTask(GameState state, SolverOptions options, Callback onFinished = {});
    SolverTask(const SolverTask&) = delete;
    SolverTask& operator=(const SolverTask&) = delete;
    ~SolverTask() = default;

    // Asks the search to stop; it answers "unknown" at the next position it examines.
    void cancel() { thread_.request_stop(); }
    bool isFinished() const;
    // Waits for the result.
    const SolveResult& result() const { return future_.get(); }

private:
    std::promise<SolveResult> promise_;
    std::shared_future<SolveResult> future_;
    // Declared last: the thread starts once everything it uses exists, and stops first.
    std::jthread thread_;
};

} // namespace zelvaine::solver

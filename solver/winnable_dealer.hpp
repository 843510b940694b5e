#pragma once

#include "solver/solver.hpp"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <stop_token>
#include <thread>

namespace zelvaine::solver {

// Keeps one deal proven winnable ready, proving the next on its own thread while the current
// game is played, so that a new game rarely waits. A candidate the solver cannot decide within
// its budget is skipped like a lost one.
class WinnableDealer {
public:
    using Shuffle = std::function<GameState()>;

    // `shuffle` is called on the dealer's thread.
    explicit WinnableDealer(Shuffle shuffle, SolverOptions options = {});
    WinnableDealer(const WinnableDealer&) = delete;
    WinnableDealer& operator=(const WinnableDealer&) = delete;
    ~WinnableDealer();

    // The prepared deal, waiting for the proof when it is not ready yet; the next is prepared
    // at once.
    GameState take();

private:
    void run(std::stop_token stop);

    Shuffle shuffle_;
    SolverOptions options_;
    std::mutex mutex_;
    std::condition_variable_any changed_;
    std::optional<GameState> ready_;
    // Last: the thread starts once everything it uses exists, and stops first.
    std::jthread worker_;
};

} // namespace zelvaine::solver

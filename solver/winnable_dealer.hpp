#pragma once

#include "solver/last_winnable_search.hpp"
#include "solver/solver.hpp"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <stop_token>
#include <thread>

namespace zelvaine::solver {

// Keeps a few deals proven winnable ready, proving more on its own thread while the current game
// is played, so that a new game seldom finds none. A candidate the solver cannot decide within its
// budget is skipped like a lost one.
class WinnableDealer {
public:
    using Shuffle = std::function<GameState()>;
    using Ready = std::function<void()>;

    // `shuffle` is called on the dealer's thread, and so is `ready`, each time a proven deal
    // joins the ones kept, up to `kept`. Without `solve`, the solver itself proves them.
    explicit WinnableDealer(Shuffle shuffle, Ready ready = {}, PositionSolve solve = {}, SolverOptions options = {},
                            std::size_t kept = 3);
    WinnableDealer(const WinnableDealer&) = delete;
    WinnableDealer& operator=(const WinnableDealer&) = delete;
    ~WinnableDealer();

    // The oldest deal kept, at once; none when none is proven yet. Another is proven in its place.
    std::optional<GameState> take();

private:
    void run(std::stop_token stop);

    Shuffle shuffle_;
    Ready ready_;
    PositionSolve solve_;
    SolverOptions options_;
    std::size_t kept_;
    std::mutex mutex_;
    std::condition_variable_any taken_;
    std::deque<GameState> deals_;
    // Last: the thread starts once everything it uses exists, and stops first.
    std::jthread worker_;
};

} // namespace zelvaine::solver

#include "solver/winnable_dealer.hpp"

#include "solver/memory_release.hpp"
#include "solver/thread_name.hpp"

namespace zelvaine::solver {

WinnableDealer::WinnableDealer(Shuffle shuffle, Ready ready, PositionSolve solve, SolverOptions options, std::size_t kept)
    : shuffle_(std::move(shuffle)),
      ready_(std::move(ready)),
      solve_(solve ? std::move(solve) : PositionSolve(solver::solve)),
      options_(options),
      kept_(kept),
      worker_([this](std::stop_token stop) { run(std::move(stop)); })
{
    nameThread(worker_, "winnable-dealer");
}

WinnableDealer::~WinnableDealer()
{
    worker_.request_stop();
    worker_.join();
}

std::optional<GameState> WinnableDealer::take()
{
    std::optional<GameState> deal;
    {
        const std::scoped_lock lock(mutex_);
        if (deals_.empty()) return std::nullopt;
        deal = std::move(deals_.front());
        deals_.pop_front();
    }
    taken_.notify_all();
    return deal;
}

void WinnableDealer::run(std::stop_token stop)
{
    while (!stop.stop_requested()) {
        {
            std::unique_lock lock(mutex_);
            if (!taken_.wait(lock, stop, [this] { return deals_.size() < kept_; })) return;
        }
        GameState candidate = shuffle_();
        const Verdict verdict = solve_(candidate, options_, stop).verdict;
        releaseFreeMemory();
        if (verdict != Verdict::winnable) continue;
        {
            const std::scoped_lock lock(mutex_);
            deals_.push_back(std::move(candidate));
        }
        if (ready_) ready_();
    }
}

} // namespace zelvaine::solver

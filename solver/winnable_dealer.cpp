#include "solver/winnable_dealer.hpp"

#include "solver/memory_release.hpp"

namespace zelvaine::solver {

WinnableDealer::WinnableDealer(Shuffle shuffle, SolverOptions options)
    : shuffle_(std::move(shuffle)), options_(options), worker_([this](std::stop_token stop) { run(std::move(stop)); })
{
}

WinnableDealer::~WinnableDealer()
{
    worker_.request_stop();
    changed_.notify_all();
    worker_.join();
}

GameState WinnableDealer::take()
{
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return ready_.has_value(); });
    GameState deal = std::move(*ready_);
    ready_.reset();
    lock.unlock();
    changed_.notify_all();
    return deal;
}

void WinnableDealer::run(std::stop_token stop)
{
    while (!stop.stop_requested()) {
        {
            std::unique_lock lock(mutex_);
            if (!changed_.wait(lock, stop, [this] { return !ready_.has_value(); })) return;
        }
        GameState candidate = shuffle_();
        const Verdict verdict = solve(candidate, options_, stop).verdict;
        releaseFreeMemory();
        if (verdict != Verdict::winnable) continue;
        {
            const std::scoped_lock lock(mutex_);
            ready_ = std::move(candidate);
        }
        changed_.notify_all();
    }
}

} // namespace zelvaine::solver

#include "solver/winnability_service.hpp"

#include "solver/memory_release.hpp"
#include "solver/thread_name.hpp"

namespace zelvaine::solver {

WinnabilityService::WinnabilityService(Delivery deliver, SolverOptions options)
    : WinnabilityService(
          std::move(deliver),
          [](const GameState& position, const SolverOptions& budget, std::stop_token stop) {
              return solve(position, budget, std::move(stop));
          },
          releaseFreeMemory, options)
{}

WinnabilityService::WinnabilityService(Delivery deliver, SolveFunction solveFunction,
                                       std::function<void()> releaseMemory, SolverOptions options)
    : deliver_(std::move(deliver)),
      solve_(std::move(solveFunction)),
      options_(options),
      releaseMemory_(std::move(releaseMemory)),
      worker_([this](std::stop_token quit) { run(std::move(quit)); })
{
    // Named for a look at the process from outside: a profiler, or a test of the running game.
    nameThread(worker_, "solver");
    keepLargeBlocksMapped();
}

WinnabilityService::~WinnabilityService()
{
    cancel();
    worker_.request_stop();
    worker_.join();
}

std::uint64_t WinnabilityService::request(GameState position)
{
    return enqueue(Job{0, std::move(position), std::nullopt});
}

std::uint64_t WinnabilityService::requestLastWinnable(std::vector<GameState> line)
{
    return enqueue(Job{0, {}, std::move(line)});
}

std::uint64_t WinnabilityService::enqueue(Job job)
{
    std::uint64_t generation = 0;
    {
        const std::scoped_lock lock(mutex_);
        generation = ++generation_;
        job.generation = generation;
        pending_ = std::move(job);
        if (running_) running_->request_stop();
    }
    wake_.notify_one();
    return generation;
}

void WinnabilityService::cancel()
{
    const std::scoped_lock lock(mutex_);
    ++generation_;
    pending_.reset();
    if (running_) running_->request_stop();
}

bool WinnabilityService::isCurrent(std::uint64_t generation) const
{
    const std::scoped_lock lock(mutex_);
    return generation == generation_;
}

void WinnabilityService::run(std::stop_token quit)
{
    while (true) {
        Job job;
        std::stop_token stop;
        {
            std::unique_lock lock(mutex_);
            if (!wake_.wait(lock, quit, [this] { return pending_.has_value(); })) return;
            job = std::move(*pending_);
            pending_.reset();
            running_.emplace();
            stop = running_->get_token();
        }
        Answer answer{job.generation, {}, {}};
        if (job.line) {
            answer.search = findLastWinnable(*job.line, options_, solve_, stop);
        } else {
            answer.result = solve_(job.position, options_, stop);
        }
        // The positions and the search's tables go before the memory is handed back.
        job.position = {};
        job.line.reset();
        releaseMemory_();
        bool current = false;
        {
            const std::scoped_lock lock(mutex_);
            running_.reset();
            current = job.generation == generation_;
        }
        if (current) deliver_(std::move(answer));
    }
}

} // namespace zelvaine::solver

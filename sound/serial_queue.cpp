#include "sound/serial_queue.hpp"

#include <asio/executor_work_guard.hpp>
#include <asio/io_context.hpp>
#include <asio/post.hpp>
#include <asio/steady_timer.hpp>

#include <pthread.h>

#include <cstdio>
#include <cstdlib>
#include <future>

namespace zelvaine {

struct SerialQueue::Core {
    asio::io_context context{1};
    // Keeps run() waiting for work instead of returning when the queue is momentarily empty.
    asio::executor_work_guard<asio::io_context::executor_type> keepRunning{context.get_executor()};
};

struct DelayedWork::State {
    explicit State(asio::io_context& context) : timer(context) {}

    asio::steady_timer timer;
    // Cancelling the timer alone is not enough: once it has expired, its handler is already
    // queued and would still run with success.
    std::shared_ptr<bool> cancelled = std::make_shared<bool>(false);
};

DelayedWork::DelayedWork(std::unique_ptr<State> state) : state_(std::move(state)) {}
DelayedWork::DelayedWork(DelayedWork&&) noexcept = default;

DelayedWork& DelayedWork::operator=(DelayedWork&& other) noexcept
{
    if (this != &other) {
        cancel();
        state_ = std::move(other.state_);
    }
    return *this;
}

DelayedWork::~DelayedWork() { cancel(); }

void DelayedWork::cancel()
{
    if (!state_) return;
    *state_->cancelled = true;
    state_->timer.cancel();
}

SerialQueue::SerialQueue(const std::string& threadName) : core_(std::make_shared<Core>())
{
    // The thread shares the core so that it can finish running even if the queue is
    // destroyed from its own work.
    thread_ = std::thread([core = core_] { core->context.run(); });
    pthread_setname_np(thread_.native_handle(), threadName.substr(0, 15).c_str());
}

SerialQueue::~SerialQueue() { shutdown(); }

void SerialQueue::post(Work work) { asio::post(core_->context, std::move(work)); }

DelayedWork SerialQueue::runAfter(std::chrono::milliseconds delay, Work work)
{
    auto state = std::make_unique<DelayedWork::State>(core_->context);
    state->timer.expires_after(delay);
    state->timer.async_wait([cancelled = state->cancelled, work = std::move(work)](const asio::error_code& error) {
        if (error || *cancelled) return;
        work();
    });
    return DelayedWork(std::move(state));
}

bool SerialQueue::isCurrent() const { return core_->context.get_executor().running_in_this_thread(); }

void SerialQueue::requireCurrent(const char* operation) const
{
    if (isCurrent()) return;
    std::fprintf(stderr, "%s called off its serial queue\n", operation);
    std::abort();
}

void SerialQueue::waitUntilIdle()
{
    std::promise<void> idle;
    auto reached = idle.get_future();
    post([&idle] { idle.set_value(); });
    reached.wait();
}

void SerialQueue::shutdown()
{
    if (!thread_.joinable()) return;
    core_->keepRunning.reset();
    core_->context.stop();
    if (thread_.get_id() == std::this_thread::get_id()) thread_.detach();
    else thread_.join();
}

} // namespace zelvaine

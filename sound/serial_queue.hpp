#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <thread>

namespace zelvaine {

// Work scheduled for later on a SerialQueue. Cancelling, or dropping the handle, guarantees
// the work will not run, even when its time has already come and it waits in the queue.
// Create, cancel and drop it on its queue only.
class DelayedWork {
public:
    DelayedWork(DelayedWork&&) noexcept;
    DelayedWork& operator=(DelayedWork&&) noexcept;
    ~DelayedWork();

    void cancel();

private:
    friend class SerialQueue;
    struct State;
    explicit DelayedWork(std::unique_ptr<State> state);
    std::unique_ptr<State> state_;
};

// One worker thread running posted work in order. Posting only enqueues, so callers never
// wait for the work itself.
class SerialQueue {
public:
    using Work = std::function<void()>;

    // `threadName` is what debuggers show; Linux keeps 15 characters of it.
    explicit SerialQueue(const std::string& threadName);
    SerialQueue(const SerialQueue&) = delete;
    SerialQueue& operator=(const SerialQueue&) = delete;
    ~SerialQueue();

    void post(Work work);
    // Runs `work` on this queue after `delay`; call on the queue.
    DelayedWork runAfter(std::chrono::milliseconds delay, Work work);

    bool isCurrent() const;
    // Stops the program when called off the queue: state confined to the queue would race.
    void requireCurrent(const char* operation) const;

    // Blocks until all work posted before the call has run. Never call it on the queue.
    void waitUntilIdle();

    // Drops work not yet run and ends the thread. Safe to call from the queue's own work,
    // in which case the thread finishes after that work returns.
    void shutdown();

private:
    struct Core;
    std::shared_ptr<Core> core_;
    std::thread thread_;
};

} // namespace zelvaine

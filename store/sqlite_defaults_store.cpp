#include "store/sqlite_defaults_store.hpp"

#include "store/defaults_location.hpp"
#include "store/keep_aside.hpp"

#include <pthread.h>
#include <sched.h>

#include <chrono>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace zelvaine {

SqliteDefaultsStore::SqliteDefaultsStore() : SqliteDefaultsStore(defaultDefaultsDatabasePath()) {}

SqliteDefaultsStore::SqliteDefaultsStore(std::filesystem::path file) : file_(std::move(file))
{
    std::error_code ignored;
    if (file_.has_parent_path()) std::filesystem::create_directories(file_.parent_path(), ignored);

    OpenedDefaults opened = openDefaultsDatabase(file_);
    if (opened.state == DefaultsFileState::damaged) {
        // Losing the defaults is better than not starting; losing the file itself is not, so it
        // is kept, and a new one is only made once it is out of the way.
        keptAsidePath_ = keepDamagedFileAside(file_, std::chrono::system_clock::now());
        opened = keptAsidePath_ ? openDefaultsDatabase(file_) : OpenedDefaults{};
    }
    values_ = std::move(opened.values);
    database_ = std::move(opened.database);
    if (!database_) failure_ = writeFailureOf(opened.failure);
    awaitingFile_ = opened.state == DefaultsFileState::unavailable && failure_ == DefaultsWriteFailure::busy;
    writer_ = std::thread([this] { runWriter(); });
}

SqliteDefaultsStore::~SqliteDefaultsStore()
{
    flush();
    {
        std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    writerWake_.notify_one();
    writer_.join();
}

std::optional<DefaultsValue> SqliteDefaultsStore::value(std::string_view key) const
{
    SharedDefaultsValue found;
    {
        std::lock_guard lock(mutex_);
        auto entry = values_.find(key);
        if (entry == values_.end()) return std::nullopt;
        found = entry->second;
    }
    // A large value is copied outside the lock, so the writer is never held up by a reader.
    return found->value();
}

void SqliteDefaultsStore::set(std::string_view key, DefaultsValue value)
{
    store(key, std::make_shared<const DefaultsEntry>(std::move(value)));
}

void SqliteDefaultsStore::setData(std::string_view key, DataPieces pieces)
{
    store(key, std::make_shared<const DefaultsEntry>(std::move(pieces)));
}

void SqliteDefaultsStore::setRuns(std::string_view key, DataRuns runs)
{
    store(key, std::make_shared<const DefaultsEntry>(std::move(runs)));
}

std::optional<DataRuns> SqliteDefaultsStore::dataRuns(std::string_view key) const
{
    SharedDefaultsValue found;
    {
        std::lock_guard lock(mutex_);
        auto entry = values_.find(key);
        if (entry == values_.end()) return std::nullopt;
        found = entry->second;
    }
    if (const DataRuns* runs = found->runs()) return *runs;
    return std::nullopt;
}

void SqliteDefaultsStore::store(std::string_view key, SharedDefaultsValue shared)
{
    std::vector<SharedDefaultsValue> released; // freed after the lock, on this thread
    {
        std::lock_guard lock(mutex_);
        auto [entry, inserted] = values_.try_emplace(std::string(key), shared);
        if (!inserted) retired_.push_back(std::exchange(entry->second, shared));
        released = enqueue(key, std::move(shared));
    }
    writerWake_.notify_one();
}

void SqliteDefaultsStore::remove(std::string_view key)
{
    std::vector<SharedDefaultsValue> released;
    {
        std::lock_guard lock(mutex_);
        if (auto entry = values_.find(key); entry != values_.end()) {
            retired_.push_back(std::move(entry->second));
            values_.erase(entry);
        }
        // Written even when the key was not in the copy: another instance may have stored it.
        released = enqueue(key, nullptr);
    }
    writerWake_.notify_one();
}

std::vector<SharedDefaultsValue> SqliteDefaultsStore::enqueue(std::string_view key, SharedDefaultsValue value)
{
    auto [entry, inserted] = pending_.try_emplace(std::string(key), value);
    if (!inserted) retired_.push_back(std::exchange(entry->second, std::move(value)));
    ++requested_;
    holdRetry_ = false;
    // Writes much faster than the disk would pile up displaced values; past a few, the caller
    // frees them itself rather than hold hundreds of megabytes.
    constexpr std::size_t retiredLimit = 8;
    if (retired_.size() <= retiredLimit) return {};
    return std::exchange(retired_, {});
}

void SqliteDefaultsStore::flush()
{
    std::unique_lock lock(mutex_);
    if (!pending_.empty()) {
        ++requested_;
        holdRetry_ = false;
        writerWake_.notify_one();
    }
    const std::uint64_t target = requested_;
    settledChanged_.wait(lock, [&] { return settled_ >= target; });
}

std::optional<DefaultsWriteFailure> SqliteDefaultsStore::writeFailure() const
{
    std::lock_guard lock(mutex_);
    return failure_;
}

std::optional<std::string> SqliteDefaultsStore::keptAsideFile() const
{
    if (!keptAsidePath_) return std::nullopt;
    return keptAsidePath_->string();
}

bool SqliteDefaultsStore::waitingForFile() const
{
    std::lock_guard lock(mutex_);
    return awaitingFile_;
}

std::optional<std::string> SqliteDefaultsStore::keepAside(std::string_view key, const DefaultsData& value)
{
    if (auto aside = keepValueAside(file_, key, value, std::chrono::system_clock::now())) return aside->string();
    return std::nullopt;
}

void SqliteDefaultsStore::guard(std::string_view key, std::string_view generationKey)
{
    std::lock_guard lock(mutex_);
    DefaultsGuard guard{std::string(key), std::string(generationKey), 0, false, false};
    // The number that goes with the value this process read at start.
    if (auto entry = values_.find(generationKey); entry != values_.end()) {
        if (const auto* number = std::get_if<std::int64_t>(&entry->second->value())) guard.expected = *number;
    }
    guardRequest_ = std::move(guard);
}

bool SqliteDefaultsStore::overtaken() const
{
    std::lock_guard lock(mutex_);
    return overtaken_;
}

void SqliteDefaultsStore::retake()
{
    std::lock_guard lock(mutex_);
    retakeRequested_ = true;
    overtaken_ = false;
}

SqliteDefaultsStore::WriterCounts SqliteDefaultsStore::writerCounts() const
{
    std::lock_guard lock(mutex_);
    return counts_;
}

void SqliteDefaultsStore::adoptGuardRequest()
{
    if (!guardRequest_) return;
    writerGuard_ = std::move(*std::exchange(guardRequest_, std::nullopt));
    guarded_ = true;
}

void SqliteDefaultsStore::reopen(std::unique_lock<std::mutex>& lock)
{
    lock.unlock();
    // A short wait: this thread also settles flushes, which must not hang on the lock.
    OpenedDefaults opened = openDefaultsDatabase(file_, std::chrono::milliseconds(100));
    lock.lock();
    if (opened.state != DefaultsFileState::usable || !opened.database) {
        if (opened.state == DefaultsFileState::damaged) {
            // Found damaged once readable: the start's rules apply, only later.
            awaitingFile_ = false;
            failure_ = DefaultsWriteFailure::noPlace;
        }
        return;
    }
    // This run never saw what the file holds; its own values were made without it, so the
    // file's win, and a guarded value there is one this run must not overwrite.
    adoptGuardRequest();
    for (auto& [key, value] : opened.values) {
        if (auto waiting = pending_.find(key); waiting != pending_.end()) {
            retired_.push_back(std::move(waiting->second));
            pending_.erase(waiting);
        }
        if (guarded_ && key == writerGuard_.key) writerGuard_.expected = -1; // no generation matches
        values_.insert_or_assign(key, std::move(value));
    }
    database_ = std::move(opened.database);
    awaitingFile_ = false;
    failure_.reset();
    holdRetry_ = false;
    // What waits is written next under a number of its own, so that a flush from now on waits
    // for it.
    if (!pending_.empty()) ++requested_;
}

void SqliteDefaultsStore::runWriter()
{
#ifdef SCHED_BATCH
    // Woken by a write, an ordinary thread may take the writer's own processor from it for a few
    // milliseconds on a busy machine; a batch thread waits for its turn instead.
    const sched_param parameters{};
    pthread_setschedparam(pthread_self(), SCHED_BATCH, &parameters);
#endif
    std::unique_lock lock(mutex_);
    for (;;) {
        const auto ready = [&] { return stopping_ || (!pending_.empty() && !holdRetry_); };
        if (awaitingFile_) {
            // Nobody tells us when the other program lets go; look again now and then.
            constexpr auto reopenInterval = std::chrono::seconds(1);
            writerWake_.wait_for(lock, reopenInterval, ready);
            if (stopping_) return;
            reopen(lock);
            if (!ready()) continue;
        } else {
            writerWake_.wait(lock, ready);
        }
        if (pending_.empty() || holdRetry_) return; // stopping, and nothing left to try

        // Everything requested so far is either in this batch or committed already.
        DefaultsChanges batch = std::exchange(pending_, {});
        const std::uint64_t covers = requested_;
        std::vector<SharedDefaultsValue> retired = std::exchange(retired_, {});
        adoptGuardRequest();
        if (std::exchange(retakeRequested_, false)) writerGuard_.retaking = true;
        lock.unlock();
        retired.clear();

        DefaultsDatabase::WriteOutcome outcome;
        if (database_) {
            try {
                outcome = database_->write(batch, guarded_ ? &writerGuard_ : nullptr);
            } catch (...) {
                // Out of memory while writing: the values stay pending for the next attempt.
            }
        }

        lock.lock();
        // A retake asked for meanwhile is about the next batch; this one's verdict is stale.
        if (guarded_ && !retakeRequested_) overtaken_ = writerGuard_.overtaken;
        if (database_) {
            if (outcome.committed) {
                failure_.reset();
            } else {
                // Out of memory counts as the disk's fault: to the player it is the same.
                failure_ = outcome.failure != 0 ? writeFailureOf(outcome.failure) : DefaultsWriteFailure::ioError;
            }
        }
        if (outcome.committed) {
            if (outcome.rows > 0) {
                counts_.transactions += 1;
                counts_.rows += outcome.rows;
            }
        } else if (database_ || awaitingFile_) {
            // Newer values that came in meanwhile win over the ones that failed.
            pending_.merge(batch);
            // A write or flush that came in meanwhile asked for an attempt after this one; holding
            // back then would leave a flush waiting for ever.
            if (requested_ == covers) holdRetry_ = true;
        }
        settled_ = covers;
        settledChanged_.notify_all();
        if (!batch.empty()) {
            // Whatever merge left behind is older than what is pending; let it go unlocked.
            lock.unlock();
            batch.clear();
            lock.lock();
        }
    }
}

} // namespace zelvaine

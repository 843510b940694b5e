#pragma once

#include "store/defaults_database.hpp"
#include "store/defaults_store.hpp"

#include <condition_variable>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace zelvaine {

// The defaults store of the running game: one SQLite file, read whole at construction into an
// in-memory copy that serves every read. A write changes the copy at once and is handed to one
// background writer, which keeps only the newest value of each key and commits in transactions,
// so no caller but flush() ever waits for the disk. The game goes on whatever the disk does;
// writeFailure() says why writes are not arriving, and a file another program holds at start is
// waited for briefly, then looked for again in the background until it opens.
class SqliteDefaultsStore final : public DefaultsStore {
public:
    // Uses the file at defaultDefaultsDatabasePath().
    SqliteDefaultsStore();
    // Creates the file and its folder when missing.
    explicit SqliteDefaultsStore(std::filesystem::path file);
    // Flushes, then stops the writer.
    ~SqliteDefaultsStore() override;

    SqliteDefaultsStore(const SqliteDefaultsStore&) = delete;
    SqliteDefaultsStore& operator=(const SqliteDefaultsStore&) = delete;

    std::optional<DefaultsValue> value(std::string_view key) const override;
    void set(std::string_view key, DefaultsValue value) override;
    // Takes the pieces as they are; the writer thread joins them.
    void setData(std::string_view key, DataPieces pieces) override;
    // Each piece is stored once, and each run as the change from the one in the file.
    void setRuns(std::string_view key, DataRuns runs) override;
    std::optional<DataRuns> dataRuns(std::string_view key) const override;
    void remove(std::string_view key) override;
    // Returns once every earlier write is committed, or its attempt has failed.
    void flush() override;
    // Set from the start when there is no file to write to, and by every failed commit; the
    // failed changes stay pending and are tried again with the next write or flush.
    std::optional<DefaultsWriteFailure> writeFailure() const override;
    std::optional<std::string> keptAsideFile() const override;
    bool waitingForFile() const override;
    // A file next to the database, written and synced at once.
    std::optional<std::string> keepAside(std::string_view key, const DefaultsData& value) override;
    // One guarded key per store; a second call replaces the first.
    void guard(std::string_view key, std::string_view generationKey) override;
    bool overtaken() const override;
    void retake() override;

    const std::filesystem::path& file() const { return file_; }
    // The file found at start was damaged: it was set aside under keptAsidePath() and this run
    // started from an empty store, which the application may want to mention.
    bool recoveredFromDamage() const { return keptAsidePath_.has_value(); }
    const std::optional<std::filesystem::path>& keptAsidePath() const { return keptAsidePath_; }

    struct WriterCounts {
        std::uint64_t transactions = 0; // committed transactions that changed the file
        std::uint64_t rows = 0;         // rows written or deleted by them
    };
    WriterCounts writerCounts() const;

private:
    void store(std::string_view key, SharedDefaultsValue value);
    // For a file that was locked at start: tries again to open it, and when it opens, lets what
    // the file holds win over this run's stand-ins. Called by the writer, unlocked.
    void reopen(std::unique_lock<std::mutex>& lock);
    void adoptGuardRequest();
    // Queues the change; gives back displaced values for the caller to free when too many wait.
    std::vector<SharedDefaultsValue> enqueue(std::string_view key, SharedDefaultsValue value);
    void runWriter();

    const std::filesystem::path file_;
    std::optional<std::filesystem::path> keptAsidePath_;
    // Used by the writer thread only, once it has started.
    std::unique_ptr<DefaultsDatabase> database_;

    mutable std::mutex mutex_;
    DefaultsValues values_;
    DefaultsChanges pending_;
    // Values displaced by newer ones, left for the writer to release: freeing a saved game of
    // several megabytes can cost the caller a millisecond.
    std::vector<SharedDefaultsValue> retired_;
    // Every write and every flush that finds changes waiting takes the next number; settled_
    // is the highest number whose changes have been committed or have failed.
    std::uint64_t requested_ = 0;
    std::uint64_t settled_ = 0;
    // After a failure the changes stay pending, but wait for the next write or flush instead of
    // being retried in a loop against a disk that refuses them.
    bool holdRetry_ = false;
    // The file was locked at start and has not been read yet: the values are stand-ins, and
    // nothing is written until it has been.
    bool awaitingFile_ = false;
    bool stopping_ = false;
    std::optional<DefaultsWriteFailure> failure_;
    // Handed to the writer with its next batch.
    std::optional<DefaultsGuard> guardRequest_;
    bool retakeRequested_ = false;
    bool overtaken_ = false;
    // The writer's own; it reports into overtaken_.
    DefaultsGuard writerGuard_;
    bool guarded_ = false;
    WriterCounts counts_;
    std::condition_variable writerWake_;
    std::condition_variable settledChanged_;
    std::thread writer_;
};

} // namespace zelvaine

#pragma once

// Another program holding the defaults file so that not even a reader gets in, as a stuck
// instance or a backup tool in exclusive mode would.

#include <sqlite3.h>

#include <filesystem>

namespace zelvaine::testing {

class FileHolder {
public:
    explicit FileHolder(const std::filesystem::path& file)
    {
        sqlite3_open(file.c_str(), &connection_);
        // In exclusive locking mode the first transaction's lock is kept until the connection
        // closes; with the write-ahead log, readers are shut out too.
        held_ = sqlite3_exec(connection_, "PRAGMA locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE; COMMIT;", nullptr, nullptr,
                             nullptr) == SQLITE_OK;
    }
    FileHolder(const FileHolder&) = delete;
    FileHolder& operator=(const FileHolder&) = delete;
    ~FileHolder() { release(); }

    bool held() const { return held_; }
    void release()
    {
        if (connection_) sqlite3_close(connection_);
        connection_ = nullptr;
    }

private:
    sqlite3* connection_ = nullptr;
    bool held_ = false;
};

} // namespace zelvaine::testing

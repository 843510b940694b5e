#pragma once

#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <string>

namespace zelvaine::testing {

// A fresh folder under the system's temporary directory, removed with everything in it (made
// writable first, for the tests that take permissions away). Named after the process so that
// test programs run in parallel never share one.
class ScratchFolder {
public:
    ScratchFolder()
    {
        static std::atomic<int> counter{0};
        path_ = std::filesystem::temp_directory_path() /
                ("zelvaine-test-" + std::to_string(getpid()) + "-" + std::to_string(counter++));
        std::filesystem::remove_all(path_);
        std::filesystem::create_directories(path_);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder()
    {
        std::error_code ignored;
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all, std::filesystem::perm_options::add,
                                     ignored);
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

} // namespace zelvaine::testing

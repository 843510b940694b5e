#pragma once

#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <string>

namespace zelvaine::testing {

// A fresh folder under the system's temporary directory, removed with everything in it.
// Named after the process so that tests run in parallel never share one.
class ScratchFolder {
public:
    ScratchFolder()
    {
        static std::atomic<int> counter{0};
        path_ = std::filesystem::temp_directory_path() /
                ("zelvaine-sound-" + std::to_string(getpid()) + "-" + std::to_string(counter++));
        std::filesystem::remove_all(path_);
        std::filesystem::create_directories(path_);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

} // namespace zelvaine::testing

#pragma once

#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace zelvaine::testing {

// A fresh folder under the system's temporary directory, removed with everything in it. Named
// after the process so that test programs run in parallel never share one.
class DefaultsScratchFolder {
public:
    DefaultsScratchFolder()
    {
        static std::atomic<int> counter{0};
        path_ = std::filesystem::temp_directory_path() /
                ("zelvaine-defaults-" + std::to_string(getpid()) + "-" + std::to_string(counter++));
        std::filesystem::remove_all(path_);
        std::filesystem::create_directories(path_);
    }
    DefaultsScratchFolder(const DefaultsScratchFolder&) = delete;
    DefaultsScratchFolder& operator=(const DefaultsScratchFolder&) = delete;
    ~DefaultsScratchFolder()
    {
        std::error_code ignored;
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all, std::filesystem::perm_options::add,
                                     ignored);
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path file() const { return path_ / "defaults.sqlite3"; }

private:
    std::filesystem::path path_;
};

inline std::vector<std::uint8_t> readBytes(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

inline void writeBytes(const std::filesystem::path& path, const std::vector<std::uint8_t>& bytes)
{
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

} // namespace zelvaine::testing

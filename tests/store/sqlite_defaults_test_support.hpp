#pragma once

#include "tests/support/scratch_folder.hpp"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace zelvaine::testing {

// A scratch folder with the defaults file's usual place in it.
class DefaultsScratchFolder : public ScratchFolder {
public:
    std::filesystem::path file() const { return path() / "defaults.sqlite3"; }
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

#pragma once

#include "tests/support/scratch_folder.hpp"

#include <gtest/gtest.h>
#include <sqlite3.h>

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

// Runs SQL on the file through a connection of its own, as another program would.
inline void runSql(const std::filesystem::path& file, const std::string& sql)
{
    sqlite3* connection = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &connection), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(connection, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(connection);
    sqlite3_close(connection);
}

} // namespace zelvaine::testing

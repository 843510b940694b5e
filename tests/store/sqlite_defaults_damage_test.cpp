#include "store/keep_aside.hpp"
#include "store/sqlite_defaults_store.hpp"
#include "tests/store/sqlite_defaults_test_support.hpp"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace zelvaine {
namespace {

using testing::DefaultsScratchFolder;
using testing::readBytes;
using testing::runSql;
using testing::writeBytes;
namespace fs = std::filesystem;

std::vector<std::uint8_t> randomBytes(std::size_t size, std::uint32_t seed)
{
    std::mt19937 random(seed);
    std::vector<std::uint8_t> bytes(size);
    for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random());
    return bytes;
}

// A database of ours holding a large value, so that cutting the file loses pages in use.
void writeGoodDatabase(const fs::path& file)
{
    SqliteDefaultsStore store(file);
    store.set("zelvaine.saved-game.v1", randomBytes(600 * 1024, 1));
    store.set("zelvaine.preferences.sounds-enabled", false);
}

std::vector<fs::path> keptAsideFiles(const fs::path& folder)
{
    std::vector<fs::path> found;
    for (const auto& entry : fs::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        if (name.find(".damaged-") == std::string::npos) continue;
        if (name.ends_with("-wal") || name.ends_with("-shm") || name.ends_with("-journal")) continue;
        found.push_back(entry.path());
    }
    std::sort(found.begin(), found.end());
    return found;
}

struct Damage {
    const char* name;
    std::function<void(const fs::path&)> make;
};

std::vector<Damage> damages()
{
    return {
        {"truncated to half",
         [](const fs::path& file) {
             writeGoodDatabase(file);
             fs::resize_file(file, fs::file_size(file) / 2);
         }},
        {"truncated inside the header",
         [](const fs::path& file) {
             writeGoodDatabase(file);
             fs::resize_file(file, 60);
         }},
        {"random bytes", [](const fs::path& file) { writeBytes(file, randomBytes(64 * 1024, 2)); }},
        {"our header over random pages",
         [](const fs::path& file) {
             writeGoodDatabase(file);
             auto bytes = readBytes(file);
             const auto noise = randomBytes(bytes.size() - 4096, 3);
             std::copy(noise.begin(), noise.end(), bytes.begin() + 4096);
             writeBytes(file, bytes);
         }},
        {"someone else's database",
         [](const fs::path& file) {
             runSql(file, "CREATE TABLE settings (name TEXT, value TEXT);"
                          "INSERT INTO settings VALUES ('volume', 'loud')");
         }},
        {"our mark but another table",
         [](const fs::path& file) {
             runSql(file, "PRAGMA application_id=1514952260; PRAGMA user_version=1;"
                          "CREATE TABLE defaults (name TEXT PRIMARY KEY, value BLOB)");
         }},
        {"a newer layout of ours",
         [](const fs::path& file) {
             writeGoodDatabase(file);
             runSql(file, "PRAGMA user_version=3");
         }},
    };
}

TEST(SqliteDefaultsDamage, ADamagedFileIsKeptAsideAsFoundAndAFreshStoreIsUsed)
{
    for (const auto& damage : damages()) {
        SCOPED_TRACE(damage.name);
        DefaultsScratchFolder folder;
        damage.make(folder.file());
        const auto damagedBytes = readBytes(folder.file());
        {
            SqliteDefaultsStore store(folder.file());
            EXPECT_TRUE(store.recoveredFromDamage());
            ASSERT_TRUE(store.keptAsidePath());
            EXPECT_EQ(store.keptAsidePath()->parent_path(), folder.path());
            EXPECT_FALSE(store.value("zelvaine.saved-game.v1"));
            EXPECT_FALSE(store.value("zelvaine.preferences.sounds-enabled"));
            store.set("zelvaine.preferences.sounds-enabled", true);
        }
        const auto kept = keptAsideFiles(folder.path());
        ASSERT_EQ(kept.size(), 1U);
        EXPECT_TRUE(readBytes(kept.front()) == damagedBytes);

        SqliteDefaultsStore reopened(folder.file());
        EXPECT_FALSE(reopened.recoveredFromDamage());
        EXPECT_EQ(reopened.boolean("zelvaine.preferences.sounds-enabled"), true);
    }
}

TEST(SqliteDefaultsDamage, AnEmptyFileIsANewStoreNotADamagedOne)
{
    DefaultsScratchFolder folder;
    writeBytes(folder.file(), {});
    {
        SqliteDefaultsStore store(folder.file());
        EXPECT_FALSE(store.recoveredFromDamage());
        store.set("zelvaine.test.value", std::int64_t{5});
    }
    EXPECT_TRUE(keptAsideFiles(folder.path()).empty());
    EXPECT_EQ(SqliteDefaultsStore(folder.file()).integer("zelvaine.test.value"), 5);
}

TEST(SqliteDefaultsDamage, ALaterDamageNeverOverwritesAnEarlierKeptFile)
{
    DefaultsScratchFolder folder;
    const auto firstDamage = randomBytes(10000, 4);
    const auto secondDamage = randomBytes(20000, 5);
    writeBytes(folder.file(), firstDamage);
    SqliteDefaultsStore(folder.file()).set("zelvaine.test.between", true);
    writeBytes(folder.file(), secondDamage);
    SqliteDefaultsStore second(folder.file());
    EXPECT_TRUE(second.recoveredFromDamage());

    // Names sort in the order the files were set aside, within one second too ("…Z", "…Z-2").
    const auto kept = keptAsideFiles(folder.path());
    ASSERT_EQ(kept.size(), 2U);
    EXPECT_TRUE(readBytes(kept[0]) == firstDamage);
    EXPECT_TRUE(readBytes(kept[1]) == secondDamage);
}

TEST(KeepDamagedFileAside, MovesTheFileWithItsCompanionsUnderAFreeTimeStampedName)
{
    DefaultsScratchFolder folder;
    const fs::path file = folder.file();
    const auto moment = std::chrono::sys_days{std::chrono::year{2031} / 3 / 4} + std::chrono::hours{5} +
                        std::chrono::minutes{6} + std::chrono::seconds{7};
    const std::string stamped = file.string() + ".damaged-20310304T050607Z";

    writeBytes(file, {1});
    writeBytes(file.string() + "-wal", {2});
    writeBytes(file.string() + "-shm", {3});
    auto first = keepDamagedFileAside(file, moment);
    ASSERT_TRUE(first);
    EXPECT_EQ(*first, fs::path(stamped));
    EXPECT_EQ(readBytes(stamped + "-wal"), std::vector<std::uint8_t>{2});
    EXPECT_EQ(readBytes(stamped + "-shm"), std::vector<std::uint8_t>{3});
    EXPECT_FALSE(fs::exists(file.string() + "-wal"));
    EXPECT_FALSE(fs::exists(file.string() + "-shm"));

    // A name is free only when its companions' names are free too.
    writeBytes(stamped + "-2-wal", {5});
    writeBytes(file, {4});
    writeBytes(file.string() + "-wal", {6});
    auto second = keepDamagedFileAside(file, moment);
    ASSERT_TRUE(second);
    EXPECT_EQ(*second, fs::path(stamped + "-3"));
    EXPECT_EQ(readBytes(*first), std::vector<std::uint8_t>{1});
    EXPECT_EQ(readBytes(*second), std::vector<std::uint8_t>{4});
    EXPECT_EQ(readBytes(stamped + "-2-wal"), std::vector<std::uint8_t>{5});
    EXPECT_EQ(readBytes(stamped + "-3-wal"), std::vector<std::uint8_t>{6});
    EXPECT_FALSE(fs::exists(file));
}

} // namespace
} // namespace zelvaine

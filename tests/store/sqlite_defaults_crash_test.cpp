#include "store/sqlite_defaults_store.hpp"
#include "tests/store/child_process.hpp"
#include "tests/store/defaults_crash_record.hpp"
#include "tests/store/sqlite_defaults_test_support.hpp"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <thread>

namespace zelvaine {
namespace {

namespace crash_record = testing::crash_record;

using testing::readReport;

testing::ReportingChild startWriter(const std::filesystem::path& file)
{
    return testing::startReportingChild(ZELVAINE_DEFAULTS_CRASH_WRITER, {file.string()});
}

TEST(SqliteDefaultsCrash, AKillAtAnyMomentLeavesTheLastFlushedRecordOrANewerOne)
{
    testing::DefaultsScratchFolder folder;
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);

    std::uint64_t verified = 0; // the record found after the previous kill
    for (int round = 0; round < 50; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        const auto writer = startWriter(folder.file());
        ASSERT_GT(writer.pid, 0);

        // One round in five is killed while it opens the file and perhaps replays the log.
        const bool whileOpening = random() % 5 == 0;
        std::uint64_t flushed = verified;
        if (!whileOpening) {
            const auto ready = readReport(writer.reports);
            ASSERT_TRUE(ready) << "the writer did not start";
            EXPECT_EQ(*ready, verified);
            // One flush at least before the kill, however slow the machine (sanitizers, load):
            // the records must keep growing for the later rounds to test large values.
            const auto first = readReport(writer.reports);
            ASSERT_TRUE(first) << "the writer made no progress";
            flushed = std::max(flushed, *first);
        }
        std::this_thread::sleep_for(std::chrono::microseconds(random() % (whileOpening ? 3000 : 8000)));
        kill(writer.pid, SIGKILL);
        int status = 0;
        waitpid(writer.pid, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << "the writer stopped, status " << status;

        while (const auto report = readReport(writer.reports)) flushed = std::max(flushed, *report);
        close(writer.reports);

        SqliteDefaultsStore reader(folder.file());
        ASSERT_FALSE(reader.recoveredFromDamage());
        const auto stored = reader.data(crash_record::key);
        if (flushed == 0 && !stored) continue;
        ASSERT_TRUE(stored);
        const auto sequence = crash_record::decode(*stored);
        ASSERT_TRUE(sequence) << "the record is damaged";
        EXPECT_GE(*sequence, flushed);
        // Only the four records set before the next flush can be newer than the last report.
        EXPECT_LE(*sequence, flushed + 4);
        verified = *sequence;
    }
    // The records grew to a good size and the file was written to in most rounds.
    EXPECT_GT(verified, 40U);
}

} // namespace
} // namespace zelvaine

// What keeping a long game costs the game: set() and setData() of a saved game on the calling
// thread, which must stay far below a frame because the disk write happens behind it; the wait in
// flush() that follows; and reading the file back at start. The files go to $TMPDIR (or /tmp), so point TMPDIR
// at the disk to be measured.
#include "store/sqlite_defaults_store.hpp"
#include "tests/support/scratch_folder.hpp"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace {

using zelvaine::DefaultsData;
using zelvaine::SqliteDefaultsStore;

// A saved game with about a thousand positions of history.
constexpr std::size_t kSavedGameBytes = 8'500'000;
constexpr const char* kKey = "zelvaine.saved-game.v1";

// The defaults file inside a scratch folder of its own.
std::filesystem::path defaultsFile(const zelvaine::testing::ScratchFolder& folder)
{
    return folder.path() / "defaults.sqlite3";
}

// Differs from one call to the next, so that no write is skipped as unchanged.
DefaultsData savedGame(std::uint32_t variant)
{
    DefaultsData data(kSavedGameBytes);
    std::uint32_t state = variant * 2654435761U + 1;
    for (auto& byte : data) {
        state = state * 1664525U + 1013904223U;
        byte = static_cast<std::uint8_t>(state >> 24);
    }
    return data;
}

// Each iteration is timed by hand, so that preparing the next value is left out; the median and
// the worst case go next to the mean, which a single descheduling can skew.
class Samples {
public:
    explicit Samples(benchmark::State& state) : state_(state) {}
    ~Samples()
    {
        if (seconds_.empty()) return;
        std::sort(seconds_.begin(), seconds_.end());
        state_.counters["median_us"] = seconds_[seconds_.size() / 2] * 1e6;
        state_.counters["max_us"] = seconds_.back() * 1e6;
    }
    void start() { start_ = std::chrono::steady_clock::now(); }
    void stop()
    {
        const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
        seconds_.push_back(seconds);
        state_.SetIterationTime(seconds);
    }

private:
    benchmark::State& state_;
    std::chrono::steady_clock::time_point start_;
    std::vector<double> seconds_;
};

// The writer is idle when the value arrives, as it is between two moves of a player.
void setSavedGameToAnIdleWriter(benchmark::State& state)
{
    zelvaine::testing::ScratchFolder folder;
    SqliteDefaultsStore store(defaultsFile(folder));
    std::uint32_t variant = 0;
    Samples samples(state);
    for (auto _ : state) {
        DefaultsData value = savedGame(++variant);
        store.flush();
        samples.start();
        store.set(kKey, std::move(value));
        samples.stop();
    }
    store.flush();
}
// Each iteration writes 8.5 MB, so the counts are fixed rather than grown to a minimum time.
BENCHMARK(setSavedGameToAnIdleWriter)->UseManualTime()->Iterations(40)->Unit(benchmark::kMicrosecond);

// Moves faster than the disk: the writer is busy with the previous value.
void setSavedGameToABusyWriter(benchmark::State& state)
{
    zelvaine::testing::ScratchFolder folder;
    SqliteDefaultsStore store(defaultsFile(folder));
    std::uint32_t variant = 0;
    Samples samples(state);
    for (auto _ : state) {
        DefaultsData value = savedGame(++variant);
        samples.start();
        store.set(kKey, std::move(value));
        samples.stop();
    }
    store.flush();
}
BENCHMARK(setSavedGameToABusyWriter)->UseManualTime()->Iterations(40)->Unit(benchmark::kMicrosecond);

// The game hands its saved game over as pieces, one per position, most of them shared with the
// save before; joining them is the writer's work.
void setSavedGameAsPieces(benchmark::State& state)
{
    zelvaine::testing::ScratchFolder folder;
    SqliteDefaultsStore store(defaultsFile(folder));
    constexpr std::size_t positions = 1000;
    zelvaine::DataPieces history;
    for (std::size_t i = 0; i < positions; ++i) {
        const char filler = static_cast<char>('a' + i % 26);
        history.push_back(std::make_shared<const std::string>(kSavedGameBytes / positions, filler));
    }
    std::uint32_t variant = 0;
    Samples samples(state);
    for (auto _ : state) {
        zelvaine::DataPieces pieces = history;
        pieces.push_back(std::make_shared<const std::string>(std::to_string(++variant)));
        store.flush();
        samples.start();
        store.setData(kKey, std::move(pieces));
        samples.stop();
    }
    store.flush();
}
BENCHMARK(setSavedGameAsPieces)->UseManualTime()->Iterations(40)->Unit(benchmark::kMicrosecond);

// How long flush() waits when it comes right after set(): one durable commit of the value.
void flushAfterSettingSavedGame(benchmark::State& state)
{
    zelvaine::testing::ScratchFolder folder;
    SqliteDefaultsStore store(defaultsFile(folder));
    std::uint32_t variant = 0;
    Samples samples(state);
    for (auto _ : state) {
        store.set(kKey, savedGame(++variant));
        samples.start();
        store.flush();
        samples.stop();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * kSavedGameBytes));
}
BENCHMARK(flushAfterSettingSavedGame)->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);

// Start of the program: opening and checking the file, reading it whole, then copying the saved
// game out of the store as the game store does when it restores.
void openAndReadSavedGame(benchmark::State& state)
{
    zelvaine::testing::ScratchFolder folder;
    {
        SqliteDefaultsStore writer(defaultsFile(folder));
        writer.set(kKey, savedGame(1));
    }
    Samples samples(state);
    for (auto _ : state) {
        samples.start();
        {
            SqliteDefaultsStore store(defaultsFile(folder));
            benchmark::DoNotOptimize(store.data(kKey));
            samples.stop();
        }
    }
}
BENCHMARK(openAndReadSavedGame)->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();

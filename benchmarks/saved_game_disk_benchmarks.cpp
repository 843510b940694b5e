// What a save costs the disk at any length of history: the bytes that reach the storage device
// per move (from /proc/self/io, which counts the log, the file and every checkpoint), the time
// from the move to its save being durable, the restore at start, and the size of the file once a
// long game gave way to a new one. The files go to $TMPDIR (or /tmp): point it at the disk to be
// measured, not at a tmpfs, where nothing reaches a device.
#include "engine/move_rules.hpp"
#include "store/game_store.hpp"
#include "store/saved_game.hpp"
#include "store/sqlite_defaults_store.hpp"

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

namespace zelvaine {
namespace {

namespace fs = std::filesystem;

// Bytes this process caused to be written to a storage device so far.
std::int64_t deviceWriteBytes()
{
    std::ifstream io("/proc/self/io");
    std::string name;
    std::int64_t value = 0;
    while (io >> name >> value) {
        if (name == "write_bytes:") return value;
    }
    return 0;
}

class ScratchFolder {
public:
    ScratchFolder() : folder_(fs::temp_directory_path() / ("zelvaine-disk-bench-" + std::to_string(getpid())))
    {
        fs::remove_all(folder_);
        fs::create_directories(folder_);
    }
    ~ScratchFolder() { fs::remove_all(folder_); }
    fs::path file() const { return folder_ / "defaults.sqlite3"; }
    std::uintmax_t bytesOnDisk() const
    {
        std::uintmax_t total = 0;
        for (const auto& entry : fs::directory_iterator(folder_)) total += entry.file_size();
        return total;
    }

private:
    fs::path folder_;
};

// A deal whose hand is empty: its four cards went to the ends of columns, so that the lowest
// card of any column can always move to the hand.
GameState openHandDeal()
{
    SeededRandom random(7);
    GameState deal = dealNewGame(random);
    for (std::size_t slot = 0; slot < deal.hand.size(); ++slot) {
        deal.tableau[slot].push_back(*deal.hand[slot]);
        deal.hand[slot].reset();
    }
    return deal;
}

// Stores a game with `length` positions of history, each one distinct, as the game store does.
void storeLongGame(const fs::path& file, std::size_t length)
{
    SqliteDefaultsStore defaults(file);
    const GameState current = openHandDeal();
    std::vector<EncodedPosition> history;
    SeededRandom random(99);
    for (std::size_t i = 0; i < length; ++i) {
        GameState position = dealNewGame(random);
        position.moveCount = static_cast<std::int64_t>(i);
        history.push_back(encodePosition(position));
    }
    GameState playing = current;
    playing.moveCount = static_cast<std::int64_t>(length);
    defaults.setRuns(savedGameKey, savedGameRuns(encodePosition(playing), encodePosition(current), history, {}, {}));
}

struct Summary {
    std::vector<double> seconds;
    std::vector<double> bytes;
    void report(benchmark::State& state)
    {
        if (seconds.empty()) return;
        std::ranges::sort(seconds);
        state.counters["durable_median_ms"] = seconds[seconds.size() / 2] * 1e3;
        state.counters["durable_max_ms"] = seconds.back() * 1e3;
        double total = 0;
        for (const double b : bytes) total += b;
        state.counters["disk_KB_per_move"] = total / static_cast<double>(bytes.size()) / 1024.0;
        state.counters["disk_KB_max"] = *std::ranges::max_element(bytes) / 1024.0;
    }
};

// One move at the end of a long history, until its save is durable. Each iteration moves the
// lowest card of a column to the hand; every fourth, the hand is emptied again by undoing, which
// is not measured.
void BM_moveUntilDurable(benchmark::State& state)
{
    ScratchFolder folder;
    storeLongGame(folder.file(), static_cast<std::size_t>(state.range(0)));
    SqliteDefaultsStore defaults(folder.file());
    SilentSoundCues sound;
    GameStore store(std::nullopt, defaults, sound);
    if (store.history().size() != static_cast<std::size_t>(state.range(0))) state.SkipWithError("not restored");
    Summary summary;
    std::int64_t column = 0;
    for (auto _ : state) {
        const std::int64_t before = deviceWriteBytes();
        const auto start = std::chrono::steady_clock::now();
        const bool moved =
            store.move(MoveSource::tableau(column, static_cast<std::int64_t>(store.state().tableau[column].size()) - 1),
                       MoveDestination::hand());
        defaults.flush();
        const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        state.SetIterationTime(seconds);
        if (!moved) state.SkipWithError("move refused");
        summary.seconds.push_back(seconds);
        summary.bytes.push_back(static_cast<double>(deviceWriteBytes() - before));
        if (++column == 4) {
            for (; column > 0; --column) store.undo();
            defaults.flush();
        }
    }
    summary.report(state);
}
BENCHMARK(BM_moveUntilDurable)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(5000)
    ->Arg(20000)
    ->UseManualTime()
    ->Iterations(40)
    ->Unit(benchmark::kMillisecond);

// Start: open the file, read it, restore the game with its whole history.
void BM_restoreAtStart(benchmark::State& state)
{
    ScratchFolder folder;
    storeLongGame(folder.file(), static_cast<std::size_t>(state.range(0)));
    SilentSoundCues sound;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        SqliteDefaultsStore defaults(folder.file());
        GameStore store(std::nullopt, defaults, sound);
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        if (store.history().size() != static_cast<std::size_t>(state.range(0))) state.SkipWithError("not restored");
    }
}
BENCHMARK(BM_restoreAtStart)->Arg(100)->Arg(1000)->Arg(5000)->Arg(20000)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

// The files after a game of 1,000 moves gave way to a new deal: what the long game left behind.
void BM_fileAfterLongGameAndNewDeal(benchmark::State& state)
{
    for (auto _ : state) {
        ScratchFolder folder;
        storeLongGame(folder.file(), 1000);
        {
            SqliteDefaultsStore defaults(folder.file());
            SilentSoundCues sound;
            GameStore store(std::nullopt, defaults, sound);
            store.move(MoveSource::tableau(0, static_cast<std::int64_t>(store.state().tableau[0].size()) - 1),
                       MoveDestination::hand());
            defaults.flush();
            state.counters["file_KB_after_game"] = static_cast<double>(folder.bytesOnDisk()) / 1024.0;
            store.newGame();
        }
        state.counters["file_KB_after_new_deal"] = static_cast<double>(folder.bytesOnDisk()) / 1024.0;
    }
}
BENCHMARK(BM_fileAfterLongGameAndNewDeal)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace zelvaine

BENCHMARK_MAIN();

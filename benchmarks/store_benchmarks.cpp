// What a long game costs on the main thread: one committed move with its save request, and the
// restore at start, at 100 to 3,000 positions of history. The baseline encodes the same game
// through a general-purpose JSON DOM on every save, which is what the store avoids by keeping
// each recorded position's JSON.

#include "engine/move_rules.hpp"
#include "engine/state_json.hpp"
#include "store/game_document.hpp"
#include "store/game_store.hpp"
#include "store/saved_game.hpp"
#include "store/sqlite_defaults_store.hpp"

#include <benchmark/benchmark.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <random>
#include <unistd.h>

namespace zelvaine {
namespace {

struct CountedMove {
    MoveSource source;
    MoveDestination destination;
};

std::optional<CountedMove> firstColumnMove(const GameState& s)
{
    for (std::int64_t c = 0; c < 10; ++c) {
        for (std::int64_t i = 0; i < static_cast<std::int64_t>(s.tableau[static_cast<std::size_t>(c)].size()); ++i) {
            for (std::int64_t d = 0; d < 10; ++d) {
                if (canMove(s, MoveSource::tableau(c, i), MoveDestination::tableau(d))) {
                    return CountedMove{MoveSource::tableau(c, i), MoveDestination::tableau(d)};
                }
            }
        }
    }
    return std::nullopt;
}

// A saved game with `positions` positions of history; its current position has a column move.
SavedGame longGame(std::size_t positions)
{
    SavedGame game;
    for (std::uint64_t seed = 1;; ++seed) {
        SeededRandom random(seed);
        game.currentState = dealNewGame(random);
        if (firstColumnMove(game.currentState)) break;
    }
    game.initialState = game.currentState;
    SeededRandom random(99);
    for (std::size_t i = 0; i < positions; ++i) {
        game.history.push_back(dealNewGame(random));
        game.history.back().moveCount = static_cast<std::int64_t>(i);
    }
    game.currentState.moveCount = static_cast<std::int64_t>(positions);
    return game;
}

// A database of its own under the temporary folder, removed afterwards.
class ScratchDatabase {
public:
    ScratchDatabase()
        : folder_(std::filesystem::temp_directory_path() / ("zelvaine-store-bench-" + std::to_string(getpid())))
    {
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directories(folder_);
    }
    ~ScratchDatabase() { std::filesystem::remove_all(folder_); }
    std::filesystem::path file() const { return folder_ / "defaults.sqlite3"; }

private:
    std::filesystem::path folder_;
};

void storeSaved(DefaultsStore& defaults, const SavedGame& game)
{
    const std::string json = encodeSavedGame(game);
    defaults.set(savedGameKey, DefaultsData(json.begin(), json.end()));
}

// The whole main-thread cost of a move as the game makes it: rules, history, the save request
// to the SQLite store (whose writer thread does the disk work meanwhile).
void BM_moveWithSave(benchmark::State& state)
{
    ScratchDatabase database;
    SqliteDefaultsStore defaults(database.file());
    SilentSoundCues sound;
    storeSaved(defaults, longGame(static_cast<std::size_t>(state.range(0))));
    GameStore store(std::nullopt, defaults, sound);
    const CountedMove move = *firstColumnMove(store.state());
    store.persistNow(); // the one-off encoding of a restored history is not a move's cost
    for (auto _ : state) {
        if (!store.move(move.source, move.destination)) state.SkipWithError("move refused");
        state.PauseTiming();
        store.undo();
        defaults.flush(); // keep the writer from falling ever further behind
        state.ResumeTiming();
    }
    state.counters["savedMB"] = static_cast<double>(defaults.data(savedGameKey)->size()) / 1e6;
}
BENCHMARK(BM_moveWithSave)->Arg(100)->Arg(300)->Arg(1000)->Arg(3000)->Iterations(40)->Unit(benchmark::kMillisecond);

nlohmann::json domCard(const PlayingCard& card)
{
    return {{"id", card.id.text()},
            {"suit", std::string(rawValue(card.suit))},
            {"rank", rawValue(card.rank)},
            {"deck", card.deck}};
}

nlohmann::json domPosition(const GameState& s)
{
    auto piles = [](const std::vector<Pile>& all) {
        nlohmann::json out = nlohmann::json::array();
        for (const Pile& pile : all) {
            nlohmann::json cards = nlohmann::json::array();
            for (const auto& card : pile) cards.push_back(domCard(card));
            out.push_back(std::move(cards));
        }
        return out;
    };
    nlohmann::json hand = nlohmann::json::array();
    for (const auto& slot : s.hand) hand.push_back(slot ? domCard(*slot) : nlohmann::json(nullptr));
    return {{"tableau", piles(s.tableau)},
            {"foundations", piles(s.foundations)},
            {"hand", hand},
            {"moveCount", s.moveCount}};
}

// The straightforward save: the whole game through a DOM, every time.
void BM_baselineDomSave(benchmark::State& state)
{
    const SavedGame game = longGame(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        nlohmann::json history = nlohmann::json::array();
        for (const auto& p : game.history) history.push_back(domPosition(p));
        nlohmann::json root = {{"currentState", domPosition(game.currentState)},
                               {"initialState", domPosition(game.initialState)},
                               {"history", std::move(history)},
                               {"redoHistory", nlohmann::json::array()}};
        const std::string bytes = root.dump();
        benchmark::DoNotOptimize(DefaultsData(bytes.begin(), bytes.end()));
    }
}
BENCHMARK(BM_baselineDomSave)->Arg(100)->Arg(300)->Arg(1000)->Arg(3000)->Unit(benchmark::kMillisecond);

// Start-up: open the database, read it, and restore the game with its whole history.
void BM_restoreAtStart(benchmark::State& state)
{
    ScratchDatabase database;
    {
        SqliteDefaultsStore defaults(database.file());
        storeSaved(defaults, longGame(static_cast<std::size_t>(state.range(0))));
    }
    SilentSoundCues sound;
    std::optional<SqliteDefaultsStore> defaults;
    std::optional<GameStore> store;
    for (auto _ : state) {
        state.PauseTiming(); // closing the previous run is not part of starting
        store.reset();
        defaults.reset();
        state.ResumeTiming();
        defaults.emplace(database.file());
        store.emplace(std::nullopt, *defaults, sound);
    }
    if (store->history().size() != static_cast<std::size_t>(state.range(0))) state.SkipWithError("not restored");
}
BENCHMARK(BM_restoreAtStart)->Arg(100)->Arg(300)->Arg(1000)->Arg(3000)->Iterations(10)->Unit(benchmark::kMillisecond);

// A shared file of a deal and a later position of it, written for export and read on opening.
ZelvaineGameDocument sampleDocument()
{
    const SavedGame game = longGame(1);
    return ZelvaineGameDocument::fromStates(game.history.front(), game.initialState);
}

void BM_sharedFileEncode(benchmark::State& state)
{
    const ZelvaineGameDocument document = sampleDocument();
    for (auto _ : state) benchmark::DoNotOptimize(document.encode());
}
BENCHMARK(BM_sharedFileEncode);

void BM_sharedFileDecode(benchmark::State& state)
{
    const std::string bytes = sampleDocument().encode();
    for (auto _ : state) benchmark::DoNotOptimize(ZelvaineGameDocument::decode(bytes));
}
BENCHMARK(BM_sharedFileDecode);

} // namespace
} // namespace zelvaine

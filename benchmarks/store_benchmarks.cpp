// What a long game costs on the main thread: one committed move with its save request, and the
// restore at start, at 100 to 3,000 positions of history. The baseline encodes the same game
// through a general-purpose JSON DOM on every save, which is what the store avoids by keeping
// each recorded position's JSON.

#include "engine/move_rules.hpp"
#include "engine/state_json.hpp"
#include "store/game_store.hpp"
#include "store/in_memory_defaults_store.hpp"
#include "store/saved_game.hpp"

#include <benchmark/benchmark.h>
#include <nlohmann/json.hpp>

#include <random>

namespace zelvaine {
namespace {

class SeededRandom final : public RandomSource {
public:
    explicit SeededRandom(std::uint64_t seed) : engine_(seed) {}
    std::uint64_t next64() override { return engine_(); }

private:
    std::mt19937_64 engine_;
};

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

void storeSaved(DefaultsStore& defaults, const SavedGame& game)
{
    const std::string json = encodeSavedGame(game);
    defaults.set(savedGameKey, DefaultsData(json.begin(), json.end()));
}

void BM_moveWithSave(benchmark::State& state)
{
    InMemoryDefaultsStore defaults;
    SilentSoundCues sound;
    storeSaved(defaults, longGame(static_cast<std::size_t>(state.range(0))));
    GameStore store(std::nullopt, defaults, sound);
    const CountedMove move = *firstColumnMove(store.state());
    for (auto _ : state) {
        if (!store.move(move.source, move.destination)) state.SkipWithError("move refused");
        state.PauseTiming();
        store.undo();
        state.ResumeTiming();
    }
    state.counters["savedMB"] = static_cast<double>(defaults.data(savedGameKey)->size()) / 1e6;
}
BENCHMARK(BM_moveWithSave)->Arg(100)->Arg(300)->Arg(1000)->Arg(3000)->Unit(benchmark::kMillisecond);

nlohmann::json domCard(const PlayingCard& card)
{
    return {{"id", card.id.text()}, {"suit", std::string(rawValue(card.suit))}, {"rank", rawValue(card.rank)},
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
    return {{"tableau", piles(s.tableau)}, {"foundations", piles(s.foundations)}, {"hand", hand},
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

void BM_restoreAtStart(benchmark::State& state)
{
    InMemoryDefaultsStore defaults;
    SilentSoundCues sound;
    storeSaved(defaults, longGame(static_cast<std::size_t>(state.range(0))));
    for (auto _ : state) {
        GameStore store(std::nullopt, defaults, sound);
        benchmark::DoNotOptimize(store.history().size());
    }
}
BENCHMARK(BM_restoreAtStart)->Arg(100)->Arg(300)->Arg(1000)->Arg(3000)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace zelvaine

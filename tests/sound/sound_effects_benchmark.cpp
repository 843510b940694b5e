// What the game pays per sound call: the calls only enqueue, so this is the whole cost
// on the calling thread, whatever the audio work behind it.

#include "sound/sound_effects.hpp"

#include "store/in_memory_defaults_store.hpp"

#include <benchmark/benchmark.h>

namespace zelvaine {
namespace {

class NoPlayers final : public SoundPlayerFactory {
public:
    std::unique_ptr<SoundPlayer> open(const std::filesystem::path&) override { return nullptr; }
};

template <class Call>
void measure(benchmark::State& state, Call call)
{
    InMemoryDefaultsStore defaults;
    auto effects = SoundEffects::create(defaults, std::make_shared<NoPlayers>(), std::nullopt);
    effects->waitUntilIdle();
    for (auto _ : state) call(*effects);
    effects->waitUntilIdle();
}

void playPlacement(benchmark::State& state)
{
    measure(state, [](SoundEffects& effects) { effects.playPlacement(); });
}

// The game's usual case: one call to a queue that has gone to sleep, which costs a wake-up.
void playPlacementToIdleQueue(benchmark::State& state)
{
    InMemoryDefaultsStore defaults;
    auto effects = SoundEffects::create(defaults, std::make_shared<NoPlayers>(), std::nullopt);
    for (auto _ : state) {
        state.PauseTiming();
        effects->waitUntilIdle();
        state.ResumeTiming();
        effects->playPlacement();
    }
    effects->waitUntilIdle();
}

void play(benchmark::State& state)
{
    measure(state, [](SoundEffects& effects) { effects.play("card-shove-1", 0.32f); });
}

void playDeal(benchmark::State& state)
{
    measure(state, [](SoundEffects& effects) { effects.playDeal(); });
}

void setEnabled(benchmark::State& state)
{
    measure(state, [](SoundEffects& effects) { effects.setEnabled(true); });
}

BENCHMARK(playPlacement);
BENCHMARK(playPlacementToIdleQueue);
BENCHMARK(play);
BENCHMARK(playDeal);
BENCHMARK(setEnabled);

} // namespace
} // namespace zelvaine

BENCHMARK_MAIN();

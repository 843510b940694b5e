// Feeds arbitrary bytes to the reader of the saved game that runs at every start, and plays on
// from whatever it restores: one move chosen by the input, saved and restored again. Whatever
// reads at all, written again, must read back the same and write the same bytes.

#include "store/game_store.hpp"
#include "store/in_memory_defaults_store.hpp"
#include "store/saved_game.hpp"
#include "tests/store/random_moves.hpp"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <string_view>

namespace {

void playOneMoveAndRestoreAgain(std::string_view bytes)
{
    using namespace zelvaine;
    InMemoryDefaultsStore defaults;
    defaults.set(savedGameKey, DefaultsData(bytes.begin(), bytes.end()));
    SilentSoundCues sound;
    GameStore store(std::nullopt, defaults, sound);
    std::mt19937_64 random(std::hash<std::string_view>{}(bytes));
    testing::playRandomStep(store, random, [](std::uint64_t) {});
    store.persistNow();
    // Won now, it is rightly not restored; else the game as played must come back.
    if (isWon(store.state())) return;
    const GameStore again(std::nullopt, defaults, sound);
    if (again.state() != store.state() || again.initialState() != store.initialState() ||
        again.history() != store.history() || again.redoHistory() != store.redoHistory() ||
        again.challenge() != store.challenge()) {
        __builtin_trap();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (const auto decoded = zelvaine::decodeSavedGame(bytes)) {
        const std::string encoded = zelvaine::encodeSavedGame(*decoded);
        const auto again = zelvaine::decodeSavedGame(encoded);
        if (!again || *again != *decoded || zelvaine::encodeSavedGame(*again) != encoded) __builtin_trap();
    }
    const zelvaine::RestoredGame restored = zelvaine::restoreSavedGame(bytes);
    if (restored.game) {
        // Whatever is restored must be safe to play on and to save again.
        if (!zelvaine::isWellFormed(restored.game->currentState) || zelvaine::isWon(restored.game->currentState)) {
            __builtin_trap();
        }
        const zelvaine::RestoredGame again = zelvaine::restoreSavedGame(zelvaine::encodeSavedGame(*restored.game));
        if (again.from != zelvaine::RestoredFrom::savedGame || again.game != restored.game) __builtin_trap();
        playOneMoveAndRestoreAgain(bytes);
    }
    return 0;
}

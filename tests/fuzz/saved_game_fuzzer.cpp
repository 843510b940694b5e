// Feeds arbitrary bytes to the reader of the saved game that runs at every start.

#include "store/saved_game.hpp"

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const zelvaine::RestoredGame restored = zelvaine::restoreSavedGame(bytes);
    if (restored.game) {
        // Whatever is restored must be safe to play on and to save again.
        if (!zelvaine::isWellFormed(restored.game->currentState) || zelvaine::isWon(restored.game->currentState)) {
            __builtin_trap();
        }
        (void)zelvaine::encodeSavedGame(*restored.game);
    }
    return 0;
}

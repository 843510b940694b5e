#pragma once

#include "engine/random_source.hpp"
#include "sound/serial_queue.hpp"
#include "sound/sound_player.hpp"
#include "store/defaults_store.hpp"

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zelvaine {

// The game's short card sounds. Every operation only enqueues work on the object's own
// serial queue and returns at once, so the game never waits for audio; all player state is
// touched on that queue alone.
class SoundEffects : public std::enable_shared_from_this<SoundEffects> {
public:
    // The process-wide instance. The first call creates it, reading whether sounds are on
    // from `defaults` (the preference's own key); later calls return the same instance and ignore the argument.
    static SoundEffects& shared(const DefaultsStore& defaults);

    // `resourceFolder` holds the "SoundEffects" folder of .caf files; without it every cue
    // is silent.
    // The output rests once this long has passed without a sound: longer than any cue, and long
    // enough that the quick runs of a game in play never wait for it to wake.
    static constexpr std::chrono::milliseconds outputRestsAfter{10000};

    static std::shared_ptr<SoundEffects> create(const DefaultsStore& defaults,
                                                std::shared_ptr<SoundPlayerFactory> playerFactory,
                                                std::optional<std::filesystem::path> resourceFolder,
                                                std::chrono::milliseconds restAfter = outputRestsAfter);

    SoundEffects(const SoundEffects&) = delete;
    SoundEffects& operator=(const SoundEffects&) = delete;
    ~SoundEffects();

    void play(std::string_view name, float volume);
    // The shuffle now and the fan 650 ms later, unless another deal or a switch-off comes first.
    void playDeal();
    // One of the four placement cues, chosen at random.
    void playPlacement();
    void setEnabled(bool enabled);

    // Blocks until the work enqueued so far has run; for tests and measurements.
    void waitUntilIdle();

private:
    friend struct SoundEffectsTestAccess;
    using PlayerPool = std::vector<std::unique_ptr<SoundPlayer>>;

    SoundEffects(bool enabled, std::shared_ptr<SoundPlayerFactory> playerFactory,
                 std::optional<std::filesystem::path> resourceFolder, std::chrono::milliseconds restAfter);

    void preloadPlayers();
    void playOnQueue(const std::string& name, float volume);
    void playDealOnQueue();
    void playPlacementOnQueue();
    void setEnabledOnQueue(bool enabled);
    void cancelPendingDealSound();
    void wakeOutput();
    void restOutputLater();

    // Declared first so that it is destroyed last: the timers below belong to its context.
    SerialQueue audioQueue_;
    // Declared before the players, which may need the factory's output device to outlive them.
    std::shared_ptr<SoundPlayerFactory> playerFactory_;
    std::optional<std::filesystem::path> resourceFolder_;
    SecureRandom random_;

    std::map<std::string, PlayerPool, std::less<>> players_;
    std::map<std::string, std::size_t, std::less<>> nextPlayerIndex_;
    std::optional<DelayedWork> pendingDealSound_;
    std::chrono::milliseconds restAfter_;
    std::optional<DelayedWork> restingOutput_;
    bool outputResting_ = false;
    bool isEnabled_;
};

} // namespace zelvaine

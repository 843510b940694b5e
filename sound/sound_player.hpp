#pragma once

#include <filesystem>
#include <memory>

namespace zelvaine {

// One prepared sound that can be restarted at will. Several players may sound at once.
class SoundPlayer {
public:
    virtual ~SoundPlayer() = default;

    // Loads what playing needs in advance, so that starting costs only a rewind and a start.
    virtual void prepareToPlay() = 0;
    virtual void setCurrentTime(double seconds) = 0;
    virtual void setVolume(float volume) = 0; // 0 to 1
    virtual void play() = 0;
    virtual void stop() = 0;
};

class SoundPlayerFactory {
public:
    virtual ~SoundPlayerFactory() = default;

    // A player for the sound file, or nothing when the file cannot be played (no output
    // device, unreadable file, unsupported format). Failures are expected and stay silent.
    virtual std::unique_ptr<SoundPlayer> open(const std::filesystem::path& file) = 0;

    // An open output keeps the sound server and the sound card awake even in silence: it rests
    // while nothing sounds, and wakes before the next sound. Nothing to do without an output.
    virtual void setOutputResting(bool) {}
};

} // namespace zelvaine

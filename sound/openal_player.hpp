#pragma once

#include "sound/sound_player.hpp"

#include <memory>
#include <mutex>

namespace zelvaine {

// Players on OpenAL Soft: one source per player over a buffer decoded by libsndfile.
// The output device opens on first need; without one every open() fails quietly.
// OpenAL's current context is process-wide, so keep one factory at a time.
class OpenAlPlayerFactory final : public SoundPlayerFactory {
public:
    OpenAlPlayerFactory();
    ~OpenAlPlayerFactory() override;

    // Opens the default output device once; later calls report the first outcome.
    // Calling it early moves the device's start-up cost off the first open().
    bool openOutput();

    std::unique_ptr<SoundPlayer> open(const std::filesystem::path& file) override;
    // Pauses the device where OpenAL Soft can; its sources keep their state meanwhile.
    void setOutputResting(bool resting) override;

private:
    struct Output;
    std::once_flag opening_;
    // Shared with the players, so the device stays open until the last of them is gone.
    std::shared_ptr<Output> output_;
};

} // namespace zelvaine

#pragma once

#include <string_view>

namespace zelvaine {

// What the game asks of the sound player; requests return at once.
class SoundCues {
public:
    virtual ~SoundCues() = default;
    virtual void playDeal() = 0;
    virtual void playPlacement() = 0;
    virtual void play(std::string_view name, double volume) = 0;
    virtual void setEnabled(bool enabled) = 0;
};

class SilentSoundCues final : public SoundCues {
public:
    void playDeal() override {}
    void playPlacement() override {}
    void play(std::string_view, double) override {}
    void setEnabled(bool) override {}
};

inline constexpr std::string_view restartCue = "card-fan-1";
inline constexpr double restartCueVolume = 0.45;
inline constexpr std::string_view refusalCue = "card-shove-1";
inline constexpr double refusalCueVolume = 0.32;

} // namespace zelvaine

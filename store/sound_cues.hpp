#pragma once

#include <array>
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

// Every cue the game plays: the name of its file under "SoundEffects" and how loud it plays.
struct SoundCue {
    std::string_view name;
    double volume;
};

// A deal is the shuffle, then the fan.
inline constexpr SoundCue shuffleCue{"card-shuffle", 0.5};
inline constexpr SoundCue fanCue{"card-fan-1", 0.45};
inline constexpr SoundCue restartCue = fanCue;
inline constexpr SoundCue refusalCue{"card-shove-1", 0.32};
// Each card put down plays one of these, chosen at random.
inline constexpr std::array<SoundCue, 4> placementCues{{
    {"card-place-1", 0.42},
    {"card-place-2", 0.42},
    {"card-place-3", 0.42},
    {"card-place-4", 0.42},
}};

} // namespace zelvaine

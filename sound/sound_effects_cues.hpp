#pragma once

#include "sound/sound_effects.hpp"
#include "store/sound_cues.hpp"

namespace zelvaine {

// How the game store and the preferences reach the sound player: through their own
// interface, so that they never depend on audio.
class SoundEffectsCues final : public SoundCues {
public:
    explicit SoundEffectsCues(SoundEffects& effects) : effects_(effects) {}

    void playDeal() override { effects_.playDeal(); }
    void playPlacement() override { effects_.playPlacement(); }
    void play(std::string_view name, double volume) override { effects_.play(name, static_cast<float>(volume)); }
    void setEnabled(bool enabled) override { effects_.setEnabled(enabled); }

private:
    SoundEffects& effects_;
};

} // namespace zelvaine

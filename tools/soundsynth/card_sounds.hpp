#pragma once

#include "tools/soundsynth/dsp.hpp"

#include <string>
#include <vector>

namespace zelvaine::synth {

struct CardSound {
    std::string name; // the cue's name, also the file's name without extension
    Signal samples;
};

// The seven cues, each faded to silence at both ends and brought to one common loudness.
std::vector<CardSound> cardSounds();

} // namespace zelvaine::synth

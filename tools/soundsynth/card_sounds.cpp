#include "tools/soundsynth/card_sounds.hpp"

#include <cmath>
#include <stdexcept>

namespace zelvaine::synth {

namespace {

// One card landing on cloth: a crisp paper slap over a soft, low knock from the table,
// sometimes followed by the card's edge settling a moment later.
struct Placement {
    std::uint64_t seed;
    double slapCentre; // Hz
    double slapDecay;  // s
    double knockCutoff;
    double knockDecay;
    double toneFrequency;
    double settleDelay; // s after the slap; 0 for none
    double settleGain;
};

Signal placement(const Placement& voice)
{
    Noise noise(voice.seed);
    Signal sound(samplesFor(0.105));

    Signal slap = noiseBurst(noise, 0.06, 0.0012, voice.slapDecay);
    filter(slap, Biquad::bandPass(voice.slapCentre, 0.8));
    mixInto(sound, slap, 0, 1.0);

    Signal knock = noiseBurst(noise, 0.09, 0.0025, voice.knockDecay);
    filter(knock, Biquad::lowPass(voice.knockCutoff));
    filter(knock, Biquad::lowPass(voice.knockCutoff));
    mixInto(sound, knock, 0, 1.2);

    mixInto(sound, thump(0.09, voice.toneFrequency, 0.002, 0.016), 0, 0.12);

    if (voice.settleDelay > 0) {
        Signal settle = noiseBurst(noise, 0.03, 0.0008, voice.slapDecay * 0.7);
        filter(settle, Biquad::bandPass(voice.slapCentre * 1.3, 1.0));
        mixInto(sound, settle, samplesFor(voice.settleDelay), voice.settleGain);
    }
    filter(sound, Biquad::highPass(60));
    fadeOut(sound, 0.03);
    return sound;
}

// A riffle: the two halves' corners flick past the thumbs a hundred times a second,
// faster in the middle, and the deck is squared with a soft knock at the end.
Signal riffleShuffle()
{
    Noise noise(0x5EED0001);
    Signal sound(samplesFor(0.62));

    double time = 0.025;
    const double riffleEnd = 0.47;
    while (time < riffleEnd) {
        const double progress = time / riffleEnd;
        const double swell = std::sin(3.14159265358979 * std::min(1.0, progress * 1.15));
        Signal flick = noiseBurst(noise, 0.006, 0.0003, 0.0011 + 0.0006 * noise.uniform());
        filter(flick, Biquad::bandPass(2600 + 2600 * noise.uniform(), 1.3));
        mixInto(sound, flick, samplesFor(time), (0.45 + 0.55 * noise.uniform()) * (0.35 + 0.65 * swell));
        const double rate = 70 + 60 * swell; // flicks per second
        time += (0.7 + 0.6 * noise.uniform()) / rate;
    }

    // The air and paper rustle under the flicks.
    Signal bed(samplesFor(riffleEnd + 0.02));
    for (std::size_t i = 0; i < bed.size(); ++i) {
        const double progress = static_cast<double>(i) / static_cast<double>(bed.size());
        bed[i] = static_cast<float>(noise.white() * std::sin(3.14159265358979 * progress));
    }
    filter(bed, Biquad::bandPass(3200, 0.7));
    mixInto(sound, bed, samplesFor(0.02), 0.18);

    Signal square = noiseBurst(noise, 0.08, 0.003, 0.018);
    filter(square, Biquad::lowPass(900));
    filter(square, Biquad::lowPass(900));
    mixInto(sound, square, samplesFor(0.505), 1.1);
    mixInto(sound, thump(0.08, 170, 0.003, 0.02), samplesFor(0.505), 0.1);

    filter(sound, Biquad::highPass(60));
    fadeIn(sound, 0.004);
    fadeOut(sound, 0.04);
    return sound;
}

// Spreading a fan: a swish that rises in pitch as the cards slide apart, with their
// edges ticking ever more slowly as the fan opens.
Signal fan()
{
    Noise noise(0x5EED0002);
    Signal sound(samplesFor(0.5));

    Signal swish(sound.size());
    Biquad sweep = Biquad::bandPass(1200, 1.4);
    for (std::size_t i = 0; i < swish.size(); ++i) {
        const double t = static_cast<double>(i) / kSampleRate;
        if (i % 32 == 0) sweep.retuneBandPass(1200 + 2800 * std::min(1.0, t / 0.4), 1.4);
        const double envelope = std::min(1.0, t / 0.09) * std::exp(-std::max(0.0, t - 0.09) / 0.13);
        swish[i] = sweep.process(static_cast<float>(noise.white() * envelope));
    }
    mixInto(sound, swish, 0, 0.9);

    double time = 0.03;
    double interval = 0.011;
    while (time < 0.40) {
        const double fading = std::exp(-time / 0.18);
        Signal tick = noiseBurst(noise, 0.006, 0.0003, 0.0012);
        filter(tick, Biquad::bandPass(3000 + 1500 * noise.uniform(), 1.2));
        mixInto(sound, tick, samplesFor(time), (0.5 + 0.5 * noise.uniform()) * fading);
        time += interval * (0.8 + 0.4 * noise.uniform());
        interval *= 1.09;
    }

    filter(sound, Biquad::highPass(80));
    fadeIn(sound, 0.004);
    fadeOut(sound, 0.06);
    return sound;
}

// A refused move: the card is pushed against the table and stopped, a dull, low thud
// with no crisp edge, so that it never sounds like a successful placement.
Signal shove()
{
    Noise noise(0x5EED0003);
    Signal sound(samplesFor(0.28));

    Signal push(sound.size());
    for (std::size_t i = 0; i < push.size(); ++i) {
        const double t = static_cast<double>(i) / kSampleRate;
        const double envelope = std::min(1.0, t / 0.025) * std::exp(-std::max(0.0, t - 0.025) / 0.06);
        push[i] = static_cast<float>(noise.white() * envelope);
    }
    filter(push, Biquad::lowPass(650));
    filter(push, Biquad::lowPass(650));
    mixInto(sound, push, 0, 1.0);

    Signal bump = noiseBurst(noise, 0.15, 0.004, 0.035);
    filter(bump, Biquad::lowPass(380));
    filter(bump, Biquad::lowPass(380));
    mixInto(sound, bump, samplesFor(0.045), 1.6);
    mixInto(sound, thump(0.15, 105, 0.004, 0.04), samplesFor(0.045), 0.25);

    filter(sound, Biquad::highPass(50));
    fadeIn(sound, 0.003);
    fadeOut(sound, 0.08);
    return sound;
}

// Loud enough to sit well at the game's cue volumes, with headroom below full scale.
constexpr double kTargetLoudness = 0.18; // about -15 dBFS over the loudest 30 ms
constexpr double kPeakCeiling = 0.89;    // -1 dBFS

void normalise(CardSound& sound)
{
    scale(sound.samples, kTargetLoudness / shortTermLoudness(sound.samples));
    if (peak(sound.samples) > kPeakCeiling)
        throw std::runtime_error(sound.name + " would peak above -1 dBFS at the common loudness");
}

} // namespace

std::vector<CardSound> cardSounds()
{
    std::vector<CardSound> sounds{
        {"card-shuffle", riffleShuffle()},
        {"card-fan-1", fan()},
        {"card-shove-1", shove()},
        {"card-place-1", placement({0x5EED0101, 2600, 0.007, 700, 0.018, 160, 0.0, 0.0})},
        {"card-place-2", placement({0x5EED0102, 3400, 0.005, 850, 0.014, 190, 0.014, 0.35})},
        {"card-place-3", placement({0x5EED0103, 2100, 0.009, 600, 0.022, 140, 0.0, 0.0})},
        {"card-place-4", placement({0x5EED0104, 2900, 0.006, 780, 0.016, 175, 0.024, 0.25})},
    };
    for (auto& sound : sounds) normalise(sound);
    return sounds;
}

} // namespace zelvaine::synth

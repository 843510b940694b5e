#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

// Small building blocks for the card sounds. Everything is deterministic: the same
// seeds give the same samples on every run, so the committed files can be remade.
namespace zelvaine::synth {

inline constexpr double kSampleRate = 44100.0;

using Signal = std::vector<float>;

std::size_t samplesFor(double seconds);

// splitmix64: tiny, seedable and good enough for noise.
class Noise {
public:
    explicit Noise(std::uint64_t seed) : state_(seed) {}
    std::uint64_t next64();
    double uniform(); // [0, 1)
    double white();   // [-1, 1)

private:
    std::uint64_t state_;
};

// Robert Bristow-Johnson's cookbook biquads, direct form I.
class Biquad {
public:
    static Biquad lowPass(double cutoff, double q = 0.707);
    static Biquad highPass(double cutoff, double q = 0.707);
    static Biquad bandPass(double centre, double q);
    static Biquad highShelf(double corner, double gainDb, double q);
    float process(float in);
    // For sweeps: retune without clearing the filter's memory.
    void retuneBandPass(double centre, double q);

private:
    void set(double b0, double b1, double b2, double a0, double a1, double a2);
    double b0_ = 1, b1_ = 0, b2_ = 0, a1_ = 0, a2_ = 0;
    double x1_ = 0, x2_ = 0, y1_ = 0, y2_ = 0;
};

void filter(Signal& signal, Biquad biquad);

// Adds `source` scaled by `gain` into `target` from sample `offset`, clipped to target's length.
void mixInto(Signal& target, const Signal& source, std::size_t offset, double gain = 1.0);

// A burst of white noise shaped by a raised-cosine attack and an exponential decay.
Signal noiseBurst(Noise& noise, double seconds, double attack, double decay);

// A decaying sine, the table's resonance under a card.
Signal thump(double seconds, double frequency, double attack, double decay);

// Raised-cosine fades that end exactly on zero, so the file edges never click.
void fadeIn(Signal& signal, double seconds);
void fadeOut(Signal& signal, double seconds);

// Loudness as the ear meets short sounds: the loudest 30 ms RMS after K-weighting
// (ITU-R BS.1770's shelf and high-pass), so a low thud is not judged as loud as a slap.
double shortTermLoudness(const Signal& signal);
double peak(const Signal& signal);
void scale(Signal& signal, double gain);

} // namespace zelvaine::synth

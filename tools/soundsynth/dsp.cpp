#include "tools/soundsynth/dsp.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zelvaine::synth {

std::size_t samplesFor(double seconds) { return static_cast<std::size_t>(std::lround(seconds * kSampleRate)); }

std::uint64_t Noise::next64()
{
    state_ += 0x9E3779B97F4A7C15ull;
    std::uint64_t z = state_;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
}

double Noise::uniform() { return static_cast<double>(next64() >> 11) * 0x1.0p-53; }

double Noise::white() { return 2.0 * uniform() - 1.0; }

namespace {

struct Coefficients {
    double cosine;
    double alpha;
};

Coefficients coefficients(double frequency, double q)
{
    const double omega = 2.0 * std::numbers::pi * frequency / kSampleRate;
    return {std::cos(omega), std::sin(omega) / (2.0 * q)};
}

} // namespace

Biquad Biquad::lowPass(double cutoff, double q)
{
    const auto [c, alpha] = coefficients(cutoff, q);
    Biquad biquad;
    biquad.set((1 - c) / 2, 1 - c, (1 - c) / 2, 1 + alpha, -2 * c, 1 - alpha);
    return biquad;
}

Biquad Biquad::highPass(double cutoff, double q)
{
    const auto [c, alpha] = coefficients(cutoff, q);
    Biquad biquad;
    biquad.set((1 + c) / 2, -(1 + c), (1 + c) / 2, 1 + alpha, -2 * c, 1 - alpha);
    return biquad;
}

Biquad Biquad::bandPass(double centre, double q)
{
    Biquad biquad;
    biquad.retuneBandPass(centre, q);
    return biquad;
}

Biquad Biquad::highShelf(double corner, double gainDb, double q)
{
    const auto [c, alpha] = coefficients(corner, q);
    const double a = std::pow(10.0, gainDb / 40.0);
    const double root = 2.0 * std::sqrt(a) * alpha;
    Biquad biquad;
    biquad.set(a * ((a + 1) + (a - 1) * c + root), -2 * a * ((a - 1) + (a + 1) * c), a * ((a + 1) + (a - 1) * c - root),
               (a + 1) - (a - 1) * c + root, 2 * ((a - 1) - (a + 1) * c), (a + 1) - (a - 1) * c - root);
    return biquad;
}

void Biquad::retuneBandPass(double centre, double q)
{
    // Constant 0 dB peak gain, so a sweep does not change the level.
    const auto [c, alpha] = coefficients(centre, q);
    set(alpha, 0, -alpha, 1 + alpha, -2 * c, 1 - alpha);
}

void Biquad::set(double b0, double b1, double b2, double a0, double a1, double a2)
{
    b0_ = b0 / a0;
    b1_ = b1 / a0;
    b2_ = b2 / a0;
    a1_ = a1 / a0;
    a2_ = a2 / a0;
}

float Biquad::process(float in)
{
    const double out = b0_ * in + b1_ * x1_ + b2_ * x2_ - a1_ * y1_ - a2_ * y2_;
    x2_ = x1_;
    x1_ = in;
    y2_ = y1_;
    y1_ = out;
    return static_cast<float>(out);
}

void filter(Signal& signal, Biquad biquad)
{
    for (auto& sample : signal) sample = biquad.process(sample);
}

void mixInto(Signal& target, const Signal& source, std::size_t offset, double gain)
{
    for (std::size_t i = 0; i < source.size() && offset + i < target.size(); ++i)
        target[offset + i] += static_cast<float>(gain * source[i]);
}

namespace {

double raisedCosine(double position) { return 0.5 - 0.5 * std::cos(std::numbers::pi * std::clamp(position, 0.0, 1.0)); }

} // namespace

Signal noiseBurst(Noise& noise, double seconds, double attack, double decay)
{
    Signal burst(samplesFor(seconds));
    for (std::size_t i = 0; i < burst.size(); ++i) {
        const double t = static_cast<double>(i) / kSampleRate;
        const double envelope = raisedCosine(t / attack) * std::exp(-std::max(0.0, t - attack) / decay);
        burst[i] = static_cast<float>(noise.white() * envelope);
    }
    return burst;
}

Signal thump(double seconds, double frequency, double attack, double decay)
{
    Signal tone(samplesFor(seconds));
    for (std::size_t i = 0; i < tone.size(); ++i) {
        const double t = static_cast<double>(i) / kSampleRate;
        const double envelope = raisedCosine(t / attack) * std::exp(-std::max(0.0, t - attack) / decay);
        tone[i] = static_cast<float>(std::sin(2.0 * std::numbers::pi * frequency * t) * envelope);
    }
    return tone;
}

void fadeIn(Signal& signal, double seconds)
{
    const std::size_t length = std::min(signal.size(), samplesFor(seconds));
    for (std::size_t i = 0; i < length; ++i)
        signal[i] *= static_cast<float>(raisedCosine(static_cast<double>(i) / static_cast<double>(length)));
}

void fadeOut(Signal& signal, double seconds)
{
    const std::size_t length = std::min(signal.size(), samplesFor(seconds));
    const std::size_t start = signal.size() - length;
    for (std::size_t i = 0; i < length; ++i) {
        const double remaining = static_cast<double>(length - 1 - i) / static_cast<double>(length - 1);
        signal[start + i] *= static_cast<float>(raisedCosine(remaining));
    }
}

double shortTermLoudness(const Signal& input)
{
    Signal signal = input;
    filter(signal, Biquad::highShelf(1681.97, 4.0, 0.7071));
    filter(signal, Biquad::highPass(38.13, 0.5003));
    const std::size_t window = samplesFor(0.030);
    double sum = 0;
    double loudest = 0;
    for (std::size_t i = 0; i < signal.size(); ++i) {
        sum += static_cast<double>(signal[i]) * signal[i];
        if (i >= window) sum -= static_cast<double>(signal[i - window]) * signal[i - window];
        loudest = std::max(loudest, sum);
    }
    return std::sqrt(std::max(0.0, loudest) / static_cast<double>(window));
}

double peak(const Signal& signal)
{
    double highest = 0;
    for (float sample : signal) highest = std::max(highest, static_cast<double>(std::fabs(sample)));
    return highest;
}

void scale(Signal& signal, double gain)
{
    for (auto& sample : signal) sample = static_cast<float>(sample * gain);
}

} // namespace zelvaine::synth

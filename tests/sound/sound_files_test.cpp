// The committed cue files: the names the game loads, lengths that suit their moments, and
// edges and levels that cannot click, clip or stand out from the others.

#include "tests/sound/audio_file.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace zelvaine {
namespace {

const std::filesystem::path soundEffectsFolder = ZELVAINE_TEST_SOUND_EFFECTS;

struct CueFile {
    const char* name;
    double shortestSeconds;
    double longestSeconds;
};

void PrintTo(const CueFile& cue, std::ostream* out) { *out << cue.name; }

class SoundFileTest : public ::testing::TestWithParam<CueFile> {};

double decibels(double level) { return 20.0 * std::log10(level); }

// The loudest 30 ms, as RMS: how loud a short sound strikes the ear, roughly.
double shortTermLevel(const std::vector<float>& samples)
{
    const std::size_t window = 44100 * 30 / 1000;
    double sum = 0;
    double loudest = 0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        sum += double(samples[i]) * samples[i];
        if (i >= window) sum -= double(samples[i - window]) * samples[i - window];
        loudest = std::max(loudest, sum);
    }
    return std::sqrt(loudest / window);
}

TEST_P(SoundFileTest, IsAShortCleanMonoCueAtTheCommonLevel)
{
    const auto file = soundEffectsFolder / (std::string(GetParam().name) + ".caf");
    const auto audio = testing::readAudioFile(file);
    ASSERT_TRUE(audio) << file;
    ASSERT_EQ(audio->channels, 1);
    ASSERT_EQ(audio->sampleRate, 44100);
    const auto& samples = audio->samples;

    const double seconds = samples.size() / 44100.0;
    EXPECT_GE(seconds, GetParam().shortestSeconds);
    EXPECT_LE(seconds, GetParam().longestSeconds);

    // Starting or stopping away from zero is heard as a click.
    EXPECT_LT(std::fabs(samples.front()), 1e-3f);
    EXPECT_LT(std::fabs(samples.back()), 1e-3f);

    double peak = 0;
    for (float sample : samples) peak = std::max(peak, double(std::fabs(sample)));
    EXPECT_LE(decibels(peak), -1.0) << "no headroom";
    EXPECT_GE(decibels(shortTermLevel(samples)), -20.0) << "quieter than the other cues";
    EXPECT_LE(decibels(shortTermLevel(samples)), -12.0) << "louder than the other cues";
}

INSTANTIATE_TEST_SUITE_P(Cues, SoundFileTest,
                         ::testing::Values(CueFile{"card-shuffle", 0.5, 0.7}, CueFile{"card-fan-1", 0.4, 0.6},
                                           CueFile{"card-shove-1", 0.15, 0.4}, CueFile{"card-place-1", 0.08, 0.15},
                                           CueFile{"card-place-2", 0.08, 0.15}, CueFile{"card-place-3", 0.08, 0.15},
                                           CueFile{"card-place-4", 0.08, 0.15}),
                         [](const auto& instance) {
                             std::string name = instance.param.name;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

} // namespace
} // namespace zelvaine

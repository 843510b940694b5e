// Plays through OpenAL Soft's "wave" backend, which mixes in real time into a file instead
// of a sound card, so these tests check what was really heard, on machines without audio.

#include "sound/openal_player.hpp"
#include "sound/sound_effects.hpp"

#include "store/in_memory_defaults_store.hpp"
#include "tests/sound/audio_file.hpp"
#include "tests/support/scratch_folder.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <thread>

namespace zelvaine {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr int kRate = 44100;
// Short mixing periods keep the file's timing fine-grained: 256 frames are 5.8 ms.
constexpr int kPeriodFrames = 256;
// "At once" for a cue, with room for a loaded build machine; on an idle one the delay stays
// under 20 ms, which the tests print.
constexpr double kAtOnceMs = 100.0;
// Mixing one 16-bit sample at a gain below 1 into a float output is exact to far better than this.
constexpr float kSampleTolerance = 1e-4f;

const std::filesystem::path soundEffectsFolder = ZELVAINE_TEST_SOUND_EFFECTS;

double milliseconds(std::size_t frames) { return 1000.0 * static_cast<double>(frames) / kRate; }

std::vector<float> cue(const std::string& name)
{
    auto audio = testing::readAudioFile(soundEffectsFolder / (name + ".caf"));
    if (!audio || audio->channels != 1 || audio->sampleRate != kRate) return {};
    return audio->samples;
}

// Where `sound`, at `gain`, starts in `mix` at or after `from`: found from the first clearly
// audible sample, then confirmed sample by sample over the whole sound.
std::optional<std::size_t> findInMix(const std::vector<float>& mix, const std::vector<float>& sound, float gain,
                                     std::size_t from)
{
    constexpr float audible = 1e-3f;
    std::size_t inSound = 0;
    while (inSound < sound.size() && std::fabs(gain * sound[inSound]) <= audible) ++inSound;
    std::size_t inMix = from;
    while (inMix < mix.size() && std::fabs(mix[inMix]) <= audible) ++inMix;
    if (inSound == sound.size() || inMix < inSound || inMix == mix.size()) return std::nullopt;

    const std::size_t start = inMix - inSound;
    if (start + sound.size() > mix.size()) return std::nullopt;
    for (std::size_t i = 0; i < sound.size(); ++i)
        if (std::fabs(mix[start + i] - gain * sound[i]) > kSampleTolerance) return std::nullopt;
    return start;
}

class OpenAlPlaybackTest : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        // OpenAL Soft reads its configuration on first use, which comes after this.
        scratch_ = new testing::ScratchFolder;
        const auto config = scratch_->path() / "alsoft.conf";
        std::ofstream(config) << "[general]\n"
                                 "drivers = wave\n"
                                 "channels = mono\n"
                                 "sample-type = float32\n"
                                 "frequency = "
                              << kRate
                              << "\n"
                                 "period_size = "
                              << kPeriodFrames
                              << "\n"
                                 "[wave]\n"
                                 "file = "
                              << mixFile().string() << "\n";
        setenv("ALSOFT_CONF", config.c_str(), 1);
        setenv("ALSOFT_DRIVERS", "wave", 1);
    }

    static void TearDownTestSuite()
    {
        delete scratch_;
        scratch_ = nullptr;
    }

    static std::filesystem::path mixFile() { return scratch_->path() / "mix.wav"; }

    // Opens the output and creates the sound player over `resourceFolder`. The wave backend's
    // clock starts while the output opens, so bracketing that call dates the file's frame 0.
    void start(const std::filesystem::path& resourceFolder)
    {
        factory_ = std::make_shared<OpenAlPlayerFactory>();
        const auto before = Clock::now();
        ASSERT_TRUE(factory_->openOutput());
        outputStartedBy_ = Clock::now();
        outputStartUncertainty_ = outputStartedBy_ - before;
        effects_ = SoundEffects::create(defaults_, factory_, resourceFolder);
        effects_->waitUntilIdle();
    }

    // Closes the device, which completes the file, and returns its frames.
    std::vector<float> finishMix()
    {
        effects_.reset();
        factory_.reset();
        const auto mix = testing::readAudioFile(mixFile());
        if (!mix || mix->channels != 1 || mix->sampleRate != kRate) return {};
        return mix->samples;
    }

    // The frame the file had reached at `moment`, give or take the output's start-up.
    std::size_t frameAt(Clock::time_point moment) const
    {
        return static_cast<std::size_t>(std::chrono::duration<double>(moment - outputStartedBy_).count() * kRate);
    }

    static testing::ScratchFolder* scratch_;
    InMemoryDefaultsStore defaults_;
    std::shared_ptr<OpenAlPlayerFactory> factory_;
    std::shared_ptr<SoundEffects> effects_;
    Clock::time_point outputStartedBy_;
    Clock::duration outputStartUncertainty_{};
};

testing::ScratchFolder* OpenAlPlaybackTest::scratch_ = nullptr;

TEST_F(OpenAlPlaybackTest, ADealMixesTheShuffleAtOnceAndTheFan650msLater)
{
    start(soundEffectsFolder.parent_path());
    std::this_thread::sleep_for(100ms);
    const auto called = Clock::now();
    effects_->playDeal();
    std::this_thread::sleep_for(1300ms); // past the end of the fan
    const auto mix = finishMix();
    const auto shuffle = cue("card-shuffle");
    const auto fan = cue("card-fan-1");
    ASSERT_FALSE(mix.empty());
    ASSERT_FALSE(shuffle.empty());
    ASSERT_FALSE(fan.empty());

    const auto shuffleAt = findInMix(mix, shuffle, 0.5f, 0);
    ASSERT_TRUE(shuffleAt) << "no shuffle at volume 0.5 in the mix";
    const double shuffleDelay = milliseconds(*shuffleAt) - milliseconds(frameAt(called));
    EXPECT_LT(shuffleDelay, kAtOnceMs);

    const auto fanAt = findInMix(mix, fan, 0.45f, *shuffleAt + shuffle.size());
    ASSERT_TRUE(fanAt) << "no fan at volume 0.45 after the shuffle";
    const double gap = milliseconds(*fanAt - *shuffleAt);
    EXPECT_GE(gap, 650.0 - milliseconds(kPeriodFrames));
    EXPECT_LT(gap, 650.0 + kAtOnceMs);
    std::printf("shuffle sounded %.2f ms after the call, the fan %.2f ms after the shuffle\n", shuffleDelay, gap);
}

TEST_F(OpenAlPlaybackTest, APlacementSoundsAtOnceAtItsLevel)
{
    start(soundEffectsFolder.parent_path());
    std::this_thread::sleep_for(100ms);
    const auto called = Clock::now();
    effects_->playPlacement();
    std::this_thread::sleep_for(300ms);
    const auto mix = finishMix();
    ASSERT_FALSE(mix.empty());

    // The cue is chosen at random; exactly one of the four must be in the mix at 0.42.
    std::optional<std::size_t> placedAt;
    int matches = 0;
    for (const char* name : {"card-place-1", "card-place-2", "card-place-3", "card-place-4"}) {
        const auto sound = cue(name);
        ASSERT_FALSE(sound.empty()) << name;
        if (const auto at = findInMix(mix, sound, 0.42f, 0)) {
            placedAt = at;
            ++matches;
        }
    }
    ASSERT_EQ(matches, 1);

    // The file runs on the mixer's clock, which mixes each period once it has passed: a cue
    // started mid-period enters at that period's start, so the delay may read slightly negative.
    const double delay = milliseconds(*placedAt) - milliseconds(frameAt(called));
    const double uncertainty = std::chrono::duration<double, std::milli>(outputStartUncertainty_).count();
    EXPECT_LT(delay, kAtOnceMs);
    std::printf("placement sounded %.2f ms after the call (output start known to %.2f ms)\n", delay, uncertainty);
}

TEST_F(OpenAlPlaybackTest, WithoutTheSoundEffectsFolderTheGameGoesOnInSilence)
{
    testing::ScratchFolder emptyResources;
    start(emptyResources.path());
    effects_->playDeal();
    effects_->playPlacement();
    effects_->play("card-shove-1", 0.32f);
    effects_->play("card-fan-1", 0.45f);
    effects_->setEnabled(false);
    effects_->setEnabled(true);
    std::this_thread::sleep_for(800ms);
    const auto mix = finishMix();

    // The device did run all along, so the silence is real.
    ASSERT_GT(mix.size(), static_cast<std::size_t>(kRate / 2));
    float loudest = 0;
    for (float sample : mix) loudest = std::max(loudest, std::fabs(sample));
    EXPECT_EQ(loudest, 0.0f);
}

} // namespace
} // namespace zelvaine

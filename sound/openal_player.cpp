#include "sound/openal_player.hpp"

#include <AL/al.h>
#include <AL/alc.h>
#include <AL/alext.h>
#include <alsa/asoundlib.h>
#include <sndfile.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <vector>

namespace zelvaine {

struct OpenAlPlayerFactory::Output {
    ALCdevice* device = nullptr;
    ALCcontext* context = nullptr;
    // Absent where the library cannot pause a device; the output then never rests.
    LPALCDEVICEPAUSESOFT pause = nullptr;
    LPALCDEVICERESUMESOFT resume = nullptr;
    bool resting = false;

    ~Output()
    {
        alcMakeContextCurrent(nullptr);
        if (context) alcDestroyContext(context);
        if (device) alcCloseDevice(device);
    }
};

namespace {

struct DecodedSound {
    ALenum format;
    int sampleRate;
    std::vector<short> samples;
};

// Card cues are short; anything longer is not one of ours and is refused rather than
// loaded whole into memory.
constexpr sf_count_t kMaxFrames = 10 * 48000;

std::optional<DecodedSound> decode(const std::filesystem::path& file)
{
    SF_INFO info{};
    SNDFILE* input = sf_open(file.c_str(), SFM_READ, &info);
    if (!input) return std::nullopt;

    std::optional<DecodedSound> decoded;
    if ((info.channels == 1 || info.channels == 2) && info.frames > 0 && info.frames <= kMaxFrames) {
        std::vector<short> samples(static_cast<std::size_t>(info.frames * info.channels));
        if (sf_readf_short(input, samples.data(), info.frames) == info.frames)
            decoded = DecodedSound{info.channels == 1 ? AL_FORMAT_MONO16 : AL_FORMAT_STEREO16, info.samplerate,
                                   std::move(samples)};
    }
    sf_close(input);
    return decoded;
}

class OpenAlPlayer final : public SoundPlayer {
public:
    OpenAlPlayer(std::shared_ptr<const void> output, ALuint buffer, ALuint source)
        : output_(std::move(output)), buffer_(buffer), source_(source)
    {}

    ~OpenAlPlayer() override
    {
        alSourceStop(source_);
        alDeleteSources(1, &source_);
        alDeleteBuffers(1, &buffer_);
    }

    OpenAlPlayer(const OpenAlPlayer&) = delete;
    OpenAlPlayer& operator=(const OpenAlPlayer&) = delete;

    void prepareToPlay() override
    {
        alSourcei(source_, AL_BUFFER, static_cast<ALint>(buffer_));
        // Cues are not placed in space: heard straight, unpanned and unattenuated.
        alSourcei(source_, AL_SOURCE_RELATIVE, AL_TRUE);
        alSource3f(source_, AL_POSITION, 0, 0, 0);
    }
    void setCurrentTime(double seconds) override { alSourcef(source_, AL_SEC_OFFSET, static_cast<ALfloat>(seconds)); }
    void setVolume(float volume) override { alSourcef(source_, AL_GAIN, std::clamp(volume, 0.0f, 1.0f)); }
    void play() override { alSourcePlay(source_); }
    void stop() override { alSourceStop(source_); }

private:
    std::shared_ptr<const void> output_;
    ALuint buffer_;
    ALuint source_;
};

void ignoreAlsaError(const char*, int, const char*, int, const char*, ...) {}

// No sound card is a normal machine for a card game: it plays silently and says nothing. ALSA
// prints its failures to standard error unless given a handler, and OpenAL Soft prints its own
// unless its log level says otherwise (a player who sets ALSOFT_LOGLEVEL still gets the log).
void quietenAudioLibraries()
{
    snd_lib_error_set_handler(ignoreAlsaError);
    setenv("ALSOFT_LOGLEVEL", "0", 0);
}

} // namespace

// Before any thread of ours might read the environment, and before OpenAL reads its settings.
OpenAlPlayerFactory::OpenAlPlayerFactory() { quietenAudioLibraries(); }
OpenAlPlayerFactory::~OpenAlPlayerFactory() = default;

bool OpenAlPlayerFactory::openOutput()
{
    std::call_once(opening_, [this] {
        auto output = std::make_shared<Output>();
        output->device = alcOpenDevice(nullptr);
        if (!output->device) return;
        output->context = alcCreateContext(output->device, nullptr);
        if (!output->context || !alcMakeContextCurrent(output->context)) return;
        if (alcIsExtensionPresent(output->device, "ALC_SOFT_pause_device")) {
            output->pause =
                reinterpret_cast<LPALCDEVICEPAUSESOFT>(alcGetProcAddress(output->device, "alcDevicePauseSOFT"));
            output->resume =
                reinterpret_cast<LPALCDEVICERESUMESOFT>(alcGetProcAddress(output->device, "alcDeviceResumeSOFT"));
        }
        output_ = std::move(output);
    });
    return output_ != nullptr;
}

void OpenAlPlayerFactory::setOutputResting(bool resting)
{
    if (!output_ || !output_->pause || !output_->resume || output_->resting == resting) return;
    if (resting) output_->pause(output_->device);
    else output_->resume(output_->device);
    output_->resting = resting;
}

std::unique_ptr<SoundPlayer> OpenAlPlayerFactory::open(const std::filesystem::path& file)
{
    if (!openOutput()) return nullptr;
    const auto sound = decode(file);
    if (!sound) return nullptr;

    alGetError(); // start from a clean error state; an earlier failure is not ours to report
    ALuint buffer = 0;
    alGenBuffers(1, &buffer);
    if (alGetError() != AL_NO_ERROR) return nullptr;
    alBufferData(buffer, sound->format, sound->samples.data(),
                 static_cast<ALsizei>(sound->samples.size() * sizeof(short)), sound->sampleRate);
    ALuint source = 0;
    if (alGetError() == AL_NO_ERROR) alGenSources(1, &source);
    if (alGetError() != AL_NO_ERROR) {
        alDeleteBuffers(1, &buffer);
        return nullptr;
    }
    return std::make_unique<OpenAlPlayer>(output_, buffer, source);
}

} // namespace zelvaine

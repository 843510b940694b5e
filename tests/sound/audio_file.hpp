#pragma once

#include <sndfile.h>

#include <filesystem>
#include <optional>
#include <vector>

namespace zelvaine::testing {

struct AudioFile {
    int sampleRate = 0;
    int channels = 0;
    std::vector<float> samples; // interleaved, full scale at ±1
};

inline std::optional<AudioFile> readAudioFile(const std::filesystem::path& path)
{
    SF_INFO info{};
    SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
    if (!file) return std::nullopt;
    AudioFile audio{info.samplerate, info.channels,
                    std::vector<float>(static_cast<std::size_t>(info.frames * info.channels))};
    const auto read = sf_readf_float(file, audio.samples.data(), info.frames);
    sf_close(file);
    if (read != info.frames) return std::nullopt;
    return audio;
}

} // namespace zelvaine::testing

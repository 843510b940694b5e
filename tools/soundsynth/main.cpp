// Writes the game's seven card sounds as Core Audio Format files into the given folder.
// The output is deterministic; run it again only when a recipe changes, and commit the files.

#include "tools/soundsynth/card_sounds.hpp"

#include <sndfile.h>

#include <cstdio>
#include <exception>
#include <filesystem>

namespace {

bool writeCaf(const std::filesystem::path& file, const zelvaine::synth::Signal& samples)
{
    SF_INFO format{};
    format.samplerate = static_cast<int>(zelvaine::synth::kSampleRate);
    format.channels = 1;
    format.format = SF_FORMAT_CAF | SF_FORMAT_PCM_16;
    SNDFILE* output = sf_open(file.c_str(), SFM_WRITE, &format);
    if (!output) return false;
    // Round rather than truncate: keeps the quiet fade tails symmetric around zero.
    sf_command(output, SFC_SET_NORM_FLOAT, nullptr, SF_TRUE);
    const auto frames = static_cast<sf_count_t>(samples.size());
    const bool written = sf_writef_float(output, samples.data(), frames) == frames;
    return sf_close(output) == 0 && written;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s <output-folder>\n", argv[0]);
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    try {
        std::filesystem::create_directories(folder);
        for (const auto& sound : zelvaine::synth::cardSounds()) {
            const auto file = folder / (sound.name + ".caf");
            if (!writeCaf(file, sound.samples)) {
                std::fprintf(stderr, "cannot write %s\n", file.c_str());
                return 1;
            }
            std::printf("%s\n", file.c_str());
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}

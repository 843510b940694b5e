// The committed face pictures: one for every card the game deals, under the name the card view
// asks for, and big enough to stay sharp on the widest card of a 2× screen.

#include "tests/resources/card_faces.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <fstream>
#include <optional>
#include <set>

namespace zelvaine {
namespace {

using testing::cardFacesFolder;
using testing::facePath;

struct PngHeader {
    std::uint32_t width;
    std::uint32_t height;
    int bitDepth;
    int colourType;
};

std::uint32_t bigEndian(const unsigned char* bytes)
{
    return std::uint32_t(bytes[0]) << 24 | std::uint32_t(bytes[1]) << 16 | std::uint32_t(bytes[2]) << 8 | bytes[3];
}

// The signature and the IHDR chunk, which a valid PNG must put first.
std::optional<PngHeader> readPngHeader(const std::filesystem::path& file)
{
    std::ifstream in(file, std::ios::binary);
    std::array<unsigned char, 8 + 8 + 13> bytes{};
    if (!in.read(reinterpret_cast<char*>(bytes.data()), bytes.size())) return std::nullopt;
    constexpr std::array<unsigned char, 8> signature{0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
    if (!std::equal(signature.begin(), signature.end(), bytes.begin())) return std::nullopt;
    if (bigEndian(&bytes[8]) != 13 || std::string(&bytes[12], &bytes[16]) != "IHDR") return std::nullopt;
    return PngHeader{bigEndian(&bytes[16]), bigEndian(&bytes[20]), bytes[24], bytes[25]};
}

TEST(CardFaceFiles, EveryCardOfBothDecksHasAPicture)
{
    std::set<std::filesystem::path> used;
    for (const PlayingCard& card : makeTwoDeckSet()) {
        const auto file = facePath(card);
        EXPECT_TRUE(std::filesystem::is_regular_file(file)) << file;
        used.insert(file);
    }
    // Both decks share the 52 pictures.
    EXPECT_EQ(used.size(), 52u);

    // Anything else would ship unused, or be a face saved under a name nothing asks for.
    for (const auto& entry : std::filesystem::directory_iterator(cardFacesFolder)) {
        if (entry.path().extension() == ".png") {
            EXPECT_TRUE(used.contains(entry.path())) << entry.path();
        }
    }
}

TEST(CardFaceFiles, EachIsAnRgbaPngSharpOnTheWidestCard)
{
    std::set<std::pair<std::uint32_t, std::uint32_t>> sizes;
    for (const PlayingCard& card : makeTwoDeckSet()) {
        if (card.deck != 0) continue;
        const auto file = facePath(card);
        const auto header = readPngHeader(file);
        ASSERT_TRUE(header) << file << " is not a PNG";
        // 170 points at 2× is 340 pixels. The picture has the card's own shape (width ÷ height
        // 0.6885, to the pixel), so filling the card crops nothing: no index near an edge is cut.
        EXPECT_GE(header->width, 340u) << file;
        EXPECT_NEAR(static_cast<double>(header->width) / header->height, 0.688544052016317, 0.5 / header->height) << file;
        // Alpha, so the card's own paper shows around and through the printing.
        EXPECT_EQ(header->colourType, 6) << file;
        EXPECT_EQ(header->bitDepth, 8) << file;
        sizes.emplace(header->width, header->height);
    }
    EXPECT_EQ(sizes.size(), 1u) << "faces of different sizes would print at different weights";
}

} // namespace
} // namespace zelvaine

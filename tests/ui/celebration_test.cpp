#include "ui/celebration.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace zelvaine {
namespace {

TEST(Celebration, BandsAtEveryBoundary)
{
    const std::pair<std::int64_t, int> cases[] = {{-5, 0},  {104, 0}, {105, 1}, {120, 1}, {121, 2}, {130, 2},
                                                  {131, 3}, {150, 3}, {151, 4}, {175, 4}, {176, 5}, {200, 5},
                                                  {201, 6}, {250, 6}, {251, 7}, {9999, 7}};
    for (const auto& [moves, band] : cases) EXPECT_EQ(celebrationBand(moves), band) << moves;
    const std::size_t sizes[] = {3, 3, 3, 3, 4, 8, 10, 12};
    for (int band = 0; band < 8; ++band) EXPECT_EQ(celebrationMessages(band).size(), sizes[band]);
}

TEST(Celebration, TheSentenceIsPickedFromTheDealAndTheCount)
{
    EXPECT_EQ(fnv1a64(""), 14695981039346656037ULL);
    EXPECT_EQ(fnv1a64("a"), 0xaf63dc4c8601ec8cULL); // the published FNV-1a test vector
    const std::uint64_t empty = fnv1a64("empty-deal");
    EXPECT_EQ(celebrationMessageIndex("empty-deal", 131, 3), (empty ^ 131) % 3);
    EXPECT_EQ(celebrationMessageIndex("empty-deal", -3, 0), empty % 3);
    // Same finish, same words.
    const std::string id = "0A1B2C3D-4E5F-4071-8293-A4B5C6D7E8F9";
    EXPECT_EQ(celebrationMessage(id, 190), celebrationMessage(id, 190));
    EXPECT_EQ(celebrationMessage(id, 104), std::string(celebrationMessages(0)[(fnv1a64(id) ^ 104) % 3]));
    EXPECT_EQ(completionSummary(131), "You built all eight foundations in 131 moves.");
}

TEST(Confetti, ParticlesStartWithinTheirWindow)
{
    const auto& particles = confettiParticles();
    EXPECT_EQ(particles[0].startDelay, 0);
    for (std::size_t i = 1; i < particles.size(); ++i) {
        EXPECT_GE(particles[i].startDelay, 0);
        EXPECT_LT(particles[i].startDelay, 2.4);
        EXPECT_GE(particles[i].duration, 3.2);
        EXPECT_LT(particles[i].duration, 5.4);
        EXPECT_EQ(particles[i].colorIndex, static_cast<int>(i));
    }
    EXPECT_EQ(&confettiParticles(), &particles); // made once
}

TEST(Confetti, FallsAndFades)
{
    const ConfettiParticle& first = confettiParticles()[0];
    // At once: the first particle sits just above the top edge, not yet visible.
    const ConfettiPiece start = confettiPiece(first, 0, 1000, 800);
    EXPECT_DOUBLE_EQ(start.y, -first.size);
    EXPECT_DOUBLE_EQ(start.opacity, 0);

    // Mid-fall it is fully visible before 27 s and at half strength at 28.5 s.
    const double midFall = first.duration * 3.5; // f = 0.5
    const ConfettiPiece middle = confettiPiece(first, midFall, 1000, 800);
    EXPECT_NEAR(middle.opacity, 1, 1e-9);
    EXPECT_NEAR(middle.y, (800 + 2 * first.size) * 0.25 - first.size, 1e-9);
    const double lateMidFall =
        std::floor((28.5 - 0.5 * first.duration) / first.duration) * first.duration + 0.5 * first.duration;
    const double late = confettiPiece(first, lateMidFall, 1000, 800).opacity;
    EXPECT_NEAR(late, std::clamp((30 - lateMidFall) / 3, 0.0, 1.0), 1e-9);
    for (const auto& particle : confettiParticles()) {
        EXPECT_EQ(confettiPiece(particle, 30, 1000, 800).opacity, 0);
        EXPECT_LE(confettiPiece(particle, 28.5, 1000, 800).opacity, 0.5 + 1e-9);
    }
}

// A piece painted outside its repaint bounds leaves a trail on the table; bounds off the band
// lines bring back the slow frames they exist to avoid.
TEST(Confetti, RepaintBoundsHoldThePieceAtEveryAngleOnBandLines)
{
    constexpr double band = 16;
    for (const auto& particle : confettiParticles()) {
        for (double seconds = 0.05; seconds < 27; seconds += 1.37) {
            const ConfettiPiece piece = confettiPiece(particle, seconds, 1600, 1000);
            if (piece.opacity <= 0) continue;
            const ConfettiBounds bounds = confettiRepaintBounds(particle, piece, band);
            EXPECT_EQ(std::fmod(bounds.top, band), 0);
            EXPECT_EQ(std::fmod(bounds.bottom, band), 0);
            EXPECT_EQ(bounds.left, std::floor(bounds.left));
            EXPECT_EQ(bounds.right, std::floor(bounds.right));
            EXPECT_LE(bounds.bottom - bounds.top, particle.size * 1.2 + 2 + 2 * band); // no wider than it must be
            for (const double cornerX : {-particle.size / 2, particle.size / 2}) {
                for (const double cornerY : {-particle.size / 4, particle.size / 4}) {
                    // The corner as drawn, with a pixel around it for the smoothed edge.
                    const double x = piece.x + cornerX * std::cos(piece.angle) - cornerY * std::sin(piece.angle);
                    const double y = piece.y + cornerX * std::sin(piece.angle) + cornerY * std::cos(piece.angle);
                    EXPECT_GE(x - 1, bounds.left);
                    EXPECT_LE(x + 1, bounds.right);
                    EXPECT_GE(y - 1, bounds.top);
                    EXPECT_LE(y + 1, bounds.bottom);
                }
            }
        }
    }
}

} // namespace
} // namespace zelvaine

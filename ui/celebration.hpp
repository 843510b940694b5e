#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zelvaine {

// The win's praise: a band of sentences chosen by the move count, and one sentence of it picked
// from the deal and the count, so the same finish always reads the same.
int celebrationBand(std::int64_t moveCount);
std::vector<std::string_view> celebrationMessages(int band);
std::size_t celebrationMessageIndex(std::string_view dealIdentifier, std::int64_t moveCount, int band);
// The translated sentence for a won deal.
std::string celebrationMessage(std::string_view dealIdentifier, std::int64_t moveCount);
// "You built all eight foundations in 131 moves."
std::string completionSummary(std::int64_t moveCount);

std::uint64_t fnv1a64(std::string_view text);

struct ConfettiParticle {
    double x = 0;
    double startDelay = 0;
    double duration = 0;
    double drift = 0;
    double flutterWidth = 0;
    double flutterCycles = 0;
    double phase = 0;
    double rotation = 0;
    double size = 0;
    int colorIndex = 0;
};

inline constexpr std::size_t confettiCount = 180;
inline constexpr double celebrationSeconds = 30;

// Computed once per process and shared.
const std::array<ConfettiParticle, confettiCount>& confettiParticles();

// Where one particle is drawn at `seconds` into the celebration on a `width` × `height` overlay;
// not drawn when `opacity` is 0.
struct ConfettiPiece {
    double x = 0;
    double y = 0;
    double angle = 0;
    double opacity = 0;
};
ConfettiPiece confettiPiece(const ConfettiParticle& particle, double seconds, double width, double height);

// The area a piece may paint, whatever its angle, grown to whole pixels across and to whole
// bands of `band` pixels down. The software renderer keeps its repaint area as bands of
// rectangles: pieces whose edges fall on a few shared lines keep that to a few hundred
// rectangles, where free edges split it into thousands and every frame goes into sorting them.
struct ConfettiBounds {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
};
ConfettiBounds confettiRepaintBounds(const ConfettiParticle& particle, const ConfettiPiece& piece, double band);

} // namespace zelvaine

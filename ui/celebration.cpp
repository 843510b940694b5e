#include "ui/celebration.hpp"

#include "engine/localizer.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zelvaine {
namespace {

const std::array<std::vector<std::string_view>, 8> bands{{
    {QT_TRANSLATE_NOOP("Zelvaine", "Perfect efficiency — every move sent a card home."),
     QT_TRANSLATE_NOOP("Zelvaine", "The mathematical floor — not one move to spare."),
     QT_TRANSLATE_NOOP("Zelvaine", "One hundred and four cards in one hundred and four moves. Flawless.")},
    {QT_TRANSLATE_NOOP("Zelvaine", "Extraordinary — within sight of the mathematical minimum."),
     QT_TRANSLATE_NOOP("Zelvaine", "Exceptional play — almost every move sent a card home."),
     QT_TRANSLATE_NOOP("Zelvaine", "A remarkably direct route through two full decks.")},
    {QT_TRANSLATE_NOOP("Zelvaine", "Masterful play — remarkably close to the minimum."),
     QT_TRANSLATE_NOOP("Zelvaine", "Superb efficiency — very little motion went to waste."),
     QT_TRANSLATE_NOOP("Zelvaine", "A precise, economical finish.")},
    {QT_TRANSLATE_NOOP("Zelvaine", "Brilliantly efficient — a beautifully lean game."),
     QT_TRANSLATE_NOOP("Zelvaine", "Excellent economy — that deal unfolded cleanly."),
     QT_TRANSLATE_NOOP("Zelvaine", "A crisp route from tableau to foundations.")},
    {QT_TRANSLATE_NOOP("Zelvaine", "Excellent work — you kept every move purposeful."),
     QT_TRANSLATE_NOOP("Zelvaine", "A polished game with a very tidy finish."),
     QT_TRANSLATE_NOOP("Zelvaine", "Smart choices and a clean result."),
     QT_TRANSLATE_NOOP("Zelvaine", "That was controlled, efficient play.")},
    {QT_TRANSLATE_NOOP("Zelvaine", "Very well played — a strong, efficient finish."),
     QT_TRANSLATE_NOOP("Zelvaine", "A sharp finish — that deal stayed under control."),
     QT_TRANSLATE_NOOP("Zelvaine", "Clean work — comfortably below two hundred moves."),
     QT_TRANSLATE_NOOP("Zelvaine", "Nicely managed from first card to last."),
     QT_TRANSLATE_NOOP("Zelvaine", "Strong play — you found a tidy route through."),
     QT_TRANSLATE_NOOP("Zelvaine", "That was efficient, composed, and complete."),
     QT_TRANSLATE_NOOP("Zelvaine", "Well judged — you kept the deal moving."),
     QT_TRANSLATE_NOOP("Zelvaine", "A confident finish with little wasted motion.")},
    {QT_TRANSLATE_NOOP("Zelvaine", "Nicely done — you handled a demanding deal."),
     QT_TRANSLATE_NOOP("Zelvaine", "Good game — the foundations came together nicely."),
     QT_TRANSLATE_NOOP("Zelvaine", "Solid play — you kept finding the next step."),
     QT_TRANSLATE_NOOP("Zelvaine", "A well-earned win from a complicated layout."),
     QT_TRANSLATE_NOOP("Zelvaine", "Nicely untangled — every suit found its place."),
     QT_TRANSLATE_NOOP("Zelvaine", "Good patience, good choices, good finish."),
     QT_TRANSLATE_NOOP("Zelvaine", "The long route still led exactly where it needed to."),
     QT_TRANSLATE_NOOP("Zelvaine", "A steady hand saw that deal through."),
     QT_TRANSLATE_NOOP("Zelvaine", "Well recovered — that board had plenty to solve."),
     QT_TRANSLATE_NOOP("Zelvaine", "Another full pair of decks brought home.")},
    {QT_TRANSLATE_NOOP("Zelvaine", "You saw it through — every completed deal deserves a crown."),
     QT_TRANSLATE_NOOP("Zelvaine", "Persistence wins the deal."),
     QT_TRANSLATE_NOOP("Zelvaine", "A hard-fought finish is still a fine finish."),
     QT_TRANSLATE_NOOP("Zelvaine", "That board made you work for it. Well done."),
     QT_TRANSLATE_NOOP("Zelvaine", "No shortcut required — just a well-earned win."),
     QT_TRANSLATE_NOOP("Zelvaine", "One hundred and four cards, all exactly where they belong."),
     QT_TRANSLATE_NOOP("Zelvaine", "The scenic route still ends at eight full foundations."),
     QT_TRANSLATE_NOOP("Zelvaine", "Patience paid off, one card at a time."),
     QT_TRANSLATE_NOOP("Zelvaine", "Complicated deal, complete result."),
     QT_TRANSLATE_NOOP("Zelvaine", "You kept going until the table was clear."),
     QT_TRANSLATE_NOOP("Zelvaine", "Some deals are puzzles of endurance. This one is solved."),
     QT_TRANSLATE_NOOP("Zelvaine", "The move count can wait. The win is yours.")},
}};

double noise(double k)
{
    const double v = std::sin(k * 12.9898) * 43758.5453;
    return v - std::floor(v);
}

double fraction(double v) { return v - std::floor(v); }

} // namespace

int celebrationBand(std::int64_t m)
{
    if (m <= 104) return 0;
    if (m <= 120) return 1;
    if (m <= 130) return 2;
    if (m <= 150) return 3;
    if (m <= 175) return 4;
    if (m <= 200) return 5;
    if (m <= 250) return 6;
    return 7;
}

std::vector<std::string_view> celebrationMessages(int band)
{
    return bands[static_cast<std::size_t>(std::clamp(band, 0, 7))];
}

std::uint64_t fnv1a64(std::string_view text)
{
    std::uint64_t h = 14695981039346656037ULL;
    for (const char c : text) {
        h ^= static_cast<unsigned char>(c);
        h *= 1099511628211ULL;
    }
    return h;
}

std::size_t celebrationMessageIndex(std::string_view dealIdentifier, std::int64_t moveCount, int band)
{
    const std::uint64_t count = celebrationMessages(band).size();
    const auto moves = static_cast<std::uint64_t>(std::max<std::int64_t>(moveCount, 0));
    return static_cast<std::size_t>((fnv1a64(dealIdentifier) ^ moves) % count);
}

std::string celebrationMessage(std::string_view dealIdentifier, std::int64_t moveCount)
{
    const int band = celebrationBand(moveCount);
    return localized(celebrationMessages(band)[celebrationMessageIndex(dealIdentifier, moveCount, band)]);
}

std::string completionSummary(std::int64_t moveCount)
{
    return localized(QT_TRANSLATE_N_NOOP("Zelvaine", "You built all eight foundations in %n moves."), moveCount);
}

const std::array<ConfettiParticle, confettiCount>& confettiParticles()
{
    static const std::array<ConfettiParticle, confettiCount> particles = [] {
        std::array<ConfettiParticle, confettiCount> all{};
        for (std::size_t i = 0; i < confettiCount; ++i) {
            const double base = 11.0 * static_cast<double>(i);
            ConfettiParticle& p = all[i];
            p.x = noise(base + 1);
            p.startDelay = i == 0 ? 0 : noise(base + 2) * 2.4;
            p.duration = noise(base + 3) * 2.2 + 3.2;
            p.drift = (noise(base + 4) - 0.5) * 180;
            p.flutterWidth = noise(base + 5) * 18 + 8;
            p.flutterCycles = noise(base + 6) * 4 + 3;
            p.phase = noise(base + 7) * std::numbers::pi * 2;
            p.rotation = (noise(base + 8) - 0.5) * std::numbers::pi * 12;
            p.size = noise(base + 9) * 9 + 8;
            p.colorIndex = static_cast<int>(i);
        }
        return all;
    }();
    return particles;
}

ConfettiPiece confettiPiece(const ConfettiParticle& p, double seconds, double width, double height)
{
    const double fade = std::clamp((celebrationSeconds - seconds) / 3, 0.0, 1.0);
    const double local = seconds - p.startDelay;
    if (local < 0 || fade <= 0) return {};
    const double f = fraction(local / p.duration);
    const double s = std::sin(p.phase + p.flutterCycles * f * std::numbers::pi);
    ConfettiPiece piece;
    piece.x = width * p.x + p.drift * f + p.flutterWidth * s;
    piece.y = (height + 2 * p.size) * f * f - p.size;
    piece.angle = p.rotation * f;
    piece.opacity = fade * std::min(std::min(7 * f, 1.0), std::min(7 * (1 - f), 1.0));
    return piece;
}

ConfettiBounds confettiRepaintBounds(const ConfettiParticle& particle, const ConfettiPiece& piece, double band)
{
    // Half the diagonal of a size × size/2 piece, and a pixel for the smoothed edge.
    const double reach = particle.size * std::sqrt(1.25) / 2 + 1;
    return {std::floor(piece.x - reach), std::floor((piece.y - reach) / band) * band, std::ceil(piece.x + reach),
            std::ceil((piece.y + reach) / band) * band};
}

} // namespace zelvaine

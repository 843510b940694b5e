#pragma once

#include <concepts>
#include <cstdint>
#include <optional>
#include <random>

namespace zelvaine {

// Source of 64 random bits per draw. The game deals from the system's secure source;
// tests substitute scripted sources to check how draws become shuffles.
class RandomSource {
public:
    virtual ~RandomSource() = default;
    virtual std::uint64_t next64() = 0;
};

// The operating system's cryptographic source, unseeded.
class SecureRandom final : public RandomSource {
public:
    std::uint64_t next64() override;
};

// A reproducible source for tests, benchmarks and surveys; never for a player's deal.
class SeededRandom final : public RandomSource {
public:
    explicit SeededRandom(std::uint64_t seed) : engine_(seed) {}
    std::uint64_t next64() override { return engine_(); }

private:
    std::mt19937_64 engine_;
};

// Maps one random word onto [0, size) without modulo bias: the high half of word × size,
// unless the low half falls in the short stretch that would favour some results, in which
// case the word is discarded (nothing returned). Generic over the word so the mapping can
// be checked exhaustively on small words.
template <std::unsigned_integral Word, class Wide>
requires(sizeof(Wide) == 2 * sizeof(Word)) constexpr std::optional<Word> boundedDraw(Word word, Word size)
{
    constexpr int bits = 8 * sizeof(Word);
    const Wide product = static_cast<Wide>(word) * static_cast<Wide>(size);
    const Word low = static_cast<Word>(product);
    if (low < size) {
        const Word threshold = static_cast<Word>(static_cast<Word>(0 - size) % size);
        if (low < threshold) return std::nullopt;
    }
    return static_cast<Word>(product >> bits);
}

// Twice the width of the 64-bit draw; a compiler extension, hence the marker.
__extension__ using Uint128 = unsigned __int128;

// A uniform draw from [0, size); size must be at least 1.
std::uint64_t uniformBelow(RandomSource& source, std::uint64_t size);

} // namespace zelvaine

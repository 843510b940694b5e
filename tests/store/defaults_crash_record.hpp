#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <vector>

// The values the crash test's child process writes: a sequence number followed by a body that
// grows with it. Every word of the body names its record and its place, so a whole record can be
// told from a torn one, or from one patched with pages of another, by encoding it again: a
// stronger test than a checksum.
namespace zelvaine::testing::crash_record {

inline constexpr const char* key = "zelvaine.test.crash-record";

inline std::vector<std::uint8_t> encode(std::uint64_t sequence)
{
    const std::size_t words = std::min<std::uint64_t>(8 + sequence * 96, 48 * 1024); // up to 384 KB
    std::vector<std::uint64_t> record(words + 1);
    record[0] = sequence;
    for (std::size_t i = 1; i <= words; ++i) record[i] = (sequence << 24) ^ (i * 0x9E3779B97F4A7C15ULL);
    std::vector<std::uint8_t> bytes(record.size() * 8);
    std::memcpy(bytes.data(), record.data(), bytes.size());
    return bytes;
}

// The sequence number of a whole, undamaged record.
inline std::optional<std::uint64_t> decode(const std::vector<std::uint8_t>& bytes)
{
    if (bytes.size() < 8) return std::nullopt;
    std::uint64_t sequence = 0;
    std::memcpy(&sequence, bytes.data(), 8);
    if (sequence > (std::uint64_t{1} << 32) || bytes != encode(sequence)) return std::nullopt;
    return sequence;
}

} // namespace zelvaine::testing::crash_record

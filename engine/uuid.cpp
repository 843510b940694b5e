#include "engine/uuid.hpp"

#include <uuid/uuid.h>

#include <cstring>

namespace zelvaine {

Uuid Uuid::random()
{
    Bytes bytes;
    uuid_generate_random(bytes.data());
    return Uuid(bytes);
}

// Text conversion by hand: a restored game holds a hundred thousand ids, and libuuid's own
// conversions (strtoul, printf-style) dominated the time to start.
namespace {

constexpr bool isHyphenPosition(std::size_t i) { return i == 8 || i == 13 || i == 18 || i == 23; }

// Where each byte's two digits start in the 36-character form.
constexpr std::array<std::uint8_t, 16> digitOffsets{0, 2, 4, 6, 9, 11, 14, 16, 19, 21, 24, 26, 28, 30, 32, 34};

constexpr std::array<std::int8_t, 256> hexValues = [] {
    std::array<std::int8_t, 256> table{};
    table.fill(-1);
    for (int d = 0; d < 10; ++d) table[static_cast<std::size_t>('0' + d)] = static_cast<std::int8_t>(d);
    for (int d = 0; d < 6; ++d) {
        table[static_cast<std::size_t>('a' + d)] = static_cast<std::int8_t>(10 + d);
        table[static_cast<std::size_t>('A' + d)] = static_cast<std::int8_t>(10 + d);
    }
    return table;
}();

} // namespace

std::optional<Uuid> Uuid::parse(std::string_view text)
{
    if (text.size() != 36 || text[8] != '-' || text[13] != '-' || text[18] != '-' || text[23] != '-') {
        return std::nullopt;
    }
    Bytes bytes{};
    int invalid = 0;
    for (std::size_t b = 0; b < 16; ++b) {
        const int high = hexValues[static_cast<unsigned char>(text[digitOffsets[b]])];
        const int low = hexValues[static_cast<unsigned char>(text[digitOffsets[b] + 1u])];
        invalid |= high | low; // any -1 sets the sign bit
        bytes[b] = static_cast<std::uint8_t>(high << 4 | low);
    }
    if (invalid < 0) return std::nullopt;
    return Uuid(bytes);
}

std::string Uuid::text() const
{
    static constexpr char digits[] = "0123456789ABCDEF";
    std::string out(36, '-');
    std::size_t at = 0;
    for (std::size_t b = 0; b < 16; ++b) {
        if (isHyphenPosition(at)) ++at;
        out[at++] = digits[bytes_[b] >> 4];
        out[at++] = digits[bytes_[b] & 0xF];
    }
    return out;
}

void Uuid::appendText(std::string& out) const
{
    static constexpr char digits[] = "0123456789ABCDEF";
    char buffer[36];
    std::size_t at = 0;
    for (std::size_t b = 0; b < 16; ++b) {
        if (isHyphenPosition(at)) buffer[at++] = '-';
        buffer[at++] = digits[bytes_[b] >> 4];
        buffer[at++] = digits[bytes_[b] & 0xF];
    }
    out.append(buffer, 36);
}

std::size_t UuidHash::operator()(const Uuid& id) const noexcept
{
    // The bytes are random already; folding the two halves is enough.
    std::uint64_t high = 0;
    std::uint64_t low = 0;
    std::memcpy(&high, id.bytes().data(), 8);
    std::memcpy(&low, id.bytes().data() + 8, 8);
    return static_cast<std::size_t>(high ^ (low * 0x9E3779B97F4A7C15ULL));
}

} // namespace zelvaine

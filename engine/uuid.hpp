#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zelvaine {

// A 128-bit identifier; a card's identity within and across positions.
class Uuid {
public:
    using Bytes = std::array<std::uint8_t, 16>;

    constexpr Uuid() = default;
    constexpr explicit Uuid(const Bytes& bytes) : bytes_(bytes) {}

    static Uuid random();
    // Accepts the 36-character hyphenated form in either case; anything else gives nothing.
    static std::optional<Uuid> parse(std::string_view text);

    // Upper-case hexadecimal, the form every file and save writes.
    std::string text() const;
    void appendText(std::string& out) const;
    const Bytes& bytes() const { return bytes_; }

    friend constexpr auto operator<=>(const Uuid&, const Uuid&) = default;

private:
    Bytes bytes_{};
};

struct UuidHash {
    std::size_t operator()(const Uuid& id) const noexcept;
};

} // namespace zelvaine

template <>
struct std::hash<zelvaine::Uuid> : zelvaine::UuidHash {};

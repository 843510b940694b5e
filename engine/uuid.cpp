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

std::optional<Uuid> Uuid::parse(std::string_view text)
{
    // uuid_parse wants a terminated string of exactly 36 characters.
    if (text.size() != 36) return std::nullopt;
    char buffer[37];
    std::memcpy(buffer, text.data(), 36);
    buffer[36] = '\0';
    Bytes bytes;
    if (uuid_parse(buffer, bytes.data()) != 0) return std::nullopt;
    return Uuid(bytes);
}

std::string Uuid::text() const
{
    char buffer[37];
    uuid_unparse_upper(bytes_.data(), buffer);
    return std::string(buffer, 36);
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

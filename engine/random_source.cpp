#include "engine/random_source.hpp"

#include <sys/random.h>

#include <cerrno>
#include <cstdlib>

namespace zelvaine {

std::uint64_t SecureRandom::next64()
{
    std::uint64_t value = 0;
    auto* bytes = reinterpret_cast<unsigned char*>(&value);
    std::size_t filled = 0;
    while (filled < sizeof value) {
        const ssize_t got = getrandom(bytes + filled, sizeof value - filled, 0);
        if (got < 0) {
            if (errno == EINTR) continue;
            // Without a working entropy source no fair deal is possible.
            std::abort();
        }
        filled += static_cast<std::size_t>(got);
    }
    return value;
}

std::uint64_t uniformBelow(RandomSource& source, std::uint64_t size)
{
    for (;;) {
        if (auto drawn = boundedDraw<std::uint64_t, Uint128>(source.next64(), size)) return *drawn;
    }
}

} // namespace zelvaine

#include "solver/position_table.hpp"

#include <cstdint>
#include <new>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace zelvaine::solver {
namespace {

constexpr std::uint64_t zeroStandIn = 0x9E3779B97F4A7C15ull;

// Linear probing stays short up to three quarters full. The size is not rounded to a power of
// two: that would waste up to half the table, and the memory budget is what limits a search.
std::size_t slotsFor(std::size_t capacity) { return std::max<std::size_t>(16, capacity / 3 * 4 + 4); }

// The key is already well mixed, so the high half of its product with the size is a fair slot.
__extension__ using Uint128 = unsigned __int128;
std::size_t slotOf(std::uint64_t key, std::size_t slots)
{
    return static_cast<std::size_t>((static_cast<Uint128>(key) * slots) >> 64);
}

// Tables up to this size always ask for large pages: zeroing all of one costs a few ms at most.
constexpr std::size_t alwaysLargeBytes = std::size_t{64} << 20;

} // namespace

PositionTable::PositionTable(std::size_t capacity)
{
    const std::size_t slots = slotsFor(capacity);
    // calloc rather than a value-initialised array: large blocks arrive as zero pages that are
    // only backed by memory once written.
    slots_.reset(static_cast<std::uint64_t*>(std::calloc(slots, sizeof(std::uint64_t))));
    if (!slots_) throw std::bad_alloc();
    slotCount_ = slots;
    capacity_ = slots / 4 * 3;
    if (slots * sizeof(std::uint64_t) <= alwaysLargeBytes) useLargePages();
}

void PositionTable::useLargePages()
{
#if defined(__linux__) && defined(MADV_HUGEPAGE)
    constexpr std::uintptr_t large = std::uintptr_t{2} << 20;
    const auto begin = reinterpret_cast<std::uintptr_t>(slots_.get());
    const auto first = (begin + large - 1) & ~(large - 1);
    const auto last = (begin + slotCount_ * sizeof(std::uint64_t)) & ~(large - 1);
    if (last > first) madvise(reinterpret_cast<void*>(first), last - first, MADV_HUGEPAGE);
#endif
}

std::size_t PositionTable::bytesFor(std::size_t capacity) { return slotsFor(capacity) * sizeof(std::uint64_t); }

PositionTable::Insert PositionTable::insert(std::uint64_t key)
{
    if (key == 0) key = zeroStandIn;
    for (std::size_t i = slotOf(key, slotCount_);; i = i + 1 == slotCount_ ? 0 : i + 1) {
        if (slots_[i] == key) return Insert::present;
        if (slots_[i] == 0) {
            if (size_ >= capacity_) return Insert::full;
            slots_[i] = key;
            ++size_;
            return Insert::added;
        }
    }
}

void PositionTable::prefetch(std::uint64_t key) const
{
    __builtin_prefetch(slots_.get() + slotOf(key == 0 ? zeroStandIn : key, slotCount_));
}

bool PositionTable::contains(std::uint64_t key) const
{
    if (key == 0) key = zeroStandIn;
    for (std::size_t i = slotOf(key, slotCount_);; i = i + 1 == slotCount_ ? 0 : i + 1) {
        if (slots_[i] == key) return true;
        if (slots_[i] == 0) return false;
    }
}

} // namespace zelvaine::solver

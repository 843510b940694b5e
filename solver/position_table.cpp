#include "solver/position_table.hpp"

#include <bit>

namespace zelvaine::solver {
namespace {

constexpr std::uint64_t zeroStandIn = 0x9E3779B97F4A7C15ull;

} // namespace

PositionTable::PositionTable(std::size_t expectedPositions)
    : slots_(std::bit_ceil(expectedPositions * 2 < 16 ? std::size_t{16} : expectedPositions * 2), 0)
{
}

bool PositionTable::insert(std::uint64_t key)
{
    if (key == 0) key = zeroStandIn;
    if ((size_ + 1) * 2 > slots_.size()) grow();
    const std::size_t mask = slots_.size() - 1;
    // The key is already well mixed, so its low bits are a fair slot number.
    for (std::size_t i = key & mask;; i = (i + 1) & mask) {
        if (slots_[i] == key) return false;
        if (slots_[i] == 0) {
            slots_[i] = key;
            ++size_;
            return true;
        }
    }
}

void PositionTable::grow()
{
    std::vector<std::uint64_t> old(slots_.size() * 2, 0);
    old.swap(slots_);
    size_ = 0;
    for (const std::uint64_t key : old) {
        if (key != 0) insert(key);
    }
}

} // namespace zelvaine::solver

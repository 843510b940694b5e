#pragma once

#include <cstdint>
#include <vector>

namespace zelvaine::solver {

// The positions already seen, as 64-bit keys in one open-addressing array. Eight bytes a
// position and no per-entry allocation keep millions of positions within a few tens of MB.
class PositionTable {
public:
    explicit PositionTable(std::size_t expectedPositions = 1024);

    // True when `key` was not there before.
    bool insert(std::uint64_t key);
    std::size_t size() const { return size_; }
    std::size_t bytes() const { return slots_.size() * sizeof(std::uint64_t); }

private:
    void grow();

    // Key 0 marks an empty slot; a real key of 0 is stored as a fixed stand-in.
    std::vector<std::uint64_t> slots_;
    std::size_t size_ = 0;
};

} // namespace zelvaine::solver

#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>

namespace zelvaine::solver {

// The positions already seen, as 64-bit keys in one open-addressing array of fixed size. Eight
// bytes a slot and no per-entry allocation keep millions of positions within a few tens of MB.
// The array never grows: a rehash of millions of keys would hold up a cancel, and two copies
// during the move would break the memory budget.
class PositionTable {
public:
    // Room for `capacity` keys. The array comes zeroed from the system, so pages the search
    // never touches cost nothing.
    explicit PositionTable(std::size_t capacity);

    enum class Insert : std::uint8_t { added, present, full };
    Insert insert(std::uint64_t key);
    bool contains(std::uint64_t key) const;
    // Every look-up lands on a random page, so with the usual small pages nearly each one also
    // misses the processor's page cache; where the system offers large pages on request, this
    // asks for them (the table stays zeroed and lazily backed). But a large page is zeroed whole
    // at its first write, so a big table that may see few keys is better off without: tables up
    // to 64 MB ask by themselves, bigger ones when their owner expects to fill them.
    void useLargePages();
    // Starts loading the slot where `key` would be: a search that knows the keys it will look
    // up soon overlaps their trips to memory instead of waiting for each in turn.
    void prefetch(std::uint64_t key) const;
    std::size_t size() const { return size_; }
    std::size_t capacity() const { return capacity_; }

    // The slots a table of `capacity` keys allocates, in bytes.
    static std::size_t bytesFor(std::size_t capacity);

private:
    struct Free {
        void operator()(std::uint64_t* slots) const { std::free(slots); }
    };
    std::unique_ptr<std::uint64_t[], Free> slots_;
    std::size_t slotCount_ = 0;
    std::size_t capacity_ = 0;
    std::size_t size_ = 0;
};

} // namespace zelvaine::solver

#include "solver/position_table.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace zelvaine {
namespace {

using solver::PositionTable;

// Keys whose slots crowd the end of the table make the probe run past the last slot and go on
// at the first; the table must still find every key and refuse one more than it holds.
TEST(PositionTable, HoldsItsCapacityAcrossTheEndOfTheArray)
{
    PositionTable table(1000);
    ASSERT_GE(table.capacity(), 1000u);
    std::vector<std::uint64_t> keys;
    for (std::uint64_t i = 0; keys.size() < table.capacity(); ++i) keys.push_back(~std::uint64_t{0} - i * 7);
    keys.back() = 0; // a key of 0 must not read as an empty slot
    for (const std::uint64_t key : keys) EXPECT_EQ(table.insert(key), PositionTable::Insert::added);
    for (const std::uint64_t key : keys) {
        EXPECT_TRUE(table.contains(key));
        EXPECT_EQ(table.insert(key), PositionTable::Insert::present);
    }
    EXPECT_FALSE(table.contains(12345));
    EXPECT_EQ(table.insert(12345), PositionTable::Insert::full);
    EXPECT_EQ(table.size(), table.capacity());
}

} // namespace
} // namespace zelvaine

#include "tools/cli/move_text.hpp"

#include <gtest/gtest.h>

namespace zelvaine::cli {
namespace {

TEST(MoveText, ReadsEverySourceAndDestinationForm)
{
    EXPECT_EQ(parseMoveSource("tableau:3:9"), MoveSource::tableau(3, 9));
    EXPECT_EQ(parseMoveSource("hand:1"), MoveSource::hand(1));
    EXPECT_EQ(parseMoveSource("foundation:-2"), MoveSource::foundation(-2));
    EXPECT_EQ(parseMoveSource("tableau:9223372036854775807:0"),
              MoveSource::tableau(std::numeric_limits<std::int64_t>::max(), 0));
    EXPECT_EQ(parseMoveDestination("tableau:3"), MoveDestination::tableau(3));
    EXPECT_EQ(parseMoveDestination("foundation:7"), MoveDestination::foundation(7));
    EXPECT_EQ(parseMoveDestination("hand"), MoveDestination::hand());
    EXPECT_EQ(parseMoveDestination("hand:0"), MoveDestination::hand(0));
    for (auto source : {MoveSource::tableau(3, 9), MoveSource::hand(1), MoveSource::foundation(-2)}) {
        EXPECT_EQ(parseMoveSource(toString(source)), source);
    }
}

TEST(MoveText, RefusesAnythingElse)
{
    for (const char* text : {"", "tableau", "tableau:3", "tableau:3:", "tableau:a:1", "hand", "hand:1:2",
                             "foundation:", "column:1", "hand: 1", "hand:1x", "tableau:99999999999999999999:0"}) {
        EXPECT_EQ(parseMoveSource(text), std::nullopt) << text;
    }
    for (const char* text : {"", "tableau", "tableau:1:2", "foundation", "hand:", "hand:x", "Hand"}) {
        EXPECT_EQ(parseMoveDestination(text), std::nullopt) << text;
    }
}

} // namespace
} // namespace zelvaine::cli

#include "ui/board_layout.hpp"

#include <gtest/gtest.h>

namespace zelvaine {
namespace {

TEST(BoardLayout, ArrangementAndCardWidthFollowTheWindow)
{
    const BoardMetrics tall = boardMetrics(900, 1200);
    EXPECT_EQ(tall.arrangement, Arrangement::portrait);
    EXPECT_DOUBLE_EQ(tall.cardWidth, 75.2);
    EXPECT_DOUBLE_EQ(tall.sideMargin, 20);

    const BoardMetrics narrow = boardMetrics(400, 800);
    EXPECT_EQ(narrow.arrangement, Arrangement::portrait);
    EXPECT_DOUBLE_EQ(narrow.cardWidth, 48);
    EXPECT_GT(narrow.tableauWidth, 400 - 2 * 20); // wider than the window's inner width

    const BoardMetrics wide = boardMetrics(2200, 1200);
    EXPECT_EQ(wide.arrangement, Arrangement::landscape);
    EXPECT_DOUBLE_EQ(wide.cardWidth, 170);
    EXPECT_DOUBLE_EQ(wide.cardHeight, 170 / 0.7);

    EXPECT_EQ(boardMetrics(1000, 1000).arrangement, Arrangement::landscape); // square is landscape
    EXPECT_DOUBLE_EQ(boardMetrics(600, 500).cardWidth, 62);                  // landscape lower bound
    EXPECT_DOUBLE_EQ(boardMetrics(1600, 1000).cardWidth, (1600 - 64 - 196) / 11.0);
    EXPECT_EQ(boardMetrics(1600, 1000, true).arrangement, Arrangement::compact);
    EXPECT_DOUBLE_EQ(wide.tableauWidth, 10 * 170 + 108);
    EXPECT_DOUBLE_EQ(wide.handPanelWidth, 210);
}

TEST(BoardLayout, ColumnsFanBetweenTheirBounds)
{
    EXPECT_DOUBLE_EQ(ColumnLayout::fit(2, 100, 1000).offset, 36);
    EXPECT_DOUBLE_EQ(ColumnLayout::fit(30, 100, 600).offset, 18); // the column outgrows its space
    EXPECT_GT(ColumnLayout::fit(30, 100, 600).height(), 600);

    const ColumnLayout one = ColumnLayout::fit(1, 100, 600);
    EXPECT_DOUBLE_EQ(one.offset, 0);
    EXPECT_DOUBLE_EQ(one.height(), 100 / 0.7);

    // In between, the last card's bottom meets the available height.
    const ColumnLayout tight = ColumnLayout::fit(20, 100, 700);
    EXPECT_GT(tight.offset, 18);
    EXPECT_LT(tight.offset, 36);
    EXPECT_DOUBLE_EQ(tight.height(), 700);
}

TEST(BoardLayout, StripsOutlinesAndHitTesting)
{
    const ColumnLayout column = ColumnLayout::fit(5, 100, 10000); // offset 36
    EXPECT_EQ(column.hitStrip(0), (Rect{0, 0, 100, 36}));
    EXPECT_EQ(column.hitStrip(4), (Rect{0, 144, 100, 100 / 0.7}));
    EXPECT_EQ(column.cardFrame(2), (Rect{0, 72, 100, 100 / 0.7}));
    EXPECT_EQ(column.selectionOutline(3), (Rect{0, 108, 100, 100 / 0.7 + 36}));
    EXPECT_DOUBLE_EQ(column.selectionCornerRadius(), 7.5);
    EXPECT_DOUBLE_EQ(ColumnLayout::fit(5, 48, 1000).selectionCornerRadius(), 5);

    EXPECT_EQ(column.cardAt(0), 0);
    EXPECT_EQ(column.cardAt(35.9), 0);
    EXPECT_EQ(column.cardAt(36), 1);
    EXPECT_EQ(column.cardAt(200), 4);
    EXPECT_EQ(column.cardAt(-1), -1);
    EXPECT_EQ(column.cardAt(column.height()), -1);
    EXPECT_EQ(ColumnLayout::fit(0, 100, 600).cardAt(10), -1);
    EXPECT_EQ(ColumnLayout::fit(1, 100, 600).cardAt(10), 0);
}

} // namespace
} // namespace zelvaine

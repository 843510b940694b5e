#include "ui/board_layout.hpp"

#include <algorithm>

namespace zelvaine {

double portraitCardWidth(double width)
{
    // Ten columns and nine gaps between two margins of 20.
    return std::max(48.0, std::min((width - 40 - 9 * cardGap) / 10, 105.0));
}

double landscapeCardWidth(double width)
{
    // Ten columns, nine gaps, the hand panel (w + 40) and the section gap between the paddings.
    return std::max(62.0, std::min((width - 2 * horizontalPadding - (sectionSpacing + 9 * cardGap + 40)) / 11, 170.0));
}

BoardMetrics boardMetrics(double width, double height, bool compact)
{
    BoardMetrics m;
    if (compact) {
        m.arrangement = Arrangement::compact;
        m.cardWidth = portraitCardWidth(width);
        m.sideMargin = 20;
        m.stackSpacing = 6;
        m.topMargin = 2;
        m.bottomMargin = 2;
    } else if (width < height) {
        m.arrangement = Arrangement::portrait;
        m.cardWidth = portraitCardWidth(width);
        m.sideMargin = 20;
        m.stackSpacing = 16;
        m.topMargin = 12;
        m.bottomMargin = 20;
    } else {
        m.arrangement = Arrangement::landscape;
        m.cardWidth = landscapeCardWidth(width);
        m.sideMargin = horizontalPadding;
        m.stackSpacing = 22;
        m.topMargin = 16;
        m.bottomMargin = 12;
    }
    m.cardHeight = m.cardWidth / cardPlaceAspect;
    m.tableauWidth = 10 * m.cardWidth + 9 * cardGap;
    m.foundationRowWidth = 8 * m.cardWidth + 7 * cardGap;
    m.handRowWidth = 4 * m.cardWidth + 3 * cardGap;
    m.handPanelWidth = m.cardWidth + 40;
    return m;
}

ColumnLayout ColumnLayout::fit(std::size_t count, double cardWidth, double availableHeight, double minimumOffset)
{
    ColumnLayout layout{count, cardWidth, 0};
    if (count >= 2) {
        const double fitting = (availableHeight - cardWidth / cardPlaceAspect) / static_cast<double>(count - 1);
        layout.offset = std::max(minimumOffset, std::min(fitting, 0.36 * cardWidth));
    }
    return layout;
}

double ColumnLayout::height() const
{
    if (count == 0) return cardHeight();
    return cardHeight() + offset * static_cast<double>(count - 1);
}

Rect ColumnLayout::cardFrame(std::size_t index) const
{
    return {0, static_cast<double>(index) * offset, cardWidth, cardHeight()};
}

Rect ColumnLayout::hitStrip(std::size_t index) const
{
    const bool last = index + 1 >= count;
    return {0, static_cast<double>(index) * offset, cardWidth, last ? cardHeight() : offset};
}

Rect ColumnLayout::selectionOutline(std::size_t start) const
{
    const double below = count > start ? static_cast<double>(count - start - 1) : 0;
    return {0, static_cast<double>(start) * offset, cardWidth, cardHeight() + offset * below};
}

double ColumnLayout::selectionCornerRadius() const { return std::max(5.0, 0.075 * cardWidth); }

std::ptrdiff_t ColumnLayout::cardAt(double y) const
{
    if (count == 0 || y < 0 || y >= height()) return -1;
    if (offset <= 0) return 0;
    const auto index = static_cast<std::size_t>(y / offset);
    return static_cast<std::ptrdiff_t>(std::min(index, count - 1));
}

} // namespace zelvaine

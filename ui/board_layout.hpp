#pragma once

#include <cstddef>

namespace zelvaine {

// The board's numbers: which arrangement a window gets, how wide its cards are, and how a
// column fans its cards. Points throughout; every card place is 0.7 as wide as it is high.
inline constexpr double cardPlaceAspect = 0.7;
inline constexpr double cardGap = 12;
inline constexpr double minimumCardOffset = 18;
inline constexpr double sectionSpacing = 48;
inline constexpr double horizontalPadding = 32;

// The smallest window in which the whole board and the toolbar fit: landscape at the least card
// width needs 2 × 32 + (62 + 40) + 48 + 10 × 62 + 9 × 12 = 942 points across, and the hand panel's
// four stacked cards set the height. A window taller than wide is at least this wide, so the
// portrait arrangement then has room to spare.
inline constexpr double minimumWindowWidth = 960;
inline constexpr double minimumWindowHeight = 640;

enum class Arrangement { portrait, landscape, compact };

struct BoardMetrics {
    Arrangement arrangement = Arrangement::landscape;
    double cardWidth = 0;
    double cardHeight = 0;
    double sideMargin = 0;
    // The vertical stack of toolbar and arrangement.
    double stackSpacing = 0;
    double topMargin = 0;
    double bottomMargin = 0;
    // Width of the ten columns with their nine gaps; also the width of the landscape main column.
    double tableauWidth = 0;
    double foundationRowWidth = 0;
    double handRowWidth = 0;
    // Landscape hand panel.
    double handPanelWidth = 0;
};

BoardMetrics boardMetrics(double width, double height, bool compact = false);

double portraitCardWidth(double width);
double landscapeCardWidth(double width);

struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    friend bool operator==(const Rect&, const Rect&) = default;
};

// How a column of `count` cards of width `cardWidth` fans within `availableHeight`.
struct ColumnLayout {
    std::size_t count = 0;
    double cardWidth = 0;
    double offset = 0;

    static ColumnLayout fit(std::size_t count, double cardWidth, double availableHeight,
                            double minimumOffset = minimumCardOffset);

    double cardHeight() const { return cardWidth / cardPlaceAspect; }
    double height() const;
    Rect cardFrame(std::size_t index) const;
    // The visible strip that answers taps and drags; the last card answers with all of it.
    Rect hitStrip(std::size_t index) const;
    // Around the selected card and every card below it.
    Rect selectionOutline(std::size_t start) const;
    double selectionCornerRadius() const;
    // The card whose strip holds the point `y`, if any.
    std::ptrdiff_t cardAt(double y) const;
};

} // namespace zelvaine

#pragma once

#include "ui/board_layout.hpp"

#include <cstddef>
#include <vector>

namespace zelvaine {

// A card's finished look (its drop shadow, paper, picture and outline) is painted once into a
// picture, the sprite, and every card of that face is then one copy of it. These are the
// sprite's numbers, in device pixels, for a face `faceWidth` pixels wide.
inline constexpr double cardFaceAspect = 0.688544052016317;
inline constexpr double cardCornerRatio = 0.11969818287523212;

struct CardSpriteGeometry {
    int faceWidth = 0;
    int faceHeight = 0;
    // Room around the face for the shadow, which rises above the card and spreads to its sides.
    int sideMargin = 0;
    int topMargin = 0;
    int bottomMargin = 0;
    double cornerRadius = 0;

    static CardSpriteGeometry forFaceWidth(int faceWidth);

    int width() const { return faceWidth + 2 * sideMargin; }
    int height() const { return topMargin + faceHeight + bottomMargin; }
    // The shadow's three soft layers, each a rounded rectangle around the face, with its radius.
    struct Layer {
        Rect frame;
        double radius = 0;
    };
    std::vector<Layer> shadowLayers() const;
};

// The face inside a card place: the card keeps its own slightly narrower shape and fits the
// place's height, centred.
Rect cardFaceFrame(Rect place);

// One card of a fanned column as drawn: which rows of the sprite show and where they go.
// A covered card shows only its strip (and the shadow above it); the last shows whole.
struct SpriteSlice {
    std::size_t card = 0;
    // Rows of the sprite, from its top.
    int firstRow = 0;
    int rowCount = 0;
    // Where the slice's top-left corner lands, in the column's device pixels.
    double x = 0;
    double y = 0;
};

// The slices of a column of `count` cards whose tops are `offset` points apart, cards `place`
// points wide, at `pixelRatio` device pixels a point. `hiddenFrom` leaves that card and the
// ones after it out (they are under the pointer); a covered card whose next card is hidden
// shows whole.
std::vector<SpriteSlice> columnSlices(std::size_t count, double placeWidth, double offset, double pixelRatio,
                                      std::size_t hiddenFrom);

} // namespace zelvaine

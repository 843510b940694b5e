#pragma once

#include <QImage>
#include <QString>

namespace zelvaine {

// How a card is finished around its picture.
struct CardSpriteStyle {
    bool shadow = true;
    // The dark band along the top edge, for a foundation with cards under its top one.
    bool topBand = false;
    // The thick yellow border of a selected hand or foundation card.
    bool selectionBorder = false;
    friend bool operator==(const CardSpriteStyle&, const CardSpriteStyle&) = default;
};

// The finished card of picture `face` (for example "card_10_spades"), `faceWidth` device pixels
// wide at `pixelRatio` pixels a point, painted once and kept for every later card of the same
// face, size and style; thread-safe, since the scene is built on the render thread. Its layout
// is CardSpriteGeometry's. A face with no picture gives the bare paper.
QImage cardSprite(const QString& face, int faceWidth, double pixelRatio, CardSpriteStyle style);

} // namespace zelvaine

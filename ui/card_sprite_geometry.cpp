#include "ui/card_sprite_geometry.hpp"

#include <algorithm>
#include <cmath>

namespace zelvaine {
namespace {

// The shadow: three layers, each spreading 1.4 % of the face's width further than the last,
// all lifted by 3 % of the width.
constexpr double shadowLift = 0.02992454571880803;
constexpr double shadowStep = 0.014;
constexpr int shadowLayerCount = 3;

} // namespace

CardSpriteGeometry CardSpriteGeometry::forFaceWidth(int faceWidth)
{
    CardSpriteGeometry g;
    g.faceWidth = std::max(faceWidth, 1);
    g.faceHeight = static_cast<int>(std::lround(g.faceWidth / cardFaceAspect));
    const double spread = shadowLayerCount * shadowStep * g.faceWidth;
    g.sideMargin = static_cast<int>(std::ceil(spread));
    g.topMargin = static_cast<int>(std::ceil(shadowLift * g.faceWidth + spread));
    // The widest layer reaches below the face by its spread, less the lift.
    g.bottomMargin = static_cast<int>(std::ceil(std::max(0.0, spread - shadowLift * g.faceWidth)));
    g.cornerRadius = cardCornerRatio * g.faceWidth;
    return g;
}

std::vector<CardSpriteGeometry::Layer> CardSpriteGeometry::shadowLayers() const
{
    std::vector<Layer> layers;
    for (int k = 1; k <= shadowLayerCount; ++k) {
        const double spread = k * shadowStep * faceWidth;
        layers.push_back({{sideMargin - spread, topMargin - shadowLift * faceWidth - spread, faceWidth + 2 * spread,
                           faceHeight + 2 * spread},
                          cornerRadius + spread});
    }
    return layers;
}

Rect cardFaceFrame(Rect place)
{
    const double width = std::min(place.width, place.height * cardFaceAspect);
    const double height = width / cardFaceAspect;
    return {place.x + (place.width - width) / 2, place.y + (place.height - height) / 2, width, height};
}

std::vector<SpriteSlice> columnSlices(std::size_t count, double placeWidth, double offset, double pixelRatio,
                                      std::size_t hiddenFrom)
{
    const std::size_t shown = std::min(count, hiddenFrom);
    const Rect face = cardFaceFrame({0, 0, placeWidth, placeWidth / cardPlaceAspect});
    const CardSpriteGeometry sprite =
        CardSpriteGeometry::forFaceWidth(static_cast<int>(std::lround(face.width * pixelRatio)));
    std::vector<SpriteSlice> slices;
    slices.reserve(shown);
    for (std::size_t i = 0; i < shown; ++i) {
        const double top = static_cast<double>(i) * offset * pixelRatio;
        const bool last = i + 1 == shown;
        // A covered card shows down to where the next card's own top begins.
        const int rows =
            last ? sprite.height()
                 : std::min(sprite.height(), sprite.topMargin + static_cast<int>(std::ceil(offset * pixelRatio)));
        slices.push_back(
            {i, 0, rows, face.x * pixelRatio - sprite.sideMargin, top + face.y * pixelRatio - sprite.topMargin});
    }
    return slices;
}

} // namespace zelvaine

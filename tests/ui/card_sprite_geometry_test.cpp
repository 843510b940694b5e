#include "ui/card_sprite_geometry.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace zelvaine {
namespace {

// The sprite holds the whole shadow: every layer lies inside it, and the face sits where the
// margins say.
TEST(CardSpriteGeometry, TheShadowFitsInsideTheSprite)
{
    for (int width : {40, 62, 122, 170, 340}) {
        const CardSpriteGeometry g = CardSpriteGeometry::forFaceWidth(width);
        EXPECT_NEAR(static_cast<double>(g.faceWidth) / g.faceHeight, cardFaceAspect, 0.5 / g.faceHeight);
        for (const auto& layer : g.shadowLayers()) {
            EXPECT_GE(layer.frame.x, 0) << width;
            EXPECT_GE(layer.frame.y, 0) << width;
            EXPECT_LE(layer.frame.x + layer.frame.width, g.width()) << width;
            EXPECT_LE(layer.frame.y + layer.frame.height, g.height() + 1e-9) << width;
        }
        // The shadow rises above the card: more room above than below.
        EXPECT_GT(g.topMargin, g.bottomMargin) << width;
    }
}

TEST(CardSpriteGeometry, AFaceFitsItsPlaceByHeightAndIsCentred)
{
    const Rect face = cardFaceFrame({10, 20, 100, 100 / cardPlaceAspect});
    EXPECT_DOUBLE_EQ(face.height, 100 / cardPlaceAspect);
    EXPECT_LT(face.width, 100);
    EXPECT_NEAR(face.x - 10, 110 - (face.x + face.width), 1e-9);
}

// A covered card shows its strip and the shadow above it; the last card, or the last before the
// dragged ones, shows whole; the dragged ones are not drawn.
TEST(CardSpriteGeometry, ColumnsShowStripsAndTheLastCardWhole)
{
    const double width = 100;
    const double offset = 25;
    const auto slices = columnSlices(4, width, offset, 2.0, 4);
    const CardSpriteGeometry sprite = CardSpriteGeometry::forFaceWidth(
        static_cast<int>(std::lround(cardFaceFrame({0, 0, width, width / cardPlaceAspect}).width * 2)));
    ASSERT_EQ(slices.size(), 4U);
    for (std::size_t i = 0; i + 1 < slices.size(); ++i) {
        EXPECT_EQ(slices[i].rowCount, sprite.topMargin + 50) << i;
        EXPECT_DOUBLE_EQ(slices[i + 1].y - slices[i].y, 50) << i;
        EXPECT_EQ(slices[i].card, i);
    }
    EXPECT_EQ(slices.back().rowCount, sprite.height());

    const auto dragging = columnSlices(4, width, offset, 2.0, 2);
    ASSERT_EQ(dragging.size(), 2U);
    EXPECT_EQ(dragging.back().rowCount, sprite.height());
    EXPECT_TRUE(columnSlices(4, width, offset, 2.0, 0).empty());
    EXPECT_EQ(columnSlices(1, width, 0, 1.0, 9).front().y, -CardSpriteGeometry::forFaceWidth(98).topMargin);
}

} // namespace
} // namespace zelvaine

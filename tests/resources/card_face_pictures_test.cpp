// What each face shows, as far as a cheap look at its pixels can tell: red or black by suit, the
// framed figure on court cards only, and no print where the card view draws its own outline.
// Catches a design saved under another card's name.

#include "tests/resources/card_faces.hpp"

#include <QImage>
#include <gtest/gtest.h>

#include <ostream>
#include <vector>

namespace zelvaine {

// Failure messages name the face rather than dumping the card's bytes.
static void PrintTo(const PlayingCard& card, std::ostream* out) { *out << testing::faceName(card.rank, card.suit); }

namespace {

using testing::facePath;

bool isInk(QRgb pixel) { return qAlpha(pixel) > 200; }
bool isSuitRed(QRgb pixel) { return isInk(pixel) && qRed(pixel) > 200 && qGreen(pixel) < 80 && qBlue(pixel) < 80; }
bool isSuitBlack(QRgb pixel) { return isInk(pixel) && qRed(pixel) < 60 && qGreen(pixel) < 60 && qBlue(pixel) < 60; }
// The court figures' blue line work and frame.
bool isFrameBlue(QRgb pixel) { return isInk(pixel) && qRed(pixel) < 110 && qGreen(pixel) < 110 && qBlue(pixel) > 200; }

int count(const QImage& image, const QRect& area, bool (*test)(QRgb))
{
    int found = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) found += test(image.pixel(x, y));
    }
    return found;
}

class CardFacePicture : public ::testing::TestWithParam<PlayingCard> {};

TEST_P(CardFacePicture, ShowsItsSuitColourAndKind)
{
    const PlayingCard card = GetParam();
    const QImage image = QImage(QString::fromStdString(facePath(card).string())).convertToFormat(QImage::Format_ARGB32);
    ASSERT_FALSE(image.isNull()) << facePath(card);
    const int w = image.width();
    const int h = image.height();

    // The top-left corner index, rank over suit sign, left of any court frame.
    const QRect index(0, 0, w * 15 / 100, h * 23 / 100);
    const int red = count(image, index, isSuitRed);
    const int black = count(image, index, isSuitBlack);
    if (isRed(card.suit)) {
        EXPECT_GT(red, w * h / 1000);
        EXPECT_EQ(black, 0);
    } else {
        EXPECT_GT(black, w * h / 1000);
        EXPECT_EQ(red, 0);
    }

    const bool court = card.rank == Rank::jack || card.rank == Rank::queen || card.rank == Rank::king;
    const int blue = count(image, image.rect(), isFrameBlue);
    if (court) {
        EXPECT_GT(blue, w * h / 100);
    } else {
        EXPECT_EQ(blue, 0);
    }

    // The card view draws the paper edge; a printed one would show as a second outline.
    const QRect top(0, 0, w, 3);
    const QRect bottom(0, h - 3, w, 3);
    EXPECT_EQ(count(image, top, isInk) + count(image, bottom, isInk), 0);
}

std::vector<PlayingCard> firstDeck()
{
    std::vector<PlayingCard> cards;
    for (const PlayingCard& card : makeTwoDeckSet()) {
        if (card.deck == 0) cards.push_back(card);
    }
    return cards;
}

INSTANTIATE_TEST_SUITE_P(Faces, CardFacePicture, ::testing::ValuesIn(firstDeck()), [](const auto& instance) {
    return testing::faceName(instance.param.rank, instance.param.suit);
});

} // namespace
} // namespace zelvaine

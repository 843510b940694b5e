#include "ui/card_sprites.hpp"

#include "ui/card_sprite_geometry.hpp"

#include <QHash>
#include <QImageReader>
#include <QLinearGradient>
#include <QMutex>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <tuple>

namespace zelvaine {
namespace {

struct SpriteKey {
    QString face;
    int faceWidth = 0;
    double pixelRatio = 1;
    CardSpriteStyle style;
    friend bool operator==(const SpriteKey&, const SpriteKey&) = default;
};

size_t qHash(const SpriteKey& key, size_t seed = 0)
{
    return qHashMulti(seed, key.face, key.faceWidth, key.pixelRatio, key.style.shadow, key.style.topBand,
                      key.style.selectionBorder);
}

// A window resized many times leaves sprites of old sizes behind; past this many, start afresh.
constexpr qsizetype spriteCacheLimit = 400;
// Two sizes of every face: the window's and the one it had before.
constexpr qsizetype pictureCacheLimit = 2 * 53;

QRectF toQt(Rect r) { return {r.x, r.y, r.width, r.height}; }

// A face's picture, decoded and scaled once for each size: the styles of a card (in a column,
// lifted by a drag, selected, under a foundation's band) share it. Decoding is most of a sprite's
// cost; done again for each style, the first lift of a card cost a frame of 40 ms.
QImage facePicture(const QString& face, QSize size)
{
    static QMutex mutex;
    static QHash<QPair<QString, QSize>, QImage> pictures;
    const auto key = qMakePair(face, size);
    {
        const QMutexLocker lock(&mutex);
        if (const auto found = pictures.constFind(key); found != pictures.cend()) return *found;
    }
    QImageReader reader(QStringLiteral(":/cards/%1.png").arg(face));
    reader.setScaledSize(size);
    const QImage picture = reader.read();
    const QMutexLocker lock(&mutex);
    if (pictures.size() >= pictureCacheLimit) pictures.clear();
    pictures.insert(key, picture);
    return picture;
}

QImage paintSprite(const SpriteKey& key)
{
    const CardSpriteGeometry g = CardSpriteGeometry::forFaceWidth(key.faceWidth);
    QImage sprite(g.width(), g.height(), QImage::Format_ARGB32_Premultiplied);
    sprite.fill(Qt::transparent);
    QPainter painter(&sprite);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.setPen(Qt::NoPen);

    if (key.style.shadow) {
        for (const CardSpriteGeometry::Layer& layer : g.shadowLayers()) {
            painter.setBrush(QColor::fromRgbF(0, 0, 0, 0.07f));
            painter.drawRoundedRect(toQt(layer.frame), layer.radius, layer.radius);
        }
    }

    const QRectF face(g.sideMargin, g.topMargin, g.faceWidth, g.faceHeight);
    QPainterPath outline;
    outline.addRoundedRect(face, g.cornerRadius, g.cornerRadius);
    painter.setBrush(QColor::fromRgbF(1, 0.996f, 0.98f));
    painter.drawPath(outline);

    painter.save();
    painter.setClipPath(outline);
    if (const QImage picture = facePicture(key.face, QSize(g.faceWidth, g.faceHeight)); !picture.isNull())
        painter.drawImage(face, picture);
    if (key.style.topBand) {
        const double band = std::max(0.055 * g.faceWidth, 4 * key.pixelRatio);
        QLinearGradient gradient(face.topLeft(), face.topLeft() + QPointF(0, band));
        gradient.setColorAt(0, QColor::fromRgbF(0, 0, 0, 0.3f));
        gradient.setColorAt(0.5, QColor::fromRgbF(0, 0, 0, 0.08f));
        gradient.setColorAt(1, Qt::transparent);
        painter.fillRect(QRectF(face.x(), face.y(), face.width(), band), gradient);
    }
    painter.restore();

    // Drawn inside the outline, so that the stroke never leaves the card.
    const double line = (key.style.selectionBorder ? 3 : 0.8) * key.pixelRatio;
    QPen pen(key.style.selectionBorder ? QColor(0xff, 0xcc, 0x00) : QColor::fromRgbF(0, 0, 0, 0.28f), line);
    pen.setJoinStyle(Qt::MiterJoin);
    pen.setCapStyle(Qt::FlatCap);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    const double inset = line / 2;
    painter.drawRoundedRect(face.adjusted(inset, inset, -inset, -inset), std::max(0.0, g.cornerRadius - inset),
                            std::max(0.0, g.cornerRadius - inset));
    return sprite;
}

} // namespace

QImage cardSprite(const QString& face, int faceWidth, double pixelRatio, CardSpriteStyle style)
{
    static QMutex mutex;
    static QHash<SpriteKey, QImage> sprites;
    const SpriteKey key{face, faceWidth, pixelRatio, style};
    {
        const QMutexLocker lock(&mutex);
        if (const auto found = sprites.constFind(key); found != sprites.cend()) return *found;
    }
    QImage sprite = paintSprite(key);
    const QMutexLocker lock(&mutex);
    if (sprites.size() >= spriteCacheLimit) sprites.clear();
    sprites.insert(key, sprite);
    return sprite;
}

} // namespace zelvaine

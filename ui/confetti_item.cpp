#include "ui/confetti_item.hpp"

#include "ui/celebration.hpp"

#include <QDateTime>
#include <QImage>
#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGOpacityNode>
#include <QSGTransformNode>

#include <array>
#include <cmath>
#include <numbers>

namespace zelvaine {
namespace {

const std::array<QColor, 7> colours{QColor("#ffd60a"), QColor("#ff9f0a"), QColor("#ff453a"), QColor("#ff6fae"),
                                    QColor("#64d2ff"), QColor("#30d158"), QColor("#ffffff")};

// One piece's picture: a size × size/2 rounded rectangle (corner radius 2) in its colour, drawn
// once at the screen's pixel density.
QImage piecePicture(const ConfettiParticle& particle, qreal pixelRatio)
{
    const double scale = pixelRatio * 2; // a little extra so rotation stays smooth
    QImage image(QSize(static_cast<int>(std::ceil(particle.size * scale)), static_cast<int>(std::ceil(particle.size / 2 * scale))),
                 QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colours[static_cast<std::size_t>(particle.colorIndex) % colours.size()]);
    painter.scale(scale, scale);
    painter.drawRoundedRect(QRectF(0, 0, particle.size, particle.size / 2), 2, 2);
    return image;
}

} // namespace

ConfettiItem::ConfettiItem(QQuickItem* parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    frames_.setInterval(16); // up to 60 frames a second
    connect(&frames_, &QTimer::timeout, this, [this] { update(); });
}

void ConfettiItem::setStartedAt(double startedAt)
{
    if (startedAt == startedAt_) return;
    startedAt_ = startedAt;
    if (startedAt_ > 0) {
        frames_.start();
    } else {
        frames_.stop();
    }
    update();
    emit startedAtChanged();
}

// Root → one transform node per particle → its opacity node → its picture.
QSGNode* ConfettiItem::updatePaintNode(QSGNode* old, UpdatePaintNodeData*)
{
    const double seconds = (static_cast<double>(QDateTime::currentMSecsSinceEpoch()) - startedAt_) / 1000.0;
    const bool falling = startedAt_ > 0 && seconds < celebrationSeconds;
    if (!falling) {
        if (startedAt_ > 0) frames_.stop();
        delete old;
        return nullptr;
    }
    const auto& particles = confettiParticles();
    QSGNode* root = old;
    if (!root) {
        root = new QSGNode;
        for (const ConfettiParticle& particle : particles) {
            auto* transform = new QSGTransformNode;
            auto* opacity = new QSGOpacityNode;
            QSGImageNode* picture = window()->createImageNode();
            picture->setTexture(window()->createTextureFromImage(piecePicture(particle, window()->effectiveDevicePixelRatio())));
            picture->setOwnsTexture(true);
            picture->setFiltering(QSGTexture::Linear);
            picture->setRect(QRectF(-particle.size / 2, -particle.size / 4, particle.size, particle.size / 2));
            opacity->appendChildNode(picture);
            transform->appendChildNode(opacity);
            root->appendChildNode(transform);
        }
    }
    QSGNode* node = root->firstChild();
    for (const ConfettiParticle& particle : particles) {
        const ConfettiPiece piece = confettiPiece(particle, seconds, width(), height());
        auto* transform = static_cast<QSGTransformNode*>(node);
        auto* opacity = static_cast<QSGOpacityNode*>(transform->firstChild());
        // A hidden piece's subtree is skipped by the renderer; its matrix can wait.
        opacity->setOpacity(std::max(0.0, piece.opacity));
        if (piece.opacity > 0) {
            QMatrix4x4 matrix;
            matrix.translate(static_cast<float>(piece.x), static_cast<float>(piece.y));
            matrix.rotate(static_cast<float>(piece.angle * 180 / std::numbers::pi), 0, 0, 1);
            transform->setMatrix(matrix);
        }
        node = node->nextSibling();
    }
    return root;
}

} // namespace zelvaine

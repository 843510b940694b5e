#include "ui/confetti_item.hpp"

#include "ui/celebration.hpp"

#include <QDateTime>
#include <QImage>
#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGOpacityNode>
#include <QSGRenderNode>
#include <QSGRendererInterface>
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
    QImage image(QSize(static_cast<int>(std::ceil(particle.size * scale)),
                       static_cast<int>(std::ceil(particle.size / 2 * scale))),
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

// The software renderer repaints, under each moved piece, everything the piece covered and now
// covers. A piece drawn by a node of its own kind reports those bounds itself, snapped to bands
// (see confettiRepaintBounds), so the repaint area stays simple enough to work out each frame.
class SoftwarePieceNode : public QSGRenderNode {
public:
    SoftwarePieceNode(QQuickWindow* window, const ConfettiParticle& particle)
        : window_(window), picture_(piecePicture(particle, window->effectiveDevicePixelRatio())), size_(particle.size)
    {}

    // Returns whether anything changed on screen: a hidden piece that stays hidden costs nothing.
    bool place(const ConfettiParticle& particle, const ConfettiPiece& piece)
    {
        const bool shown = piece.opacity > 0;
        if (!shown && !shown_) return false;
        shown_ = shown;
        piece_ = piece;
        if (shown) {
            const ConfettiBounds b = confettiRepaintBounds(particle, piece, repaintBand);
            bounds_ = QRectF(QPointF(b.left, b.top), QPointF(b.right, b.bottom));
        } else {
            bounds_ = QRectF();
        }
        return true;
    }

    RenderingFlags flags() const override { return BoundedRectRendering; }
    QRectF rect() const override { return bounds_; }
    StateFlags changedStates() const override { return {}; }

    void render(const RenderState* state) override
    {
        const QRegion* clip = state->clipRegion();
        // Without a clip the painter would paint wherever the piece lies, over what is not repainted.
        if (!shown_ || !clip || clip->isEmpty()) return;
        auto* painter = static_cast<QPainter*>(
            window_->rendererInterface()->getResource(window_, QSGRendererInterface::PainterResource));
        if (!painter) return;
        painter->setClipRegion(*clip, Qt::ReplaceClip); // in window coordinates, so before the transform
        QTransform transform = matrix()->toTransform();
        transform.translate(piece_.x, piece_.y);
        transform.rotateRadians(piece_.angle);
        painter->setTransform(transform);
        painter->setOpacity(inheritedOpacity() * piece_.opacity);
        painter->setRenderHint(QPainter::SmoothPixmapTransform);
        painter->drawImage(QRectF(-size_ / 2, -size_ / 4, size_, size_ / 2), picture_);
    }

private:
    static constexpr double repaintBand = 16;

    QQuickWindow* window_;
    QImage picture_;
    double size_;
    ConfettiPiece piece_;
    QRectF bounds_;
    bool shown_ = false;
};

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

QSGNode* ConfettiItem::updatePaintNode(QSGNode* old, UpdatePaintNodeData*)
{
    const double seconds = (static_cast<double>(QDateTime::currentMSecsSinceEpoch()) - startedAt_) / 1000.0;
    const bool falling = startedAt_ > 0 && seconds < celebrationSeconds;
    if (!falling) {
        if (startedAt_ > 0) frames_.stop();
        delete old;
        return nullptr;
    }
    if (window()->rendererInterface()->graphicsApi() == QSGRendererInterface::Software) {
        return updateSoftwareNodes(old, seconds);
    }
    return updateTextureNodes(old, seconds);
}

// Root → one piece node per particle.
QSGNode* ConfettiItem::updateSoftwareNodes(QSGNode* root, double seconds)
{
    const auto& particles = confettiParticles();
    if (!root) {
        root = new QSGNode;
        for (const ConfettiParticle& particle : particles)
            root->appendChildNode(new SoftwarePieceNode(window(), particle));
    }
    QSGNode* node = root->firstChild();
    for (const ConfettiParticle& particle : particles) {
        auto* piece = static_cast<SoftwarePieceNode*>(node);
        if (piece->place(particle, confettiPiece(particle, seconds, width(), height()))) {
            piece->markDirty(QSGNode::DirtyMaterial);
        }
        node = node->nextSibling();
    }
    return root;
}

// Root → one transform node per particle → its opacity node → its picture: the graphics card
// batches them into a few draw calls.
QSGNode* ConfettiItem::updateTextureNodes(QSGNode* old, double seconds)
{
    const auto& particles = confettiParticles();
    QSGNode* root = old;
    if (!root) {
        root = new QSGNode;
        for (const ConfettiParticle& particle : particles) {
            auto* transform = new QSGTransformNode;
            auto* opacity = new QSGOpacityNode;
            QSGImageNode* picture = window()->createImageNode();
            picture->setTexture(
                window()->createTextureFromImage(piecePicture(particle, window()->effectiveDevicePixelRatio())));
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

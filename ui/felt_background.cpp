#include "ui/felt_background.hpp"

#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QQuickWindow>
#include <QRadialGradient>
#include <QSGImageNode>
#include <QSGRendererInterface>
#include <QSGTransformNode>

#include <algorithm>
#include <cmath>

namespace zelvaine {
namespace {

// Smooth gradients lose nothing when painted at a quarter of the size and stretched with
// filtering by the graphics card; the software renderer copies pixels fastest at full size.
constexpr double filteredScale = 0.25;

// The picture's node is a child, deleted with it; the texture is the node's own to delete. A
// transform node, as the card canvas's is, so that the software renderer places its child.
class FeltNode : public QSGTransformNode {
public:
    ~FeltNode() override { delete texture; }
    QSGImageNode* image = nullptr;
    QSGTexture* texture = nullptr;
    QSize pixels;
};

} // namespace

QImage paintFelt(QSize size, QSizeF tableSize)
{
    QImage felt(size, QImage::Format_RGB32);
    QPainter painter(&felt);
    painter.scale(size.width() / std::max(tableSize.width(), 1.0), size.height() / std::max(tableSize.height(), 1.0));
    const QRectF table(QPointF(0, 0), tableSize);
    QLinearGradient base(table.topLeft(), table.bottomRight());
    base.setColorAt(0, QColor::fromRgbF(0.035f, 0.2f, 0.13f));
    base.setColorAt(1, QColor::fromRgbF(0.015f, 0.11f, 0.075f));
    painter.fillRect(table, base);
    QRadialGradient glow(table.center(), 680, table.center(), 20);
    glow.setColorAt(0, QColor::fromRgbF(0, 0.5f, 0, 0.17f));
    glow.setColorAt(1, Qt::transparent);
    painter.fillRect(table, glow);
    return felt;
}

FeltBackground::FeltBackground(QQuickItem* parent) : QQuickItem(parent) { setFlag(ItemHasContents, true); }

void FeltBackground::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size()) update();
}

QSGNode* FeltBackground::updatePaintNode(QSGNode* old, UpdatePaintNodeData*)
{
    auto* root = static_cast<FeltNode*>(old);
    if (!root) root = new FeltNode;
    QQuickWindow* scene = window();
    if (!scene || width() <= 0 || height() <= 0) return root;

    const bool software = scene->rendererInterface()->graphicsApi() == QSGRendererInterface::Software;
    const double scale = scene->effectiveDevicePixelRatio() * (software ? 1.0 : filteredScale);
    const QSize pixels(std::max(1, static_cast<int>(std::ceil(width() * scale))),
                       std::max(1, static_cast<int>(std::ceil(height() * scale))));
    if (!root->image || root->pixels != pixels) {
        QSGTexture* texture = scene->createTextureFromImage(paintFelt(pixels, size()));
        const bool added = !root->image;
        if (added) root->image = scene->createImageNode();
        root->image->setTexture(texture);
        root->image->setFiltering(software ? QSGTexture::Nearest : QSGTexture::Linear);
        root->image->setRect(boundingRect());
        if (added) root->appendChildNode(root->image);
        delete root->texture;
        root->texture = texture;
        root->pixels = pixels;
    }
    root->image->setRect(boundingRect());
    return root;
}

} // namespace zelvaine

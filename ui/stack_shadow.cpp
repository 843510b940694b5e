#include "ui/stack_shadow.hpp"

#include <QPainter>

namespace zelvaine {
namespace {

// Black at opacity 0.52 in all, laid down in four layers that spread ever wider.
constexpr int layerCount = 4;
constexpr double totalOpacity = 0.52;

} // namespace

StackShadow::StackShadow(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    // Painted only when its size or shape changes; moving it costs nothing more.
    setRenderTarget(QQuickPaintedItem::Image);
}

void StackShadow::setBlur(double blur)
{
    if (blur == blur_) return;
    blur_ = blur;
    emit shapeChanged();
    update();
}

void StackShadow::setCornerRadius(double radius)
{
    if (radius == cornerRadius_) return;
    cornerRadius_ = radius;
    emit shapeChanged();
    update();
}

// The item covers the stack grown by half the blur on every side; each layer grows from the
// stack's own outline by its share of the blur.
void StackShadow::paint(QPainter* painter)
{
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(QColor::fromRgbF(0, 0, 0, static_cast<float>(totalOpacity / layerCount)));
    for (int k = 1; k <= layerCount; ++k) {
        const double spread = blur_ * k / layerCount;
        const double inset = (blur_ - spread) / 2;
        const QRectF layer = boundingRect().adjusted(inset, inset, -inset, -inset);
        painter->drawRoundedRect(layer, cornerRadius_ + spread / 2, cornerRadius_ + spread / 2);
    }
}

} // namespace zelvaine

#pragma once

#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace zelvaine {

// The soft shadow under a dragged stack of cards, painted once for its size and then only moved
// with the stack: as four translucent rounded rectangles redrawn on every frame of a drag it was
// the largest cost of the frame on the software renderer.
class StackShadow : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    // How far the shadow spreads beyond the stack, and the stack's corner radius.
    Q_PROPERTY(double blur READ blur WRITE setBlur NOTIFY shapeChanged FINAL)
    Q_PROPERTY(double cornerRadius READ cornerRadius WRITE setCornerRadius NOTIFY shapeChanged FINAL)

public:
    explicit StackShadow(QQuickItem* parent = nullptr);

    double blur() const { return blur_; }
    void setBlur(double blur);
    double cornerRadius() const { return cornerRadius_; }
    void setCornerRadius(double radius);

    void paint(QPainter* painter) override;

signals:
    void shapeChanged();

private:
    double blur_ = 16;
    double cornerRadius_ = 12;
};

} // namespace zelvaine

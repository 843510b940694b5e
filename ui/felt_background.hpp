#pragma once

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace zelvaine {

// The table's surface: a dark green gradient from the top-left to the bottom-right corner, under
// a soft green glow in the middle. Painted once for each size into one opaque picture: drawn as
// gradients every frame it cost a processor-bound OpenGL more than half of a frame.
class FeltBackground : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT

public:
    explicit FeltBackground(QQuickItem* parent = nullptr);

protected:
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
};

// The felt at `size` pixels, for a table of `tableSize` points.
QImage paintFelt(QSize size, QSizeF tableSize);

} // namespace zelvaine

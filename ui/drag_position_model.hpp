#pragma once

#include <QObject>
#include <QPointF>
#include <QtQml/qqmlregistration.h>

namespace zelvaine {

// The dragged stack's place on its own, so that a pointer move redraws only the drag overlay.
class DragPositionModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Owned by the drag controller")
    // The centre of the top dragged card, in board coordinates.
    Q_PROPERTY(QPointF location READ location NOTIFY locationChanged FINAL)

public:
    using QObject::QObject;

    QPointF location() const { return location_; }
    void setLocation(QPointF location)
    {
        if (location == location_) return;
        location_ = location;
        emit locationChanged();
    }

signals:
    void locationChanged();

private:
    QPointF location_;
};

} // namespace zelvaine

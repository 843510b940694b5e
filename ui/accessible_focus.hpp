#pragma once

#include <QObject>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace zelvaine {

// Tells assistive technology that the focus moved to an item. The board's keyboard ring is drawn,
// not given Qt's own focus, and a screen reader hears of a focus change only through this event:
// the focused state alone it reads when asked, but it does not follow it.
class AccessibleFocus : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    Q_INVOKABLE static void moveTo(QQuickItem* item);
};

} // namespace zelvaine
